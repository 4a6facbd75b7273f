#include "base/interruption.h"

#include <utility>

namespace metrify {

namespace {

thread_local const interruption* obeyed_by_thread = nullptr;

} // namespace

interruption_scope::interruption_scope(const interruption& obeyed)
    : outer_(std::exchange(obeyed_by_thread, &obeyed)) {}

interruption_scope::~interruption_scope() {
    obeyed_by_thread = outer_;
}

bool is_interrupted() {
    return obeyed_by_thread != nullptr && obeyed_by_thread->is_requested();
}

} // namespace metrify

#include "xllrt/text/dual_string.h"

#include "xllrt/text/code_page.h"

#include <memory>

namespace metrify {

namespace {

template <class Char>
const Char* NewCopy(const std::basic_string<Char>& text) {
    auto copy = std::make_unique<Char[]>(text.size() + 1);
    text.copy(copy.get(), text.size());
    return copy.release();
}

} // namespace

CXlDualString::~CXlDualString() {
    Release();
}

void CXlDualString::Release() {
    if ((state_ & kNarrowOwned) != 0)
        delete[] narrow_;
    if ((state_ & kWideOwned) != 0)
        delete[] wide_;
    narrow_ = nullptr;
    wide_ = nullptr;
    state_ = 0;
}

const char* CXlDualString::Narrow() {
    if (!narrow_) {
        const bool is_empty = !wide_ || *wide_ == 0;
        narrow_ = is_empty ? "" : NewCopy(ToNarrow(wide_));
        state_ |= is_empty ? kNarrowPresent : kNarrowPresent | kNarrowOwned;
    }
    return narrow_;
}

const XCHAR* CXlDualString::Wide() {
    if (!wide_) {
        const bool is_empty = !narrow_ || *narrow_ == 0;
        wide_ = is_empty ? u"" : NewCopy(ToWide(narrow_));
        state_ |= is_empty ? kWidePresent : kWidePresent | kWideOwned;
    }
    return wide_;
}

void CXlDualString::Assign(const std::string& text) {
    const char* copy = NewCopy(text);
    Release();
    narrow_ = copy;
    state_ = kNarrowPresent | kNarrowOwned;
}

} // namespace metrify

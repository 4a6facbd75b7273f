#include "xllrt/registry/function_record.h"

namespace metrify {

namespace {

constinit XlFunctionRecord* head = nullptr;

} // namespace

void LinkFunctionRecord(XlFunctionRecord& record) {
    record.next = head;
    head = &record;
}

const XlFunctionRecord* FirstFunctionRecord() {
    return head;
}

} // namespace metrify

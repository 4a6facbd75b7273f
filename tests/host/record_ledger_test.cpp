#include "tests/host/calling.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

XLOPER12 TextRecord(const char16_t* text) {
    XLOPER12 record{};
    WriteRecord(text, record);
    return record;
}

TEST(RecordLedger, a_record_that_is_returned_is_balanced) {
    RecordLedger ledger;
    XLOPER12 record = TextRecord(u"m");
    ledger.HandOut(record);
    EXPECT_EQ(ledger.Counts().Outstanding(), 1U);
    ledger.TakeBack(record);
    EXPECT_EQ(ledger.Counts().Outstanding(), 0U);
    EXPECT_EQ(ledger.Counts().handed_out, 1U);
    EXPECT_EQ(ledger.Counts().returned, 1U);
    EXPECT_EQ(ledger.Counts().refused, 0U);
}

TEST(RecordLedger, a_record_that_is_never_returned_stays_outstanding_and_is_released_at_the_end) {
    RecordLedger ledger;
    ledger.HandOut(TextRecord(u"m"));
    EXPECT_EQ(ledger.Counts().Outstanding(), 1U);
}

TEST(RecordLedger, a_record_that_is_returned_twice_is_refused) {
    RecordLedger ledger;
    XLOPER12 record = TextRecord(u"m");
    XLOPER12 copy = record;
    ledger.HandOut(record);
    ledger.TakeBack(record);
    ledger.TakeBack(copy);
    EXPECT_EQ(ledger.Counts().returned, 1U);
    EXPECT_EQ(ledger.Counts().refused, 1U);
}

TEST(RecordLedger, a_record_that_the_host_did_not_hand_out_is_refused) {
    RecordLedger ledger;
    RecordOwner<XLOPER12> own;
    own.record = TextRecord(u"m");
    XLOPER12 record = own.record;
    ledger.TakeBack(record);
    EXPECT_EQ(ledger.Counts().refused, 1U);
    EXPECT_EQ(record.val.str, own.record.val.str);
}

TEST(RecordLedger, a_number_has_no_memory_and_is_not_counted) {
    RecordLedger ledger;
    XLOPER12 record{};
    WriteRecord(3.5, record);
    ledger.HandOut(record);
    ledger.TakeBack(record);
    EXPECT_EQ(ledger.Counts().handed_out, 0U);
    EXPECT_EQ(ledger.Counts().refused, 0U);
    EXPECT_EQ(record.val.num, 3.5);
}

TEST(RecordLedger, a_returned_record_keeps_its_type_and_loses_its_pointer) {
    RecordLedger ledger;
    XLOPER12 record = TextRecord(u"m");
    ledger.HandOut(record);
    ledger.TakeBack(record);
    EXPECT_EQ(record.xltype, xltypeStr);
    EXPECT_EQ(record.val.str, nullptr);
}

TEST(RecordLedger, arrays_and_references_are_counted_too) {
    RecordLedger ledger;
    XLOPER array{};
    WriteRecord(RowOf({u"a", u"b"}), array);
    XLOPER reference{};
    WriteRecord(Reference{1, {{0, 1, 0, 1}}, false}, reference);
    ledger.HandOut(array);
    ledger.HandOut(reference);
    EXPECT_EQ(ledger.Counts().Outstanding(), 2U);
    ledger.TakeBack(array);
    ledger.TakeBack(reference);
    EXPECT_EQ(ledger.Counts().Outstanding(), 0U);
}

TEST(RecordLedger, a_record_cannot_be_returned_through_the_other_family) {
    RecordLedger ledger;
    XLOPER12 record = TextRecord(u"m");
    ledger.HandOut(record);
    XLOPER other{};
    other.xltype = xltypeStr;
    other.val.str = reinterpret_cast<char*>(record.val.str);
    ledger.TakeBack(other);
    EXPECT_EQ(ledger.Counts().refused, 1U);
    EXPECT_EQ(ledger.Counts().Outstanding(), 1U);
}

} // namespace
} // namespace metrify::host

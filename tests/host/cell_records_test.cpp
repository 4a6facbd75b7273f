// Conversion of the host's values to records of both families and back.

#include "host/sheet/cell_records.h"
#include "xllrt/value/record_memory.h"

#include <gtest/gtest.h>
#include <vector>

namespace metrify::host {
namespace {

constexpr IDSHEET kSheet = 5;

template <class Record>
class cell_records : public testing::Test {
  public:
    // The value of a record made of a value.
    static CellValue There(const CellValue& value, int type) {
        RecordOwner<Record> owner;
        WriteRecord(value, owner.record);
        EXPECT_EQ(owner.record.xltype, type);
        CellValue back = u"nothing";
        EXPECT_TRUE(ReadRecord(owner.record, kSheet, back));
        return back;
    }
    static bool IsReadable(const Record& record) {
        CellValue value;
        return ReadRecord(record, kSheet, value);
    }
};

using Families = testing::Types<XLOPER, XLOPER12>;
TYPED_TEST_SUITE(cell_records, Families);

TYPED_TEST(cell_records, every_kind_goes_out_and_in) {
    const auto there = [](const CellValue& value, int type) {
        EXPECT_EQ(TestFixture::There(value, type), value);
    };
    there(3.5, 0x0001);
    there(u"m\u00B2", 0x0002);
    there(u"", 0x0002);
    there(true, 0x0004);
    there(false, 0x0004);
    there(Reference{7, {{1, 2, 3, 4}}, false}, 0x0008);
    there(CellError{42}, 0x0010);
    there(ArrayOf({{1.0, u"a"}, {true, CellError{7}}, {CellValue(), -5}}), 0x0040);
    there(MissingArgument{}, 0x0080);
    there(CellValue(), 0x0100);
    there(Reference{kSheet, {{1, 2, 3, 4}}, true}, 0x0400);
    there(-32768, 0x0800);
    there(32767, 0x0800);
}

TYPED_TEST(cell_records, references_have_all_their_areas) {
    const Reference three{7, {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 9, 0, 0}}, false};
    EXPECT_EQ(TestFixture::There(three, 0x0008), CellValue(three));
}

TYPED_TEST(cell_records, a_simple_reference_comes_from_the_sheet_that_is_current) {
    EXPECT_EQ(TestFixture::There(Reference{7, {{1, 2, 3, 4}}, true}, 0x0400),
              CellValue(Reference{kSheet, {{1, 2, 3, 4}}, true}));
}

TYPED_TEST(cell_records, a_reference_without_areas_is_an_error) {
    EXPECT_EQ(TestFixture::There(Reference{7, {}, false}, 0x0010), CellValue(CellError{23}));
    EXPECT_EQ(TestFixture::There(Reference{7, {{-1, 0, 0, 0}}, false}, 0x0010), CellValue(CellError{23}));
    EXPECT_EQ(TestFixture::There(Reference{7, {{0, 0, -1, 0}}, true}, 0x0010), CellValue(CellError{23}));
}

TYPED_TEST(cell_records, an_argument_left_out_in_an_array_is_an_empty_cell) {
    EXPECT_EQ(TestFixture::There(RowOf({MissingArgument{}, 1.0}), 0x0040),
              CellValue(RowOf({CellValue(), 1.0})));
}

TYPED_TEST(cell_records, cells_hold_single_values) {
    RecordOwner<TypeParam> array;
    WriteRecord(RowOf({RowOf({1.0}), 2.0}), array.record);
    EXPECT_FALSE(TestFixture::IsReadable(array.record));
    RecordOwner<TypeParam> references;
    WriteRecord(RowOf({1.0, Reference{7, {{0, 0, 0, 0}}, false}}), references.record);
    EXPECT_FALSE(TestFixture::IsReadable(references.record));
}

TYPED_TEST(cell_records, records_that_point_nowhere_are_refused) {
    TypeParam record{};
    EXPECT_FALSE(TestFixture::IsReadable(record));
    record.xltype = 0x0002;
    EXPECT_FALSE(TestFixture::IsReadable(record));
    record.xltype = 0x0008;
    EXPECT_FALSE(TestFixture::IsReadable(record));
    record.xltype = 0x0040;
    record.val.array.rows = 1;
    record.val.array.columns = 1;
    EXPECT_FALSE(TestFixture::IsReadable(record));
    record.xltype = 0x0020;
    EXPECT_FALSE(TestFixture::IsReadable(record));
}

TYPED_TEST(cell_records, marks_of_ownership_do_not_change_what_a_record_is) {
    TypeParam record{};
    record.val.num = 2.5;
    record.xltype = 0x4001;
    CellValue value;
    EXPECT_TRUE(ReadRecord(record, kSheet, value));
    EXPECT_EQ(value, CellValue(2.5));
}

TYPED_TEST(cell_records, texts_references_and_arrays_have_memory) {
    const auto has_memory = [](const CellValue& value) {
        RecordOwner<TypeParam> owner;
        WriteRecord(value, owner.record);
        return MemoryOf(owner.record) != nullptr;
    };
    EXPECT_TRUE(has_memory(u"a"));
    EXPECT_TRUE(has_memory(Reference{7, {{0, 0, 0, 0}}, false}));
    EXPECT_TRUE(has_memory(RowOf({1.0})));
    EXPECT_FALSE(has_memory(1.0));
    EXPECT_FALSE(has_memory(Reference{7, {{0, 0, 0, 0}}, true}));
}

using narrow_records = cell_records<XLOPER>;
using wide_records = cell_records<XLOPER12>;

TEST(narrow_cell_records, integers_beyond_16_bits_are_numbers) {
    EXPECT_EQ(narrow_records::There(32768, 0x0001), CellValue(32768.0));
    EXPECT_EQ(narrow_records::There(-32769, 0x0001), CellValue(-32769.0));
    EXPECT_EQ(wide_records::There(32768, 0x0800), CellValue(32768));
}

TEST(narrow_cell_records, references_beyond_a_small_sheet_are_errors) {
    const Reference last{7, {{65535, 65535, 255, 255}}, false};
    EXPECT_EQ(narrow_records::There(last, 0x0008), CellValue(last));
    EXPECT_EQ(narrow_records::There(Reference{7, {{0, 65536, 0, 0}}, false}, 0x0010),
              CellValue(CellError{23}));
    EXPECT_EQ(narrow_records::There(Reference{7, {{0, 0, 0, 256}}, false}, 0x0010), CellValue(CellError{23}));
}

TEST(wide_cell_records, references_beyond_a_large_sheet_are_errors) {
    const Reference last{7, {{1048575, 1048575, 16383, 16383}}, false};
    EXPECT_EQ(wide_records::There(last, 0x0008), CellValue(last));
    EXPECT_EQ(wide_records::There(Reference{7, {{0, 1048576, 0, 0}}, false}, 0x0010),
              CellValue(CellError{23}));
    EXPECT_EQ(wide_records::There(Reference{7, {{0, 0, 0, 16384}}, false}, 0x0010), CellValue(CellError{23}));
}

TEST(narrow_cell_records, arrays_beyond_a_small_sheet_are_an_error) {
    EXPECT_EQ(narrow_records::There(CellArray{1, 257, std::vector<CellValue>(257)}, 0x0010),
              CellValue(CellError{15}));
    EXPECT_EQ(narrow_records::There(CellArray{1, 256, std::vector<CellValue>(256)}, 0x0040),
              CellValue(CellArray{1, 256, std::vector<CellValue>(256)}));
}

TEST(narrow_cell_records, texts_are_cut_at_255_characters) {
    EXPECT_EQ(narrow_records::There(std::u16string(256, u'a'), 0x0002), CellValue(std::u16string(255, u'a')));
    EXPECT_EQ(wide_records::There(std::u16string(256, u'a'), 0x0002), CellValue(std::u16string(256, u'a')));
}

} // namespace
} // namespace metrify::host

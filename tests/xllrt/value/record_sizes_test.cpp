// The sizes that copies of records refuse: those that the narrow family cannot represent, and arrays whose
// cells cannot exist. No other size.

#include "oper_fixture.h"
#include "tests/allocations.h"
#include "xllrt/value/record_cells.h"
#include "xllrt/value/record_memory.h"

#include <array>
#include <limits>
#include <memory>

namespace {

using namespace metrify;

template <class To, class From>
bool IsCopied(const From& source) {
    RecordOwner<To> copy;
    bool allocated = false;
    return CopyRecord(&copy.record, &source, allocated);
}

TEST(RecordSizes, within_a_family_an_array_of_any_size_is_copied) {
    const std::vector<XLOPER12> wide(1048577, NumberRecord<XLOPER12>(1.0));
    auto* wide_cells = const_cast<XLOPER12*>(wide.data());
    EXPECT_TRUE(IsCopied<XLOPER12>(ArrayRecord(wide_cells, 1048577, 1)));
    EXPECT_TRUE(IsCopied<XLOPER12>(ArrayRecord(wide_cells, 1, 16385)));
    std::vector<XLOPER> narrow(300, NumberRecord<XLOPER>(1.0));
    EXPECT_TRUE(IsCopied<XLOPER>(ArrayRecord(narrow.data(), 1, 300)));
}

TEST(RecordSizes, from_narrow_to_wide_an_array_of_any_size_is_copied) {
    std::vector<XLOPER> cells(65535, NumberRecord<XLOPER>(1.0));
    EXPECT_TRUE(IsCopied<XLOPER12>(ArrayRecord(cells.data(), 1, 65535)));
    EXPECT_TRUE(IsCopied<XLOPER12>(ArrayRecord(cells.data(), 65535, 1)));
}

TEST(RecordSizes, an_array_with_a_negative_count_is_refused) {
    std::array cells{NumberRecord<XLOPER12>(1.0)};
    EXPECT_FALSE(IsCopied<XLOPER12>(ArrayRecord(cells.data(), -1, 1)));
    EXPECT_FALSE(IsCopied<XLOPER12>(ArrayRecord(cells.data(), 1, -1)));
    EXPECT_FALSE(IsCopied<XLOPER12>(ArrayRecord(cells.data(), -1, -1)));
    EXPECT_FALSE(IsCopied<XLOPER>(ArrayRecord(cells.data(), -1, -1)));
    EXPECT_FALSE(IsCopied<XLOPER>(ArrayRecord(cells.data(), 0, -1)));
}

TEST(RecordSizes, an_array_without_memory_for_its_cells_is_refused) {
    EXPECT_FALSE(IsCopied<XLOPER12>(ArrayRecord<XLOPER12>(nullptr, 1, 1)));
    EXPECT_FALSE(IsCopied<XLOPER>(ArrayRecord<XLOPER12>(nullptr, 1, 1)));
    EXPECT_FALSE(IsCopied<XLOPER12>(ArrayRecord<XLOPER>(nullptr, 1, 1)));
    EXPECT_FALSE(IsCopied<XLOPER>(ArrayRecord<XLOPER>(nullptr, 1, 1)));
    EXPECT_TRUE(IsCopied<XLOPER12>(ArrayRecord<XLOPER12>(nullptr, 0, 1))) << "without cells it needs none";
}

TEST(RecordSizes, an_array_of_more_cells_than_fit_into_memory_is_refused) {
    std::array cells{NumberRecord<XLOPER12>(1.0)};
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    const auto record = ArrayRecord(cells.data(), most, most);
    EXPECT_FALSE(IsCopied<XLOPER12>(record));
    EXPECT_EQ(CellCountOf(record), 0u);
}

TEST(RecordSizes, a_malformed_array_within_an_array_is_refused_with_it) {
    std::array cells{NumberRecord<XLOPER12>(1.0), ArrayRecord<XLOPER12>(nullptr, 1, 1)};
    EXPECT_FALSE(IsCopied<XLOPER12>(ArrayRecord(cells.data(), 1, 2)));
}

// ---- Narrow arrays with a count of 0

TEST(RecordSizes, a_narrow_array_of_the_host_with_0_rows_is_empty_for_any_pointer) {
    const auto cell = std::make_unique<XLOPER>(NumberRecord<XLOPER>(1.0));
    const auto record = ArrayRecord(cell.get(), 0, 1);
    EXPECT_EQ(ArraySizeOf(record), (XlSize{0, 1}));
    EXPECT_EQ(CellCountOf(record), 0u);
    CXlOper value = CXlOper::Wrap4(&record);
    EXPECT_EQ(value.Dimensions(), (XlSize{0, 1}));
    EXPECT_THROW(value.Cell(0, 0), CXlOutOfRangeException);
    const CXlOper copy(value);
    EXPECT_EQ(copy.Record4()->val.array.lparray, nullptr);
    RecordOwner<XLOPER12> wide;
    bool allocated = false;
    ASSERT_TRUE(CopyRecord(&wide.record, &record, allocated));
    EXPECT_EQ(ArraySizeOf(wide.record), (XlSize{0, 1}));
    EXPECT_EQ(wide.record.val.array.lparray, nullptr);
}

TEST(RecordSizes, a_malformed_array_is_not_filled) {
    auto record = ArrayRecord<XLOPER12>(nullptr, 2, 2);
    CXlOper value = CXlOper::Wrap12(&record);
    const CXlOper fill(1.0);
    value.Fill(&fill);
    EXPECT_EQ(value.Dimensions(), (XlSize{2, 2}));
    EXPECT_THROW(value.Cell(0, 0), CXlOutOfRangeException);
}

TEST(RecordSizes, a_narrow_array_of_65536_rows_keeps_all_of_them_in_copies) {
    const std::ptrdiff_t before = metrify::test::live_blocks();
    {
        std::vector<XLOPER12> cells(65536, NumberRecord<XLOPER12>(1.0));
        XCHAR text[] = u"\4last";
        cells.back() = TextRecord<XLOPER12>(text);
        RecordOwner<XLOPER> narrow;
        bool allocated = false;
        const auto source = ArrayRecord(cells.data(), 65536, 1);
        ASSERT_TRUE(CopyRecord(&narrow.record, &source, allocated));
        EXPECT_EQ(narrow.record.val.array.rows, 0) << "16 bits hold no more";
        EXPECT_EQ(ArraySizeOf(narrow.record), (XlSize{65536, 1}));
        EXPECT_EQ(TextOf(*CellOf(&narrow.record, 65535, 0)), "last");
        RecordOwner<XLOPER12> wide;
        ASSERT_TRUE(CopyRecord(&wide.record, &narrow.record, allocated));
        EXPECT_EQ(ArraySizeOf(wide.record), (XlSize{65536, 1}));
        EXPECT_EQ(TextOf(*CellOf(&wide.record, 65535, 0)), u"last");
        const XLOPER released = narrow.record;
        DeepFree(narrow.record);
        EXPECT_EQ(ArraySizeOf(released), (XlSize{0, 1})) << "the address has no meaning any longer";
    }
    EXPECT_EQ(metrify::test::live_blocks(), before);
}

// ---- Single references

TEST(RecordSizes, the_count_of_a_single_reference_is_copied) {
    auto narrow = SingleReferenceRecord<XLOPER>({1, 2, 3, 4});
    auto wide = SingleReferenceRecord<XLOPER12>({1, 2, 3, 4});
    for (const std::uint16_t count : std::array<std::uint16_t, 5>{0, 1, 2, 3, 65535}) {
        narrow.val.sref.count = count;
        wide.val.sref.count = count;
        XLOPER to_narrow{};
        XLOPER12 to_wide{};
        bool allocated = false;
        EXPECT_TRUE(CopyRecord(&to_narrow, &narrow, allocated));
        EXPECT_EQ(to_narrow.val.sref.count, count);
        EXPECT_TRUE(CopyRecord(&to_narrow, &wide, allocated));
        EXPECT_EQ(to_narrow.val.sref.count, count);
        EXPECT_TRUE(CopyRecord(&to_wide, &narrow, allocated));
        EXPECT_EQ(to_wide.val.sref.count, count);
        EXPECT_TRUE(CopyRecord(&to_wide, &wide, allocated));
        EXPECT_EQ(to_wide.val.sref.count, count);
    }
}

} // namespace

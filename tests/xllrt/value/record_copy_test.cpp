// Copies of records, within their family and into the other one, and their release.

#include "oper_fixture.h"
#include "xllrt/value/record_memory.h"

#include <array>
#include <type_traits>

namespace {

using namespace metrify;

/// A copy and the results of copying.
template <class Record>
struct Copied {
    template <class Source>
    explicit Copied(const Source& source) : success(CopyRecord(&owner.record, &source, allocated)) {}

    RecordOwner<Record> owner;
    bool allocated = true;
    bool success;
    Record& record = owner.record;
};

// Every pair of families. The parameter is the source and the target.
template <class From, class To>
struct FromTo {
    using Source = From;
    using Target = To;
};

template <class Way>
class RecordCopy : public testing::Test {
  protected:
    // The expected copy of a record that needs no memory.
    static std::string PlainCopyOf(const typename Way::Source& source) {
        const Copied<typename Way::Target> copy(source);
        EXPECT_TRUE(copy.success);
        EXPECT_FALSE(copy.allocated);
        return Rendered(copy.record);
    }

    static auto CountedAbc() {
        if constexpr (std::is_same_v<typename Way::Source, XLOPER>) {
            static char text[] = "\3abc";
            return static_cast<char*>(text);
        } else {
            static XCHAR text[] = u"\3abc";
            return static_cast<XCHAR*>(text);
        }
    }
};

using FamilyPairs = testing::Types<FromTo<XLOPER, XLOPER>, FromTo<XLOPER12, XLOPER12>,
                                   FromTo<XLOPER, XLOPER12>, FromTo<XLOPER12, XLOPER>>;
TYPED_TEST_SUITE(RecordCopy, FamilyPairs);

TYPED_TEST(RecordCopy, of_a_scalar_needs_no_memory) {
    using From = typename TypeParam::Source;
    EXPECT_EQ(this->PlainCopyOf(NumberRecord<From>(2.5)), "2.5");
    EXPECT_EQ(this->PlainCopyOf(ErrorRecord<From>(xlerrNA)), "#42");
    EXPECT_EQ(this->PlainCopyOf(IntRecord<From>(-1)), "-1i");
    auto boolean = PlainRecord<From>(xltypeBool);
    boolean.val.xbool = 1;
    EXPECT_EQ(this->PlainCopyOf(boolean), "TRUE");
}

TYPED_TEST(RecordCopy, of_a_big_block_is_shallow) {
    using From = typename TypeParam::Source;
    using To = typename TypeParam::Target;
    std::uint8_t data[4] = {1, 2, 3, 4};
    auto source = PlainRecord<From>(xltypeBigData);
    source.val.bigdata.h.lpbData = data;
    source.val.bigdata.cbData = 4;
    const Copied<To> copy(source);
    EXPECT_TRUE(copy.success);
    EXPECT_FALSE(copy.allocated);
    EXPECT_EQ(TypeOf(copy.record), xltypeBigData);
    EXPECT_EQ(copy.record.val.bigdata.h.lpbData, data);
    EXPECT_EQ(copy.record.val.bigdata.cbData, 4);
}

TYPED_TEST(RecordCopy, of_a_text_has_its_own_memory) {
    using From = typename TypeParam::Source;
    using To = typename TypeParam::Target;
    const auto source = TextRecord<From>(this->CountedAbc());
    const Copied<To> copy(source);
    EXPECT_TRUE(copy.success);
    EXPECT_TRUE(copy.allocated);
    EXPECT_EQ(Rendered(copy.record), "\"abc\"");
    EXPECT_NE(static_cast<const void*>(copy.record.val.str), source.val.str);
}

TYPED_TEST(RecordCopy, of_a_reference_has_its_own_list) {
    using From = typename TypeParam::Source;
    using To = typename TypeParam::Target;
    std::conditional_t<std::is_same_v<From, XLOPER>, TwoRectangles4, TwoRectangles12> rectangles{
        {2, {{1, 2, 3, 4}}}, {5, 65535, 7, 255}};
    const auto source = ReferenceRecord<From>(rectangles.list, 11);
    const Copied<To> copy(source);
    EXPECT_TRUE(copy.success);
    EXPECT_TRUE(copy.allocated);
    ASSERT_EQ(TypeOf(copy.record), xltypeRef);
    EXPECT_EQ(copy.record.val.mref.idSheet, 11u);
    const auto* list = copy.record.val.mref.lpmref;
    ASSERT_EQ(list->count, 2);
    EXPECT_NE(static_cast<const void*>(list), &rectangles);
    using Rectangle = typename RecordFamily<To>::Rectangle;
    const Rectangle* rectangle = static_cast<const Rectangle*>(list->reflft);
    EXPECT_EQ(rectangle[0].rwFirst, 1);
    EXPECT_EQ(rectangle[0].rwLast, 2);
    EXPECT_EQ(rectangle[0].colFirst, 3);
    EXPECT_EQ(rectangle[0].colLast, 4);
    EXPECT_EQ(rectangle[1].rwFirst, 5);
    EXPECT_EQ(rectangle[1].rwLast, 65535);
    EXPECT_EQ(rectangle[1].colFirst, 7);
    EXPECT_EQ(rectangle[1].colLast, 255);
}

TYPED_TEST(RecordCopy, of_a_single_reference_needs_no_memory) {
    using From = typename TypeParam::Source;
    using To = typename TypeParam::Target;
    const auto source = SingleReferenceRecord<From>({1, 65535, 3, 255});
    const Copied<To> copy(source);
    EXPECT_TRUE(copy.success);
    EXPECT_FALSE(copy.allocated);
    ASSERT_EQ(TypeOf(copy.record), xltypeSRef);
    EXPECT_EQ(copy.record.val.sref.ref.rwFirst, 1);
    EXPECT_EQ(copy.record.val.sref.ref.rwLast, 65535);
    EXPECT_EQ(copy.record.val.sref.ref.colFirst, 3);
    EXPECT_EQ(copy.record.val.sref.ref.colLast, 255);
}

TYPED_TEST(RecordCopy, of_an_array_copies_every_cell) {
    using From = typename TypeParam::Source;
    using To = typename TypeParam::Target;
    std::array<From, 4> cells{NumberRecord<From>(2.5), TextRecord<From>(this->CountedAbc()),
                              IntRecord<From>(-1), ErrorRecord<From>(xlerrNA)};
    const auto source = ArrayRecord(cells.data(), 2, 2);
    const Copied<To> copy(source);
    EXPECT_TRUE(copy.success);
    EXPECT_TRUE(copy.allocated);
    EXPECT_EQ(copy.record.val.array.rows, 2);
    EXPECT_EQ(copy.record.val.array.columns, 2);
    EXPECT_EQ(Rendered(copy.record), "{2.5,\"abc\",-1i,#42}");
    EXPECT_NE(static_cast<const void*>(copy.record.val.array.lparray[1].val.str), cells[1].val.str);
}

TYPED_TEST(RecordCopy, of_a_macro_flow_value_fails) {
    const Copied<typename TypeParam::Target> copy(PlainRecord<typename TypeParam::Source>(xltypeFlow));
    EXPECT_FALSE(copy.success);
    EXPECT_FALSE(copy.allocated);
}

TYPED_TEST(RecordCopy, of_an_array_fails_if_its_last_cell_fails) {
    using From = typename TypeParam::Source;
    std::array<From, 3> cells{TextRecord<From>(this->CountedAbc()), TextRecord<From>(this->CountedAbc()),
                              PlainRecord<From>(xltypeFlow)};
    const Copied<typename TypeParam::Target> copy(ArrayRecord(cells.data(), 1, 3));
    EXPECT_FALSE(copy.success);
    EXPECT_FALSE(copy.allocated);
}

TYPED_TEST(RecordCopy, of_anything_else_copies_only_the_type) {
    EXPECT_EQ(this->PlainCopyOf(PlainRecord<typename TypeParam::Source>(xltypeMissing)), "missing");
    EXPECT_EQ(this->PlainCopyOf(PlainRecord<typename TypeParam::Source>(xltypeNil)), "nil");
}

TYPED_TEST(RecordCopy, without_source_or_target_does_nothing) {
    using From = typename TypeParam::Source;
    using To = typename TypeParam::Target;
    auto target = NumberRecord<To>(2.5);
    bool allocated = true;
    EXPECT_TRUE(CopyRecord(&target, static_cast<const From*>(nullptr), allocated));
    EXPECT_FALSE(allocated);
    EXPECT_EQ(Rendered(target), "2.5");
    const auto source = NumberRecord<From>(1.0);
    allocated = true;
    EXPECT_TRUE(CopyRecord(static_cast<To*>(nullptr), &source, allocated));
    EXPECT_FALSE(allocated);
}

TEST(RecordCopyOntoItself, does_nothing) {
    XCHAR text[] = u"\3abc";
    auto record = TextRecord<XLOPER12>(text);
    bool allocated = true;
    EXPECT_TRUE(CopyRecord(&record, &record, allocated));
    EXPECT_FALSE(allocated);
    EXPECT_EQ(record.val.str, text);
}

// ---- From one family into the other

TEST(RecordCrossing, a_narrow_minus_1_stays_minus_1) {
    const Copied<XLOPER12> copy(IntRecord<XLOPER>(-1));
    EXPECT_EQ(copy.record.val.w, -1);
}

TEST(RecordCrossing, a_text_is_converted_with_the_code_page) {
    char narrow[] = "\5L\xE4nge";
    const Copied<XLOPER12> to_wide(TextRecord<XLOPER>(narrow));
    EXPECT_EQ(TextOf(to_wide.record), u"Länge");
    XCHAR wide[] = u"\5Länge";
    const Copied<XLOPER> to_narrow(TextRecord<XLOPER12>(wide));
    EXPECT_EQ(TextOf(to_narrow.record), "L\xE4nge");
}

TEST(RecordCrossing, an_empty_or_null_narrow_text_becomes_a_wide_one_of_length_0) {
    char empty[] = "\0";
    for (char* text : {empty, static_cast<char*>(nullptr)}) {
        const Copied<XLOPER12> copy(TextRecord<XLOPER>(text));
        EXPECT_TRUE(copy.success);
        EXPECT_TRUE(copy.allocated);
        EXPECT_EQ(copy.record.xltype, 2u);
        ASSERT_NE(copy.record.val.str, nullptr);
        EXPECT_EQ(copy.record.val.str[0], 0);
    }
}

TEST(RecordCrossing, a_wide_text_of_255_units_becomes_narrow_in_full) {
    std::u16string text(256, u'x');
    text[0] = 255;
    const Copied<XLOPER> copy(TextRecord<XLOPER12>(text.data()));
    EXPECT_TRUE(copy.success);
    EXPECT_EQ(TextOf(copy.record), std::string(255, 'x'));
}

TEST(RecordCrossing, a_wide_text_of_256_units_does_not_become_narrow) {
    std::u16string text(257, u'x');
    text[0] = 256;
    const Copied<XLOPER> copy(TextRecord<XLOPER12>(text.data()));
    EXPECT_FALSE(copy.success);
    EXPECT_FALSE(copy.allocated);
}

TEST(RecordCrossing, an_array_beyond_65536_rows_or_256_columns_does_not_become_narrow) {
    std::vector<XLOPER12> cells(65537, NumberRecord<XLOPER12>(1.0));
    EXPECT_TRUE(Copied<XLOPER>(ArrayRecord(cells.data(), 65536, 1)).success);
    EXPECT_FALSE(Copied<XLOPER>(ArrayRecord(cells.data(), 65537, 1)).success);
    EXPECT_TRUE(Copied<XLOPER>(ArrayRecord(cells.data(), 1, 256)).success);
    EXPECT_FALSE(Copied<XLOPER>(ArrayRecord(cells.data(), 1, 257)).success);
}

TEST(RecordCrossing, a_rectangle_beyond_row_65535_or_column_255_does_not_become_narrow) {
    for (const XLREF12& rectangle : {XLREF12{0, 65536, 0, 0}, XLREF12{65536, 65536, 0, 0},
                                     XLREF12{0, 0, 0, 256}, XLREF12{0, 0, 256, 256}}) {
        XLMREF12 list{1, {rectangle}};
        EXPECT_FALSE(Copied<XLOPER>(ReferenceRecord<XLOPER12>(list)).success);
        EXPECT_FALSE(Copied<XLOPER>(SingleReferenceRecord<XLOPER12>(rectangle)).success);
    }
}

TEST(RecordCrossing, a_later_rectangle_counts_as_well) {
    TwoRectangles12 rectangles{{2, {{0, 0, 0, 0}}}, {0, 65536, 0, 0}};
    EXPECT_FALSE(Copied<XLOPER>(ReferenceRecord<XLOPER12>(rectangles.list)).success);
}

// ---- Release of records

TEST(RecordRelease, zeroes_value_and_type) {
    XLOPER12 text{};
    MakeText(text, u"abc");
    DeepFree(text);
    EXPECT_EQ(text.xltype, 0u);
    EXPECT_EQ(text.val.str, nullptr);
    auto number = NumberRecord<XLOPER>(2.5);
    DeepFree(number);
    EXPECT_EQ(number.xltype, 0u);
    EXPECT_EQ(number.val.num, 0.0);
}

} // namespace

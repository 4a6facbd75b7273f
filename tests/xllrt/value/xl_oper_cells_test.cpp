// Values as arrays: making, filling and cells.

#include "oper_fixture.h"
#include "xllrt/value/record_cells.h"

namespace {

using namespace metrify;

const std::string kOutOfRange = expected_texts[30];
const std::string kIllegalArgument = expected_texts[31];
const std::string kBadType = expected_texts[32];
const std::string kTooLong = expected_texts[37];
const std::string kNotScalar = expected_texts[41];

class OperCells : public OperTest {};

// ---- Making

TEST_F(OperCells, an_array_is_in_the_family_of_the_host) {
    CXlOper array;
    EXPECT_TRUE(array.MakeArray(2, 3));
    EXPECT_EQ(array.State(), 80);
    EXPECT_TRUE(array.IsType(xltypeMulti));
    EXPECT_EQ(array.Record12()->val.array.rows, 2);
    EXPECT_EQ(array.Record12()->val.array.columns, 3);
    HostIsNarrow();
    EXPECT_TRUE(array.MakeArray(2, 3));
    EXPECT_EQ(array.State(), 5);
    EXPECT_EQ(array.Record4()->val.array.rows, 2);
    EXPECT_EQ(array.Record4()->val.array.columns, 3);
    EXPECT_EQ(array.Record12()->xltype, 0u);
}

TEST_F(OperCells, making_an_array_releases_the_old_content) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    CXlOper array;
    array.TakeFromHost(TextRecord<XLOPER12>(text));
    EXPECT_TRUE(array.MakeArray(1, 1));
    EXPECT_EQ(ReleaseNotes::lines, std::vector<std::string>{"12 xlFree \"abc\""});
}

TEST_F(OperCells, a_narrow_array_has_at_most_65536_rows) {
    HostIsNarrow();
    CXlOper array;
    EXPECT_TRUE(array.MakeArray(65536, 1));
    EXPECT_EQ(array.Dimensions(), (XlSize{65536, 1}));
    EXPECT_FALSE(array.MakeArray(65537, 1));
    EXPECT_EQ(array.State(), 0);
    EXPECT_EQ(array.Record4()->xltype, 0u);
}

TEST_F(OperCells, a_narrow_array_has_at_most_256_columns) {
    HostIsNarrow();
    CXlOper array;
    EXPECT_TRUE(array.MakeArray(1, 256));
    EXPECT_EQ(array.Dimensions(), (XlSize{1, 256}));
    EXPECT_FALSE(array.MakeArray(1, 257));
    EXPECT_EQ(array.State(), 0);
}

TEST_F(OperCells, a_wide_array_may_have_65537_rows) {
    CXlOper array;
    EXPECT_TRUE(array.MakeArray(65537, 1));
    EXPECT_EQ(array.Dimensions(), (XlSize{65537, 1}));
}

TEST_F(OperCells, a_wide_array_has_at_most_1048576_rows) {
    CXlOper array;
    EXPECT_TRUE(array.MakeArray(1048576, 1));
    EXPECT_EQ(array.Dimensions(), (XlSize{1048576, 1}));
    EXPECT_FALSE(array.MakeArray(1048577, 1));
    EXPECT_EQ(array.State(), 0);
}

TEST_F(OperCells, a_narrow_array_cannot_have_1048577_rows) {
    HostIsNarrow();
    CXlOper array;
    EXPECT_FALSE(array.MakeArray(1048577, 1));
    EXPECT_EQ(array.State(), 0);
}

TEST_F(OperCells, a_wide_array_has_at_most_16384_columns) {
    CXlOper array;
    EXPECT_TRUE(array.MakeArray(1, 16384));
    EXPECT_EQ(array.Dimensions(), (XlSize{1, 16384}));
    EXPECT_FALSE(array.MakeArray(1, 16385));
    EXPECT_EQ(array.State(), 0);
}

// ---- Filling

TEST_F(OperCells, an_array_may_be_made_of_copies_of_a_value) {
    CXlOper array;
    const CXlOper fill(2.5);
    EXPECT_TRUE(array.MakeArray(2, 2, &fill));
    EXPECT_EQ(Rendered(*array.Record12()), "{2.5,2.5,2.5,2.5}");
}

TEST_F(OperCells, each_cell_owns_its_copy_of_a_text) {
    CXlOper array;
    CXlOper fill;
    fill.SetText("abc");
    EXPECT_TRUE(array.MakeArray(1, 2, &fill));
    EXPECT_EQ(Rendered(*array.Record12()), "{\"abc\",\"abc\"}");
    const XCHAR* first = array.Cell(0, 0)->Record12()->val.str;
    const XCHAR* second = array.Cell(0, 1)->Record12()->val.str;
    EXPECT_NE(first, second);
    EXPECT_NE(first, fill.Record12()->val.str);
    EXPECT_NE(second, fill.Record12()->val.str);
}

TEST_F(OperCells, all_scalars_fill_an_array) {
    CXlOper array;
    array.MakeArray(1, 2);
    CXlOper fill(true);
    array.Fill(&fill);
    EXPECT_EQ(Rendered(*array.Record12()), "{TRUE,TRUE}");
    fill.SetInt(-4);
    array.Fill(&fill);
    EXPECT_EQ(Rendered(*array.Record12()), "{-4i,-4i}");
    fill.SetError(xlerrNum);
    array.Fill(&fill);
    EXPECT_EQ(Rendered(*array.Record12()), "{#36,#36}");
    const auto nil = PlainRecord<XLOPER12>(xltypeNil);
    fill = CXlOper::Wrap12(&nil);
    array.Fill(&fill);
    EXPECT_EQ(Rendered(*array.Record12()), "{nil,nil}");
}

TEST_F(OperCells, only_an_array_can_be_filled) {
    const CXlOper fill(1.0);
    CXlOper number(2.5);
    EXPECT_EQ(MessageOf<CXlIllegalArgumentException>([&] { number.Fill(&fill); }), kIllegalArgument);
    EXPECT_EQ(number.State(), 64);
    EXPECT_EQ(Rendered(*number.Record12()), "2.5");
    EXPECT_EQ(MessageOf<CXlIllegalArgumentException>([&] { number.Fill(nullptr); }), kIllegalArgument);
}

TEST_F(OperCells, a_null_source_does_not_fill) {
    CXlOper array;
    const CXlOper fill(1.0);
    array.MakeArray(1, 2, &fill);
    array.Fill(nullptr);
    EXPECT_EQ(Rendered(*array.Record12()), "{1,1}");
}

TEST_F(OperCells, only_a_scalar_fills_an_array) {
    CXlOper array;
    const CXlOper fill(1.0);
    array.MakeArray(1, 2, &fill);
    CXlOper source;
    source.MakeArray(1, 1);
    EXPECT_EQ(MessageOf<CXlIllegalArgumentException>([&] { array.Fill(&source); }), kNotScalar);
    source.SetMissing();
    EXPECT_EQ(MessageOf<CXlIllegalArgumentException>([&] { array.Fill(&source); }), kNotScalar);
    const auto reference = SingleReferenceRecord<XLOPER12>({0, 0, 0, 0});
    source = CXlOper::Wrap12(&reference);
    EXPECT_EQ(MessageOf<CXlIllegalArgumentException>([&] { array.Fill(&source); }), kNotScalar);
    EXPECT_EQ(Rendered(*array.Record12()), "{1,1}");
    EXPECT_EQ(array.State(), 80);
}

TEST_F(OperCells, a_text_too_long_for_the_narrow_family_does_not_fill) {
    CXlOper text;
    text.SetText(std::u16string(256, u'x'));
    HostIsNarrow();
    CXlOper array;
    EXPECT_EQ(MessageOf<CXlStringTooLongException>([&] { array.MakeArray(1, 2, &text); }), kTooLong);
    EXPECT_TRUE(array.IsType(xltypeMulti));
    array.MakeArray(1, 2);
    EXPECT_EQ(MessageOf<CXlStringTooLongException>([&] { array.Fill(&text); }), kTooLong);
    EXPECT_TRUE(array.IsType(xltypeMulti));
}

// ---- Cells

TEST_F(OperCells, a_view_of_a_cell_is_in_the_array_at_row_times_columns_plus_column) {
    CXlOper array;
    array.MakeArray(2, 3);
    EXPECT_EQ(array.Cell(1, 2)->Record12(), array.Record12()->val.array.lparray + 5);
    EXPECT_EQ(array.Cell(1, 2)->State(), 80);
    HostIsNarrow();
    array.MakeArray(2, 3);
    EXPECT_EQ(array.Cell(1, 0)->Record4(), array.Record4()->val.array.lparray + 3);
    EXPECT_EQ(array.Cell(1, 0)->State(), 5);
}

TEST_F(OperCells, the_cells_of_a_constant_value_are_those_of_its_record) {
    CXlOper row;
    row.MakeArray(1, 3);
    const CXlOper& constant = row;
    EXPECT_EQ(constant.Cell(0, 2)->Record12(), row.Record12()->val.array.lparray + 2);
    EXPECT_EQ(constant.VectorCell(1)->Record12(), row.Record12()->val.array.lparray + 1);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { constant.Cell(1, 0); }), kOutOfRange);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { constant.VectorCell(3); }), kOutOfRange);
}

TEST_F(OperCells, what_is_set_in_a_cell_stays_in_the_array) {
    CXlOper array;
    array.MakeArray(1, 4);
    array.Cell(0, 0)->SetText("abc", false);
    array.Cell(0, 1)->SetNumber(2.5, false);
    CXlOper source;
    source.SetText("def");
    array.Cell(0, 2)->CopyFrom(source);
    array.Cell(0, 3)->SetError(xlerrNA);
    EXPECT_EQ(Rendered(*array.Record12()), "{\"abc\",2.5,\"def\",#42}");
    EXPECT_EQ(array.State(), 80);
}

TEST_F(OperCells, a_cell_of_a_narrow_array_is_set_in_the_same_way) {
    HostIsNarrow();
    CXlOper array;
    array.MakeArray(1, 2);
    array.Cell(0, 0)->SetText(u"abc", false);
    array.Cell(0, 1)->SetInt(-3, false);
    EXPECT_EQ(Rendered(*array.Record4()), "{\"abc\",-3i}");
}

TEST_F(OperCells, a_cell_that_is_set_again_releases_its_old_content) {
    CXlOper array;
    array.MakeArray(1, 1);
    array.Cell(0, 0)->SetText("abc");
    array.Cell(0, 0)->SetText("def");
    EXPECT_EQ(Rendered(*array.Record12()), "{\"def\"}");
    array.Cell(0, 0)->SetBool(0);
    EXPECT_EQ(Rendered(*array.Record12()), "{FALSE}");
}

TEST_F(OperCells, a_scalar_is_its_own_cell_at_0_0) {
    CXlOper value(2.5);
    EXPECT_EQ(value.Cell(0, 0)->ToNumber(), 2.5);
    EXPECT_EQ(value.Cell(0, 0)->Record12(), value.Record12());
    value.SetBool(1);
    EXPECT_EQ(Rendered(*value.Cell(0, 0)->Record12()), "TRUE");
    value.SetInt(4);
    EXPECT_EQ(Rendered(*value.Cell(0, 0)->Record12()), "4i");
    value.SetText("abc");
    EXPECT_EQ(Rendered(*value.Cell(0, 0)->Record12()), "\"abc\"");
}

TEST_F(OperCells, a_scalar_has_no_other_cell) {
    CXlOper value(2.5);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { value.Cell(0, 1); }), kOutOfRange);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { value.Cell(1, 0); }), kOutOfRange);
    EXPECT_EQ(value.State(), 64);
    EXPECT_EQ(value.ToNumber(), 2.5);
}

TEST_F(OperCells, no_value_has_no_cell) {
    CXlOper value;
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { value.Cell(0, 0); }), kOutOfRange);
}

TEST_F(OperCells, outside_an_array_there_is_no_cell) {
    CXlOper array;
    array.MakeArray(2, 3);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { array.Cell(2, 0); }), kOutOfRange);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { array.Cell(0, 3); }), kOutOfRange);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { array.Cell(-1, 0); }), kOutOfRange);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { array.Cell(0, -1); }), kOutOfRange);
    EXPECT_EQ(array.State(), 80);
}

TEST_F(OperCells, an_index_beyond_the_family_is_out_of_range) {
    CXlOper value;
    value.SetError(xlerrNA);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { value.Cell(1048576, 0); }), kOutOfRange);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { value.Cell(0, 16384); }), kOutOfRange);
    HostIsNarrow();
    value.SetError(xlerrNA);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { value.Cell(65536, 0); }), kOutOfRange);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { value.Cell(0, 256); }), kOutOfRange);
}

TEST_F(OperCells, a_value_of_another_type_has_no_cells) {
    CXlOper value;
    value.SetError(xlerrNA);
    EXPECT_EQ(MessageOf<CXlBadOperTypeException>([&] { value.Cell(0, 0); }), kBadType);
    EXPECT_EQ(value.State(), 64);
    EXPECT_TRUE(value.IsError());
    value.SetMissing();
    EXPECT_EQ(MessageOf<CXlBadOperTypeException>([&] { value.Cell(0, 0); }), kBadType);
    for (const std::uint16_t type : {xltypeNil, xltypeRef, xltypeSRef, xltypeBigData}) {
        const auto record = PlainRecord<XLOPER12>(type);
        CXlOper other = CXlOper::Wrap12(&record);
        EXPECT_EQ(MessageOf<CXlBadOperTypeException>([&] { other.Cell(0, 0); }), kBadType) << type;
    }
}

TEST_F(OperCells, a_null_record_has_no_cells) {
    EXPECT_EQ(MessageOf<CXlIllegalArgumentException>([] { CellOf(static_cast<XLOPER12*>(nullptr), 0, 0); }),
              kIllegalArgument);
    EXPECT_EQ(MessageOf<CXlIllegalArgumentException>([] { CellOf(static_cast<XLOPER*>(nullptr), 0, 0); }),
              kIllegalArgument);
}

TEST_F(OperCells, one_row_is_indexed_by_its_columns) {
    CXlOper array;
    array.MakeArray(1, 3);
    EXPECT_EQ(array.VectorCell(2)->Record12(), array.Record12()->val.array.lparray + 2);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { array.VectorCell(3); }), kOutOfRange);
}

TEST_F(OperCells, one_column_is_indexed_by_its_rows) {
    CXlOper array;
    array.MakeArray(3, 1);
    EXPECT_EQ(array.VectorCell(2)->Record12(), array.Record12()->val.array.lparray + 2);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { array.VectorCell(3); }), kOutOfRange);
}

TEST_F(OperCells, a_scalar_is_a_vector_of_one) {
    CXlOper value(2.5);
    EXPECT_EQ(value.VectorCell(0)->ToNumber(), 2.5);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { value.VectorCell(1); }), kOutOfRange);
}

TEST_F(OperCells, a_matrix_has_no_single_index) {
    CXlOper array;
    array.MakeArray(2, 2);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { array.VectorCell(0); }), kOutOfRange);
    CXlOper error;
    error.SetError(xlerrNA);
    EXPECT_EQ(MessageOf<CXlOutOfRangeException>([&] { error.VectorCell(0); }), kOutOfRange)
        << "nor has a value without dimensions";
}

} // namespace

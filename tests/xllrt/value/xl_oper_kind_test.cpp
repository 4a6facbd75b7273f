// The types and the dimensions of values.

#include "oper_fixture.h"

#include <type_traits>

namespace {

using namespace metrify;

class OperKind : public OperTest {};

// ---- Types

TEST_F(OperKind, memory_marks_do_not_change_the_type) {
    for (const unsigned mark : {0x1000u, 0x4000u}) {
        auto error = PlainRecord<XLOPER12>(xltypeErr);
        error.xltype |= mark;
        EXPECT_TRUE(CXlOper::Wrap12(&error).IsError());
        EXPECT_TRUE(CXlOper::Wrap12(&error).IsType(16));
        auto narrow = PlainRecord<XLOPER>(xltypeErr);
        narrow.xltype = static_cast<std::uint16_t>(narrow.xltype | mark);
        EXPECT_TRUE(CXlOper::Wrap4(&narrow).IsError());
    }
}

template <class Record>
std::string KindsOf(std::uint16_t type) {
    const auto record = PlainRecord<Record>(type);
    CXlOper value;
    if constexpr (std::is_same_v<Record, XLOPER12>)
        value.CopyFrom(CXlOper::Wrap12(&record));
    else
        value.CopyFrom(CXlOper::Wrap4(&record));
    std::string kinds;
    kinds += value.IsError() ? "error " : "";
    kinds += value.IsNil() ? "nil " : "";
    kinds += value.IsString() ? "text " : "";
    kinds += value.IsRef() ? "ref " : "";
    kinds += value.IsSRef() ? "sref " : "";
    kinds += value.IsRefOrSRef() ? "any-ref " : "";
    return kinds;
}

template <class Record>
void ExpectKinds() {
    EXPECT_EQ(KindsOf<Record>(xltypeNum), "");
    EXPECT_EQ(KindsOf<Record>(xltypeStr), "text ");
    EXPECT_EQ(KindsOf<Record>(xltypeBool), "");
    EXPECT_EQ(KindsOf<Record>(xltypeRef), "ref any-ref ");
    EXPECT_EQ(KindsOf<Record>(xltypeErr), "error ");
    EXPECT_EQ(KindsOf<Record>(xltypeMissing), "");
    EXPECT_EQ(KindsOf<Record>(xltypeNil), "nil ");
    EXPECT_EQ(KindsOf<Record>(xltypeSRef), "sref any-ref ");
    EXPECT_EQ(KindsOf<Record>(xltypeInt), "");
    EXPECT_EQ(KindsOf<Record>(xltypeBigData), "") << "neither text nor integer";
}

TEST_F(OperKind, the_tests_distinguish_the_types) {
    ExpectKinds<XLOPER12>();
    ExpectKinds<XLOPER>();
}

TEST_F(OperKind, with_two_valid_records_the_wide_one_is_tested) {
    CXlOper value(2.5);
    const auto narrow = ErrorRecord<XLOPER>(xlerrNA);
    value.CopyFrom(CXlOper::Wrap4(&narrow));
    ASSERT_EQ(value.State(), 68);
    EXPECT_FALSE(value.IsError());
    EXPECT_TRUE(value.IsType(xltypeNum));
}

// ---- Dimensions

TEST_F(OperKind, scalars_are_1_by_1) {
    CXlOper value(2.5);
    EXPECT_EQ(value.Dimensions(), (XlSize{1, 1}));
    value.SetText("abc");
    EXPECT_EQ(value.Dimensions(), (XlSize{1, 1}));
    value.SetBool(1);
    EXPECT_EQ(value.Dimensions(), (XlSize{1, 1}));
    value.SetInt(4);
    EXPECT_EQ(value.Dimensions(), (XlSize{1, 1}));
}

TEST_F(OperKind, arrays_are_rows_by_columns) {
    CXlOper array;
    array.MakeArray(2, 3);
    EXPECT_EQ(array.Dimensions(), (XlSize{2, 3}));
    EXPECT_EQ(array.RefDimensions(true), (XlSize{2, 3}));
    EXPECT_EQ(array.RefDimensions(false), (XlSize{2, 3}));
}

TEST_F(OperKind, everything_else_is_0_by_0) {
    EXPECT_EQ(CXlOper().Dimensions(), (XlSize{0, 0}));
    CXlOper value;
    value.SetError(xlerrNA);
    EXPECT_EQ(value.Dimensions(), (XlSize{0, 0}));
    EXPECT_EQ(value.RefDimensions(false), (XlSize{0, 0}));
    value.SetMissing();
    EXPECT_EQ(value.Dimensions(), (XlSize{0, 0}));
    const auto reference = SingleReferenceRecord<XLOPER12>({0, 2, 0, 1});
    EXPECT_EQ(CXlOper::Wrap12(&reference).Dimensions(), (XlSize{0, 0}));
}

TEST_F(OperKind, a_single_reference_is_last_minus_first_plus_1) {
    const auto wide = SingleReferenceRecord<XLOPER12>({4, 9, 2, 3});
    EXPECT_EQ(CXlOper::Wrap12(&wide).RefDimensions(false), (XlSize{6, 2}));
    EXPECT_EQ(CXlOper::Wrap12(&wide).RefDimensions(true), (XlSize{6, 2}));
    const auto narrow = SingleReferenceRecord<XLOPER>({0, 65535, 0, 255});
    EXPECT_EQ(CXlOper::Wrap4(&narrow).RefDimensions(false), (XlSize{65536, 256}));
}

TEST_F(OperKind, a_reference_has_the_dimensions_of_its_first_rectangle) {
    TwoRectangles12 wide{{2, {{0, 2, 0, 4}}}, {0, 99, 0, 99}};
    const auto record12 = ReferenceRecord<XLOPER12>(wide.list);
    EXPECT_EQ(CXlOper::Wrap12(&record12).RefDimensions(false), (XlSize{3, 5}));
    TwoRectangles4 narrow{{2, {{0, 2, 0, 4}}}, {0, 99, 0, 99}};
    const auto record4 = ReferenceRecord<XLOPER>(narrow.list);
    EXPECT_EQ(CXlOper::Wrap4(&record4).RefDimensions(true), (XlSize{3, 5}));
}

TEST_F(OperKind, a_reference_without_rectangle_is_0_by_0) {
    XLMREF12 list{0, {{0, 2, 0, 4}}};
    const auto record = ReferenceRecord<XLOPER12>(list);
    EXPECT_EQ(CXlOper::Wrap12(&record).RefDimensions(false), (XlSize{0, 0}));
    EXPECT_EQ(CXlOper::Wrap12(&record).RefDimensions(true), (XlSize{0, 0}));
}

TEST_F(OperKind, scalars_count_among_references_unless_they_are_excluded) {
    const CXlOper value(2.5);
    EXPECT_EQ(value.RefDimensions(false), (XlSize{1, 1}));
    EXPECT_EQ(value.RefDimensions(true), (XlSize{0, 0}));
}

TEST_F(OperKind, scalars_and_arrays_of_one_row_or_column_are_vectors) {
    CXlOper value(2.5);
    EXPECT_TRUE(value.IsVector());
    value.SetText("abc");
    EXPECT_TRUE(value.IsVector());
    value.SetBool(1);
    EXPECT_TRUE(value.IsVector());
    value.SetInt(1);
    EXPECT_TRUE(value.IsVector());
    value.MakeArray(1, 3);
    EXPECT_TRUE(value.IsVector());
    value.MakeArray(3, 1);
    EXPECT_TRUE(value.IsVector());
}

TEST_F(OperKind, nothing_else_is_a_vector) {
    CXlOper value;
    EXPECT_FALSE(value.IsVector());
    value.MakeArray(2, 2);
    EXPECT_FALSE(value.IsVector());
    value.SetError(xlerrNA);
    EXPECT_FALSE(value.IsVector());
    value.SetMissing();
    EXPECT_FALSE(value.IsVector());
    const auto reference = SingleReferenceRecord<XLOPER12>({0, 0, 0, 2});
    EXPECT_FALSE(CXlOper::Wrap12(&reference).IsVector());
}

} // namespace

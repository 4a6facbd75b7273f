// What is released, when and by whom, if a value with content is set, copied onto or emptied.

#include "oper_fixture.h"
#include "tests/allocations.h"
#include "xllrt/app/xll_exports.h"
#include "xllrt/value/record_memory.h"

#include <cstdarg>

namespace {

using namespace metrify;

class OperRelease : public OperTest {
  protected:
    static CXlOper Text(const char* text) {
        CXlOper value;
        value.SetText(text);
        return value;
    }
};

// ---- Copies onto content

TEST_F(OperRelease, a_copy_onto_owned_content_releases_it) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper value = Text("old");
        value.CopyFrom(Text("new"));
        EXPECT_EQ(value.State(), 80);
        EXPECT_EQ(Rendered(*value.Record12()), "\"new\"");
        value.CopyFrom(CXlOper(2.5));
        EXPECT_EQ(value.State(), 64) << "a number is not owned";
        EXPECT_EQ(Rendered(*value.Record12()), "2.5");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperRelease, a_copy_onto_an_owned_array_releases_its_texts) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        const CXlOper fill = Text("abc");
        array.MakeArray(2, 2, &fill);
        array.CopyFrom(CXlOper(2.5));
        EXPECT_EQ(Rendered(*array.Record12()), "2.5");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperRelease, a_copy_onto_what_the_host_filled_returns_it_to_the_host) {
    const ReleaseNotes host;
    XCHAR wide[] = u"\3abc";
    char narrow[] = "\3def";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(wide));
    value.CopyFrom(Text("new"));
    EXPECT_EQ(value.State(), 80) << "no longer owned by the host";
    value.TakeFromHost(TextRecord<XLOPER>(narrow));
    const auto number = NumberRecord<XLOPER>(2.5);
    value.CopyFrom(CXlOper::Wrap4(&number));
    EXPECT_EQ(value.State(), 4);
    const std::vector<std::string> expected{"12 xlFree \"abc\"", "4 xlFree \"def\""};
    EXPECT_EQ(ReleaseNotes::lines, expected);
}

TEST_F(OperRelease, a_copy_of_one_record_keeps_the_other_one) {
    CXlOper value = Text("wide");
    const auto number = NumberRecord<XLOPER>(2.5);
    value.CopyFrom(CXlOper::Wrap4(&number));
    EXPECT_EQ(value.State(), 80 + 4);
    EXPECT_EQ(Rendered(*value.Record12()), "\"wide\"");
}

TEST_F(OperRelease, a_copy_that_fails_keeps_the_content_and_the_state) {
    const ReleaseNotes host;
    const auto flow = PlainRecord<XLOPER12>(xltypeFlow);
    const CXlOper source = CXlOper::Wrap12(&flow);
    CXlOper own = Text("abc");
    own.CopyFrom(source);
    EXPECT_EQ(own.State(), 80);
    EXPECT_EQ(Rendered(*own.Record12()), "\"abc\"");
    XCHAR text[] = u"\3abc";
    CXlOper filled;
    filled.TakeFromHost(TextRecord<XLOPER12>(text));
    filled.CopyFrom(source);
    EXPECT_EQ(filled.State(), 96);
    EXPECT_TRUE(ReleaseNotes::lines.empty());
}

TEST_F(OperRelease, an_assignment_that_fails_leaves_no_value) {
    const auto flow = PlainRecord<XLOPER12>(xltypeFlow);
    CXlOper own = Text("abc");
    own = CXlOper::Wrap12(&flow);
    EXPECT_EQ(own.State(), 0);
    EXPECT_EQ(own.Record12()->xltype, 0u);
}

TEST_F(OperRelease, after_a_copy_that_failed_another_one_succeeds) {
    const auto flow = PlainRecord<XLOPER12>(xltypeFlow);
    CXlOper value;
    value.CopyFrom(CXlOper::Wrap12(&flow));
    value.CopyFrom(Text("abc"));
    EXPECT_EQ(value.State(), 80);
    EXPECT_EQ(Rendered(*value.Record12()), "\"abc\"");
}

TEST_F(OperRelease, a_record_that_cannot_be_copied_does_not_prevent_the_copy_of_the_other) {
    const auto narrow_flow = PlainRecord<XLOPER>(xltypeFlow);
    CXlOper source = CXlOper::Wrap4(&narrow_flow);
    source.CopyFrom(Text("abc"));
    ASSERT_EQ(source.State(), 80 + 4);
    CXlOper copy;
    copy.CopyFrom(source);
    EXPECT_EQ(copy.State(), 80);
    EXPECT_EQ(Rendered(*copy.Record12()), "\"abc\"");
}

TEST_F(OperRelease, a_cell_that_the_host_fills_gets_a_copy_and_the_host_its_record_back) {
    const ReleaseNotes host;
    {
        XCHAR wide[] = u"\3abc";
        char narrow[] = "\3def";
        CXlOper array;
        array.MakeArray(1, 2);
        array.Cell(0, 0)->TakeFromHost(TextRecord<XLOPER12>(wide));
        EXPECT_EQ(TextOf(*array.Cell(0, 0)->Record12()), u"abc");
        EXPECT_NE(array.Cell(0, 0)->Record12()->val.str, wide);
        array.Cell(0, 0)->TakeFromHost(TextRecord<XLOPER>(narrow));
        EXPECT_EQ(array.Cell(0, 0)->Record12()->xltype, 0u) << "a wide array has no narrow cells";
    }
    const std::vector<std::string> expected{"12 xlFree \"abc\"", "4 xlFree \"def\""};
    EXPECT_EQ(ReleaseNotes::lines, expected);
}

// ---- Texts

TEST_F(OperRelease, a_text_that_does_not_free_first_overwrites_the_old_content) {
    const ReleaseNotes host;
    XCHAR wide[] = u"\3abc";
    char narrow[] = "\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(wide));
    value.SetText("def", false);
    EXPECT_EQ(value.State(), 80);
    EXPECT_EQ(Rendered(*value.Record12()), "\"def\"");
    HostIsNarrow();
    value.Free();
    value.TakeFromHost(TextRecord<XLOPER>(narrow));
    value.SetText(u"def", false);
    EXPECT_EQ(value.State(), 5);
    EXPECT_EQ(Rendered(*value.Record4()), "\"def\"");
    EXPECT_TRUE(ReleaseNotes::lines.empty());
}

TEST_F(OperRelease, every_form_of_a_text_takes_the_flag) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    const auto overwrites = [&](auto set) {
        CXlOper value;
        value.TakeFromHost(TextRecord<XLOPER12>(text));
        set(value, false);
        EXPECT_TRUE(ReleaseNotes::lines.empty());
        value.TakeFromHost(TextRecord<XLOPER12>(text));
        ReleaseNotes::lines.clear();
        set(value, true);
        EXPECT_EQ(ReleaseNotes::lines.size(), 1u);
        ReleaseNotes::lines.clear();
    };
    overwrites([](CXlOper& value, bool first) { value.SetText("def", first); });
    overwrites([](CXlOper& value, bool first) { value.SetText(u"def", first); });
    overwrites([](CXlOper& value, bool first) { value.SetText(std::string_view("def"), first); });
    overwrites([](CXlOper& value, bool first) { value.SetText(std::u16string_view(u"def"), first); });
    overwrites([](CXlOper& value, bool first) { value.SetBool(1, first); });
    overwrites([](CXlOper& value, bool first) { value.SetNumber(2.5, first); });
    overwrites([](CXlOper& value, bool first) { value.SetInt(4, first); });
    overwrites([](CXlOper& value, bool first) { value.SetError(7, first); });
    overwrites([](CXlOper& value, bool first) { value.SetMissing(first); });
}

TEST_F(OperRelease, a_text_frees_first_by_default) {
    const ReleaseNotes host;
    XCHAR text[] = u"\3abc";
    CXlOper value;
    value.TakeFromHost(TextRecord<XLOPER12>(text));
    value.SetText("def");
    EXPECT_EQ(ReleaseNotes::lines, std::vector<std::string>{"12 xlFree \"abc\""});
}

// ---- Filling

TEST_F(OperRelease, filling_an_array_releases_its_old_texts) {
    const std::ptrdiff_t before = test::live_blocks();
    {
        CXlOper array;
        const CXlOper old = Text("old");
        array.MakeArray(2, 2, &old);
        const CXlOper text = Text("new");
        array.Fill(&text);
        EXPECT_EQ(Rendered(*array.Record12()), "{\"new\",\"new\",\"new\",\"new\"}");
        const CXlOper number(2.5);
        array.Fill(&number);
        EXPECT_EQ(Rendered(*array.Record12()), "{2.5,2.5,2.5,2.5}");
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperRelease, filling_a_wrapped_array_does_not_release_the_texts_of_the_host) {
    XCHAR text[] = u"\3abc";
    XLOPER12 cell = TextRecord<XLOPER12>(text);
    const auto record = ArrayRecord(&cell, 1, 1);
    CXlOper array = CXlOper::Wrap12(&record);
    const CXlOper number(2.5);
    array.Fill(&number);
    EXPECT_EQ(Rendered(cell), "2.5");
    EXPECT_EQ(text[0], 3);
}

// ---- The order of Free

// The value at the time when its record was returned to the host.
struct AtRelease {
    CXlOper* value;
    std::vector<std::string> lines;
};
AtRelease* at_release = nullptr;

void NoteRelease(const char* family) {
    const CXlOper& value = *at_release->value;
    at_release->lines.push_back(family + std::to_string(value.Record4()->xltype) + "," +
                                std::to_string(value.Record12()->xltype) + "," +
                                std::to_string(value.State()));
}

int NoteRelease4(int /*function*/, XLOPER* /*result*/, int /*count*/, ...) {
    NoteRelease("4: ");
    return xlretSuccess;
}

int METRIFY_HOST_CALL NoteRelease12(int, int, XLOPER12**, XLOPER12*) {
    NoteRelease("12: ");
    return xlretSuccess;
}

Excel12Entry FindNoteRelease12() {
    return NoteRelease12;
}

TEST_F(OperRelease, the_narrow_record_is_released_first_then_the_wide_one_then_the_state) {
    ConnectHost({.excel4 = NoteRelease4, .find_entry = FindNoteRelease12});
    SetHostVersion(12);
    CXlOper value;
    AtRelease release{&value, {}};
    at_release = &release;
    char narrow[] = "\3abc";
    value.TakeFromHost(TextRecord<XLOPER>(narrow));
    value.CopyFrom(Text("def"));
    value.Free();
    XCHAR wide[] = u"\3abc";
    value.TakeFromHost(TextRecord<XLOPER12>(wide));
    const auto number = NumberRecord<XLOPER>(2.5);
    value.CopyFrom(CXlOper::Wrap4(&number));
    value.Free();
    const std::vector<std::string> expected{"4: 2,2,86", "12: 0,2,100"};
    EXPECT_EQ(release.lines, expected);
    at_release = nullptr;
}

// ---- Records that the host has released

TEST_F(OperRelease, a_text_is_released_with_its_mark_or_without) {
    const std::ptrdiff_t before = test::live_blocks();
    for (const unsigned mark : {0u, 0x4000u, 0x1000u}) {
        XLOPER narrow{};
        MakeText(narrow, "abc");
        narrow.xltype = static_cast<std::uint16_t>(narrow.xltype | mark);
        xlAutoFree(&narrow);
        EXPECT_EQ(narrow.xltype, 0u) << mark;
        EXPECT_EQ(narrow.val.str, nullptr);
        XLOPER12 wide{};
        MakeText(wide, "abc");
        wide.xltype |= mark;
        xlAutoFree12(&wide);
        EXPECT_EQ(wide.xltype, 0u) << mark;
        EXPECT_EQ(wide.val.str, nullptr);
    }
    EXPECT_EQ(test::live_blocks(), before);
}

TEST_F(OperRelease, an_array_is_released_without_a_mark_as_well) {
    const std::ptrdiff_t before = test::live_blocks();
    XLOPER narrow{};
    MakeCells(narrow, {1, 2});
    MakeText(narrow.val.array.lparray[1], "abc");
    xlAutoFree(&narrow);
    EXPECT_EQ(narrow.xltype, 0u);
    XLOPER12 wide{};
    MakeCells(wide, {1, 2});
    MakeText(wide.val.array.lparray[1], "abc");
    xlAutoFree12(&wide);
    EXPECT_EQ(wide.xltype, 0u);
    EXPECT_EQ(test::live_blocks(), before);
}

} // namespace

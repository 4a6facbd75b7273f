#include "addin/worksheet_function.h"
#include "tests/xllrt/app/add_in_fixture.h"
#include "xllrt/app/xll_exports.h"
#include "xllrt/text/code_page.h"

#include <gmock/gmock.h>
#include <limits>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class WorksheetFunction : public AddInTest {
  protected:
    // The result of the export, released as by a host.
    std::string Wide(double val, const XCHAR* in_units, const XCHAR* out_units) {
        SetHostVersion(14);
        XLOPER12* record = Metrify_12(val, in_units, out_units);
        std::string text = Rendered(*record);
        if ((record->xltype & xlbitDLLFree) != 0)
            xlAutoFree12(record);
        return text;
    }
    std::string Narrow(double val, const char* in_units, const char* out_units) {
        SetHostVersion(11);
        XLOPER* record = Metrify_4(val, in_units, out_units);
        std::string text = Rendered(*record);
        if ((record->xltype & xlbitDLLFree) != 0)
            xlAutoFree(record);
        return text;
    }
    // The result, which must be the same for both exports.
    void ExpectCells(double val, const std::string& in_units, const std::string& out_units,
                     const std::string& cells) {
        EXPECT_EQ(Narrow(val, in_units.c_str(), out_units.c_str()), cells);
        EXPECT_EQ(Wide(val, ToWide(in_units).c_str(), ToWide(out_units).c_str()), cells);
    }
};

// ---- Results

TEST_F(WorksheetFunction, feet_become_metres) {
    ExpectCells(3.5, "ft", "m", "{1.0668,\"m\n\n\"}");
}

TEST_F(WorksheetFunction, without_output_units_default_units_are_used) {
    ExpectCells(3.5, "ft", "", "{1.0668,\"m\n\n\"}");
}

TEST_F(WorksheetFunction, a_number_without_units_is_unchanged) {
    ExpectCells(3.5, "", "", "{3.5,\"\n\n\"}");
}

TEST_F(WorksheetFunction, an_unknown_input_unit_is_an_error_text_and_an_empty_cell) {
    ExpectCells(3.5, "xyz", "m", "{\"ERROR: 'xyz' undefined.\n\n\",\"\"}");
}

TEST_F(WorksheetFunction, incompatible_output_units_are_an_error_without_the_value_after_it) {
    ExpectCells(3.5, "ft", "kg", "{\"ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n\",\"\"}");
}

TEST_F(WorksheetFunction, unknown_output_units_are_an_error_without_the_value_after_it) {
    ExpectCells(3.5, "ft", "xyz", "{\"ERROR IN REQUESTED OUTPUT: 'xyz' not recognized.\n\",\"\"}");
}

// ---- Other texts

TEST_F(WorksheetFunction, a_temperature_of_0_is_converted_by_the_affine_rule) {
    EXPECT_THAT(Wide(0.0, u"degC", u"degF"), StartsWith("{32,\"degF"));
}

TEST_F(WorksheetFunction, a_unit_system_is_a_request) {
    EXPECT_THAT(Wide(3.5, u"ft", u"MKS"), StartsWith("{1.0668,\"m"));
}

TEST_F(WorksheetFunction, two_requests_are_one_number_and_a_text) {
    ExpectCells(3.5, "ft", "m; cm", "{1.0668,\"m = 106.68 cm\n\n\"}");
}

TEST_F(WorksheetFunction, a_comment_in_the_input_units_cuts_off_the_output_units) {
    ExpectCells(3.5, "ft # length", "cm", "{1.0668,\"m\n\n\"}");
}

TEST_F(WorksheetFunction, a_typed_error_mark_is_reported_as_an_error) {
    EXPECT_THAT(Wide(3.5, u"ft # an ERROR", u"m"), StartsWith("{\"ERROR"));
}

TEST_F(WorksheetFunction, a_vector_reads_as_0_and_the_rest_of_its_text) {
    ExpectCells(1.0, "* [1,2,3] m", "", "{0,\"1 , 2 , 3 ] m\n\n\"}");
}

TEST_F(WorksheetFunction, six_digits_of_the_number_reach_the_calculator) {
    ExpectCells(1234567.8, "m", "m", "{1234570,\"m\n\n\"}");
}

TEST_F(WorksheetFunction, null_texts_are_empty) {
    SetHostVersion(14);
    EXPECT_EQ(Wide(3.5, nullptr, nullptr), "{3.5,\"\n\n\"}");
    EXPECT_EQ(Narrow(3.5, nullptr, nullptr), "{3.5,\"\n\n\"}");
}

TEST_F(WorksheetFunction, characters_outside_the_code_page_are_altered) {
    EXPECT_THAT(Wide(1.0, u"\u03A9", u"m"), HasSubstr("ERROR"));
}

TEST_F(WorksheetFunction, unusual_texts_give_cells_and_the_host_keeps_working) {
    for (const XCHAR* text : {u"\n", u"ft\nm", u"\"", u";", u";;;;", u"#", u"'", u"(", u"begin", u"=", u"&",
                              u"\\", u"ft\n# ERROR", u"\n\n\n", u"#\n#\n#"}) {
        EXPECT_THAT(Wide(1.0, text, u"m"), StartsWith("{"));
        EXPECT_THAT(Wide(1.0, u"m", text), StartsWith("{"));
    }
    EXPECT_EQ(Wide(3.5, u"ft", u"m"), "{1.0668,\"m\n\n\"}");
}

TEST_F(WorksheetFunction, a_hundred_thousand_characters_give_cells) {
    const std::u16string text(100000, u'x');
    EXPECT_THAT(Wide(1.0, text.c_str(), u"m"), StartsWith("{\"ERROR"));
    EXPECT_THAT(Wide(1.0, u"m", text.c_str()), StartsWith("{\"ERROR"));
}

TEST_F(WorksheetFunction, infinities_and_not_a_numbers_give_cells) {
    for (const double val :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()})
        EXPECT_THAT(Wide(val, u"ft", u"m"), StartsWith("{"));
}

TEST_F(WorksheetFunction, a_text_too_long_for_the_narrow_family_is_cut) {
    const std::string text(1000, 'x');
    const std::string cells = Narrow(1.0, text.c_str(), "m");
    EXPECT_EQ(cells, "{\"" + ("ERROR: '" + text).substr(0, 255) + "\",\"\"}");
}

TEST_F(WorksheetFunction, the_first_blank_becomes_an_ampersand_before_one_is_searched_for) {
    ExpectCells(3.5, "ft", "cm=8&", "{8,\"\n&       = 106.68 cm\n\n\"}");
}

TEST_F(WorksheetFunction, a_bad_exponent_in_a_request_gives_the_message_of_the_request_alone) {
    ExpectCells(5, "m", "cm^x", "{\"ERROR IN REQUESTED OUTPUT: 'cm^x' not recognized.\n\",\"\"}");
}

// ---- The host's release

TEST_F(WorksheetFunction, the_release_is_queried_on_every_call) {
    Wide(3.5, u"ft", u"m");
    Narrow(3.5, "ft", "m");
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfInfo(\"Release\")", "4 xlfInfo(\"Release\")"));
}

TEST_F(WorksheetFunction, releases_up_to_and_including_15_are_accepted) {
    for (const char16_t* release : {u"4.0", u"14.0", u"14.9", u"15.0"}) {
        host.On(xlfInfo, Reply{0, release});
        EXPECT_EQ(Wide(3.5, u"ft", u"m"), "{1.0668,\"m\n\n\"}");
        EXPECT_EQ(Narrow(3.5, "ft", "m"), "{1.0668,\"m\n\n\"}");
    }
}

TEST_F(WorksheetFunction, releases_above_15_are_rejected) {
    for (const char16_t* release : {u"15.1", u"15.5", u"16.0"}) {
        host.On(xlfInfo, Reply{0, release});
        EXPECT_THAT(Wide(3.5, u"ft", u"m"), StartsWith("\"This version"));
        EXPECT_THAT(Narrow(3.5, "ft", "m"), StartsWith("\"This version"));
    }
}

TEST_F(WorksheetFunction, a_later_release_gets_a_single_text_also_for_valid_arguments) {
    host.On(xlfInfo, Reply{0, u"16.0"});
    const std::string refusal =
        "\"This version of Excel is not supported.  Check https://www.metrify.example\"";
    EXPECT_EQ(Wide(3.5, u"ft", u"m"), refusal);
    EXPECT_EQ(Narrow(3.5, "ft", "m"), refusal);
    EXPECT_EQ(Wide(3.5, u"xyz", u"m"), refusal);
}

TEST_F(WorksheetFunction, a_host_that_does_not_report_its_release_is_accepted) {
    host.On(xlfInfo, Reply::Refused());
    EXPECT_EQ(Wide(3.5, u"ft", u"m"), "{1.0668,\"m\n\n\"}");
    EXPECT_EQ(host_release_number(), 0.0);
    host.On(xlfInfo, Reply{0, Reply::Error{xlerrNA}});
    EXPECT_EQ(host_release_number(), 0.0);
    host.On(xlfInfo, Reply{0, u"14.0"});
    EXPECT_EQ(host_release_number(), 14.0);
}

// ---- Records

TEST_F(WorksheetFunction, the_result_is_marked_for_the_host_to_give_back) {
    SetHostVersion(14);
    XLOPER12* record = Metrify_12(3.5, u"ft", u"m");
    EXPECT_EQ(record->xltype, static_cast<unsigned>(xltypeMulti | xlbitDLLFree));
    xlAutoFree12(record);
    EXPECT_EQ(record->xltype, 0U);
    xlAutoFree12(record);
}

TEST_F(WorksheetFunction, before_detection_a_value_is_built_narrow_and_converted) {
    SetHostVersion(0);
    XLOPER12* record = Metrify_12(3.5, u"ft", u"m");
    EXPECT_EQ(Rendered(*record), "{1.0668,\"m\n\n\"}");
    xlAutoFree12(record);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("4 xlfInfo(\"Release\")"));
}

TEST_F(WorksheetFunction, the_common_body_returns_null_and_fills_the_result) {
    SetHostVersion(14);
    CXlOper result;
    CXlDualString in_units("ft");
    CXlDualString out_units("m");
    EXPECT_EQ(convert_units_cell(result, 3.5, in_units, out_units), nullptr);
    EXPECT_EQ(result.Dimensions(), (XlSize{1, 2}));
}

// ---- Exceptions

TEST_F(WorksheetFunction, an_exception_is_handled_by_the_application) {
    class Answering final : public CXllApp {
      public:
        void ExceptionToValue(CXlOper& result, const CXlRuntimeException& exception) override {
            result.SetText(std::string("answered ") + exception.what());
        }
    };
    Answering app;
    host.On(xlfInfo, [](const std::vector<std::string>&) -> Reply {
        throw CXlRuntimeException(std::string("the host's entry failed"));
    });
    EXPECT_EQ(Wide(3.5, u"ft", u"m"), "\"answered the host's entry failed\"");
}

TEST_F(WorksheetFunction, without_an_application_it_ends_as_an_error_text) {
    host.On(xlfInfo, [](const std::vector<std::string>&) -> Reply {
        throw CXlRuntimeException(std::string("failed"));
    });
    EXPECT_EQ(Wide(3.5, u"ft", u"m"), "\"#ERROR: failed\"");
    EXPECT_EQ(Narrow(3.5, "ft", "m"), "\"#ERROR: failed\"");
}

TEST_F(WorksheetFunction, an_answer_without_a_result_or_a_message_ends_as_an_access_violation) {
    // The report of this failed solution takes the place of the next result.
    const std::string program = "\nx = 2\nbegin\ny = x^2 + 1\nend\nsolve(y, x)";
    const std::string violation = "\"#ERROR: 'C' exception 0xC0000005\"";
    Wide(1, ToWide(program).c_str(), u"");
    EXPECT_EQ(Wide(3.5, u"ft", u"m"), violation);
    EXPECT_EQ(Wide(3.5, u"ft", u"m"), "{1.0668,\"m\n\n\"}") << "the report is served";
    Narrow(1, program.c_str(), "");
    EXPECT_EQ(Narrow(3.5, "ft", "m"), violation);
}

} // namespace

// Arguments, injected failures and replacement of add-ins.

#include "host/core/host_exports.h"
#include "host/sheet/value_text.h"
#include "tests/host/calling.h"
#include "xllrt/text/code_page.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

XLOPER12 shown12;

XLOPER12* Shown(const CellValue& value) {
    WriteRecord(value, shown12);
    if (MemoryOf(shown12))
        shown12.xltype |= xlbitDLLFree;
    return &shown12;
}

void METRIFY_HOST_CALL Free12(XLOPER12* record) {
    DeepFree(*record);
}

XLOPER12* METRIFY_HOST_CALL ShowInteger(std::int32_t number) {
    return Shown(number);
}

XLOPER12* METRIFY_HOST_CALL ShowText(const XCHAR* text) {
    return Shown(text);
}

XLOPER12* METRIFY_HOST_CALL ShowNumber(double number, const XCHAR*, const XCHAR*) {
    return Shown(number);
}

XLOPER12* METRIFY_HOST_CALL ShowLast(std::int32_t, const XCHAR*, const XCHAR*, std::int32_t, const XCHAR*,
                                     const XCHAR*, std::int16_t pressed) {
    return Shown(static_cast<double>(pressed));
}

std::unique_ptr<Host> HostOfScalars() {
    auto host = std::make_unique<Host>(15);
    Adopt(*host, {{"ShowInteger", EntryOf(ShowInteger)},
                  {"ShowText", EntryOf(ShowText)},
                  {"ShowNumber", EntryOf(ShowNumber)},
                  {"ShowLast", EntryOf(ShowLast)},
                  {"xlAutoFree12", EntryOf(Free12)}});
    EXPECT_EQ(RegisterEntry(*host, u"ShowInteger", u"UJ", u"INTEGER").code, 0);
    EXPECT_EQ(RegisterEntry(*host, u"ShowText", u"UC%", u"TEXT").code, 0);
    EXPECT_EQ(RegisterEntry(*host, u"ShowNumber", u"UBC%C%", u"NUMBER").code, 0);
    EXPECT_EQ(RegisterEntry(*host, u"ShowLast", u"UJC%C%JC%C%A", u"LAST").code, 0);
    return host;
}

TEST(registered_scalars, are_converted_to_what_the_type_text_says) {
    const auto host = HostOfScalars();
    EXPECT_EQ(host->Evaluate(u"=INTEGER(3.9)"), CellValue(3));
    EXPECT_EQ(host->Evaluate(u"=INTEGER(\"7\")"), CellValue(7));
    EXPECT_EQ(host->Evaluate(u"=INTEGER(2147483647)"), CellValue(2147483647));
    EXPECT_EQ(host->Evaluate(u"=TEXT(1.5)"), CellValue(u"1.5"));
    EXPECT_EQ(host->Evaluate(u"=TEXT(TRUE)"), CellValue(u"TRUE"));
    EXPECT_EQ(host->Evaluate(u"=NUMBER(\"2.5\",\"\",\"\")"), CellValue(2.5));
    EXPECT_EQ(host->Evaluate(u"=LAST(1,\"\",\"\",2,\"\",\"\",TRUE)"), CellValue(1.0));
    EXPECT_EQ(host->Evaluate(u"=LAST(1,\"\",\"\",2,\"\",\"\",0)"), CellValue(0.0));
    EXPECT_EQ(host->Evaluate(u"=LAST(1,\"\",\"\",2,\"\",\"\",\"true\")"), CellValue(1.0));
}

TEST(registered_scalars, that_cannot_be_converted_are_errors_without_a_call) {
    const auto host = HostOfScalars();
    for (const char16_t* formula : {u"=INTEGER(\"a\")", u"=INTEGER(2147483648)", u"=INTEGER(-2147483649)",
                                    u"=INTEGER({1,2})", u"=TEXT({1,2})", u"=NUMBER(\"a\",\"\",\"\")",
                                    u"=LAST(1,\"\",\"\",2,\"\",\"\",\"a\")", u"=INTEGER(1,2)"})
        EXPECT_EQ(host->Evaluate(formula), CellValue(CellError{15}));
    EXPECT_EQ(host->Evaluate(u"=TEXT(#DIV/0!)"), CellValue(CellError{7}));
    EXPECT_EQ(host->Evaluate(u"=INTEGER(#N/A)"), CellValue(CellError{42}));
}

TEST(registered_scalars, are_empty_if_omitted) {
    const auto host = HostOfScalars();
    EXPECT_EQ(host->Evaluate(u"=INTEGER()"), CellValue(0));
    EXPECT_EQ(host->Evaluate(u"=TEXT()"), CellValue(u""));
    EXPECT_EQ(host->Evaluate(u"=NUMBER(,\"\",\"\")"), CellValue(0.0));
    EXPECT_EQ(host->Evaluate(u"=INTEGER({5})"), CellValue(5));
}

TEST(registered_scalars, texts_have_up_to_32767_characters) {
    const auto host = HostOfScalars();
    const Registration* text = host->state().registrations.Find(u"TEXT");
    ASSERT_TRUE(text);
    const auto called = [&](std::size_t length) {
        return CallRegistered(host->state(), *text, {std::u16string(length, u'a')},
                              CallContext::worksheet_function);
    };
    EXPECT_EQ(called(32767), CellValue(std::u16string(32767, u'a')));
    EXPECT_EQ(called(32768), CellValue(CellError{15}));
}

TEST(host_faults, the_nth_call_fails_and_the_others_work) {
    Host host(15);
    host.state().faults.FailCall(2);
    EXPECT_EQ(Ask12(host, 244, {u"system"}).code, 0);
    EXPECT_EQ(Ask12(host, 244, {u"system"}), Refusal(32));
    EXPECT_EQ(Ask12(host, 244, {u"system"}).code, 0);
    EXPECT_EQ(host.state().faults.calls(), 3U);
    host.state().faults.Stop();
    EXPECT_EQ(Ask12(host, 244, {u"system"}).code, 0);
    EXPECT_EQ(host.state().faults.calls(), 3U);
}

TEST(host_faults, a_function_is_refused_until_the_refusal_is_lifted) {
    Host host(15);
    host.state().faults.Refuse(244, 64);
    EXPECT_EQ(Ask12(host, 244, {u"system"}), Refusal(64));
    EXPECT_EQ(Ask12(host, 244 | 0x2000, {u"system"}), Refusal(64));
    EXPECT_EQ(Ask12(host, 0x4002, {1.0}).code, 0);
    host.state().faults.Refuse(244, 0);
    EXPECT_EQ(Ask12(host, 244, {u"system"}).code, 0);
}

TEST(host_faults, calculation_threads_are_not_affected) {
    Host host(15);
    host.state().faults.Refuse(244, 64);
    const ContextScope scope(CallContext::calculation_thread);
    EXPECT_EQ(Ask12(host, 244, {u"system"}).code, 0);
}

TEST(host_of_add_ins, without_an_add_in_or_its_entry_there_is_no_answer) {
    Host host(15);
    EXPECT_FALSE(host.AddInManagerInfo(1.0));
    EXPECT_FALSE(host.CallEntryPoint("xlAutoOpen"));
    Adopt(host, {});
    EXPECT_FALSE(host.AddInManagerInfo(1.0));
    EXPECT_FALSE(host.CallEntryPoint("xlAutoOpen"));
    EXPECT_FALSE(host.RunCommand(u"nothing", {}));
}

TEST(host_of_add_ins, another_add_in_replaces_the_first) {
    const auto host = HostOfScalars();
    Adopt(*host, {});
    EXPECT_EQ(host->Evaluate(u"=INTEGER(1)"), CellValue(CellError{29}));
    host->Unload();
    EXPECT_EQ(host->state().module, nullptr);
}

TEST(host_of_add_ins, null_records_cannot_be_freed) {
    Host host(15);
    XLOPER12* null = nullptr;
    EXPECT_EQ(host.Call12(0x4000, nullptr, 1, &null), 8);
}

TEST(host_of_add_ins, records_that_are_never_returned_are_released_with_the_host) {
    XLOPER item{};
    WriteRecord(u"system", item);
    XLOPER* argument = &item;
    XLOPER result{};
    {
        Host host(11);
        ASSERT_EQ(host.Call4(244, &result, 1, &argument), 0);
        EXPECT_EQ(host.state().ledger.Counts().Outstanding(), 1U);
    }
    DeepFree(item);
}

TEST(host_of_add_ins, the_narrow_entry_takes_at_most_30_arguments_one_by_one) {
    Host host(15);
    XLOPER result{};
    const HostPrimitives primitives = NewestHostPrimitives();
    EXPECT_EQ(primitives.excel4(0x4008, &result, 0), 0);
    EXPECT_EQ(primitives.excel4(0x4008, &result, 31), 4);
    EXPECT_EQ(primitives.excel4(0x4008, &result, -1), 4);
}

TEST(host_of_add_ins, names_are_set_for_registrations_alone) {
    const auto host = HostOfScalars();
    EXPECT_EQ(Ask12(*host, 88, {u"OTHER", 1.0}), Success(true));
    EXPECT_EQ(host->Evaluate(u"=OTHER(4)"), CellValue(4));
    EXPECT_EQ(Ask12(*host, 88, {u"OTHER", 99.0}), Success(CellError{15}));
    EXPECT_EQ(Ask12(*host, 88, {u"OTHER", u"x"}), Success(CellError{15}));
    EXPECT_EQ(Ask12(*host, 88, {u"", 1.0}), Success(CellError{15}));
    EXPECT_EQ(Ask12(*host, 88, {1.0, 1.0}), Success(CellError{15}));
    EXPECT_EQ(Ask12(*host, 88, {u"OTHER"}), Success(true));
    EXPECT_EQ(host->Evaluate(u"=OTHER(4)"), CellValue(CellError{29}));
}

TEST(host_of_add_ins, a_formula_is_asked_for_with_a_reference) {
    Host host(15);
    EXPECT_EQ(Ask12(host, 106, {MissingArgument{}}), Success(CellError{15}));
}

TEST(value_text_edges, integers_are_their_digits) {
    EXPECT_EQ(RowsText(-5), "-5\n");
}

} // namespace
} // namespace metrify::host

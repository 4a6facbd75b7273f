// Registration, calls of registered functions, and ownership of their results.

#include "tests/host/calling.h"
#include "xllrt/text/code_page.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

// ---- The entries of an add-in

thread_local XLOPER12 kept12;
thread_local XLOPER kept4;
int auto_frees = 0;
CallContext context_seen = CallContext::command;

template <class Record>
Record* Keep(Record& kept, const CellValue& value) {
    WriteRecord(value, kept);
    if (MemoryOf(kept))
        kept.xltype |= xlbitDLLFree;
    return &kept;
}

XLOPER12* METRIFY_HOST_CALL Join12(double number, const XCHAR* first, const XCHAR* second) {
    return Keep(kept12, NumberText(number) + u"|" + first + u"|" + second);
}

XLOPER* METRIFY_HOST_CALL Join4(double number, const char* first, const char* second) {
    return Keep(kept4, NumberText(number) + u"|" + ToWide(first) + u"|" + ToWide(second));
}

// The type code of the argument.
XLOPER12* METRIFY_HOST_CALL TypeOf12(XLOPER12* value) {
    return Keep(kept12, static_cast<double>(TypeOf(*value)));
}

XLOPER12* METRIFY_HOST_CALL Null() {
    return nullptr;
}

XLOPER12* METRIFY_HOST_CALL AskContext() {
    context_seen = CurrentContext();
    return Keep(kept12, 1.0);
}

// Returns a record that the host owns.
XLOPER12* METRIFY_HOST_CALL HostOwned() {
    XLOPER12 item{};
    WriteRecord(u"release", item);
    XLOPER12* argument = &item;
    Host::Current()->Call12(xlfInfo, &kept12, 1, &argument);
    kept12.xltype |= xlbitXLFree;
    DeepFree(item);
    return &kept12;
}

std::int32_t METRIFY_HOST_CALL Command() {
    context_seen = CurrentContext();
    return 1;
}

void METRIFY_HOST_CALL AutoFree12(XLOPER12* record) {
    ++auto_frees;
    DeepFree(*record);
}

void METRIFY_HOST_CALL AutoFree4(XLOPER* record) {
    ++auto_frees;
    DeepFree(*record);
}

XLOPER12* METRIFY_HOST_CALL Info12(XLOPER12* /*action*/) {
    return Keep(kept12, u"Wide name");
}

XLOPER* METRIFY_HOST_CALL Info4(XLOPER* /*action*/) {
    return Keep(kept4, u"Narrow name");
}

class registered_call : public testing::Test {
  protected:
    static void Load(Host& host) {
        auto_frees = 0;
        Adopt(host, {{"Join_12", EntryOf(Join12)},
                     {"Join_4", EntryOf(Join4)},
                     {"Type_12", EntryOf(TypeOf12)},
                     {"Null_12", EntryOf(Null)},
                     {"Context_12", EntryOf(AskContext)},
                     {"HostOwned_12", EntryOf(HostOwned)},
                     {"Command_12", EntryOf(Command)},
                     {"xlAutoFree12", EntryOf(AutoFree12)},
                     {"xlAutoFree", EntryOf(AutoFree4)},
                     {"xlAddInManagerInfo12", EntryOf(Info12)},
                     {"xlAddInManagerInfo", EntryOf(Info4)}});
    }

    static CellValue Value(Host& host, std::u16string_view formula) {
        return host.Evaluate(formula).value_or(CellError{xlerrNull});
    }
};

const CellValue value_error = CellError{xlerrValue};
const CellValue name_error = CellError{xlerrName};

// ---- Registration

TEST_F(registered_call, an_id_is_given_for_each_function) {
    Host host(15);
    Load(host);
    EXPECT_EQ(RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join"), Success(1.0));
    EXPECT_EQ(RegisterEntry(host, u"Null_12", u"U", u"Null"), Success(2.0));
}

TEST_F(registered_call, the_same_function_again_keeps_its_id_and_counts_its_uses) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Null_12", u"U", u"Null");
    EXPECT_EQ(RegisterEntry(host, u"Null_12", u"U", u"Null"), Success(1.0));
    EXPECT_EQ(Ask12(host, xlfUnregister, {1.0}), Success(true));
    EXPECT_NE(Value(host, u"=Null()"), name_error);
    EXPECT_EQ(Ask12(host, xlfUnregister, {1.0}), Success(true));
    EXPECT_EQ(Value(host, u"=Null()"), name_error);
}

TEST_F(registered_call, an_unknown_export_is_refused) {
    Host host(15);
    Load(host);
    EXPECT_EQ(RegisterEntry(host, u"Nothing", u"U", u"Nothing"), Success(value_error));
}

TEST_F(registered_call, a_module_that_is_not_loaded_is_refused) {
    Host host(15);
    Load(host);
    EXPECT_EQ(Ask12(host, xlfRegister, {u"Other.xll", u"Null_12", u"U", u"Null"}), Success(value_error));
}

TEST_F(registered_call, an_invalid_type_text_is_refused) {
    Host host(15);
    Load(host);
    EXPECT_EQ(RegisterEntry(host, u"Null_12", u"Z", u"Null"), Success(value_error));
    EXPECT_EQ(RegisterEntry(host, u"Null_12", u"", u"Null"), Success(value_error));
    EXPECT_EQ(RegisterEntry(host, u"Null_12", u"B%", u"Null"), Success(value_error));
}

TEST_F(registered_call, wide_types_are_refused_by_hosts_before_version_12) {
    Host host(11);
    Load(host);
    EXPECT_EQ(RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join"), Success(value_error));
    EXPECT_EQ(RegisterEntry(host, u"Join_4", u"RBCC", u"Join"), Success(1.0));
}

TEST_F(registered_call, what_was_registered_can_be_looked_up) {
    Host host(15);
    Load(host);
    Ask12(host, xlfRegister,
          {host.state().module->Path(), u"Null_12", u"U", u"Null", u"", u"1", u"Category", u"", u"",
           u"Help.."});
    const Registration* found = host.state().registrations.Find(u"null");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->procedure, u"Null_12");
    EXPECT_EQ(found->arguments[6], CellValue(u"Category"));
    EXPECT_TRUE(found->is_wide);
    EXPECT_FALSE(found->IsCommand());
}

TEST_F(registered_call, an_unknown_id_cannot_be_unregistered) {
    Host host(15);
    EXPECT_EQ(Ask12(host, xlfUnregister, {99.0}), Success(false));
}

TEST_F(registered_call, a_module_can_be_unregistered_as_a_whole) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Null_12", u"U", u"Null");
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    EXPECT_EQ(Ask12(host, xlfUnregister, {host.state().module->Path()}), Success(true));
    EXPECT_TRUE(host.state().registrations.All().empty());
}

TEST_F(registered_call, xlfSetName_with_a_name_alone_deletes_it) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Null_12", u"U", u"Null");
    EXPECT_EQ(Ask12(host, xlfSetName, {u"NULL"}), Success(true));
    EXPECT_EQ(Value(host, u"=Null()"), name_error);
    EXPECT_EQ(host.state().registrations.All().size(), 1U);
}

TEST_F(registered_call, xlfSetName_gives_a_name_to_an_id) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    EXPECT_EQ(Ask12(host, xlfSetName, {u"Other", 1.0}), Success(true));
    EXPECT_EQ(Value(host, u"=Other(1,\"a\",\"b\")"), CellValue(u"1|a|b"));
}

TEST_F(registered_call, unloading_removes_the_registrations_of_the_module) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Null_12", u"U", u"Null");
    host.Unload();
    EXPECT_EQ(Value(host, u"=Null()"), name_error);
}

// ---- Calls

TEST_F(registered_call, a_wide_entry_gets_number_and_wide_texts) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    EXPECT_EQ(Value(host, u"=JOIN(3.5,\"ft\",\"\u03A9\")"), CellValue(u"3.5|ft|\u03A9"));
}

TEST_F(registered_call, a_narrow_entry_gets_texts_of_the_code_page) {
    Host host(11);
    Load(host);
    RegisterEntry(host, u"Join_4", u"RBCC", u"Join");
    EXPECT_EQ(Value(host, u"=Join(3.5,\"\u00B5m\",\"m\")"), CellValue(u"3.5|\u00B5m|m"));
}

TEST_F(registered_call, an_omitted_argument_is_0_or_the_empty_text) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    EXPECT_EQ(Value(host, u"=Join(,\"ft\",)"), CellValue(u"0|ft|"));
    EXPECT_EQ(Value(host, u"=Join(3.5)"), CellValue(u"3.5||"));
}

TEST_F(registered_call, arguments_are_converted_to_the_types_of_the_type_text) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    EXPECT_EQ(Value(host, u"=Join(\"3.5\",2,TRUE)"), CellValue(u"3.5|2|TRUE"));
}

TEST_F(registered_call, an_argument_that_cannot_be_converted_prevents_the_call) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    EXPECT_EQ(Value(host, u"=Join(\"ft\",\"m\",\"m\")"), value_error);
    EXPECT_EQ(auto_frees, 0);
}

TEST_F(registered_call, an_error_as_argument_is_the_result) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    EXPECT_EQ(Value(host, u"=Join(1/0,\"ft\",\"m\")"), CellValue(CellError{xlerrDiv0}));
}

TEST_F(registered_call, too_many_arguments_are_refused) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Null_12", u"U", u"Null");
    EXPECT_EQ(Value(host, u"=Null(1)"), value_error);
}

TEST_F(registered_call, cells_are_passed_by_value_to_scalar_types) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    host.Enter(u"B1", u"3.5");
    host.Enter(u"B2", u"ft");
    host.Enter(u"C1", u"=Join(B1,B2,B3)");
    EXPECT_EQ(host.ValueOf(u"C1"), CellValue(u"3.5|ft|"));
}

TEST_F(registered_call, a_narrow_text_beyond_255_characters_is_refused) {
    Host host(11);
    Load(host);
    RegisterEntry(host, u"Join_4", u"RBCC", u"Join");
    EXPECT_EQ(Value(host, u"=Join(1,REPT(\"m\",256),\"m\")"), value_error);
}

TEST_F(registered_call, a_value_by_reference_is_not_converted) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Type_12", u"UU", u"TypeByReference");
    EXPECT_EQ(Value(host, u"=TypeByReference(A1)"), CellValue(double{xltypeSRef}));
    EXPECT_EQ(Value(host, u"=TypeByReference({1,2})"), CellValue(double{xltypeMulti}));
    EXPECT_EQ(Value(host, u"=TypeByReference()"), CellValue(double{xltypeMissing}));
    RegisterEntry(host, u"Type_12", u"UQ", u"TypeByValue");
    EXPECT_EQ(Value(host, u"=TypeByValue(A1)"), CellValue(double{xltypeNil}));
    EXPECT_EQ(Value(host, u"=TypeByValue(\"m\")"), CellValue(double{xltypeStr}));
}

TEST_F(registered_call, a_null_pointer_as_result_is_an_error) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Null_12", u"U", u"Null");
    EXPECT_EQ(Value(host, u"=Null()"), CellValue(CellError{xlerrNum}));
}

TEST_F(registered_call, a_command_is_not_a_function) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Command_12", u"J", u"Do", 2.0);
    EXPECT_EQ(Value(host, u"=Do()"), name_error);
    EXPECT_EQ(host.RunCommand(u"Do"), CellValue(1.0));
    EXPECT_EQ(context_seen, CallContext::command);
    EXPECT_EQ(host.RunCommand(u"Undo"), std::nullopt);
}

TEST_F(registered_call, functions_are_called_in_the_context_of_their_registration) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Context_12", u"U", u"Plain");
    RegisterEntry(host, u"Context_12", u"U#", u"Macro");
    RegisterEntry(host, u"Context_12", u"U$", u"Safe");
    Value(host, u"=Plain()");
    EXPECT_EQ(context_seen, CallContext::worksheet_function);
    Value(host, u"=Macro()");
    EXPECT_EQ(context_seen, CallContext::macro_function);
    const std::vector<std::u16string> formulas{u"=Safe()"};
    host.EvaluateAll(formulas, 1);
    EXPECT_EQ(context_seen, CallContext::calculation_thread);
    const std::vector<std::u16string> unsafe{u"=Plain()"};
    host.EvaluateAll(unsafe, 1);
    EXPECT_EQ(context_seen, CallContext::worksheet_function);
}

// ---- Results

TEST_F(registered_call, a_result_owned_by_the_add_in_is_returned_to_it_exactly_once) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    Value(host, u"=Join(3.5,\"ft\",\"m\")");
    EXPECT_EQ(auto_frees, 1);
    EXPECT_EQ(host.state().results.marked, 1U);
    EXPECT_EQ(host.state().results.given_back, 1U);
}

TEST_F(registered_call, a_narrow_result_is_returned_through_the_narrow_export) {
    Host host(11);
    Load(host);
    RegisterEntry(host, u"Join_4", u"RBCC", u"Join");
    Value(host, u"=Join(3.5,\"ft\",\"m\")");
    EXPECT_EQ(auto_frees, 1);
    EXPECT_EQ(host.state().results.given_back, 1U);
}

TEST_F(registered_call, a_number_as_result_is_not_returned) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"Context_12", u"U", u"One");
    EXPECT_EQ(Value(host, u"=One()"), CellValue(1.0));
    EXPECT_EQ(auto_frees, 0);
    EXPECT_EQ(host.state().results.marked, 0U);
}

TEST_F(registered_call, a_result_without_an_export_to_release_it_is_lost_and_counted) {
    Host host(15);
    Adopt(host, {{"Join_12", EntryOf(Join12)}});
    RegisterEntry(host, u"Join_12", u"UBC%C%$", u"Join");
    Value(host, u"=Join(3.5,\"ft\",\"m\")");
    EXPECT_EQ(host.state().results.marked, 1U);
    EXPECT_EQ(host.state().results.given_back, 0U);
    DeepFree(kept12);
}

TEST_F(registered_call, a_result_owned_by_the_host_is_returned_to_the_host) {
    Host host(15);
    Load(host);
    RegisterEntry(host, u"HostOwned_12", u"U", u"Release");
    EXPECT_EQ(Value(host, u"=Release()"), CellValue(u"15.0"));
    EXPECT_EQ(host.state().ledger.Counts().Outstanding(), 0U);
    EXPECT_EQ(auto_frees, 0);
}

// ---- Entries for the add-in's lifecycle

TEST_F(registered_call, entry_points_are_found_by_name) {
    Host host(15);
    Load(host);
    EXPECT_EQ(host.CallEntryPoint("Command_12"), 1);
    EXPECT_EQ(host.CallEntryPoint("xlAutoOpen"), std::nullopt);
}

TEST_F(registered_call, the_add_in_manager_calls_in_the_family_of_the_host) {
    for (const auto& [version, name] : {std::pair{15, u"Wide name"}, std::pair{11, u"Narrow name"}}) {
        Host host(version);
        Load(host);
        EXPECT_EQ(host.AddInManagerInfo(1.0), CellValue(name));
        EXPECT_EQ(auto_frees, 1);
    }
}

} // namespace
} // namespace metrify::host

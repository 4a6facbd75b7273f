// The search for an old host by the running object table, and the proof that a host has loaded this add-in.

#include "integration/application/command_descriptor.h"
#include "tests/integration/foreign_table_entry.h"
#include "tests/integration/integration_host.h"

#include <objbase.h>

namespace metrify::host {
namespace {

class check_instance : public testing::TestWithParam<int> {};

TEST_P(check_instance, finds_the_host_that_can_call_the_add_in) {
    const ProgramNames names;
    IntegrationHost host(GetParam());
    CXllApp application;
    host.automation.ShowAsRunning();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    EXPECT_EQ(connection.com.Application(), &host.automation.application());
    EXPECT_EQ(connection.failure.text, u"");
}

INSTANTIATE_TEST_SUITE_P(versions, check_instance, testing::Values(4, 5, 7));

TEST(check_instance, puts_echo_workbook_and_callback_back) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    host.host.state().log.Start();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    EXPECT_TRUE(host.host.state().echo);
    EXPECT_EQ(host.books(), 1U);
    EXPECT_EQ(application.functions.FindFunction(u"xlCheckInstance"), nullptr);
    const auto opened = host.host.state().log.CallsOf(xlcNew);
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(opened[0].arguments, std::vector<CellValue>{6});
    const auto closed = host.host.state().log.CallsOf(xlcClose);
    ASSERT_EQ(closed.size(), 1U);
    EXPECT_EQ(closed[0].arguments, std::vector<CellValue>{false});
}

TEST(check_instance, registers_its_callback_as_a_private_command) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    host.host.state().log.Start();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    const auto calls = host.host.state().log.CallsOf(xlfRegister);
    ASSERT_FALSE(calls.empty());
    const std::vector<CellValue>& given = calls[0].arguments;
    ASSERT_GE(given.size(), 10U);
    EXPECT_EQ(given[1], CellValue(u"xlCheckInstance"));
    EXPECT_EQ(given[2], CellValue(u"J"));
    EXPECT_EQ(given[3], CellValue(u"xlCheckInstance"));
    EXPECT_EQ(given[5], CellValue(u"2"));
    EXPECT_EQ(given[6], CellValue(u"Private Macros"));
    EXPECT_EQ(given[9], CellValue(u"Implementation function used by library initialisation routines.."));
}

TEST(check_instance, takes_the_callback_that_is_in_the_list_already) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    CXlFunctionDescriptor known = CommandDescriptor(u"xlCheckInstance", "xlCheckInstance");
    known.wide.category = u"Known before";
    known.narrow.category = "Known before";
    application.functions.Add(std::move(known));
    host.host.state().log.Start();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    const auto calls = host.host.state().log.CallsOf(xlfRegister);
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls[0].arguments.at(6), CellValue(u"Known before"));
    EXPECT_EQ(application.functions.FindFunction(u"xlCheckInstance"), nullptr);
}

TEST(check_instance, ignores_the_callback_after_the_search) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    {
        HostConnection connection;
        EXPECT_FALSE(connection.Init());
        EXPECT_EQ(xlCheckInstance(), 1);
    }
    HostConnection second;
    ExpectFailure(second, u"GetActiveObject(\"Excel.Application.5\") failed with error 0x800401E3");
}

TEST(check_instance, says_that_the_program_name_is_unknown) {
    IntegrationHost host(7);
    CXllApp application;
    HostConnection connection;
    ExpectFailure(connection, u"CLSIDFromProgID(\"Excel.Application.5\", ...) failed with error 0x800401F3");
}

TEST(check_instance, says_that_no_host_is_running) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    HostConnection connection;
    ExpectFailure(connection, u"GetActiveObject(\"Excel.Application.5\") failed with error 0x800401E3");
}

TEST(check_instance, finds_the_host_by_its_workbook_if_the_program_name_is_unknown) {
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    HostConnection connection;
    EXPECT_TRUE(connection.Init());
    EXPECT_EQ(connection.com.Application(), &host.automation.application());
}

std::int32_t METRIFY_HOST_CALL CallbackOfAnotherInstance() {
    return 1;
}

TEST(check_instance, fails_if_no_candidate_gives_the_proof) {
    const ProgramNames names;
    auto entries = AddInEntries();
    entries["xlCheckInstance"] = EntryOf(CallbackOfAnotherInstance);
    IntegrationHost host(7, entries);
    CXllApp application;
    host.automation.ShowAsRunning();
    HostConnection connection;
    ExpectFailure(connection, u"Failed to find running application");
}

TEST(check_instance, ignores_a_callback_that_was_not_requested) {
    const ProgramNames names;
    auto entries = AddInEntries();
    entries["xlCheckInstance"] = EntryOf(CallbackOfAnotherInstance);
    IntegrationHost host(7, entries);
    CXllApp application;
    host.automation.ShowAsRunning();
    // An old host opens a workbook during the search; a call that was not requested arrives then.
    const auto follow = host.host.state().books.on_change;
    host.host.state().books.on_change = [&follow] {
        xlCheckInstance();
        follow();
    };
    HostConnection connection;
    ExpectFailure(connection, u"Failed to find running application");
}

// A candidate of another program: as its application it returns itself, and it refuses to run a macro. The
// test decides what else happens at either call.
class ForeignCandidate final : public DispatchObject<ForeignCandidate> {
  public:
    using DispatchObject::DispatchObject;

    static std::span<const MemberRow<ForeignCandidate>> Members() {
        static constexpr MemberRow<ForeignCandidate> members[] = {
            {L"Application", &ForeignCandidate::Application},
            {L"ExecuteExcel4Macro", &ForeignCandidate::ExecuteMacro},
        };
        return members;
    }

    int callbacks_before = 0; ///< that arrive before it is asked to run the macro
    int macros = 0;

  private:
    HRESULT Application(const MemberCall& /*call*/, ComVariant& answer) {
        for (int i = 0; i < callbacks_before; ++i)
            xlCheckInstance();
        answer = ComVariant(static_cast<IDispatch*>(this));
        return S_OK;
    }
    HRESULT ExecuteMacro(const MemberCall& /*call*/, ComVariant& /*answer*/) {
        ++macros;
        return DISP_E_EXCEPTION;
    }
};

TEST(check_instance, ignores_a_callback_between_two_candidates) {
    IntegrationHost host(7);
    CXllApp application;
    const auto first = MakeObject<ForeignCandidate>(host.automation.context());
    const auto second = MakeObject<ForeignCandidate>(host.automation.context());
    first->callbacks_before = second->callbacks_before = 1;
    const ForeignTableEntry first_entry(L"C:\\first.xls", first.Get());
    const ForeignTableEntry second_entry(L"C:\\second.xls", second.Get());
    HostConnection connection;
    EXPECT_FALSE(connection.Init());
    EXPECT_EQ(first->macros, 1);
    EXPECT_EQ(second->macros, 1);
}

TEST(check_instance, returns_1_without_a_search) {
    EXPECT_EQ(xlCheckInstance(), 1);
}

TEST(check_instance, says_that_the_callback_was_refused) {
    IntegrationHost host(7);
    CXllApp application;
    host.faults().Refuse(xlfRegister, xlretFailed);
    HostConnection connection;
    host.host.state().log.Start();
    ExpectFailure(connection, u"InitCheckInstance() failed to register callback");
    EXPECT_TRUE(host.host.state().log.CallsOf(xlfUnregister).empty());
    EXPECT_TRUE(host.host.state().log.CallsOf(xlfSetName).empty());
    EXPECT_EQ(host.host.state().log.CallsOf(xlfRegister).size(), 1U);
}

TEST(check_instance, describes_its_callback_once_also_after_a_refusal) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    host.faults().Refuse(xlfRegister, xlretFailed);
    {
        HostConnection refused;
        EXPECT_FALSE(refused.Init());
    }
    host.faults().Refuse(xlfRegister, 0);
    HostConnection connection;
    EXPECT_TRUE(connection.Init());
    EXPECT_TRUE(application.functions.All().empty());
}

TEST(check_instance, takes_the_callback_back_from_the_host) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    host.host.state().log.Start();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    const auto registered = host.host.state().log.CallsOf(xlfRegister);
    const auto taken_back = host.host.state().log.CallsOf(xlfUnregister);
    ASSERT_FALSE(registered.empty());
    ASSERT_EQ(taken_back.size(), 1U);
    EXPECT_EQ(taken_back[0].arguments, std::vector<CellValue>{registered[0].result});
    EXPECT_EQ(taken_back[0].code, xlretSuccess);
}

TEST(check_instance, closes_the_workbook_before_echo_comes_back) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    host.host.state().log.Start();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    std::vector<std::pair<int, CellValue>> commands;
    for (const LoggedCall& call : host.host.state().log.Calls()) {
        const int function = WithoutOptions(call.function);
        if (function == xlcEcho || function == xlcNew || function == xlcClose)
            commands.emplace_back(function, call.arguments.at(0));
    }
    EXPECT_EQ(commands, (std::vector<std::pair<int, CellValue>>{
                            {xlcEcho, false}, {xlcNew, 6}, {xlcClose, false}, {xlcEcho, true}}));
}

TEST(check_instance, says_that_echo_could_not_be_switched_off) {
    IntegrationHost host(7);
    CXllApp application;
    host.faults().Refuse(xlcEcho, xlretFailed);
    HostConnection connection;
    ExpectFailure(connection, u"InitExcelOleFix() failed to switch off workbook echo with error 32");
}

TEST(check_instance, leaves_echo_off_if_no_workbook_could_be_made) {
    IntegrationHost host(7);
    CXllApp application;
    host.faults().Refuse(xlcNew, xlretInvCount);
    HostConnection connection;
    ExpectFailure(connection, u"InitExcelOleFix() failed to create new workbook with error 4");
    EXPECT_FALSE(host.host.state().echo);
}

TEST(check_instance, fails_if_the_workbook_could_not_be_closed) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    host.faults().Refuse(xlcClose, xlretFailed);
    HostConnection connection;
    ExpectFailure(connection, u"TermExcelOleFix() failed to close temporary workbook with error 32");
    EXPECT_TRUE(host.host.state().echo);
}

TEST(check_instance, fails_without_the_code_if_echo_could_not_be_restored) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    // From the workbook's opening on.
    const auto follow = host.host.state().books.on_change;
    host.host.state().books.on_change = [&host, &follow] {
        host.faults().Refuse(xlcEcho, xlretFailed);
        follow();
    };
    HostConnection connection;
    ExpectFailure(connection, u"TermExcelOleFix() failed to restore echo with error %d");
}

TEST(check_instance, tries_to_restore_echo_also_if_the_workbook_could_not_be_closed) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    host.faults().Refuse(xlcClose, xlretFailed);
    const auto follow = host.host.state().books.on_change;
    host.host.state().books.on_change = [&host, &follow] {
        host.faults().Refuse(xlcEcho, xlretFailed);
        follow();
    };
    host.host.state().log.Start();
    HostConnection connection;
    ExpectFailure(connection, u"TermExcelOleFix() failed to restore echo with error %d");
    EXPECT_EQ(host.host.state().log.CallsOf(xlcClose).size(), 1U);
    EXPECT_EQ(host.host.state().log.CallsOf(xlcEcho).size(), 2U);
}

TEST(check_instance, replaces_an_earlier_failure_by_that_of_the_end) {
    IntegrationHost host(7); // no program names, no running object
    CXllApp application;
    host.faults().Refuse(xlcClose, xlretFailed);
    HostConnection connection;
    ExpectFailure(connection, u"TermExcelOleFix() failed to close temporary workbook with error 32");
}

TEST(check_instance, skips_foreign_objects_in_the_table) {
    IntegrationHost host(7);
    CXllApp application;
    // One has no IDispatch interface, one has no application, and the application of one is another host.
    ComPtr<IUnknown> silent;
    CreateBindCtx(0, reinterpret_cast<IBindCtx**>(silent.Receive()));
    const ForeignTableEntry first(L"C:\\first.xls", silent.Get());
    const ComVariant range = host.Range();
    const ForeignTableEntry second(L"C:\\second.xls", range.Object().Get());
    const auto window = MakeObject<WindowObject>(host.automation.context(), range);
    const ForeignTableEntry third(L"C:\\third.xls", window.Get());
    host.automation.ShowAsRunning();
    HostConnection connection;
    EXPECT_TRUE(connection.Init());
    EXPECT_EQ(connection.com.Application(), &host.automation.application());
}

TEST(check_instance, finds_nothing_among_foreign_objects) {
    IntegrationHost host(7);
    CXllApp application;
    const ComVariant range = host.Range();
    const ForeignTableEntry stranger(L"C:\\stranger.xls", range.Object().Get());
    HostConnection connection;
    EXPECT_FALSE(connection.Init());
}

} // namespace
} // namespace metrify::host

// The events of hosts that call a macro for them.

#include "tests/integration/integration_host.h"
#include "tests/integration/replaced_call.h"

#include <stdexcept>

namespace metrify::host {
namespace {

class RecordingApp : public CXllApp {
  public:
    bool OnSheetActivate(XlHostObject* sheet) override { return Note("activate", sheet); }
    bool OnSheetDeactivate(XlHostObject* sheet) override { return Note("deactivate", sheet); }
    bool OnCalculate(XlHostObject* sheet) override { return Note("calculate", sheet); }

    bool Note(const char* event, XlHostObject* sheet) {
        if (throws)
            throw std::runtime_error("not now");
        order.emplace_back(event);
        sheets.push_back(AsDispatch(sheet));
        return false;
    }

    static inline std::vector<std::string> order;
    std::vector<IDispatch*> sheets;
    bool throws = false;
};

std::int32_t METRIFY_HOST_CALL MacroOfTheUser() {
    RecordingApp::order.emplace_back("user");
    return 1;
}

// Counts the calls of the host that are not for a property.
class CountedMethods {
  public:
    explicit CountedMethods(ApplicationObject& application)
        : replaced_(MethodOf(static_cast<IDispatch*>(&application), kInvoke), AddressOf(Invoke)) {
        count = 0;
        original = reinterpret_cast<decltype(original)>(replaced_.original());
    }

    static inline int count = 0;

  private:
    static constexpr std::size_t kInvoke = 6;

    static HRESULT STDMETHODCALLTYPE Invoke(IDispatch* object, DISPID id, REFIID iid, LCID locale, WORD flags,
                                            DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                            UINT* wrong_argument) {
        count += flags == DISPATCH_METHOD ? 1 : 0;
        return original(object, id, iid, locale, flags, parameters, result, exception, wrong_argument);
    }

    static inline decltype(&Invoke) original = nullptr;
    ReplacedPointer replaced_;
};

class old_events : public testing::Test {
  protected:
    static std::map<std::string, void*> Entries() {
        auto entries = AddInEntries();
        entries["MacroOfTheUser"] = EntryOf(MacroOfTheUser);
        return entries;
    }

    old_events() : host(5, Entries()) {
        RecordingApp::order.clear();
        host.automation.ShowAsRunning();
        EXPECT_TRUE(connection.Init());
        RegisterEntry(host.host, u"MacroOfTheUser", u"J", u"MacroOfTheUser", 2.0);
    }

    bool Enable(bool enable) { return connection.com.SetEvents(enable, connection.failure); }
    std::u16string Macro(std::size_t index) { return host.settings().eventMacros.at(index); }
    void RunMacroOf(std::size_t index) { host.host.RunCommand(Macro(index)); }

    const ProgramNames names;
    IntegrationHost host;
    RecordingApp application;
    HostConnection connection;
};

TEST_F(old_events, name_a_macro_for_each_property) {
    ASSERT_TRUE(Enable(true));
    EXPECT_EQ(Macro(0), u"xll_Test_OnSheetActivate");
    EXPECT_EQ(Macro(1), u"xll_Test_OnSheetDeactivate");
    EXPECT_EQ(Macro(2), u"xll_Test_OnCalculate");
    EXPECT_EQ(host.sinks(), 0U);
}

TEST_F(old_events, register_the_macros_once) {
    ASSERT_TRUE(Enable(true));
    const std::size_t functions = application.functions.All().size();
    ASSERT_TRUE(Enable(false));
    host.host.state().log.Start();
    ASSERT_TRUE(Enable(true));
    EXPECT_EQ(application.functions.All().size(), functions);
    EXPECT_TRUE(host.host.state().log.CallsOf(xlfRegister).empty());
}

TEST_F(old_events, list_their_macros_again_after_an_open_that_failed) {
    ASSERT_TRUE(Enable(true));
    ASSERT_TRUE(Enable(false));
    for (CXlFunctionDescriptor* const descriptor : application.functions.All())
        UnregisterFunction(application, *descriptor);
    application.functions.Restore({});
    ASSERT_TRUE(Enable(true));
    ASSERT_EQ(application.functions.All().size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        const CXlFunctionDescriptor* const macro = application.functions.FindFunction(Macro(i));
        ASSERT_NE(macro, nullptr);
        EXPECT_NE(macro->registered, 0);
    }
}

TEST_F(old_events, reach_their_operations) {
    const ComVariant sheet = host.Sheet();
    host.settings().activeWorksheet = sheet.Object();
    ASSERT_TRUE(Enable(true));
    for (std::size_t i = 0; i < 3; ++i)
        RunMacroOf(i);
    EXPECT_EQ(RecordingApp::order, (std::vector<std::string>{"activate", "deactivate", "calculate"}));
}

TEST_F(old_events, pass_the_active_sheet_at_an_activation_only) {
    const ComVariant sheet = host.Sheet();
    host.settings().activeWorksheet = sheet.Object();
    ASSERT_TRUE(Enable(true));
    for (std::size_t i = 0; i < 3; ++i)
        RunMacroOf(i);
    EXPECT_EQ(application.sheets, (std::vector<IDispatch*>{sheet.Object().Get(), nullptr, nullptr}));
}

class old_event : public old_events, public testing::WithParamInterface<std::size_t> {};

TEST_P(old_event, chains_its_macro_also_if_an_observer_throws) {
    host.settings().eventMacros[GetParam()] = u"MacroOfTheUser";
    ASSERT_TRUE(Enable(true));
    application.throws = true;
    host.host.RunCommand(Macro(GetParam()));
    EXPECT_EQ(RecordingApp::order, std::vector<std::string>{"user"});
}

TEST_P(old_event, chains_its_macro_also_when_events_are_disconnected) {
    host.settings().eventMacros[GetParam()] = u"MacroOfTheUser";
    ASSERT_TRUE(Enable(true));
    const std::u16string macro = Macro(GetParam());
    ASSERT_TRUE(Enable(false));
    host.host.RunCommand(macro);
    ASSERT_EQ(RecordingApp::order.size(), 2U);
    EXPECT_EQ(RecordingApp::order.back(), "user");
}

INSTANTIATE_TEST_SUITE_P(all, old_event, testing::Values(0U, 1U, 2U));

TEST_F(old_events, give_1_also_if_an_observer_throws) {
    ASSERT_TRUE(Enable(true));
    application.throws = true;
    EXPECT_EQ(CXllComImpl_OnSheetActivate(), 1);
    EXPECT_EQ(CXllComImpl_OnSheetDeactivate(), 1);
    EXPECT_EQ(CXllComImpl_OnCalculate(), 1);
}

TEST_F(old_events, have_no_effect_on_a_search_that_failed) {
    EXPECT_TRUE(connection.com.Shutdown(connection.failure));
    CXllApp::SetInstance(nullptr);
    HostConnection failed;
    ASSERT_FALSE(failed.Init());
    EXPECT_EQ(CXllComImpl_OnCalculate(), 1);
    CXllApp::SetInstance(&application);
    EXPECT_TRUE(RecordingApp::order.empty());
}

TEST_F(old_events, give_1) {
    ASSERT_TRUE(Enable(true));
    EXPECT_EQ(CXllComImpl_OnSheetActivate(), 1);
    EXPECT_EQ(CXllComImpl_OnSheetDeactivate(), 1);
    EXPECT_EQ(CXllComImpl_OnCalculate(), 1);
}

TEST_F(old_events, chain_the_earlier_macro_after_the_add_in) {
    host.settings().eventMacros[2] = u"MacroOfTheUser";
    ASSERT_TRUE(Enable(true));
    RunMacroOf(2);
    EXPECT_EQ(RecordingApp::order, (std::vector<std::string>{"calculate", "user"}));
}

TEST_F(old_events, chain_nothing_without_an_earlier_macro) {
    ASSERT_TRUE(Enable(true));
    const CountedMethods methods(host.automation.application());
    RunMacroOf(2);
    EXPECT_EQ(RecordingApp::order, (std::vector<std::string>{"calculate"}));
    EXPECT_EQ(CountedMethods::count, 0);
    host.settings().eventMacros[2] = u"MacroOfTheUser";
    ASSERT_TRUE(Enable(false));
    host.settings().eventMacros[2] = u"MacroOfTheUser";
    ASSERT_TRUE(Enable(true));
    RunMacroOf(2);
    EXPECT_EQ(CountedMethods::count, 1);
}

TEST_F(old_events, ignore_a_chained_macro_that_fails) {
    host.settings().eventMacros[0] = u"NoSuchMacro";
    ASSERT_TRUE(Enable(true));
    RunMacroOf(0);
    EXPECT_EQ(RecordingApp::order, (std::vector<std::string>{"activate"}));
}

TEST_F(old_events, restore_the_saved_names) {
    host.settings().eventMacros = {u"First", u"", u"Third"};
    ASSERT_TRUE(Enable(true));
    ASSERT_TRUE(Enable(false));
    EXPECT_EQ(Macro(0), u"First");
    EXPECT_EQ(Macro(1), u"");
    EXPECT_EQ(Macro(2), u"Third");
}

TEST_F(old_events, overwrite_a_property_that_was_changed_in_the_meantime) {
    host.settings().eventMacros[0] = u"First";
    ASSERT_TRUE(Enable(true));
    host.settings().eventMacros[0] = u"SetByTheUser";
    ASSERT_TRUE(Enable(false));
    EXPECT_EQ(Macro(0), u"First");
}

TEST_F(old_events, leave_the_properties_as_they_were_if_a_macro_is_refused) {
    host.settings().eventMacros[0] = u"First";
    host.faults().Refuse(xlfRegister, xlretFailed);
    EXPECT_FALSE(Enable(true));
    EXPECT_FALSE(connection.com.AreEventsConnected());
    EXPECT_EQ(Macro(0), u"First");
}

TEST_F(old_events, end_with_the_connection_to_the_host) {
    host.settings().eventMacros[0] = u"First";
    ASSERT_TRUE(Enable(true));
    EXPECT_TRUE(connection.com.Shutdown(connection.failure));
    EXPECT_EQ(Macro(0), u"First");
    EXPECT_EQ(CXllComImpl_OnSheetActivate(), 1); // no application exists
    EXPECT_TRUE(RecordingApp::order.empty());
}

TEST(old_events_of_an_add_in, name_their_macros_by_its_name_up_to_the_last_dot) {
    const ProgramNames names;
    IntegrationHost host(5, AddInEntries(), u"C:\\My.AddIns\\Unit.Tools.xll");
    CXllApp application;
    host.automation.ShowAsRunning();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    ASSERT_TRUE(connection.com.SetEvents(true, connection.failure));
    EXPECT_EQ(host.settings().eventMacros[2], u"xll_Unit.Tools_OnCalculate");
}

TEST(old_events_of_version_6, come_through_the_connection_point) {
    const ProgramNames names;
    IntegrationHost host(6);
    CXllApp application;
    host.automation.ShowAsRunning();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    ASSERT_TRUE(connection.com.SetEvents(true, connection.failure));
    EXPECT_EQ(host.sinks(), 1U);
    EXPECT_EQ(host.settings().eventMacros[0], u"");
}

} // namespace
} // namespace metrify::host

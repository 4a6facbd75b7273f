// The search for the host by its windows.

#include "tests/integration/fixed_system_texts.h"
#include "tests/integration/integration_host.h"

#include <thread>

namespace metrify::host {
namespace {

class xll_com_window : public testing::TestWithParam<int> {};

TEST_P(xll_com_window, finds_the_application_of_the_host) {
    IntegrationHost host(GetParam());
    CXllApp application;
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    EXPECT_EQ(connection.com.Application(), &host.automation.application());
    EXPECT_EQ(connection.failure.text, u"");
    EXPECT_EQ(connection.failure.code, S_OK);
    EXPECT_EQ(CXllCom::Instance(), &connection.com);
}

TEST_P(xll_com_window, opens_a_workbook_if_none_is_open_and_closes_it_again) {
    IntegrationHost host(GetParam());
    CXllApp application;
    ASSERT_TRUE(host.host.state().books.Close());
    host.host.state().log.Start();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    EXPECT_EQ(connection.com.Application(), &host.automation.application());
    EXPECT_EQ(host.books(), 0U);
    const auto opened = host.host.state().log.CallsOf(xlcNew);
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(opened[0].arguments, std::vector<CellValue>{1.0});
    const auto closed = host.host.state().log.CallsOf(xlcClose);
    ASSERT_EQ(closed.size(), 1U);
    EXPECT_EQ(closed[0].arguments, (std::vector<CellValue>{false, false}));
}

INSTANTIATE_TEST_SUITE_P(versions, xll_com_window, testing::Values(8, 11, 12, 16));

TEST(xll_com, opens_no_workbook_if_one_is_open) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().log.Start();
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    EXPECT_TRUE(host.host.state().log.CallsOf(xlcNew).empty());
    EXPECT_TRUE(host.host.state().log.CallsOf(xlcClose).empty());
    EXPECT_EQ(host.books(), 1U);
}

TEST(xll_com, fails_without_a_text_if_the_host_names_no_window) {
    IntegrationHost host(16);
    CXllApp application;
    host.faults().Refuse(xlGetHwnd, xlretFailed);
    HostConnection connection;
    ExpectFailure(connection, u"", E_FAIL);
}

TEST(xll_com, fails_without_a_text_if_no_window_has_the_number) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().window_handle ^= 0x5A5AU;
    HostConnection connection;
    ExpectFailure(connection, u"", E_FAIL);
}

TEST(xll_com, finds_the_window_by_the_low_half_of_the_number) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().window_handle ^= 0x7A5A0000U;
    HostConnection connection;
    EXPECT_TRUE(connection.Init());
}

TEST(xll_com, fails_if_the_window_with_the_number_is_of_another_class) {
    IntegrationHost host(16);
    CXllApp application;
    const HWND other =
        CreateWindowExA(0, "STATIC", "", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    host.host.state().window_handle = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(other));
    HostConnection connection;
    ExpectFailure(connection, u"", E_FAIL);
    DestroyWindow(other);
}

TEST(xll_com, fails_if_there_is_no_workbook_and_none_can_be_opened) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    host.faults().Refuse(xlcNew, xlretFailed);
    HostConnection connection;
    ExpectFailure(connection, u"EnumChildWindows", E_FAIL);
}

TEST(xll_com, closes_the_workbook_that_came_without_a_window) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    host.host.state().books.on_change = nullptr; // no windows any more
    HostConnection connection;
    ExpectFailure(connection, u"EnumChildWindows", E_FAIL);
    EXPECT_EQ(host.books(), 0U);
}

TEST(xll_com, skips_windows_that_are_not_workbooks) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    const HWND toolbar = CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 10, 10,
                                         host.automation.windows().main(), nullptr, nullptr, nullptr);
    host.host.state().books.Open();
    host.automation.FollowWorkbooks();
    ASSERT_EQ(GetWindow(host.automation.windows().main(), GW_CHILD), toolbar);
    HostConnection connection;
    EXPECT_TRUE(connection.Init());
    EXPECT_EQ(connection.com.Application(), &host.automation.application());
}

// References held by other code.
ULONG ReferencesOf(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

TEST(xll_com, releases_the_window_before_its_workbook_is_closed) {
    IntegrationHost host(16);
    CXllApp application;
    const auto window = MakeObject<WindowObject>(
        host.automation.context(), ComVariant(static_cast<IDispatch*>(&host.automation.application())));
    host.automation.windows().SetNativeObject(ComPtr<IDispatch>(window.Get()));
    host.host.state().books.Close();
    const ULONG before = ReferencesOf(window.Get());
    std::vector<ULONG> references; // at the opening and at the closing of the workbook
    const auto follow = host.host.state().books.on_change;
    host.host.state().books.on_change = [&] {
        references.push_back(ReferencesOf(window.Get()));
        follow();
    };
    HostConnection connection;
    EXPECT_TRUE(connection.Init());
    EXPECT_EQ(references, (std::vector<ULONG>{before, before}));
    host.host.state().books.on_change = follow;
}

TEST(xll_com, fails_if_the_workbook_window_has_no_object) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject({});
    HostConnection connection;
    EXPECT_FALSE(connection.Init());
    EXPECT_EQ(connection.failure.text, u"AccessibleObjectFromWindow");
    EXPECT_TRUE(FAILED(connection.failure.code));
}

TEST(xll_com, closes_the_temporary_workbook_also_if_its_window_has_no_object) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    host.automation.windows().SetNativeObject({});
    HostConnection connection;
    EXPECT_FALSE(connection.Init());
    EXPECT_EQ(host.books(), 0U);
}

TEST(xll_com, fails_if_the_object_has_no_application) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject(host.Range().Object());
    HostConnection connection;
    const FixedSystemTexts texts;
    ExpectFailure(connection, u"GetIDsOfNames: text of 80020006", DISP_E_UNKNOWNNAME);
}

TEST(xll_com, treats_an_application_that_is_not_an_object_as_missing) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject(ComPtr<IDispatch>(
        MakeObject<WindowObject>(host.automation.context(), ComVariant(u"no object")).Get()));
    HostConnection connection;
    EXPECT_TRUE(connection.Init());
    EXPECT_EQ(connection.com.Application(), nullptr);
}

TEST(xll_com, exists_once) {
    IntegrationHost host(16);
    CXllApp application;
    HostConnection first;
    ASSERT_TRUE(first.Init());
    HostConnection second;
    ExpectFailure(second, u"An instance of CXllCom has already been created");
    EXPECT_EQ(CXllCom::Instance(), &first.com);
}

TEST(xll_com, can_be_created_again_after_the_first_is_destroyed) {
    IntegrationHost host(16);
    CXllApp application;
    {
        HostConnection first;
        ASSERT_TRUE(first.Init());
    }
    EXPECT_EQ(CXllCom::Instance(), nullptr);
    HostConnection second;
    EXPECT_TRUE(second.Init());
}

TEST(xll_com, cannot_be_started_again) {
    IntegrationHost host(16);
    CXllApp application;
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    EXPECT_TRUE(connection.com.Shutdown(connection.failure));
    ExpectFailure(connection, u"Init() has already been called");
}

TEST(xll_com, is_the_instance_also_if_it_found_nothing) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject({});
    HostConnection connection;
    EXPECT_FALSE(connection.Init());
    EXPECT_EQ(CXllCom::Instance(), &connection.com);
    ExpectFailure(connection, u"An instance of CXllCom has already been created");
}

TEST(xll_com, needs_an_application_object) {
    IntegrationHost host(16);
    CXllApp::SetInstance(nullptr);
    HostConnection connection;
    ExpectFailure(connection, u"No CXllApp instance found");
}

TEST(xll_com, fails_in_an_apartment_of_another_kind) {
    IntegrationHost host(16);
    CXllApp application;
    const FixedSystemTexts texts;
    HostConnection connection;
    std::jthread([&connection] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        EXPECT_FALSE(connection.Init());
        CoUninitialize();
    }).join();
    EXPECT_EQ(connection.failure.code, RPC_E_CHANGED_MODE);
    EXPECT_EQ(connection.failure.text, u"CoInitialize: text of 80010106");
}

TEST(xll_com, has_its_failure_text_in_narrow_characters_too) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject({});
    CXllCom com;
    std::string text;
    HRESULT code = S_OK;
    EXPECT_FALSE(com.Init(text, code));
    EXPECT_EQ(text, "AccessibleObjectFromWindow");
    EXPECT_TRUE(FAILED(code));
}

TEST(system_text, has_no_line_end) {
    const FixedSystemTexts texts;
    EXPECT_EQ(SystemText(u"Invoke", E_ACCESSDENIED), u"Invoke: text of 80070005");
}

TEST(system_text, is_that_of_the_system) {
    const std::u16string text = SystemText(u"Invoke", E_ACCESSDENIED);
    EXPECT_TRUE(text.starts_with(u"Invoke: "));
    EXPECT_EQ(text.find(u"0x"), std::u16string::npos);
    EXPECT_EQ(text.find_first_of(u"\r\n"), std::u16string::npos);
}

TEST(system_text, shows_a_code_without_a_text_as_a_number) {
    EXPECT_EQ(SystemText(u"Invoke", static_cast<HRESULT>(0xA0001234)), u"Invoke: 0xA0001234");
}

} // namespace
} // namespace metrify::host

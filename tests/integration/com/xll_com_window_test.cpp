// The road to the host by its windows.

#include "tests/integration/integration_host.h"
#include "tests/integration/system_words.h"

#include <thread>

namespace metrify::host {
namespace {

class xll_com_window : public testing::TestWithParam<int> {};

TEST_P(xll_com_window, finds_the_application_of_the_host) {
    IntegrationHost host(GetParam());
    CXllApp application;
    Road road;
    ASSERT_TRUE(road.Init());
    EXPECT_EQ(road.com.Application(), &host.automation.application());
    EXPECT_EQ(road.failure.text, u"");
    EXPECT_EQ(road.failure.code, S_OK);
    EXPECT_EQ(CXllCom::Instance(), &road.com);
}

TEST_P(xll_com_window, opens_a_workbook_if_none_is_open_and_closes_it_again) {
    IntegrationHost host(GetParam());
    CXllApp application;
    ASSERT_TRUE(host.host.state().books.Close());
    host.host.state().log.Start();
    Road road;
    ASSERT_TRUE(road.Init());
    EXPECT_EQ(road.com.Application(), &host.automation.application());
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
    Road road;
    ASSERT_TRUE(road.Init());
    EXPECT_TRUE(host.host.state().log.CallsOf(xlcNew).empty());
    EXPECT_TRUE(host.host.state().log.CallsOf(xlcClose).empty());
    EXPECT_EQ(host.books(), 1U);
}

TEST(xll_com, fails_without_a_text_if_the_host_names_no_window) {
    IntegrationHost host(16);
    CXllApp application;
    host.faults().Refuse(xlGetHwnd, xlretFailed);
    Road road;
    ExpectFailure(road, u"", E_FAIL);
}

TEST(xll_com, fails_without_a_text_if_no_window_has_the_number) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().window_handle ^= 0x5A5AU;
    Road road;
    ExpectFailure(road, u"", E_FAIL);
}

TEST(xll_com, finds_the_window_by_the_low_half_of_the_number) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().window_handle ^= 0x7A5A0000U;
    Road road;
    EXPECT_TRUE(road.Init());
}

TEST(xll_com, fails_if_the_window_with_the_number_is_of_another_class) {
    IntegrationHost host(16);
    CXllApp application;
    const HWND other =
        CreateWindowExA(0, "STATIC", "", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    host.host.state().window_handle = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(other));
    Road road;
    ExpectFailure(road, u"", E_FAIL);
    DestroyWindow(other);
}

TEST(xll_com, fails_if_there_is_no_workbook_and_none_can_be_opened) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    host.faults().Refuse(xlcNew, xlretFailed);
    Road road;
    ExpectFailure(road, u"EnumChildWindows", E_FAIL);
}

TEST(xll_com, closes_the_workbook_that_came_without_a_window) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    host.host.state().books.on_change = nullptr; // no windows any more
    Road road;
    ExpectFailure(road, u"EnumChildWindows", E_FAIL);
    EXPECT_EQ(host.books(), 0U);
}

TEST(xll_com, passes_by_windows_that_are_no_workbooks) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    const HWND toolbar = CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 10, 10,
                                         host.automation.windows().main(), nullptr, nullptr, nullptr);
    host.host.state().books.Open();
    host.automation.FollowWorkbooks();
    ASSERT_EQ(GetWindow(host.automation.windows().main(), GW_CHILD), toolbar);
    Road road;
    EXPECT_TRUE(road.Init());
    EXPECT_EQ(road.com.Application(), &host.automation.application());
}

// References that others hold.
ULONG ReferencesOf(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

TEST(xll_com, releases_the_window_before_its_workbook_is_closed) {
    IntegrationHost host(16);
    CXllApp application;
    const auto window = MakeObject<WindowObject>(
        host.automation.surroundings(), ComVariant(static_cast<IDispatch*>(&host.automation.application())));
    host.automation.windows().SetNativeObject(ComPtr<IDispatch>(window.Get()));
    host.host.state().books.Close();
    const ULONG before = ReferencesOf(window.Get());
    std::vector<ULONG> references; // when the workbook is opened, and when it is closed
    const auto follow = host.host.state().books.on_change;
    host.host.state().books.on_change = [&] {
        references.push_back(ReferencesOf(window.Get()));
        follow();
    };
    Road road;
    EXPECT_TRUE(road.Init());
    EXPECT_EQ(references, (std::vector<ULONG>{before, before}));
    host.host.state().books.on_change = follow;
}

TEST(xll_com, fails_if_the_workbook_window_has_no_object) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject({});
    Road road;
    EXPECT_FALSE(road.Init());
    EXPECT_EQ(road.failure.text, u"AccessibleObjectFromWindow");
    EXPECT_TRUE(FAILED(road.failure.code));
}

TEST(xll_com, closes_the_temporary_workbook_also_if_its_window_has_no_object) {
    IntegrationHost host(16);
    CXllApp application;
    host.host.state().books.Close();
    host.automation.windows().SetNativeObject({});
    Road road;
    EXPECT_FALSE(road.Init());
    EXPECT_EQ(host.books(), 0U);
}

TEST(xll_com, fails_if_the_object_has_no_application) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject(host.Range().Object());
    Road road;
    const SystemWords words;
    ExpectFailure(road, u"GetIDsOfNames: words for 80020006", DISP_E_UNKNOWNNAME);
}

TEST(xll_com, takes_an_application_that_is_no_object_for_none) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject(ComPtr<IDispatch>(
        MakeObject<WindowObject>(host.automation.surroundings(), ComVariant(u"no object")).Get()));
    Road road;
    EXPECT_TRUE(road.Init());
    EXPECT_EQ(road.com.Application(), nullptr);
}

TEST(xll_com, exists_once) {
    IntegrationHost host(16);
    CXllApp application;
    Road first;
    ASSERT_TRUE(first.Init());
    Road second;
    ExpectFailure(second, u"An instance of CXllCom has already been created");
    EXPECT_EQ(CXllCom::Instance(), &first.com);
}

TEST(xll_com, is_free_for_another_when_the_first_has_gone) {
    IntegrationHost host(16);
    CXllApp application;
    {
        Road first;
        ASSERT_TRUE(first.Init());
    }
    EXPECT_EQ(CXllCom::Instance(), nullptr);
    Road second;
    EXPECT_TRUE(second.Init());
}

TEST(xll_com, cannot_be_started_again) {
    IntegrationHost host(16);
    CXllApp application;
    Road road;
    ASSERT_TRUE(road.Init());
    EXPECT_TRUE(road.com.Shutdown(road.failure));
    ExpectFailure(road, u"Init() has already been called");
}

TEST(xll_com, is_the_one_also_if_it_found_nothing) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject({});
    Road road;
    EXPECT_FALSE(road.Init());
    EXPECT_EQ(CXllCom::Instance(), &road.com);
    ExpectFailure(road, u"An instance of CXllCom has already been created");
}

TEST(xll_com, needs_an_application_object) {
    IntegrationHost host(16);
    CXllApp::SetInstance(nullptr);
    Road road;
    ExpectFailure(road, u"No CXllApp instance found");
}

TEST(xll_com, fails_where_components_are_used_in_another_way) {
    IntegrationHost host(16);
    CXllApp application;
    const SystemWords words;
    Road road;
    std::jthread([&road] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        EXPECT_FALSE(road.Init());
        CoUninitialize();
    }).join();
    EXPECT_EQ(road.failure.code, RPC_E_CHANGED_MODE);
    EXPECT_EQ(road.failure.text, u"CoInitialize: words for 80010106");
}

TEST(xll_com, gives_its_words_in_the_narrow_width_too) {
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
    const SystemWords words;
    EXPECT_EQ(SystemText(u"Invoke", E_ACCESSDENIED), u"Invoke: words for 80070005");
}

TEST(system_text, is_that_of_the_system) {
    const std::u16string text = SystemText(u"Invoke", E_ACCESSDENIED);
    EXPECT_TRUE(text.starts_with(u"Invoke: "));
    EXPECT_EQ(text.find(u"0x"), std::u16string::npos);
    EXPECT_EQ(text.find_first_of(u"\r\n"), std::u16string::npos);
}

TEST(system_text, shows_a_code_without_words_as_a_number) {
    EXPECT_EQ(SystemText(u"Invoke", static_cast<HRESULT>(0xA0001234)), u"Invoke: 0xA0001234");
}

} // namespace
} // namespace metrify::host

// A host that is busy, or refuses permanently, when an add-in disconnects from its events.

#include "tests/integration/fixed_system_texts.h"
#include "tests/integration/integration_host.h"
#include "tests/integration/replaced_call.h"

namespace metrify::host {
namespace {

struct CountingApp final : CXllApp {
    bool OnSheetActivate(XlHostObject* /*sheet*/) override {
        ++activations;
        return false;
    }
    int activations = 0;
};

// The system calls of the integration in the meantime.
struct Asked {
    int pauses = 0;
    DWORD paused = 0; // milliseconds
    int pins = 0;
    bool is_own_address = false;
    int calls = 0; // to the host, to disconnect
} asked;

void WINAPI NotePause(DWORD milliseconds) {
    ++asked.pauses;
    asked.paused += milliseconds;
}

BOOL WINAPI NotePin(DWORD flags, const wchar_t* address, HMODULE* module) {
    constexpr DWORD kPinByAddress = 1 | 4;
    MEMORY_BASIC_INFORMATION memory{};
    VirtualQuery(address, &memory, sizeof(memory));
    asked.pins += flags == kPinByAddress ? 1 : 0;
    asked.is_own_address = memory.AllocationBase == GetModuleHandleW(nullptr);
    *module = GetModuleHandleW(nullptr);
    return TRUE;
}

struct Answers {
    int refusals; // before the host disconnects
    HRESULT code;
    int granted = 0; // before the first refusal
} answers;

HRESULT STDMETHODCALLTYPE RefuseForAWhile(EventPoint* point, DWORD cookie) {
    ++asked.calls;
    if (answers.refusals-- > 0)
        return answers.code;
    return point->EventPoint::Unadvise(cookie);
}

constexpr HRESULT kRejected = static_cast<HRESULT>(0x80010001);
constexpr HRESULT kRetryLater = static_cast<HRESULT>(0x8001010A);
constexpr HRESULT kIgnored = static_cast<HRESULT>(0x800AC472);
constexpr int kForEver = 1000;

class busy_host : public testing::TestWithParam<HRESULT> {
  protected:
    busy_host() {
        asked = {};
        EXPECT_TRUE(connection.Init());
        EXPECT_TRUE(connection.com.SetEvents(true, connection.failure));
    }

    bool Disconnect(int refusals, HRESULT code) {
        answers = {refusals, code};
        return connection.com.SetEvents(false, connection.failure);
    }

    static constexpr std::size_t kUnadvise = 6;
    IntegrationHost host{16};
    CountingApp application;
    HostConnection connection;
    FixedSystemTexts texts;
    ReplacedPointer pause{ImportedFunction("Sleep"), AddressOf(NotePause)};
    ReplacedPointer pin{ImportedFunction("GetModuleHandleExW"), AddressOf(NotePin)};
    ReplacedPointer unadvise{MethodOf(&host.automation.application().events(), kUnadvise),
                             AddressOf(RefuseForAWhile)};
};

TEST_P(busy_host, is_asked_again_until_it_disconnects) {
    EXPECT_TRUE(Disconnect(4, GetParam()));
    EXPECT_EQ(connection.failure.text, u"");
    EXPECT_EQ(asked.calls, 5);
    EXPECT_EQ(asked.pauses, 4);
    EXPECT_EQ(asked.pins, 0);
    EXPECT_EQ(host.sinks(), 0U);
}

TEST_P(busy_host, is_asked_again_for_half_a_second) {
    EXPECT_FALSE(Disconnect(kForEver, GetParam()));
    EXPECT_EQ(connection.failure.code, GetParam());
    EXPECT_GE(asked.calls, 5);
    EXPECT_EQ(asked.paused, 500U); // milliseconds
    EXPECT_EQ(asked.pins, 1);
    EXPECT_FALSE(connection.com.AreEventsConnected());
}

INSTANTIATE_TEST_SUITE_P(codes, busy_host, testing::Values(kRejected, kRetryLater, kIgnored));

using refusing_host = busy_host;

TEST_F(refusing_host, is_asked_once) {
    EXPECT_FALSE(Disconnect(kForEver, E_FAIL));
    EXPECT_EQ(asked.calls, 1);
    EXPECT_EQ(asked.pauses, 0);
}

TEST_F(refusing_host, is_reported) {
    EXPECT_FALSE(Disconnect(kForEver, E_ACCESSDENIED));
    EXPECT_EQ(connection.failure.text, u"AtlUnadvise: text of 80070005");
    EXPECT_EQ(connection.failure.code, E_ACCESSDENIED);
    EXPECT_FALSE(connection.com.AreEventsConnected());
}

TEST_F(refusing_host, is_reported_by_a_shutdown_too) {
    answers = {kForEver, E_ACCESSDENIED};
    EXPECT_FALSE(connection.com.Shutdown(connection.failure));
    EXPECT_EQ(connection.failure.text, u"AtlUnadvise: text of 80070005");
    EXPECT_EQ(connection.com.Application(), nullptr);
    EXPECT_EQ(CXllCom::Instance(), nullptr);
}

TEST_F(refusing_host, keeps_the_module_in_memory) {
    EXPECT_FALSE(Disconnect(kForEver, E_FAIL));
    EXPECT_EQ(asked.pins, 1);
    EXPECT_TRUE(asked.is_own_address);
}

TEST_F(refusing_host, keeps_a_sink_that_has_no_effect) {
    EXPECT_FALSE(Disconnect(kForEver, E_FAIL));
    EXPECT_EQ(host.sinks(), 1U);
    EXPECT_EQ(host.Fire(1561, {host.Sheet()}), S_OK);
    EXPECT_EQ(application.activations, 0);
}

TEST_F(refusing_host, does_not_own_the_last_reference_to_the_sink) {
    EXPECT_FALSE(Disconnect(kForEver, E_FAIL));
    const ComPtr<IDispatch> sink = host.automation.application().events().First();
    host.automation.application().events().Clear();
    EXPECT_EQ(sink->AddRef(), 3U); // of the add-in, the test, and this one
    sink->Release();
}

TEST_F(refusing_host, can_be_connected_to_again) {
    EXPECT_FALSE(Disconnect(kForEver, E_FAIL));
    EXPECT_TRUE(connection.com.SetEvents(true, connection.failure));
    EXPECT_EQ(connection.failure.text, u"");
    EXPECT_EQ(host.Fire(1561, {host.Sheet()}), S_OK);
    EXPECT_EQ(application.activations, 1);
    EXPECT_TRUE(Disconnect(0, S_OK));
}

// ---- Hosts that call macros for events

// The host refuses to restore a property.
struct RefusedProperties {
    static HRESULT STDMETHODCALLTYPE Invoke(IDispatch* object, DISPID id, REFIID iid, LCID locale, WORD flags,
                                            DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                            UINT* wrong_argument) {
        if (flags == DISPATCH_PROPERTYPUT) {
            ++asked.calls;
            if (answers.granted-- <= 0 && answers.refusals-- > 0)
                return answers.code;
        }
        return original(object, id, iid, locale, flags, parameters, result, exception, wrong_argument);
    }

    explicit RefusedProperties(ApplicationObject& application)
        : replaced(MethodOf(static_cast<IDispatch*>(&application), 6), AddressOf(Invoke)) {
        original = reinterpret_cast<decltype(original)>(replaced.original());
    }

    static inline decltype(&Invoke) original = nullptr;
    ReplacedPointer replaced;
};

class busy_old_host : public testing::Test {
  protected:
    busy_old_host() {
        asked = {};
        host.automation.ShowAsRunning();
        host.settings().eventMacros = {u"First", u"Second", u"Third"};
        EXPECT_TRUE(connection.Init());
        EXPECT_TRUE(connection.com.SetEvents(true, connection.failure));
    }

    ProgramNames names;
    IntegrationHost host{5};
    CXllApp application;
    HostConnection connection;
    FixedSystemTexts texts;
    ReplacedPointer pause{ImportedFunction("Sleep"), AddressOf(NotePause)};
};

TEST_F(busy_old_host, is_asked_again_until_it_restores_its_macros) {
    const RefusedProperties refused(host.automation.application());
    answers = {3, kRejected};
    EXPECT_TRUE(connection.com.SetEvents(false, connection.failure));
    EXPECT_EQ(asked.calls, 6);
    EXPECT_EQ(host.settings().eventMacros, (std::array<std::u16string, 3>{u"First", u"Second", u"Third"}));
}

TEST_F(busy_old_host, is_reported_if_it_refuses_one_and_gets_the_others_back) {
    const RefusedProperties refused(host.automation.application());
    answers = {1, E_ACCESSDENIED};
    EXPECT_FALSE(connection.com.SetEvents(false, connection.failure));
    EXPECT_EQ(connection.failure.text, u"OnSheetActivate: text of 80070005");
    EXPECT_EQ(connection.failure.code, E_ACCESSDENIED);
    EXPECT_EQ(asked.calls, 3);
    EXPECT_EQ(asked.pauses, 0);
    EXPECT_EQ(host.settings().eventMacros,
              (std::array<std::u16string, 3>{u"xll_Test_OnSheetActivate", u"Second", u"Third"}));
}

TEST_F(busy_old_host, has_its_macros_again_if_it_refuses_one_of_the_add_in) {
    ASSERT_TRUE(connection.com.SetEvents(false, connection.failure));
    const RefusedProperties refused(host.automation.application());
    answers = {1, E_ACCESSDENIED, 1};
    EXPECT_FALSE(connection.com.SetEvents(true, connection.failure));
    EXPECT_EQ(connection.failure.text, u"OnSheetDeactivate: text of 80070005");
    EXPECT_EQ(connection.failure.code, E_ACCESSDENIED);
    EXPECT_FALSE(connection.com.AreEventsConnected());
    EXPECT_EQ(host.settings().eventMacros, (std::array<std::u16string, 3>{u"First", u"Second", u"Third"}));
}

} // namespace
} // namespace metrify::host

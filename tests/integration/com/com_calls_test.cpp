// How objects are called: names, flags, locales, arguments.

#include "tests/integration/fixed_system_texts.h"
#include "tests/integration/foreign_table_entry.h"
#include "tests/integration/integration_host.h"
#include "tests/integration/replaced_call.h"

namespace metrify::host {
namespace {

using Lines = std::vector<std::u16string>;

std::u16string Number(std::uint32_t number) {
    const std::string text = std::to_string(number);
    return {text.begin(), text.end()};
}

std::u16string TextOfArgument(const VARIANT& argument) {
    switch (V_VT(&argument)) {
    case VT_BSTR:
        return ComVariant(argument).Text();
    case VT_BOOL:
        return V_BOOL(&argument) != VARIANT_FALSE ? u"true" : u"false";
    case VT_ERROR:
        return V_ERROR(&argument) == DISP_E_PARAMNOTFOUND ? u"missing" : u"error";
    default:
        return u"?";
    }
}

// Records its calls: the name and its locale; flags, locale and arguments in the order of their array.
class RecordingObject final : public CountedObject<IDispatch> {
  public:
    using CountedObject::CountedObject;

    Lines lines;
    std::map<std::u16string, ComVariant> answers;
    HRESULT outcome = S_OK;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        EXPECT_EQ(iid, IID_NULL);
        EXPECT_EQ(count, 1U);
        name_ = TextOf(names[0]);
        lines.push_back(name_ + u" " + Number(locale));
        ids[0] = kId;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        if (id != kId)
            return DISP_E_MEMBERNOTFOUND;
        EXPECT_EQ(iid, IID_NULL);
        std::u16string line = u"invoke " + Number(flags) + u" " + Number(locale);
        for (UINT i = 0; i < parameters->cArgs; ++i)
            line += u" " + TextOfArgument(parameters->rgvarg[i]);
        lines.push_back(line);
        if (FAILED(outcome))
            return outcome;
        if (result && answers.contains(name_))
            ComVariant(answers[name_]).MoveTo(*result);
        return S_OK;
    }

  private:
    static constexpr DISPID kId = 77;
    std::u16string name_;
};

class com_calls : public testing::Test {
  protected:
    explicit com_calls(int version = 16) : host(version) {
        window->answers[u"Application"] = ComVariant(recorder.Get());
        host.automation.windows().SetNativeObject(ComPtr<IDispatch>(window.Get()));
    }
    ~com_calls() override { window->answers.clear(); }

    void Find() {
        ASSERT_TRUE(connection.Init());
        ASSERT_EQ(connection.com.Application(), recorder.Get());
    }

    IntegrationHost host;
    CXllApp application;
    ComPtr<RecordingObject> window = MakeObject<RecordingObject>(host.automation.context());
    ComPtr<RecordingObject> recorder = MakeObject<RecordingObject>(host.automation.context());
    HostConnection connection;
    ComVariant answer;
};

TEST_F(com_calls, for_the_application_of_a_window) {
    Find();
    EXPECT_EQ(window->lines, (Lines{u"Application 2048", u"invoke 2 2048"}));
}

TEST_F(com_calls, for_the_application_that_fail_give_the_systems_text) {
    const FixedSystemTexts texts;
    window->outcome = E_ACCESSDENIED;
    ExpectFailure(connection, u"Invoke: text of 80070005", E_ACCESSDENIED);
}

TEST_F(com_calls, for_a_macro_text_are_between_those_for_the_alerts) {
    Find();
    recorder->answers[u"DisplayAlerts"] = ComVariant(true);
    EXPECT_EQ(connection.com.RunMacroByText(u"Macro()", answer), S_OK);
    EXPECT_EQ(recorder->lines,
              (Lines{u"DisplayAlerts 1033", u"invoke 2 1033", u"DisplayAlerts 1033", u"invoke 4 1033 false",
                     u"ExecuteExcel4Macro 1033", u"invoke 1 1033 Macro()", u"DisplayAlerts 1033",
                     u"invoke 4 1033 true"}));
}

TEST_F(com_calls, for_a_macro_name_pass_its_arguments_last_first) {
    Find();
    recorder->answers[u"DisplayAlerts"] = ComVariant(false);
    const ComVariant arguments[] = {ComVariant(u"Macro"), ComVariant(u"first"), ComVariant(true)};
    EXPECT_EQ(connection.com.RunMacroByName(arguments, answer), S_OK);
    EXPECT_EQ(recorder->lines, (Lines{u"DisplayAlerts 1033", u"invoke 2 1033", u"Run 1033",
                                      u"invoke 1 1033 true first Macro"}));
}

TEST_F(com_calls, do_not_change_alerts_that_cannot_be_read) {
    Find();
    recorder->outcome = E_FAIL;
    EXPECT_EQ(connection.com.RunMacroByText(u"Macro()", answer), E_FAIL);
    EXPECT_EQ(recorder->lines, (Lines{u"DisplayAlerts 1033", u"invoke 2 1033", u"ExecuteExcel4Macro 1033",
                                      u"invoke 1 1033 Macro()"}));
}

TEST_F(com_calls, do_not_change_alerts_that_are_not_a_boolean) {
    Find();
    recorder->answers[u"DisplayAlerts"] = ComVariant(u"perhaps");
    EXPECT_EQ(connection.com.RunMacroByText(u"Macro()", answer), S_OK);
    EXPECT_EQ(recorder->lines.size(), 4U);
}

// ---- Addresses

TEST_F(com_calls, for_an_address_pass_two_arguments) {
    recorder->answers[u"AddressLocal"] = ComVariant(u"$A$1");
    std::u16string text;
    EXPECT_EQ(RangeAddress(recorder.Get(), text, false), S_OK);
    EXPECT_EQ(recorder->lines, (Lines{u"AddressLocal 1033", u"invoke 2 1033 missing missing"}));
    EXPECT_EQ(text, u"$A$1");
}

TEST_F(com_calls, for_an_external_address_pass_five_arguments) {
    recorder->answers[u"AddressLocal"] = ComVariant(u"[Book]Sheet!$A$1");
    std::u16string text;
    EXPECT_EQ(RangeAddress(recorder.Get(), text, true), S_OK);
    EXPECT_EQ(recorder->lines,
              (Lines{u"AddressLocal 1033", u"invoke 2 1033 missing true missing missing missing"}));
    EXPECT_EQ(text, u"[Book]Sheet!$A$1");
}

TEST_F(com_calls, turn_an_address_into_text) {
    recorder->answers[u"AddressLocal"] = ComVariant(std::int32_t{12});
    std::u16string text;
    EXPECT_EQ(RangeAddress(recorder.Get(), text, false), S_OK);
    EXPECT_EQ(text, u"12");
    recorder->answers[u"AddressLocal"] = ComVariant(window.Get());
    EXPECT_EQ(RangeAddress(recorder.Get(), text, false), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(text, u"12");
}

TEST_F(com_calls, for_names_turn_them_into_text) {
    recorder->answers[u"Name"] = ComVariant(std::int32_t{12});
    std::u16string name;
    EXPECT_EQ(ObjectName(recorder.Get(), name), S_OK);
    EXPECT_EQ(name, u"12");
    EXPECT_EQ(recorder->lines, (Lines{u"Name 1033", u"invoke 2 1033"}));
}

TEST_F(com_calls, for_the_active_worksheet_require_an_object) {
    Find();
    recorder->answers[u"ActiveWorksheet"] = ComVariant(u"none");
    ComPtr<IDispatch> sheet;
    EXPECT_EQ(connection.com.ActiveWorksheet(sheet), E_FAIL);
    EXPECT_FALSE(sheet);
}

// ---- The proof

class com_calls_of_version_7 : public com_calls {
  protected:
    com_calls_of_version_7() : com_calls(7) {}
    ~com_calls_of_version_7() override { recorder->answers.clear(); }
};

TEST_F(com_calls_of_version_7, for_the_proof_have_a_sign_before_the_modules_path) {
    recorder->answers[u"Application"] = ComVariant(recorder.Get());
    const ForeignTableEntry listed(L"C:\\listed.xls", recorder.Get());
    EXPECT_FALSE(connection.Init());
    const std::string path = application.GetModuleText();
    const std::u16string macro =
        u"CALL(\"%" + std::u16string(path.begin(), path.end()) + u"\",\"xlCheckInstance\",\"j\")";
    EXPECT_EQ(recorder->lines, (Lines{u"Application 1024", u"invoke 3 1024", u"ExecuteExcel4Macro 1033",
                                      u"invoke 1 1033 " + macro}));
}

// ---- Initialising and uninitialising COM

struct CountedApartment {
    static inline int entered = 0;

    static HRESULT WINAPI Enter(void* reserved) {
        const HRESULT code = CoInitializeEx(reserved, COINIT_APARTMENTTHREADED);
        entered += SUCCEEDED(code) ? 1 : 0;
        return code;
    }

    static void WINAPI Leave() {
        --entered;
        using Function = decltype(&CoUninitialize);
        reinterpret_cast<Function>(
            AddressOf(GetProcAddress(GetModuleHandleA("ole32.dll"), "CoUninitialize")))();
    }

    CountedApartment() { entered = 0; }

    ReplacedPointer enter{ImportedFunction("CoInitialize"), AddressOf(Enter)};
    ReplacedPointer leave{ImportedFunction("CoUninitialize"), AddressOf(Leave)};
};

TEST(apartment, is_left_after_the_search_by_the_window) {
    IntegrationHost host(16);
    CXllApp application;
    const CountedApartment apartment;
    {
        HostConnection connection;
        ASSERT_TRUE(connection.Init());
        EXPECT_EQ(CountedApartment::entered, 1);
    }
    EXPECT_EQ(CountedApartment::entered, 0);
}

TEST(apartment, is_left_after_a_search_that_fails) {
    IntegrationHost host(16);
    CXllApp application;
    host.automation.windows().SetNativeObject({});
    const CountedApartment apartment;
    {
        HostConnection connection;
        EXPECT_FALSE(connection.Init());
    }
    EXPECT_EQ(CountedApartment::entered, 0);
}

TEST(apartment, is_left_after_the_search_among_running_objects) {
    const ProgramNames names;
    IntegrationHost host(7);
    CXllApp application;
    host.automation.ShowAsRunning();
    const CountedApartment apartment;
    HostConnection connection;
    ASSERT_TRUE(connection.Init());
    EXPECT_EQ(CountedApartment::entered, 0);
}

TEST(apartment, is_left_if_the_callback_is_refused) {
    IntegrationHost host(7);
    CXllApp application;
    host.faults().Refuse(xlfRegister, xlretFailed);
    const CountedApartment apartment;
    HostConnection connection;
    EXPECT_FALSE(connection.Init());
    EXPECT_EQ(CountedApartment::entered, 0);
}

} // namespace
} // namespace metrify::host

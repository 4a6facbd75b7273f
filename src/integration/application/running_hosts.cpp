#include "integration/application/running_hosts.h"

#include "integration/com/dispatch_call.h"

#include <objbase.h>

namespace metrify {

namespace {

// Newer hosts have a program identifier without a number.
constexpr double kLastNumberedVersion = 7.0;

const char16_t* ProgId(double version) {
    return version > kLastNumberedVersion ? u"Excel.Application" : u"Excel.Application.5";
}

// Enumerates the objects of the running object table.
class RunningCandidates {
  public:
    // Returns false, with the reason, if the table can't be read.
    bool Open(ComFailure& failure) {
        ComPtr<IRunningObjectTable> table;
        return Worked(CreateBindCtx(0, context_.Receive()), u"CreateBindCtx() failed with error {0}",
                      failure) &&
               Worked(context_->GetRunningObjectTable(table.Receive()),
                      u"GetRunningObjectTable() failed with error {0}", failure) &&
               Worked(table->EnumRunning(monikers_.Receive()), u"EnumRunning() failed with error {0}",
                      failure) &&
               Worked(monikers_->Reset(), u"Reset() failed with error {0}", failure);
    }

    // The next object that has an `IDispatch` interface; null at the end.
    ComPtr<IDispatch> Next() {
        ComPtr<IDispatch> object;
        ComPtr<IMoniker> moniker;
        while (monikers_->Next(1, moniker.Receive(), nullptr) == S_OK)
            if (SUCCEEDED(moniker->BindToObject(context_.Get(), nullptr, IID_IDispatch, object.ReceiveAny())))
                return object;
        return {};
    }

  private:
    static bool Worked(HRESULT code, const char16_t* format, ComFailure& failure) {
        if (SUCCEEDED(code))
            return true;
        failure = ComFailure::Sentence(FilledText(format, CodeText(code)));
        return false;
    }

    ComPtr<IBindCtx> context_;
    ComPtr<IEnumMoniker> monikers_;
};

ComPtr<IDispatch> ActiveCandidate(double host_version, ComFailure& failure) {
    const std::u16string name = ProgId(host_version);
    CLSID class_id{};
    HRESULT code = CLSIDFromProgID(AsSystemText(name), &class_id);
    if (FAILED(code)) {
        failure = ComFailure::Sentence(
            FilledText(u"CLSIDFromProgID(\"{0}\", ...) failed with error {1}", name, CodeText(code)));
        return {};
    }
    ComPtr<IUnknown> active;
    code = GetActiveObject(class_id, nullptr, active.Receive());
    if (FAILED(code)) {
        failure = ComFailure::Sentence(
            FilledText(u"GetActiveObject(\"{0}\") failed with error {1}", name, CodeText(code)));
        return {};
    }
    ComPtr<IDispatch> candidate;
    code = active->QueryInterface(IID_IDispatch, candidate.ReceiveAny());
    if (FAILED(code)) {
        failure = ComFailure::Sentence(
            FilledText(u"QueryInterface(IID_IDispatch) failed with error {0}", CodeText(code)));
        return {};
    }
    return candidate;
}

// True if the candidate's application passes the test, and then gives the application.
bool IsWanted(IDispatch* candidate, const ApplicationTest& is_wanted, ComPtr<IDispatch>& application) {
    ComVariant any;
    const DispatchOutcome outcome = CallMember(candidate,
                                               {.name = u"Application",
                                                .flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                                .locale = LOCALE_USER_DEFAULT},
                                               {}, any);
    if (FAILED(outcome.code))
        return false;
    ComPtr<IDispatch> found = any.Object();
    if (!found || !is_wanted(found.Get()))
        return false;
    application = std::move(found);
    return true;
}

} // namespace

bool FindRunningApplication(double host_version, const ApplicationTest& is_wanted,
                            ComPtr<IDispatch>& application, ComFailure& failure) {
    failure = {};
    if (const auto active = ActiveCandidate(host_version, failure);
        active && IsWanted(active.Get(), is_wanted, application))
        return true;
    RunningCandidates candidates;
    if (candidates.Open(failure)) {
        while (const auto candidate = candidates.Next())
            if (IsWanted(candidate.Get(), is_wanted, application))
                return true;
    }
    if (failure.text.empty())
        failure = ComFailure::Sentence(u"Failed to find running application");
    return false;
}

} // namespace metrify

// From the running object table to the host's application object. The table lists all hosts alike, so each
// candidate is asked for a proof.

#include "integration/com/dispatch_call.h"
#include "integration/com/xll_com.h"

#include <objbase.h>

namespace metrify {

namespace {

// Hosts above this version have the plain name.
constexpr double kLastNumberedVersion = 7.0;

const char16_t* ProgId(double version) {
    return version > kLastNumberedVersion ? u"Excel.Application" : u"Excel.Application.5";
}

// The objects of the running object table, one after the other.
class RunningCandidates {
  public:
    // False, with the reason, if the table can't be read.
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

    // The next one that can be called by name; none at the end.
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

} // namespace

ComPtr<IDispatch> CXllCom::ActiveCandidate(ComFailure& failure) const {
    const std::u16string name = ProgId(host_version_);
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

bool CXllCom::IterateRot(ComFailure& failure) {
    failure = {};
    if (const auto active = ActiveCandidate(failure); active && IsOurs(active.Get()))
        return true;
    RunningCandidates candidates;
    if (candidates.Open(failure)) {
        while (const auto candidate = candidates.Next())
            if (IsOurs(candidate.Get()))
                return true;
    }
    if (failure.text.empty())
        failure = ComFailure::Sentence(u"Failed to find running application");
    return false;
}

bool CXllCom::IsOurs(IDispatch* candidate) {
    ComVariant any;
    const DispatchOutcome outcome = CallMember(candidate,
                                               {.name = u"Application",
                                                .flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                                .locale = LOCALE_USER_DEFAULT},
                                               {}, any);
    if (FAILED(outcome.code))
        return false;
    ComPtr<IDispatch> application = any.Object();
    if (!application || !CallCheckInstance(application.Get()))
        return false;
    application_ = std::move(application);
    return true;
}

} // namespace metrify

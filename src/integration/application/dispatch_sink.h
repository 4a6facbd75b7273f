#pragma once

// The object that receives the host's events.

#include "integration/com/com_ptr.h"
#include "xllrt/app/xll_app.h"

#include <atomic>
#include <oaidl.h>

namespace metrify {

/// The interface of the host's application events.
inline constexpr IID kHostApplicationEvents = {
    0x00024413, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

/// Conversion between the host's objects and the type used by the application.
inline XlHostObject* AsHostObject(IDispatch* object) {
    return reinterpret_cast<XlHostObject*>(object);
}
inline IDispatch* AsDispatch(XlHostObject* object) {
    return reinterpret_cast<IDispatch*>(object);
}

class CDispatchSink final : public IDispatch {
  public:
    /// Creates a sink for an application. Returns null if memory is exhausted.
    static ComPtr<CDispatchSink> Create(CXllApp* application);

    CDispatchSink(const CDispatchSink&) = delete;
    CDispatchSink& operator=(const CDispatchSink&) = delete;

    /// Sets the application that handles the events; without one they have no effect.
    void SetApplication(CXllApp* application) { application_ = application; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID iid, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrong_argument) override;

  private:
    explicit CDispatchSink(CXllApp* application) : application_(application) {}
    ~CDispatchSink() = default;

    CXllApp* application_;
    std::atomic<ULONG> references_ = 1;
};

} // namespace metrify

#include "xllrt/app/ribbon_callback.h"

#include "xllrt/app/app_call.h"
#include "xllrt/app/xll_app.h"
#include "xllrt/text/dual_string.h"

#include <algorithm>

namespace metrify {

namespace {

bool MayStandInName(char16_t c) {
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_' ||
           c == u'.';
}

template <class Char>
std::string NarrowOf(const Char* text) {
    CXlDualString reader(text);
    return reader.Narrow();
}

template <class Char>
CXlOper Answer(std::int32_t callback, const Char* id, const Char* tag, std::int32_t index, const Char* text,
               const Char* selectedId, std::int16_t pressed) {
    CXlOper xloResult;
    CallAppFunction(xloResult, [&]() -> const CXlOper* {
        if (CXllApp* const application = CXllApp::Instance())
            application->GetRibbonDefault(xloResult, {.type = callback,
                                                      .id = NarrowOf(id),
                                                      .tag = NarrowOf(tag),
                                                      .index = index,
                                                      .text = NarrowOf(text),
                                                      .selectedId = NarrowOf(selectedId),
                                                      .pressed = pressed != 0});
        return &xloResult;
    });
    return xloResult;
}

} // namespace

void CRibbonEventRegistrar::Notify(CXlEventArgs& /*args*/) {
    CXllApp* const application = CXllApp::Instance();
    CXlFunctionDescriptor* const callback =
        application ? application->functions.FindFunction(std::u16string_view(u"RibbonCallback")) : nullptr;
    if (!callback)
        return;
    std::u16string name = application->GetAddInName();
    std::replace_if(
        name.begin(), name.end(), [](char16_t c) { return !MayStandInName(c); }, u'_');
    callback->functionName = name + u"." + callback->functionName;
}

extern "C" {

XLOPER12* METRIFY_HOST_CALL RibbonCallback_12(std::int32_t callback, const XCHAR* id, const XCHAR* tag,
                                              std::int32_t index, const XCHAR* text, const XCHAR* selectedId,
                                              std::int16_t pressed) {
    return Answer(callback, id, tag, index, text, selectedId, pressed).ReturnValue12();
}

XLOPER* METRIFY_HOST_CALL RibbonCallback_4(std::int32_t callback, const char* id, const char* tag,
                                           std::int32_t index, const char* text, const char* selectedId,
                                           std::int16_t pressed) {
    return Answer(callback, id, tag, index, text, selectedId, pressed).ReturnValue4();
}
}

} // namespace metrify

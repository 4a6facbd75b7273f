#include "tests/integration/counted_system.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace metrify::host {

namespace {

constinit CountedSystem* system_in_force = nullptr;

template <class Function>
Function* Original(const ReplacedPointer& replaced, Function* /*like*/) {
    return reinterpret_cast<Function*>(replaced.original());
}

} // namespace

// The replacements of the system's functions.
struct CountedSystem::Functions {
    static HHOOK WINAPI SetHook(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
        CountedSystem& system = *system_in_force;
        if (system.faults_.IsCallFailing())
            return nullptr;
        const HHOOK hook = Original(system.hook_, SetWindowsHookExA)(kind, procedure, module, thread);
        system.hooks_.insert(hook);
        return hook;
    }

    static BOOL WINAPI Unhook(HHOOK hook) {
        CountedSystem& system = *system_in_force;
        system.hooks_.erase(hook);
        return Original(system.unhook_, UnhookWindowsHookEx)(hook);
    }

    static HFONT WINAPI MakeFont(int height, int width, int escapement, int orientation, int weight,
                                 DWORD italic, DWORD underline, DWORD strike_out, DWORD characters,
                                 DWORD output, DWORD clip, DWORD quality, DWORD pitch, LPCSTR face) {
        CountedSystem& system = *system_in_force;
        if (system.faults_.IsCallFailing())
            return nullptr;
        const HFONT font = Original(system.make_font_, CreateFontA)(
            height, width, escapement, orientation, weight, italic, underline, strike_out, characters, output,
            clip, quality, pitch, face);
        system.fonts_.insert(font);
        return font;
    }

    static BOOL WINAPI Delete(HGDIOBJ object) {
        CountedSystem& system = *system_in_force;
        system.fonts_.erase(object);
        return Original(system.delete_, DeleteObject)(object);
    }

    // Only windows of the hook.
    static HWND WINAPI MakeWindow(DWORD more_style, LPCSTR class_name, LPCSTR title, DWORD style, int left,
                                  int top, int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                                  void* parameter) {
        CountedSystem& system = *system_in_force;
        const bool is_control = !IS_INTRESOURCE(class_name) && (std::string_view(class_name) == "BUTTON" ||
                                                                std::string_view(class_name) == "ComboBox");
        if (is_control && system.faults_.IsCallFailing())
            return nullptr;
        const HWND window =
            Original(system.make_window_, CreateWindowExA)(more_style, class_name, title, style, left, top,
                                                           width, height, parent, menu, instance, parameter);
        if (is_control)
            system.controls_.insert(window);
        return window;
    }
};

CountedSystem::CountedSystem(FaultSwitch& faults)
    : faults_(faults), hook_(ImportedFunction("SetWindowsHookExA"), AddressOf(Functions::SetHook)),
      unhook_(ImportedFunction("UnhookWindowsHookEx"), AddressOf(Functions::Unhook)),
      make_font_(ImportedFunction("CreateFontA"), AddressOf(Functions::MakeFont)),
      delete_(ImportedFunction("DeleteObject"), AddressOf(Functions::Delete)),
      make_window_(ImportedFunction("CreateWindowExA"), AddressOf(Functions::MakeWindow)) {
    system_in_force = this;
}

CountedSystem::~CountedSystem() {
    system_in_force = nullptr;
}

std::vector<HWND> CountedSystem::Controls() const {
    std::vector<HWND> standing;
    std::copy_if(controls_.begin(), controls_.end(), std::back_inserter(standing),
                 [](HWND window) { return IsWindow(window) != FALSE; });
    return standing;
}

} // namespace metrify::host

#include "tests/integration/recorded_theme.h"

#include "host/sheet/utf8.h"

#include <array>
#include <string_view>
#include <uxtheme.h>

namespace metrify::host {

namespace {

constinit RecordedTheme* recorder = nullptr;

std::string Text(const RECT& place) {
    return " (" + std::to_string(place.left) + "," + std::to_string(place.top) + "," +
           std::to_string(place.right) + "," + std::to_string(place.bottom) + ")";
}

std::string Text(int part, int state) {
    return " " + std::to_string(part) + " " + std::to_string(state);
}

// The font that a text is drawn in.
std::string FontHeight(HDC context) {
    LOGFONTA font{};
    GetObjectA(GetCurrentObject(context, OBJ_FONT), sizeof(font), &font);
    return " of height " + std::to_string(font.lfHeight);
}

std::string Narrow(const wchar_t* text) {
    return ToUtf8(reinterpret_cast<const char16_t*>(text));
}

} // namespace

// The replacements of the system's functions.
struct RecordedTheme::Functions {
    static HANDLE WINAPI Open(HWND window, const wchar_t* class_name) {
        const std::string name = Narrow(class_name);
        recorder->windows_.insert(window);
        if (!recorder->Note("OpenThemeData", name))
            return nullptr;
        const auto theme = reinterpret_cast<HANDLE>(++recorder->last_theme_);
        recorder->open_[theme] = name;
        return theme;
    }

    static HRESULT WINAPI Close(HANDLE theme) {
        recorder->Note("CloseThemeData", recorder->ClassOf(theme));
        return recorder->open_.erase(theme) == 1 ? S_OK : E_HANDLE;
    }

    static HRESULT WINAPI DrawBackground(HANDLE theme, HDC, int part, int state, const RECT* place,
                                         const RECT* clip) {
        return Result("DrawThemeBackground", theme,
                      Text(part, state) + Text(*place) + (clip ? " clipped" : ""));
    }

    // The content lies two dots inside.
    static HRESULT WINAPI ContentRect(HANDLE theme, HDC, int part, int state, const RECT* place,
                                      RECT* content) {
        *content = *place;
        InflateRect(content, -2, -2);
        return Result("GetThemeBackgroundContentRect", theme, Text(part, state) + Text(*place));
    }

    static HRESULT WINAPI DrawText(HANDLE theme, HDC context, int part, int state, const wchar_t* text,
                                   int length, DWORD flags, DWORD more_flags, const RECT* place) {
        return Result("DrawThemeText", theme,
                      Text(part, state) + " " + Narrow(text) + " " + std::to_string(length) + " " +
                          std::to_string(flags) + " " + std::to_string(more_flags) + Text(*place) +
                          FontHeight(context));
    }

    static HRESULT WINAPI PartSize(HANDLE theme, HDC, int part, int state, const RECT*, int, SIZE*) {
        return Result("GetThemePartSize", theme, Text(part, state));
    }

    static HRESULT Result(const char* function, HANDLE theme, const std::string& given) {
        return recorder->Note(function, recorder->ClassOf(theme) + given) ? S_OK : E_FAIL;
    }

    // ---- The classic drawing

    static BOOL WINAPI DrawFrame(HDC, RECT* place, UINT type, UINT state) {
        recorder->Note("DrawFrameControl", std::to_string(type) + " " + std::to_string(state) + Text(*place));
        return TRUE;
    }

    static int WINAPI DrawClassicText(HDC context, const char* text, int length, RECT* place, UINT flags) {
        recorder->Note("DrawTextA", std::string(text) + " " + std::to_string(length) + " " +
                                        std::to_string(flags) + Text(*place) + FontHeight(context));
        return 1;
    }

    // ---- Where they are found

    static HMODULE WINAPI Load(const char* name) {
        const auto original = reinterpret_cast<decltype(&LoadLibraryA)>(recorder->load_.original());
        if (!std::string_view(name).ends_with("UxTheme.dll"))
            return original(name);
        recorder->libraryPath = name;
        return recorder->hasLibrary ? original(name) : nullptr;
    }

    static FARPROC WINAPI Find(HMODULE library, const char* name) {
        static const std::map<std::string_view, void*> functions = {
            {"OpenThemeData", AddressOf(Open)},
            {"CloseThemeData", AddressOf(Close)},
            {"DrawThemeBackground", AddressOf(DrawBackground)},
            {"GetThemeBackgroundContentRect", AddressOf(ContentRect)},
            {"DrawThemeText", AddressOf(DrawText)},
            {"GetThemePartSize", AddressOf(PartSize)},
        };
        const auto original = reinterpret_cast<decltype(&GetProcAddress)>(recorder->find_.original());
        const auto found = IS_INTRESOURCE(name) ? functions.end() : functions.find(name);
        if (found == functions.end())
            return original(library, name);
        return recorder->missing.contains(name) ? nullptr : reinterpret_cast<FARPROC>(found->second);
    }
};

RecordedTheme::RecordedTheme()
    : load_(ImportedFunction("LoadLibraryA"), AddressOf(Functions::Load)),
      find_(ImportedFunction("GetProcAddress"), AddressOf(Functions::Find)),
      frame_(ImportedFunction("DrawFrameControl"), AddressOf(Functions::DrawFrame)),
      text_(ImportedFunction("DrawTextA"), AddressOf(Functions::DrawClassicText)) {
    recorder = this;
}

RecordedTheme::~RecordedTheme() {
    recorder = nullptr;
}

std::vector<std::string> RecordedTheme::Openings() {
    std::vector<std::string> lines = Lines();
    std::erase_if(lines, [](const std::string& line) {
        return !line.starts_with("OpenThemeData") && !line.starts_with("CloseThemeData");
    });
    return lines;
}

bool RecordedTheme::Note(const std::string& function, const std::string& given) {
    const std::string line = function + " " + given;
    lines_.push_back(line);
    const bool is_failing = faults && faults->IsCallFailing();
    return !is_failing && !refused.contains(function) && !refused.contains(line);
}

std::string RecordedTheme::ClassOf(HANDLE theme) const {
    const auto found = open_.find(theme);
    return found != open_.end() ? found->second : "that is not open";
}

} // namespace metrify::host

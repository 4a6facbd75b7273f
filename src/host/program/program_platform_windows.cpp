#include "host/automation/automation_host.h"
#include "host/program/program_platform.h"
#include "host/sheet/utf8.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <windows.h>

namespace metrify::host {

std::vector<std::string> ProgramArguments(int /*argc*/, char** /*argv*/) {
    // The arguments of main have lost the characters that are not in the code page.
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    arguments.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        arguments.push_back(ToUtf8(std::filesystem::path(wide[i]).u16string()));
    LocalFree(wide);
    return arguments;
}

std::string ModuleBesideProgram() {
    std::array<wchar_t, 32768> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return ToUtf8(std::filesystem::path(path.data()).replace_filename("Metrify.xll").u16string());
}

void UseBinaryStreams() {
    for (std::FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}

bool ServeOtherPrograms(Host& host) {
    AutomationHost automation(host);
    automation.ShowAsRunning();
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return true;
}

} // namespace metrify::host

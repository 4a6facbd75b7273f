#include "cli/console.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <windows.h> // CommandLineToArgvW too

namespace metrify {

namespace {

struct local_free {
    void operator()(wchar_t** memory) const { LocalFree(memory); }
};

std::string utf8_of(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(std::max(size, 1)), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back(); // the terminator
    return bytes;
}

// The console belongs to other programs as well, so its code page is restored at the end.
void show_utf8() {
    static const UINT previous = GetConsoleOutputCP();
    if (previous != 0 && SetConsoleOutputCP(CP_UTF8) != 0)
        (void)std::atexit([] { SetConsoleOutputCP(previous); });
}

} // namespace

// The arguments of main are in the code page of the system, which lacks most characters.
std::vector<std::string> program_arguments(int /*argc*/, const char* const* /*argv*/) {
    int count = 0;
    const std::unique_ptr<wchar_t*[], local_free> words(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::string> arguments;
    for (int i = 1; words != nullptr && i < count; ++i)
        arguments.push_back(utf8_of(words[static_cast<std::size_t>(i)]));
    return arguments;
}

std::string environment_variable(const char* name) {
    const std::string bytes(name);
    const wchar_t* const value = _wgetenv(std::wstring(bytes.begin(), bytes.end()).c_str());
    return value == nullptr ? std::string() : utf8_of(value);
}

void use_binary_streams() {
    show_utf8();
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool is_interactive() {
    return _isatty(_fileno(stdin)) != 0 && _isatty(_fileno(stdout)) != 0;
}

bool is_error_shown_to_person() {
    return _isatty(_fileno(stderr)) != 0;
}

// The Windows console provides line editing and a history.
struct line_reader::terminal {};

line_reader::line_reader() = default;
line_reader::~line_reader() = default;

void line_reader::complete_with(completer) {} // NOLINT: the other platform takes it over

line_reader::outcome line_reader::read(std::string_view prompt, std::string& line) {
    std::cout << prompt << std::flush;
    if (!std::getline(std::cin, line))
        return outcome::end;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return outcome::line;
}

} // namespace metrify

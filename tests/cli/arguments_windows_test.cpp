// Arguments with letters that are in no code page of the system.

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <process.h>
#include <string>
#include <windows.h>

namespace {

namespace fs = std::filesystem;

fs::path program() {
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    return fs::path(name).parent_path() / L"metrify.exe";
}

/// A file whose name has letters of several scripts, in the folder for temporary files.
class named_file {
  public:
    explicit named_file(const char* text) { std::ofstream(path_, std::ios::binary) << text; }
    ~named_file() { fs::remove(path_); }
    named_file(const named_file&) = delete;
    named_file& operator=(const named_file&) = delete;
    const wchar_t* name() const { return path_.c_str(); }

  private:
    fs::path path_ = fs::temp_directory_path() / L"metrify-\u00b5\u03a9\u0416.txt";
};

TEST(metrify_program, opens_files_with_any_letters_in_their_names) {
    const named_file file("");
    const std::wstring exe = program().native();
    EXPECT_EQ(_wspawnl(_P_WAIT, exe.c_str(), L"metrify", L"run", file.name(), nullptr), 0);
    EXPECT_EQ(_wspawnl(_P_WAIT, exe.c_str(), L"metrify", L"run", L"\u00b5\u03a9\u0416", nullptr), 2);
}

TEST(metrify_program, reads_columns_and_units_of_files_with_any_letters_in_their_names) {
    const std::wstring exe = program().native();
    const named_file file("");
    EXPECT_EQ(_wspawnl(_P_WAIT, exe.c_str(), L"metrify", L"columns", L"--from", L"m", file.name(), nullptr),
              0);
    EXPECT_EQ(_wspawnl(_P_WAIT, exe.c_str(), L"metrify", L"units", L"--units", file.name(), L"zzz", nullptr),
              1);
}

// A name in the message shows how the program has read it.
TEST(metrify_program, takes_arguments_in_UTF_8) {
    const fs::path shown = fs::temp_directory_path() / L"metrify-shown.txt";
    const std::wstring exe = program().native();
    const std::wstring command =
        L"\"\"" + exe + L"\" convert 1 \u03a9\u0416 m 2>\"" + shown.native() + L"\"\"";
    EXPECT_EQ(_wsystem(command.c_str()), 1);
    std::ifstream in(shown, std::ios::binary);
    const std::string message(std::istreambuf_iterator<char>(in), {});
    EXPECT_NE(message.find("\xCE\xA9\xD0\x96"), std::string::npos) << message;
    in.close();
    fs::remove(shown);
}

} // namespace

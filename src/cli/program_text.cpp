#include "cli/program_text.h"

#include "base/file_path.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <ostream>
#include <string_view>
#include <system_error>

namespace metrify {

namespace {

// True if a mark was there.
bool remove_byte_order_mark(std::string& text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (!text.starts_with(mark))
        return false;
    text.erase(0, mark.size());
    return true;
}

// True if a line ended in CR LF.
bool remove_carriage_returns(std::string& text) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            text[kept++] = text[i];
    const bool were_any = kept < text.size();
    text.resize(kept);
    return were_any;
}

std::string note_on(bool had_mark, bool had_returns) {
    if (had_mark && had_returns)
        return "a byte order mark and carriage returns at line ends are ignored";
    if (had_mark)
        return "a byte order mark is ignored";
    return had_returns ? "carriage returns at line ends are ignored" : "";
}

bool is_utf_16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

} // namespace

bool program_text::read(std::istream& in) {
    std::array<char, 16384> block;
    text.clear();
    errno = 0;
    do {
        in.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(in.gcount()));
    } while (in);
    if (in.bad()) {
        reason = errno != 0 ? std::generic_category().message(errno) : "cannot be read to its end";
        return false;
    }
    if (is_utf_16(text)) {
        reason = "is encoded in UTF-16; save it as UTF-8";
        return false;
    }
    if (const std::size_t zero = text.find('\0'); zero != std::string::npos) {
        reason = "holds a zero byte at offset " + std::to_string(zero) + ", where a program text would end";
        return false;
    }
    const bool had_mark = remove_byte_order_mark(text);
    note = note_on(had_mark, remove_carriage_returns(text));
    return true;
}

bool program_text::read_file(const std::string& file) {
    errno = 0;
    std::ifstream in(path_of(file), std::ios::binary);
    if (in)
        return read(in);
    reason = std::generic_category().message(errno);
    return false;
}

bool program_text::read_named(const std::string& file, std::istream& standard_input, std::ostream& err) {
    const bool is_standard_input = file == "-";
    const bool is_read = is_standard_input ? read(standard_input) : read_file(file);
    const std::string& remark = is_read ? note : reason;
    if (!remark.empty())
        err << "metrify: " << (is_standard_input ? "standard input" : file) << ": " << remark << '\n';
    return is_read;
}

} // namespace metrify

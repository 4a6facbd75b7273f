// Compares the messages in the sources with tests/listings/messages.txt, which the golden programs show, and
// messages_not_shown.txt.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path source_folder(METRIFY_SOURCE_DIR);

/// Reads the string literals of a source; adjacent literals are concatenated.
class literal_reader {
  public:
    explicit literal_reader(std::string text) : text_(std::move(text)) {}

    std::vector<std::string> read() {
        std::vector<std::string> found;
        while (at_ < text_.size()) {
            if (text_[at_] == '"') {
                found.emplace_back();
                while (at_ < text_.size() && text_[at_] == '"') {
                    found.back() += quoted('"');
                    skip_blanks_and_comments();
                }
            } else if (text_[at_] == '\'' && !std::isalnum(static_cast<unsigned char>(text_[at_ - 1]))) {
                quoted('\'');
            } else if (is_comment()) {
                skip_comment();
            } else {
                ++at_;
            }
        }
        return found;
    }

  private:
    bool is_comment() const { return text_.compare(at_, 2, "//") == 0; }
    void skip_comment() { at_ = std::min(text_.find('\n', at_), text_.size()); }
    void skip_blanks_and_comments() {
        while (at_ < text_.size() && (std::isspace(static_cast<unsigned char>(text_[at_])) || is_comment()))
            is_comment() ? skip_comment() : static_cast<void>(++at_);
    }
    std::string quoted(char quote) {
        std::string inside;
        for (++at_; at_ < text_.size() && text_[at_] != quote; ++at_)
            if (text_[at_] == '\\')
                inside += text_[++at_] == 'n' ? '\n' : text_[at_];
            else
                inside += text_[at_];
        ++at_;
        return inside;
    }

    std::string text_;
    std::size_t at_ = 0;
};

std::string without_newlines(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
    return text;
}

/// All literals of the calculator except the help of its functions.
std::set<std::string> literals() {
    std::set<std::string> found;
    for (const char* folder : {"calc", "functions", "numerics"}) {
        for (const fs::directory_entry& entry : fs::directory_iterator(source_folder / "src" / folder)) {
            if (entry.path().filename().string().find("function_help") == 0)
                continue;
            std::ifstream in(entry.path(), std::ios::binary);
            literal_reader source({std::istreambuf_iterator<char>(in), {}});
            for (const std::string& literal : source.read())
                found.insert(literal);
        }
    }
    return found;
}

std::vector<std::string> lines_of(const char* file) {
    std::ifstream in(source_folder / "tests" / "listings" / file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#')
            lines.push_back(line);
    return lines;
}

/// True if the text may be a message or a part of one.
bool is_message(const std::string& literal) {
    return literal.find("ERROR") != std::string::npos || literal.find("Cannot") == 0 ||
           (literal.size() > 2 && literal.substr(literal.size() - 2) == ".\n");
}

/// True if the text is a concatenation of the parts and of numbers.
bool is_made_of(const std::string& text, const std::set<std::string>& parts) {
    std::vector<bool> reached(text.size() + 1);
    reached[0] = true;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!reached[at])
            continue;
        if (std::isdigit(static_cast<unsigned char>(text[at])))
            reached[at + 1] = true;
        for (const std::string& part : parts)
            if (text.compare(at, part.size(), part) == 0)
                reached[at + part.size()] = true;
    }
    return reached[text.size()];
}

TEST(messages, of_the_sources_are_all_listed) {
    std::vector<std::string> listed = lines_of("messages.txt");
    for (const std::string& line : lines_of("messages_not_shown.txt"))
        listed.push_back(line);
    int count = 0;
    for (const std::string& literal : literals()) {
        if (!is_message(literal))
            continue;
        ++count;
        const std::string text = without_newlines(literal);
        EXPECT_TRUE(std::any_of(listed.begin(), listed.end(), [&](const std::string& line) {
            return line.find(text) != std::string::npos;
        })) << literal;
    }
    EXPECT_GT(count, 100);
}

TEST(messages, that_are_listed_are_in_the_sources) {
    std::set<std::string> parts;
    for (const std::string& literal : literals()) {
        const std::string part = without_newlines(literal);
        if (part.empty())
            continue;
        parts.insert(part);
        // Trailing blanks are not listed.
        if (part.back() == ' ' && part.size() > 1)
            parts.insert(part.substr(0, part.size() - 1));
    }
    for (const char* file : {"messages.txt", "messages_not_shown.txt"})
        for (const std::string& line : lines_of(file))
            EXPECT_TRUE(is_made_of(line, parts)) << file << ": " << line;
}

TEST(messages, are_listed_in_one_place) {
    const std::vector<std::string> shown = lines_of("messages.txt");
    for (const std::string& line : lines_of("messages_not_shown.txt"))
        EXPECT_EQ(std::count(shown.begin(), shown.end(), line), 0) << line;
    EXPECT_EQ(std::set<std::string>(shown.begin(), shown.end()).size(), shown.size());
}

} // namespace

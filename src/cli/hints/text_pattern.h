#pragma once

#include <regex>
#include <string>

namespace metrify {

enum class letter_case { as_written, any };

/// A regular expression, compiled when it is made. The templates of <regex> take seconds to compile: they are
/// used through this class, which compiles them in one file.
class text_pattern {
  public:
    explicit text_pattern(const char* expression, letter_case letters = letter_case::as_written);

    /// True if the whole text is of this form. `parts` refers to the text.
    bool matches(const std::string& text, std::smatch& parts) const;
    /// True if a part of the text is of this form. `first` refers to the first one in the text.
    bool finds(const std::string& text, std::smatch& first) const;
    bool is_in(const std::string& text) const;
    /// The text with each part of this form replaced, where `$1` stands for the first group.
    [[nodiscard]] std::string replaced(const std::string& text, const char* by) const;

  private:
    std::regex expression_;
};

} // namespace metrify

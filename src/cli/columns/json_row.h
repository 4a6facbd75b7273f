#pragma once

// One row as a line of JSON.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

/// The keys of the columns as JSON strings. A column that has no name gets its number as the key.
std::vector<std::string> json_keys(const std::vector<std::string>& names);

/// Builds an object with the keys, or an array if there are none.
class json_row {
  public:
    json_row(std::string& out, const std::vector<std::string>& keys);

    void add_number(double value);
    void add_text(std::string_view text);
    void add_null();
    void finish();

  private:
    void begin_value();

    std::string& out_;
    const std::vector<std::string>& keys_;
    std::size_t count_ = 0;
};

/// Appends a text as a JSON string. Bytes that are not UTF-8 become U+FFFD.
void append_json_string(std::string& out, std::string_view text);

} // namespace metrify

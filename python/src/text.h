#pragma once

// Texts of Python and of the library. Bytes that are no UTF-8 are surrogates in Python, as in file names, so
// that every text of the library can be shown and given back unchanged.

#include <pybind11/pybind11.h>
#include <string_view>

namespace metrify_python {

/// The bytes of a Python text, which live as long as this object.
class text_bytes {
  public:
    explicit text_bytes(const pybind11::str& text);

    std::string_view view() const { return view_; }
    const char* data() const { return view_.data(); }
    std::size_t size() const { return view_.size(); }

  private:
    pybind11::object owner_;
    std::string_view view_;
};

pybind11::str to_str(std::string_view text);

} // namespace metrify_python

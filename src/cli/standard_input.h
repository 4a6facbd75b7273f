#pragma once

// Standard input that tells a failure from the end. std::cin takes both for the end.

#include <array>
#include <streambuf>

namespace metrify {

/// A stream on it turns bad where reading fails, with the reason in errno.
class standard_input_buffer : public std::streambuf {
  protected:
    int_type underflow() override;

  private:
    std::array<char, 16384> block_ = {};
};

} // namespace metrify

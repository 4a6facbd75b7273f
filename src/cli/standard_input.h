#pragma once

// Standard input with read errors reported. std::cin treats them as the end of input.

#include <array>
#include <streambuf>

namespace metrify {

/// If reading fails, badbit is set in the stream and errno holds the reason.
class standard_input_buffer : public std::streambuf {
  protected:
    int_type underflow() override;

  private:
    std::array<char, 16384> block_ = {};
};

} // namespace metrify

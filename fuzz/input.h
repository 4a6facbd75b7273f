#pragma once

// What the targets share: decisions and values from the input, and a check.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace metrify_fuzz {

inline void Require(bool holds) {
    if (!holds)
        std::abort();
}

/// Reads the input byte by byte, and zeros after its end.
class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool IsEmpty() const { return size_ == 0; }

    unsigned Take(unsigned count) {
        if (size_ == 0)
            return 0;
        --size_;
        return *data_++ % count;
    }

    std::int32_t TakeInteger() {
        std::uint32_t bits = 0;
        for (int i = 0; i < 4; ++i)
            bits = bits << 8U | Take(256);
        return static_cast<std::int32_t>(bits);
    }

    /// Any eight bytes as a number; a usual one if there are fewer.
    double TakeNumber() {
        double number = 3.5;
        if (size_ >= sizeof number) {
            std::memcpy(&number, data_, sizeof number);
            Skip(sizeof number);
        }
        return number;
    }

    /// The bytes up to the next zero byte, which is skipped.
    std::string TakeText() {
        const std::string_view rest(reinterpret_cast<const char*>(data_), size_);
        std::string text(rest.substr(0, rest.find('\0')));
        Skip(std::min(text.size() + 1, size_));
        return text;
    }

    /// All that is left.
    std::string TakeRest() {
        std::string text(reinterpret_cast<const char*>(data_), size_);
        Skip(size_);
        return text;
    }

  private:
    void Skip(std::size_t count) {
        data_ += count;
        size_ -= count;
    }

    const std::uint8_t* data_;
    std::size_t size_;
};

} // namespace metrify_fuzz

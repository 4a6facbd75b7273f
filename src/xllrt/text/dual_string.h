#pragma once

// A text that the host passed in one width and that may be needed in the other.

#include "xllrt/text/xchar.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace metrify {

/// Converts on first use and keeps the result. The text passed to the constructor is not copied.
class CXlDualString {
  public:
    // Bits of the state.
    static constexpr std::uint16_t kNarrowOwned = 0x01;
    static constexpr std::uint16_t kNarrowPresent = 0x02;
    static constexpr std::uint16_t kWideOwned = 0x10;
    static constexpr std::uint16_t kWidePresent = 0x20;

    /// The empty text.
    CXlDualString() = default;
    /// A terminated text, not owned, which must outlive this object. Null is the empty text.
    explicit CXlDualString(const char* narrow) : narrow_(narrow), state_(kNarrowPresent) {}
    explicit CXlDualString(const XCHAR* wide) : wide_(wide), state_(kWidePresent) {}
    CXlDualString(const CXlDualString&) = delete;
    CXlDualString& operator=(const CXlDualString&) = delete;
    ~CXlDualString();

    /// The text in one width; never null.
    const char* Narrow();
    const XCHAR* Wide();

    /// Becomes a copy of the text.
    void Assign(const std::string& text);

    std::uint16_t State() const { return state_; }

  private:
    bool NarrowPlainText();
    void Release();

    static constexpr std::size_t kShortText = 48;

    const char* narrow_ = nullptr;
    const XCHAR* wide_ = nullptr;
    std::uint16_t state_ = 0;
    char short_narrow_[kShortText]; // NOLINT: set when narrow_ points at it
};

} // namespace metrify

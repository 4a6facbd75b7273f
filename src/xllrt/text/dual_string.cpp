#include "xllrt/text/dual_string.h"

#include "xllrt/text/code_page.h"

#include <memory>

namespace metrify {

namespace {

template <class Char>
const Char* NewCopy(const std::basic_string<Char>& text) {
    auto copy = std::make_unique<Char[]>(text.size() + 1);
    text.copy(copy.get(), text.size());
    return copy.release();
}

} // namespace

CXlDualString::~CXlDualString() {
    Release();
}

void CXlDualString::Release() {
    if ((state_ & kNarrowOwned) != 0 && narrow_ != short_narrow_)
        delete[] narrow_;
    if ((state_ & kWideOwned) != 0)
        delete[] wide_;
    narrow_ = nullptr;
    wide_ = nullptr;
    state_ = 0;
}

// A short text of ASCII characters is the same in every code page, and needs no memory. False for any other.
bool CXlDualString::NarrowPlainText() {
    for (std::size_t i = 0; i < kShortText && wide_[i] < 0x80; ++i) {
        short_narrow_[i] = static_cast<char>(wide_[i]);
        if (wide_[i] == 0)
            return true;
    }
    return false;
}

const char* CXlDualString::Narrow() {
    if (!narrow_) {
        const bool is_empty = !wide_ || *wide_ == 0;
        if (is_empty)
            narrow_ = "";
        else
            narrow_ = NarrowPlainText() ? short_narrow_ : NewCopy(ToNarrow(wide_));
        state_ |= is_empty ? kNarrowPresent : kNarrowPresent | kNarrowOwned;
    }
    return narrow_;
}

const XCHAR* CXlDualString::Wide() {
    if (!wide_) {
        const bool is_empty = !narrow_ || *narrow_ == 0;
        wide_ = is_empty ? u"" : NewCopy(ToWide(narrow_));
        state_ |= is_empty ? kWidePresent : kWidePresent | kWideOwned;
    }
    return wide_;
}

void CXlDualString::Assign(const std::string& text) {
    const char* copy = NewCopy(text);
    Release();
    narrow_ = copy;
    state_ = kNarrowPresent | kNarrowOwned;
}

} // namespace metrify

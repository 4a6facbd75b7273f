#include "xllrt/exceptions.h"

#include "xllrt/code_page.h"
#include "xllrt/format_printf.h"
#include "xllrt/message_catalogue.h"

namespace metrify {

namespace {

// Result codes of components have the topmost bit set if they are errors.
constexpr std::uint32_t kComErrorBit = 0x80000000;

std::u16string HexText(std::uint32_t code) {
    std::u16string text;
    FormatPrintf(text, u"0x%lX", code);
    return text;
}

std::u16string StructuredMessage(std::uint32_t code) {
    std::u16string message;
    FormatMessageText(message, kMessageStructuredException, HexText(code));
    return message;
}

std::u16string ComMessage(const std::u16string& call, std::uint32_t code) {
    if ((code & kComErrorBit) == 0) {
        return call;
    }
    std::u16string message;
    FormatMessageText(message, kMessageCallFailed, call, HexText(code));
    return message;
}

} // namespace

CXlRuntimeException::CXlRuntimeException(unsigned message_number)
    : CXlRuntimeException(MessageText(message_number)) {}

CXlRuntimeException::CXlRuntimeException(const std::string& message)
    : std::runtime_error(message), wide_(ToWide(message)) {}

CXlRuntimeException::CXlRuntimeException(const std::u16string& message)
    : std::runtime_error(ToNarrow(message)), wide_(message) {}

CXlStructuredException::CXlStructuredException(std::uint32_t code)
    : CXlStructuredException(StructuredMessage(code), code) {}

CXlStructuredException::CXlStructuredException(const std::u16string& message, std::uint32_t code)
    : CXlRuntimeException(message), code_(code) {}

CXlComException::CXlComException(const std::u16string& call, std::uint32_t code)
    : CXlRuntimeException(ComMessage(call, code)), call_(call), code_((code & kComErrorBit) != 0 ? code : 0) {
}

CXlErrorException::CXlErrorException(const std::u16string& message, std::uint32_t error_code)
    : CXlRuntimeException(message), error_code_(error_code) {}

CXlErrorException::CXlErrorException(unsigned message_number, std::uint32_t error_code)
    : CXlRuntimeException(message_number), error_code_(error_code) {}

} // namespace metrify

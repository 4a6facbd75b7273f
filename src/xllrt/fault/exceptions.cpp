#include "xllrt/fault/exceptions.h"

#include "xllrt/text/code_page.h"
#include "xllrt/text/format_printf.h"
#include "xllrt/text/message_catalogue.h"

namespace metrify {

namespace {

// COM result codes have the topmost bit set if they are errors.
constexpr std::uint32_t kComErrorBit = 0x80000000;

// A string table may have letters that the narrow text cannot represent, so the wide text is read separately.
std::u16string WideTextOf(unsigned message_number) {
    return message_number < kMessageCount ? WideMessageText(message_number)
                                          : ToWide(MessageText(message_number));
}

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
    if ((code & kComErrorBit) == 0)
        return call;
    std::u16string message;
    FormatMessageText(message, kMessageCallFailed, call, HexText(code));
    return message;
}

} // namespace

CXlRuntimeException::CXlRuntimeException(unsigned message_number)
    : std::runtime_error(MessageText(message_number)), wide_(WideTextOf(message_number)) {}

CXlRuntimeException::CXlRuntimeException(const std::string& message)
    : std::runtime_error(message), wide_(ToWide(message)) {}

CXlRuntimeException::CXlRuntimeException(const std::u16string& message)
    : std::runtime_error(ToNarrow(message)), wide_(message) {}

CXlStructuredException::CXlStructuredException(unsigned message_number, std::uint32_t code)
    : CXlRuntimeException(message_number), code_(code) {}

CXlStructuredException::CXlStructuredException(const std::u16string& message, std::uint32_t code)
    : CXlRuntimeException(message), code_(code) {}

CXlStructuredException CXlStructuredException::OfFault(std::uint32_t code) {
    return CXlStructuredException(StructuredMessage(code), code);
}

CXlComException::CXlComException(unsigned message_number) : CXlRuntimeException(message_number) {}

CXlComException::CXlComException(const std::u16string& message) : CXlRuntimeException(message) {}

CXlComException::CXlComException(const std::u16string& call, std::uint32_t code)
    : CXlRuntimeException(ComMessage(call, code)), call_(call), code_((code & kComErrorBit) != 0 ? code : 0) {
}

CXlErrorException::CXlErrorException(unsigned message_number, std::uint32_t error_code)
    : CXlRuntimeException(message_number), error_code_(error_code) {}

CXlErrorException::CXlErrorException(const std::u16string& message, std::uint32_t error_code)
    : CXlRuntimeException(message), error_code_(error_code) {}

} // namespace metrify

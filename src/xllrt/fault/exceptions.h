#pragma once

// The exceptions of the runtime. The wrapper around an entry of the add-in catches their base class and turns
// it into a cell.

#include <cstdint>
#include <stdexcept>
#include <string>

namespace metrify {

/// The base class. It holds its message in both widths.
class CXlRuntimeException : public std::runtime_error {
  public:
    /// With the unformatted message of the catalogue, read in each width; "Unknown error" if the number is
    /// not in the catalogue.
    explicit CXlRuntimeException(unsigned message_number);
    explicit CXlRuntimeException(const std::string& message);
    explicit CXlRuntimeException(const std::u16string& message);

    /// The wide message; `what()` is the narrow one.
    const std::u16string& WideMessage() const noexcept { return wide_; }

  private:
    std::u16string wide_;
};

/// A value cannot be converted to the requested type.
class CXlConversionException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// An index is outside an array.
class CXlOutOfRangeException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// An argument is invalid for the operation.
class CXlIllegalArgumentException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// A record of this type has no cells.
class CXlBadOperTypeException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// A text is too long for its destination.
class CXlStringTooLongException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// A fault that the operating system reported.
class CXlStructuredException : public CXlRuntimeException {
  public:
    /// A single number is that of a message.
    explicit CXlStructuredException(unsigned message_number, std::uint32_t code = 0);
    explicit CXlStructuredException(const std::u16string& message, std::uint32_t code = 0);

    /// With the message for a code, which contains the code in hexadecimal.
    static CXlStructuredException OfFault(std::uint32_t code);

    std::uint32_t Code() const noexcept { return code_; }

  private:
    std::uint32_t code_;
};

/// A failed COM call.
class CXlComException : public CXlRuntimeException {
  public:
    /// Without the name of a call, and with code 0. A single number is that of a message.
    explicit CXlComException(unsigned message_number);
    explicit CXlComException(const std::u16string& message);

    /// With the name of the call and the result code in the message. If the code is not an error, the message
    /// is the name alone, and the stored code is 0.
    CXlComException(const std::u16string& call, std::uint32_t code);

    const std::u16string& Call() const noexcept { return call_; }
    std::uint32_t Code() const noexcept { return code_; }

  private:
    std::u16string call_;
    std::uint32_t code_ = 0;
};

/// An error of a cell, by its code: the only class that makes the cell that error and not a text.
class CXlErrorException : public CXlRuntimeException {
  public:
    /// A single number is that of a message.
    explicit CXlErrorException(unsigned message_number, std::uint32_t error_code = 0);
    explicit CXlErrorException(const std::u16string& message, std::uint32_t error_code = 0);

    std::uint32_t ErrorCode() const noexcept { return error_code_; }

  private:
    std::uint32_t error_code_;
};

} // namespace metrify

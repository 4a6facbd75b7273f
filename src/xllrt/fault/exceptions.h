#pragma once

// What the runtime throws. The wrapper around an entry of the add-in catches the base of all these and turns
// it into a cell.

#include <cstdint>
#include <stdexcept>
#include <string>

namespace metrify {

/// The base of all. It carries its message in both widths.
class CXlRuntimeException : public std::runtime_error {
  public:
    /// With the unformatted message of the catalogue, read for each width; "Unknown error" if the number is
    /// in no catalogue.
    explicit CXlRuntimeException(unsigned message_number);
    explicit CXlRuntimeException(const std::string& message);
    explicit CXlRuntimeException(const std::u16string& message);

    /// The wide message; `what()` is the narrow one.
    const std::u16string& WideMessage() const noexcept { return wide_; }

  private:
    std::u16string wide_;
};

/// A value cannot be read as what is wanted.
class CXlConversionException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// An index lies outside an array.
class CXlOutOfRangeException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// An argument is not of the kind that the operation takes.
class CXlIllegalArgumentException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// A record of this type has no cells.
class CXlBadOperTypeException : public CXlRuntimeException {
  public:
    using CXlRuntimeException::CXlRuntimeException;
};

/// A text does not fit where it has to go.
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

    /// With the message for the code, which goes into it in hexadecimal.
    static CXlStructuredException OfFault(std::uint32_t code);

    std::uint32_t Code() const noexcept { return code_; }

  private:
    std::uint32_t code_;
};

/// A call of a component that failed.
class CXlComException : public CXlRuntimeException {
  public:
    /// Without the name of a call, and with code 0. A single number is that of a message.
    explicit CXlComException(unsigned message_number);
    explicit CXlComException(const std::u16string& message);

    /// With the name of the call and the result code in the message. If the code is not that of an error, the
    /// name is the whole message, and the code kept is 0.
    CXlComException(const std::u16string& call, std::uint32_t code);

    const std::u16string& Call() const noexcept { return call_; }
    std::uint32_t Code() const noexcept { return code_; }

  private:
    std::u16string call_;
    std::uint32_t code_ = 0;
};

/// An error of the host's, by its code: the one class that makes a cell that error and not a text.
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

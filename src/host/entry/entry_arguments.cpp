#include "host/entry/entry_arguments.h"

#include "host/sheet/cell_records.h"
#include "host/sheet/coercion.h"
#include "xllrt/text/code_page.h"
#include "xllrt/value/record_memory.h"

#include <limits>

namespace metrify::host {

// One argument of a call, with the memory that it points to.
class EntryArguments::Argument {
  public:
    // Converts a value to the type of a type letter. Gives the error if it cannot be converted.
    std::optional<CellError> Set(const std::string& type, const CellValue& value) {
        const char letter = type.front();
        if (letter == 'P' || letter == 'R')
            word_ = SetRecord(narrow_record_, value);
        else if (letter == 'Q' || letter == 'U')
            word_ = SetRecord(wide_record_, value);
        else
            return SetScalar(type, value);
        return std::nullopt;
    }

    const MachineWord& word() const { return word_; }

  private:
    template <class Record>
    static void* SetRecord(RecordOwner<Record>& owner, const CellValue& value) {
        WriteRecord(value, owner.record);
        return &owner.record;
    }

    std::optional<CellError> SetScalar(const std::string& type, const CellValue& given) {
        // A scalar parameter takes no rectangle, and an omitted argument is converted as an empty cell.
        if (const auto* array = given.As<CellArray>(); array && array->cells.size() != 1)
            return CellError{xlerrValue};
        const CellValue value = given.Is<MissingArgument>() ? CellValue() : given;
        if (type.front() == 'C')
            return SetText(type, ToTextValue(value));
        const CellValue converted = Converted(type.front(), value);
        if (const auto* error = converted.As<CellError>())
            return *error;
        if (const auto* number = converted.As<double>())
            word_ = *number;
        else if (const auto* boolean = converted.As<bool>())
            word_ = std::int32_t{*boolean};
        else
            word_ = *converted.As<std::int32_t>();
        return std::nullopt;
    }

    static CellValue Converted(char letter, const CellValue& value) {
        using Int = std::numeric_limits<std::int32_t>;
        switch (letter) {
        case 'A':
            return ToBoolValue(value);
        case 'J':
            return ToIntegerValue(value, Int::min(), Int::max());
        default:
            return ToNumberValue(value);
        }
    }

    static std::optional<CellError> TooLong(std::size_t length, std::size_t most) {
        return length > most ? std::optional(CellError{xlerrValue}) : std::nullopt;
    }

    std::optional<CellError> SetText(const std::string& type, const CellValue& value) {
        if (const auto* error = value.As<CellError>())
            return *error;
        wide_text_ = *value.As<std::u16string>();
        if (type == "C%") {
            word_ = static_cast<void*>(wide_text_.data());
            return TooLong(wide_text_.size(), RecordFamily<XLOPER12>::kMaxText);
        }
        narrow_text_ = ToNarrow(wide_text_);
        word_ = static_cast<void*>(narrow_text_.data());
        return TooLong(narrow_text_.size(), RecordFamily<XLOPER>::kMaxText);
    }

    MachineWord word_ = std::int32_t{0};
    std::string narrow_text_;
    std::u16string wide_text_;
    RecordOwner<XLOPER> narrow_record_;
    RecordOwner<XLOPER12> wide_record_;
};

bool TakesReferences(const std::string& type) {
    return type.front() == 'R' || type.front() == 'U';
}

EntryArguments::EntryArguments() = default;
EntryArguments::~EntryArguments() = default;

std::optional<CellError> EntryArguments::Add(const std::string& type, const CellValue& value) {
    Argument& argument = *arguments_.emplace_back(std::make_unique<Argument>());
    const std::optional<CellError> error = argument.Set(type, value);
    words_.push_back(argument.word());
    return error;
}

} // namespace metrify::host

#include "gnumeric_records.h"

#include "host/sheet/cell_records.h"
#include "host/sheet/utf8.h"
#include "xllrt/text/code_page.h"
#include "xllrt/value/record_memory.h"

#include <algorithm>
#include <memory>

namespace metrify::gnumeric {

namespace {

using host::CellArray;
using host::CellError;
using host::CellValue;

// The records are read with the code page, which maps each byte to a unit and back.
void ReadTextsAsUtf8(CellValue& value) {
    if (auto* text = std::get_if<std::u16string>(&value.content))
        *text = host::FromUtf8(ToNarrow(*text));
    else if (auto* array = std::get_if<CellArray>(&value.content))
        std::for_each(array->cells.begin(), array->cells.end(), ReadTextsAsUtf8);
}

std::string CutUtf8(const std::u16string& text) {
    constexpr std::size_t most = RecordFamily<XLOPER>::kMaxText;
    std::string bytes = host::ToUtf8(text);
    if (bytes.size() <= most)
        return bytes;
    const auto continues_character = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
    std::size_t length = most;
    while (continues_character(bytes[length]))
        --length;
    bytes.resize(length);
    return bytes;
}

void WriteText(const std::u16string& text, XLOPER& record) {
    const std::string bytes = CutUtf8(text);
    auto counted = std::make_unique<char[]>(bytes.size() + 2);
    counted[0] = static_cast<char>(static_cast<unsigned char>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), &counted[1]);
    record = XLOPER();
    record.xltype = xltypeStr;
    record.val.str = counted.release();
}

void WriteArray(const CellArray& array, XLOPER& record) {
    if (!MakeCells(record, {array.rows, array.columns})) {
        host::WriteRecord(CellError{xlerrValue}, record);
        return;
    }
    for (std::size_t i = 0; i < array.cells.size(); ++i)
        WriteGnumericRecord(array.cells[i], record.val.array.lparray[i]);
}

} // namespace

CellValue ReadGnumericRecord(const XLOPER& record) {
    CellValue value;
    if (!host::ReadRecord(record, 0, value))
        return CellError{xlerrValue};
    ReadTextsAsUtf8(value);
    return value;
}

void WriteGnumericRecord(const CellValue& value, XLOPER& record) {
    if (const auto* text = value.As<std::u16string>())
        WriteText(*text, record);
    else if (const auto* array = value.As<CellArray>())
        WriteArray(*array, record);
    else
        host::WriteRecord(value, record);
}

} // namespace metrify::gnumeric

#include "xllrt/gate/host_letters.h"

#include "xllrt/gate/workspace_items.h"
#include "xllrt/text/code_page.h"

namespace metrify {

namespace {

// Indices of the host's international settings.
constexpr std::int32_t kListSeparatorItem = 4;
constexpr std::int32_t kRowLetterItem = 5;
constexpr std::int32_t kColumnLetterItem = 6;

constinit HostLetters shared_letters;

// Returns false if the item is not a text or is empty.
bool ReadLetter(std::int32_t index, XCHAR& wide, char& narrow) {
    CXlOper item;
    if (!GetWorkspaceItem(index, item) || !item.IsString())
        return false;
    const std::u16string text = item.ToWideText();
    if (text.empty())
        return false;
    wide = text[0];
    narrow = ToNarrow(text.substr(0, 1))[0];
    return true;
}

// The first byte of an item; 0 if the item is not a text or is empty.
char FirstByte(std::int32_t index) {
    CXlOper item;
    return GetWorkspaceItem(index, item) && item.IsString() ? item.ToText().c_str()[0] : '\0';
}

} // namespace

const HostLetters& SharedLetters() {
    return shared_letters;
}

void ReadHostLetters() {
    shared_letters = HostLetters();
    if (ReadLetter(kRowLetterItem, shared_letters.wideRow, shared_letters.narrowRow))
        ReadLetter(kColumnLetterItem, shared_letters.wideColumn, shared_letters.narrowColumn);
}

bool ReadHostSeparators(char& list_separator, char& row_letter, char& column_letter) {
    const char separator = FirstByte(kListSeparatorItem);
    const char row = separator != 0 ? FirstByte(kRowLetterItem) : '\0';
    const char column = row != 0 ? FirstByte(kColumnLetterItem) : '\0';
    if (column == 0)
        return false;
    list_separator = separator;
    row_letter = row;
    column_letter = column;
    return true;
}

} // namespace metrify

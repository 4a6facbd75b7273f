#include "addin/menu.h"

#include "xllrt/gate/host_gate.h"
#include "xllrt/registry/resource_text.h"
#include "xllrt/value/xl_cell_view.h"

#include <algorithm>

namespace metrify {

namespace {

constexpr std::int32_t worksheet_bar = 10;

// The columns of the host's menu table. Column 2 is for shortcuts, column 4 for help.
constexpr std::int32_t text_column = 0;
constexpr std::int32_t macro_column = 1;
constexpr std::int32_t status_column = 3;
constexpr std::int32_t menu_columns = 5;

// The position of a submenu if none is given.
constexpr int last_position = 30;

CXlOper text_value(const std::string& text) {
    CXlOper value;
    value.SetText(text);
    return value;
}

CXlOper integer_value(std::int32_t number) {
    CXlOper value;
    value.SetInt(number);
    return value;
}

std::string localized(const std::string& text) {
    return LocalizedText(text.c_str());
}

// The caption by which the host finds the menu.
CXlOper target_of(const menu_def& menu) {
    std::string caption = menu.caption;
    std::erase(caption, '&');
    return text_value(caption);
}

void set_cell(CXlOper& table, std::int32_t row, std::int32_t column, const std::string& text) {
    table.Cell(row, column)->SetText(text);
}

// The first row describes the menu, each other row an item.
CXlOper menu_table(const menu_def& menu) {
    CXlOper table;
    const CXlOper empty = text_value("");
    table.MakeArray(static_cast<std::int32_t>(menu.items.size()) + 1, menu_columns, &empty);
    set_cell(table, 0, text_column, menu.caption);
    set_cell(table, 0, status_column, localized(menu.status_text));
    std::int32_t row = 0;
    for (const menu_item& item : menu.items) {
        ++row;
        set_cell(table, row, text_column, localized(item.text));
        set_cell(table, row, macro_column, item.macro);
        set_cell(table, row, status_column, localized(item.status_text));
    }
    return table;
}

bool is_done(int code) {
    return code == xlretSuccess;
}

} // namespace

void menu_init(menu_def& menu, const std::string& name, const std::string& status_text) {
    menu = {};
    menu.name = name;
    menu.caption = localized(name);
    menu.status_text = status_text;
}

void menu_add_command(menu_def& menu, const std::string& text, const std::string& macro,
                      const std::string& status_text) {
    if (!menu.present) {
        menu.items.push_back({text, macro, status_text});
        return;
    }
    CXlOper table;
    table.MakeArray(1, 2);
    set_cell(table, 0, text_column, localized(text));
    set_cell(table, 0, macro_column, macro);
    const CXlOper bar = integer_value(worksheet_bar);
    if (menu.parent)
        CallDiscard(xlfAddCommand, bar, target_of(*menu.parent), table, target_of(menu), integer_value(0));
    else
        CallDiscard(xlfAddCommand, bar, target_of(menu), table);
}

bool menu_add_to_bar(menu_def& menu, const menu_def* parent, const std::string& before, int position) {
    // A submenu can't contain a submenu.
    if (parent && parent->parent)
        return false;
    const CXlOper bar = integer_value(worksheet_bar);
    const CXlOper table = menu_table(menu);
    const bool has_place = !before.empty() || position >= 1;
    const CXlOper place =
        before.empty() ? integer_value(has_place ? position : last_position) : text_value(localized(before));
    if (parent)
        menu.present = is_done(CallDiscard(xlfAddMenu, bar, table, target_of(*parent), place));
    else
        // If the host refuses the position, the menu is added at the end.
        menu.present = (has_place && is_done(CallDiscard(xlfAddMenu, bar, table, place))) ||
                       is_done(CallDiscard(xlfAddMenu, bar, table));
    menu.parent = parent;
    return menu.present;
}

bool menu_remove(const menu_def& menu) {
    const CXlOper bar = integer_value(worksheet_bar);
    return is_done(menu.parent ? CallDiscard(xlfDeleteMenu, bar, target_of(*menu.parent), target_of(menu))
                               : CallDiscard(xlfDeleteMenu, bar, target_of(menu)));
}

} // namespace metrify

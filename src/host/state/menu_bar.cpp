#include "host/state/menu_bar.h"

#include "host/sheet/coercion.h"

#include <algorithm>

namespace metrify::host {

namespace {

constexpr std::int32_t kTableColumns = 5;

std::u16string WithoutAmpersands(std::u16string text) {
    std::erase(text, u'&');
    return text;
}

// The menu with a name or a number; the end if there is none.
std::vector<MenuItem>::iterator Find(std::vector<MenuItem>& items, const CellValue& which) {
    if (const auto* name = which.As<std::u16string>()) {
        const std::u16string wanted = WithoutAmpersands(*name);
        return std::find_if(items.begin(), items.end(), [&wanted](const MenuItem& item) {
            return EqualIgnoringCase(WithoutAmpersands(item.name), wanted);
        });
    }
    const CellValue number = ToIntegerValue(which, 1, static_cast<double>(items.size()));
    const auto* index = number.As<std::int32_t>();
    return index ? items.begin() + (*index - 1) : items.end();
}

// A position that matches no item means the end, unless it is a name.
bool IsOpenPosition(const CellValue& position) {
    return !position.Is<std::u16string>();
}

std::u16string TextAt(const CellArray& table, std::int32_t row, std::int32_t column) {
    if (column >= table.columns)
        return {};
    const CellValue text = ToTextValue(table.At(row, column));
    const auto* found = text.As<std::u16string>();
    return found ? *found : std::u16string();
}

std::vector<MenuItem> RowsOf(const CellArray& table) {
    std::vector<MenuItem> items;
    items.reserve(static_cast<std::size_t>(table.rows));
    for (std::int32_t row = 0; row < table.rows; ++row)
        items.push_back({TextAt(table, row, 0),
                         TextAt(table, row, 1),
                         TextAt(table, row, 2),
                         TextAt(table, row, 3),
                         TextAt(table, row, 4),
                         {}});
    return items;
}

bool IsMenuTable(const CellValue& value) {
    const auto* table = value.As<CellArray>();
    return table && table->rows > 0 && table->columns > 0 && table->columns <= kTableColumns;
}

std::optional<int> Insert(std::vector<MenuItem>& menus, const CellValue& table, const CellValue& position) {
    const auto before = Find(menus, position);
    if (!IsMenuTable(table) || (before == menus.end() && !IsOpenPosition(position)))
        return std::nullopt;
    std::vector<MenuItem> rows = RowsOf(*table.As<CellArray>());
    MenuItem menu = std::move(rows.front());
    menu.items.assign(std::make_move_iterator(rows.begin() + 1), std::make_move_iterator(rows.end()));
    const auto inserted = menus.insert(before, std::move(menu));
    return static_cast<int>(inserted - menus.begin()) + 1;
}

} // namespace

MenuBar::MenuBar() {
    for (const char16_t* name :
         {u"&File", u"&Edit", u"&View", u"&Insert", u"F&ormat", u"&Tools", u"&Data", u"&Window", u"&Help"})
        menus_.push_back({name, {}, {}, {}, {}, {}});
}

std::optional<int> MenuBar::AddMenu(const CellValue& table, const CellValue& position) {
    return Insert(menus_, table, position);
}

std::optional<int> MenuBar::AddSubmenu(const CellValue& table, const CellValue& parent,
                                       const CellValue& position) {
    const auto menu = Find(menus_, parent);
    return menu != menus_.end() ? Insert(menu->items, table, position) : std::nullopt;
}

std::optional<int> MenuBar::AddCommands(const CellValue& menu, const CellValue& table,
                                        const CellValue& submenu, const CellValue& position) {
    const auto found = Find(menus_, menu);
    if (found == menus_.end() || !IsMenuTable(table))
        return std::nullopt;
    std::vector<MenuItem>* items = &found->items;
    if (!submenu.Is<MissingArgument>()) {
        const auto inner = Find(found->items, submenu);
        if (inner == found->items.end())
            return std::nullopt;
        items = &inner->items;
    }
    const auto before = Find(*items, position);
    if (before == items->end() && !IsOpenPosition(position))
        return std::nullopt;
    std::vector<MenuItem> rows = RowsOf(*table.As<CellArray>());
    const auto first =
        items->insert(before, std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
    return static_cast<int>(first - items->begin()) + 1;
}

bool MenuBar::Delete(const CellValue& menu, const CellValue& submenu) {
    const auto found = Find(menus_, menu);
    if (found == menus_.end())
        return false;
    if (submenu.Is<MissingArgument>()) {
        menus_.erase(found);
        return true;
    }
    const auto inner = Find(found->items, submenu);
    if (inner == found->items.end())
        return false;
    found->items.erase(inner);
    return true;
}

} // namespace metrify::host

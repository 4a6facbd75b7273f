#pragma once

// The worksheet menu bar.

#include "host/sheet/cell_value.h"

#include <optional>
#include <string>
#include <vector>

namespace metrify::host {

/// One row of a menu table.
struct MenuItem {
    std::u16string name;
    std::u16string macro;
    std::u16string shortcut;
    std::u16string status;
    std::u16string help;
    std::vector<MenuItem> items; ///< of a submenu
};

/// Menus are named by their text, case and ampersands left out of account, or by their number from 1.
class MenuBar {
  public:
    /// The bar with the host's own menus.
    MenuBar();

    const std::vector<MenuItem>& menus() const { return menus_; }

    /// Adds the menu of a table, whose first row is the menu itself: before `position`, at the end if that is
    /// a missing argument or a number beyond the last. Gives its number, or nothing if there is no such
    /// position or the table is none.
    std::optional<int> AddMenu(const CellValue& table, const CellValue& position);

    /// As `AddMenu`, as a submenu of `parent`.
    std::optional<int> AddSubmenu(const CellValue& table, const CellValue& parent, const CellValue& position);

    /// Adds the rows of a table to a menu, or to its submenu unless that is a missing argument: before
    /// `position`, at the end as with `AddMenu`. Gives the number of the first, or nothing.
    std::optional<int> AddCommands(const CellValue& menu, const CellValue& table, const CellValue& submenu,
                                   const CellValue& position);

    /// Takes a menu, or a submenu of it, away. False if there is none.
    bool Delete(const CellValue& menu, const CellValue& submenu);

  private:
    std::vector<MenuItem> menus_;
};

} // namespace metrify::host

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

/// Menus are identified by their name, ignoring case and ampersands, or by their number from 1.
class MenuBar {
  public:
    /// The bar with the menus of the host.
    MenuBar();

    const std::vector<MenuItem>& menus() const { return menus_; }

    /// Adds the menu of a table, whose first row describes the menu itself, before `position`; at the end if
    /// that is a missing argument or a number greater than the last. Gives its number, or nothing if there is
    /// no such position or the value is not a menu table.
    std::optional<int> AddMenu(const CellValue& table, const CellValue& position);

    /// As `AddMenu`, but adds a submenu of `parent`.
    std::optional<int> AddSubmenu(const CellValue& table, const CellValue& parent, const CellValue& position);

    /// Adds the rows of a table to a menu, or to its submenu unless that is a missing argument, at `position`
    /// as for `AddMenu`. Gives the number of the first, or nothing on failure.
    std::optional<int> AddCommands(const CellValue& menu, const CellValue& table, const CellValue& submenu,
                                   const CellValue& position);

    /// Deletes a menu, or a submenu of it. False if there is none.
    bool Delete(const CellValue& menu, const CellValue& submenu);

  private:
    std::vector<MenuItem> menus_;
};

} // namespace metrify::host

#pragma once

// Workbooks of the host: sheets with their formulas and values, the active cell.

#include "host/sheet/cell_reference.h"
#include "host/sheet/cell_value.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace metrify::host {

struct Cell {
    std::u16string formula; ///< with its "=", references in the R1C1 style; empty for a constant
    CellValue value;
    std::optional<Area> array; ///< the area of the array formula that the cell is part of
};

class Sheet {
  public:
    Sheet(IDSHEET id, std::u16string name) : id_(id), name_(std::move(name)) {}

    IDSHEET id() const { return id_; }
    const std::u16string& name() const { return name_; }

    /// The cell, or null if nothing was entered there.
    const Cell* Find(CellPosition at) const;
    /// The cell, added if it does not exist.
    Cell& Make(CellPosition at) { return cells_[at]; }
    const std::map<CellPosition, Cell>& cells() const { return cells_; }

    /// The text of a cell in the formula bar: the formula, or the constant as text.
    std::u16string FormulaText(CellPosition at) const;

    /// The value of an area: a single value for one cell, otherwise an array.
    CellValue Values(const Area& area) const;

  private:
    IDSHEET id_;
    std::u16string name_;
    std::map<CellPosition, Cell> cells_;
};

/// The open workbooks, each with one sheet. The last one is active.
class Workbooks {
  public:
    /// One workbook, "Sheet1", with its first cell active.
    explicit Workbooks(SheetSize size);

    SheetSize size() const { return size_; }

    Sheet& Open();
    /// Closes the active workbook. False if none is open.
    bool Close();
    std::size_t count() const { return open_.size(); }

    /// Called when a workbook has been opened or closed.
    std::function<void()> on_change;

    /// The active sheet, or null.
    Sheet* Active() { return open_.empty() ? nullptr : &open_.back().sheet; }
    const Sheet* Active() const { return open_.empty() ? nullptr : &open_.back().sheet; }
    Sheet* Find(IDSHEET id);
    Sheet* Find(std::u16string_view name);

    /// The active cell; nothing without a workbook or a selection.
    std::optional<CellPosition> ActiveCell() const;
    void SelectCell(std::optional<CellPosition> at);

  private:
    struct OpenBook {
        Sheet sheet;
        std::optional<CellPosition> active_cell;
    };

    SheetSize size_;
    std::vector<OpenBook> open_;
    IDSHEET last_id_ = 0;
};

} // namespace metrify::host

#pragma once

// The cells of the stand-in host: sheets, the formulas and values in them, the active cell.

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
    std::optional<Area> array; ///< the area of the array formula the cell is part of
};

class Sheet {
  public:
    Sheet(IDSHEET id, std::u16string name) : id_(id), name_(std::move(name)) {}

    IDSHEET id() const { return id_; }
    const std::u16string& name() const { return name_; }

    /// The cell, or null where nothing stands.
    const Cell* Find(CellPosition at) const;
    /// The cell, made where nothing stands.
    Cell& Make(CellPosition at) { return cells_[at]; }
    const std::map<CellPosition, Cell>& cells() const { return cells_; }

    /// What a cell's formula bar shows: the formula, or the constant as text.
    std::u16string FormulaText(CellPosition at) const;

    /// The values of an area: of one cell its value, otherwise an array.
    CellValue Values(const Area& area) const;

  private:
    IDSHEET id_;
    std::u16string name_;
    std::map<CellPosition, Cell> cells_;
};

/// The workbooks that are open, each with one sheet. The last one is active.
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

    /// The active cell, or nothing if no cell can be.
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

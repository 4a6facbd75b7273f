#include "host/sheet/workbook.h"

#include "host/sheet/coercion.h"

#include <algorithm>

namespace metrify::host {

const Cell* Sheet::Find(CellPosition at) const {
    const auto found = cells_.find(at);
    return found != cells_.end() ? &found->second : nullptr;
}

std::u16string Sheet::FormulaText(CellPosition at) const {
    const Cell* cell = Find(at);
    if (!cell)
        return {};
    if (!cell->formula.empty())
        return cell->formula;
    if (const auto* error = cell->value.As<CellError>())
        return std::u16string(ErrorText(*error));
    const CellValue text = ToTextValue(cell->value);
    return *text.As<std::u16string>();
}

CellValue Sheet::Values(const Area& area) const {
    const auto value_at = [this](std::int32_t row, std::int32_t column) {
        const Cell* cell = Find({row, column});
        return cell ? cell->value : CellValue();
    };
    if (area.IsOneCell())
        return value_at(area.first_row, area.first_column);
    CellArray array{area.Rows(), area.Columns(), {}};
    for (std::int32_t row = area.first_row; row <= area.last_row; ++row)
        for (std::int32_t column = area.first_column; column <= area.last_column; ++column)
            array.cells.push_back(value_at(row, column));
    return array;
}

Workbooks::Workbooks(SheetSize size) : size_(size) {
    Open();
}

Sheet& Workbooks::Open() {
    ++last_id_;
    open_.push_back({Sheet(last_id_, u"Sheet" + NumberText(static_cast<double>(last_id_))), CellPosition{}});
    if (on_change)
        on_change();
    return open_.back().sheet;
}

bool Workbooks::Close() {
    if (open_.empty())
        return false;
    open_.pop_back();
    if (on_change)
        on_change();
    return true;
}

Sheet* Workbooks::Find(IDSHEET id) {
    const auto found = std::find_if(open_.begin(), open_.end(),
                                    [id](const OpenBook& book) { return book.sheet.id() == id; });
    return found != open_.end() ? &found->sheet : nullptr;
}

Sheet* Workbooks::Find(std::u16string_view name) {
    const auto found = std::find_if(open_.begin(), open_.end(), [name](const OpenBook& book) {
        return EqualIgnoringCase(book.sheet.name(), name);
    });
    return found != open_.end() ? &found->sheet : nullptr;
}

std::optional<CellPosition> Workbooks::ActiveCell() const {
    return open_.empty() ? std::nullopt : open_.back().active_cell;
}

void Workbooks::SelectCell(std::optional<CellPosition> at) {
    if (!open_.empty())
        open_.back().active_cell = at;
}

} // namespace metrify::host

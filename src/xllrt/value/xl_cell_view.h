#pragma once

// A cell of an array as a value.

#include "xllrt/value/xl_oper.h"

namespace metrify {

/// A cell of an array, used like a pointer to a value, or wherever a value is expected. What is set through
/// it is owned by the array, which releases it. The view of a scalar refers to the scalar itself. A view must
/// not outlive the value it was made from. Cells of a record that the host owns, or that was wrapped, are
/// read-only.
class CXlCellView {
  public:
    template <class Record>
    explicit CXlCellView(Record* cell) : cell_(CXlOper::CellTag{}, cell), value_(cell_) {}
    explicit CXlCellView(CXlOper& scalar) : value_(scalar) {}
    CXlCellView(const CXlCellView&) = delete;
    CXlCellView& operator=(const CXlCellView&) = delete;
    // The value is not destroyed: its record is a part of the array.
    ~CXlCellView() {} // NOLINT(modernize-use-equals-default)

    CXlOper& operator*() { return value_; }
    const CXlOper& operator*() const { return value_; }
    CXlOper* operator->() { return &value_; }
    const CXlOper* operator->() const { return &value_; }
    operator CXlOper&() { return value_; }
    operator const CXlOper&() const { return value_; }

  private:
    union {
        CXlOper cell_;
    };
    CXlOper& value_;
};

} // namespace metrify

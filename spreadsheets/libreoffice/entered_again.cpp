#include "entered_again.h"

#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/XCell.hpp>

namespace metrify::calc {

using com::sun::star::container::XEnumeration;
using com::sun::star::container::XIndexAccess;
using com::sun::star::sheet::XArrayFormulaRange;
using com::sun::star::sheet::XCellRangesQuery;
using com::sun::star::sheet::XSheetCellCursor;
using com::sun::star::sheet::XSheetCellRange;
using com::sun::star::sheet::XSpreadsheet;
using com::sun::star::sheet::XSpreadsheetDocument;
using com::sun::star::table::XCell;
using com::sun::star::uno::Reference;
using com::sun::star::uno::UNO_QUERY_THROW;
using rtl::OUString;

namespace {

constexpr sal_Int32 kUnknownName = 525;

// The array that the cell is a part of, or the cell alone.
Reference<XArrayFormulaRange> ArrayOf(const Reference<XSpreadsheet>& sheet, const Reference<XCell>& cell) {
    const Reference<XSheetCellCursor> cursor =
        sheet->createCursorByRange(Reference<XSheetCellRange>(cell, UNO_QUERY_THROW));
    cursor->collapseToCurrentArray();
    return Reference<XArrayFormulaRange>(cursor, UNO_QUERY_THROW);
}

// Without the mark of add-in functions in files of Excel. Calc writes unknown names in small letters.
OUString Unmarked(const OUString& formula) {
    return formula.replaceAll("_xll.metrify(", "METRIFY(");
}

void EnterAgain(const Reference<XSpreadsheet>& sheet, const Reference<XCell>& cell) {
    const OUString formula = Unmarked(cell->getFormula());
    // The formula of an array is in braces.
    if (formula.startsWith("{"))
        ArrayOf(sheet, cell)->setArrayFormula(formula.copy(1, formula.getLength() - 2));
    else
        cell->setFormula(formula);
}

void EnterUnknownFunctionsAgain(const Reference<XSpreadsheet>& sheet) {
    const Reference<XCellRangesQuery> query(sheet, UNO_QUERY_THROW);
    const Reference<XEnumeration> cells =
        query->queryFormulaCells(com::sun::star::sheet::FormulaResult::ERROR)
            ->getCells()
            ->createEnumeration();
    while (cells->hasMoreElements()) {
        const Reference<XCell> cell(cells->nextElement(), UNO_QUERY_THROW);
        if (cell->getError() == kUnknownName)
            EnterAgain(sheet, cell);
    }
}

} // namespace

void EnterUnknownFunctionsAgain(const Reference<XSpreadsheetDocument>& document) {
    const Reference<XIndexAccess> sheets(document->getSheets(), UNO_QUERY_THROW);
    for (sal_Int32 i = 0; i < sheets->getCount(); ++i)
        EnterUnknownFunctionsAgain(Reference<XSpreadsheet>(sheets->getByIndex(i), UNO_QUERY_THROW));
}

} // namespace metrify::calc

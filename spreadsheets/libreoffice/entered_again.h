#pragma once

// Formulas that are entered again.

#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

namespace metrify::calc {

/// Enters each formula of a document again that has the error of an unknown name.
void EnterUnknownFunctionsAgain(
    const com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheetDocument>& document);

} // namespace metrify::calc

#pragma once

// The worksheet functions METRIFY and METRIFYLISTING of Calc.

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <cppuhelper/implbase2.hxx>
#include <org/metrify/XSheet.hpp>

namespace metrify::calc {

using com::sun::star::uno::Any;
using com::sun::star::uno::Sequence;

/// Cells of the spreadsheet, row by row.
using Cells = Sequence<Sequence<Any>>;

class SheetFunctions
    : public cppu::WeakImplHelper2<org::metrify::XSheet, com::sun::star::lang::XServiceInfo> {
  public:
    static rtl::OUString ImplementationName();
    static Sequence<rtl::OUString> ServiceNames();

    Cells SAL_CALL metrify(double value, const Any& in_units, const Any& out_units) override;
    Cells SAL_CALL metrifyListing(const Cells& program) override;

    rtl::OUString SAL_CALL getImplementationName() override;
    sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override;
    Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override;
};

} // namespace metrify::calc

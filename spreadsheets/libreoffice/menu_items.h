#pragma once

// The menu items of the extension.

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJobExecutor.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>

namespace metrify::calc {

/// The event `units` opens the page of the units. The event `formulas` enters the formulas of the document in
/// front again whose functions are unknown: a workbook of Excel has the function under its short name, which
/// Calc recognises in entered formulas only.
class MenuItems
    : public cppu::WeakImplHelper2<com::sun::star::task::XJobExecutor, com::sun::star::lang::XServiceInfo> {
  public:
    explicit MenuItems(com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context);

    static rtl::OUString ImplementationName();
    static com::sun::star::uno::Sequence<rtl::OUString> ServiceNames();

    void SAL_CALL trigger(const rtl::OUString& event) override;

    rtl::OUString SAL_CALL getImplementationName() override;
    sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override;
    com::sun::star::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override;

  private:
    com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
};

} // namespace metrify::calc

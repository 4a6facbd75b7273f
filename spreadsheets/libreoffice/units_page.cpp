#include "units_page.h"

#include <com/sun/star/deployment/PackageInformationProvider.hpp>
#include <com/sun/star/system/SystemShellExecute.hpp>
#include <com/sun/star/system/SystemShellExecuteFlags.hpp>
#include <cppuhelper/supportsservice.hxx>
#include <utility>

namespace metrify::calc {

using com::sun::star::deployment::PackageInformationProvider;
using com::sun::star::system::SystemShellExecute;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using com::sun::star::uno::XComponentContext;
using rtl::OUString;

UnitsPage::UnitsPage(Reference<XComponentContext> context) : context_(std::move(context)) {}

void UnitsPage::trigger(const OUString&) {
    const OUString folder = PackageInformationProvider::get(context_)->getPackageLocation("org.metrify");
    SystemShellExecute::create(context_)->execute(folder + "/units.html", OUString(),
                                                  com::sun::star::system::SystemShellExecuteFlags::URIS_ONLY);
}

OUString UnitsPage::ImplementationName() {
    return "org.metrify.comp.UnitsPage";
}

Sequence<OUString> UnitsPage::ServiceNames() {
    const OUString name = "org.metrify.UnitsPage";
    return {&name, 1};
}

OUString UnitsPage::getImplementationName() {
    return ImplementationName();
}

sal_Bool UnitsPage::supportsService(const OUString& name) {
    return cppu::supportsService(this, name);
}

Sequence<OUString> UnitsPage::getSupportedServiceNames() {
    return ServiceNames();
}

} // namespace metrify::calc

#include "menu_items.h"

#include "entered_again.h"

#include <com/sun/star/deployment/PackageInformationProvider.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/system/SystemShellExecute.hpp>
#include <com/sun/star/system/SystemShellExecuteFlags.hpp>
#include <cppuhelper/supportsservice.hxx>
#include <utility>

namespace metrify::calc {

using com::sun::star::deployment::PackageInformationProvider;
using com::sun::star::frame::Desktop;
using com::sun::star::sheet::XSpreadsheetDocument;
using com::sun::star::system::SystemShellExecute;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using com::sun::star::uno::XComponentContext;
using rtl::OUString;

namespace {

// In the program that the desktop has for such files.
void ShowUnits(const Reference<XComponentContext>& context) {
    const OUString folder = PackageInformationProvider::get(context)->getPackageLocation("org.metrify");
    SystemShellExecute::create(context)->execute(folder + "/units.html", OUString(),
                                                 com::sun::star::system::SystemShellExecuteFlags::URIS_ONLY);
}

} // namespace

MenuItems::MenuItems(Reference<XComponentContext> context) : context_(std::move(context)) {}

void MenuItems::trigger(const OUString& event) {
    if (event == "units")
        return ShowUnits(context_);
    const Reference<XSpreadsheetDocument> document(Desktop::create(context_)->getCurrentComponent(),
                                                   com::sun::star::uno::UNO_QUERY);
    if (event == "formulas" && document.is())
        EnterUnknownFunctionsAgain(document);
}

OUString MenuItems::ImplementationName() {
    return "org.metrify.comp.MenuItems";
}

Sequence<OUString> MenuItems::ServiceNames() {
    const OUString name = "org.metrify.MenuItems";
    return {&name, 1};
}

OUString MenuItems::getImplementationName() {
    return ImplementationName();
}

sal_Bool MenuItems::supportsService(const OUString& name) {
    return cppu::supportsService(this, name);
}

Sequence<OUString> MenuItems::getSupportedServiceNames() {
    return ServiceNames();
}

} // namespace metrify::calc

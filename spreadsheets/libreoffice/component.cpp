// The entry of the component: the service manager asks it for the factories of the services.

#include "menu_items.h"
#include "sheet_functions.h"

#include <cppuhelper/factory.hxx>
#include <cppuhelper/implementationentry.hxx>

namespace {

using namespace metrify::calc;
using com::sun::star::uno::Reference;
using com::sun::star::uno::XComponentContext;
using com::sun::star::uno::XInterface;

Reference<XInterface> SAL_CALL NewSheetFunctions(const Reference<XComponentContext>&) {
    return static_cast<cppu::OWeakObject*>(new SheetFunctions);
}

Reference<XInterface> SAL_CALL NewMenuItems(const Reference<XComponentContext>& context) {
    return static_cast<cppu::OWeakObject*>(new MenuItems(context));
}

const cppu::ImplementationEntry kServices[] = {
    {NewSheetFunctions, SheetFunctions::ImplementationName, SheetFunctions::ServiceNames,
     cppu::createSingleComponentFactory, nullptr, 0},
    {NewMenuItems, MenuItems::ImplementationName, MenuItems::ServiceNames, cppu::createSingleComponentFactory,
     nullptr, 0},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
};

} // namespace

extern "C" SAL_DLLPUBLIC_EXPORT void* component_getFactory(const char* name, void* manager, void* key) {
    return cppu::component_getFactoryHelper(name, manager, key, kServices);
}

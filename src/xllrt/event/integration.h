#pragma once

// The interface to the integration with a real host: its automation objects, dialogs and events. In a build
// without integration these operations do nothing.

#include "xllrt/value/xl_oper.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace metrify {

/// A workbook, sheet or range object of the host's automation; opaque outside the integration.
class XlHostObject;

using XlEventArgument = std::variant<XlHostObject*, bool>;

/// A failure in the integration: a text, and a result code of the system. A code with the highest bit set is
/// an error code.
struct XlComFailure {
    std::u16string text;
    std::uint32_t code = 0;
};

/// A value passed to the host's automation; `std::monostate` is an empty variant.
using XlComValue = std::variant<std::monostate, std::int32_t, bool, std::u16string>;

/// Tells whether the host's formula dialog is open.
class IXlFormulaWizardDetector {
  public:
    virtual bool IsOpen() const = 0;
    virtual ~IXlFormulaWizardDetector() = default;
};

/// What a function adds to the host's formula dialog; opaque outside the integration.
class IXlWizExFunction;

struct XlIconSize {
    int width = 0;
    int height = 0;
};

/// The functions that add lists or buttons to the host's formula dialog.
class IXlWizExUIFunctionRegistry {
  public:
    virtual bool HasEntries() const = 0;
    /// True if lists and buttons are drawn in the user's theme.
    virtual bool UsesThemes() const = 0;
    /// Returns null for a function that adds nothing.
    virtual IXlWizExFunction* FindFunction(std::string_view name) const = 0;
    /// Returns the size for kind 1 or 2, otherwise null.
    virtual const XlIconSize* IconSize(int kind) const = 0;
    virtual ~IXlWizExUIFunctionRegistry() = default;

    /// Prepares the registry for use. Returns false on failure.
    virtual bool MakeReady() = 0;
    virtual void Close() = 0;
};

/// Hooks the host's formula dialog while it holds a registry.
class IXlComHelper {
  public:
    virtual ~IXlComHelper() = default;
    virtual void HoldRegistry(IXlWizExUIFunctionRegistry& registry) = 0;
    virtual bool HoldsRegistry() const = 0;
    virtual void ReleaseRegistry() = 0;
};

/// The host's automation: events, objects as text, macros. The destructor releases everything. Nothing is
/// thrown; on failure the outputs are unchanged.
class IXlComHolder {
  public:
    virtual ~IXlComHolder() = default;
    /// Finds the host's automation. Called once, before anything else.
    virtual bool Start(XlComFailure& failure) = 0;
    /// Connects to the host's events, unless connected already. The events call the virtual operations of the
    /// application.
    virtual bool Connect(XlComFailure& failure) = 0;

    virtual bool DescribeWorkbook(XlHostObject* workbook, std::u16string& name) = 0;
    /// Gets the names of the sheet and of its workbook.
    virtual bool DescribeSheet(XlHostObject* sheet, std::u16string& workbook, std::u16string& name) = 0;
    virtual bool DescribeRange(XlHostObject* range, std::u16string& address) = 0;

    /// Runs a macro: the first value is its name, the others are its arguments.
    virtual bool Run(std::span<const XlComValue> values, CXlOper& answer) = 0;
    /// Runs a macro call given as text.
    virtual bool RunText(const std::u16string& text, CXlOper& answer) = 0;
};

/// A factory of the parts of an integration. In this base class the parts do nothing.
class CXlIntegration {
  public:
    virtual ~CXlIntegration() = default;
    virtual std::unique_ptr<IXlComHelper> MakeComHelper() const;
    virtual std::unique_ptr<IXlWizExUIFunctionRegistry> MakeWizardRegistry() const;
    /// Returns null on failure.
    virtual std::unique_ptr<IXlFormulaWizardDetector> MakeWizardDetector() const;
    /// Called when the first event is switched on.
    virtual std::unique_ptr<IXlComHolder> MakeComHolder() const;
    /// Keeps the module loaded until the process ends: the host may still call into it or return to it.
    virtual void KeepModule() const;
};

/// The integration that does nothing.
const CXlIntegration& NoIntegration();

} // namespace metrify

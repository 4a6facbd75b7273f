#pragma once

// What the application object asks of the integration with a real host: its automation objects, its dialogs,
// its events. A build without any of that does nothing in these places.

#include "xllrt/value/xl_oper.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace metrify {

/// A workbook, a sheet or a range, as the host's automation gives it. Only the integration looks inside.
class XlHostObject;

using XlEventArgument = std::variant<XlHostObject*, bool>;

/// What a part of the integration says of a failure: words, and a result code of the system's, which is that
/// of an error if its highest bit is set.
struct XlComFailure {
    std::u16string text;
    std::uint32_t code = 0;
};

/// A value on its way to the host's automation. Without one, it is an empty variant.
using XlComValue = std::variant<std::monostate, std::int32_t, bool, std::u16string>;

/// Tells whether the host's formula dialog is open.
class IXlFormulaWizardDetector {
  public:
    virtual bool IsOpen() const = 0;
    virtual ~IXlFormulaWizardDetector() = default;
};

/// What a function adds to the host's formula dialog. Only the integration looks inside.
class IXlWizExFunction;

struct XlIconSize {
    int width = 0;
    int height = 0;
};

/// The functions that want more than plain boxes in the host's formula dialog.
class IXlWizExUIFunctionRegistry {
  public:
    virtual bool HasEntries() const = 0;
    /// Whether lists and buttons are drawn in the user's theme.
    virtual bool UsesThemes() const = 0;
    /// Null for a function that adds nothing.
    virtual IXlWizExFunction* FindFunction(std::string_view name) const = 0;
    /// The size for kind 1 or 2, otherwise null.
    virtual const XlIconSize* IconSize(int kind) const = 0;
    virtual ~IXlWizExUIFunctionRegistry() = default;

    /// Prepares it for use; false if that is not possible.
    virtual bool MakeReady() = 0;
    virtual void Close() = 0;
};

/// Who is told of the functions that the host's formula dialog is watched for.
class IXlComHelper {
  public:
    virtual ~IXlComHelper() = default;
    virtual void HoldRegistry(IXlWizExUIFunctionRegistry& registry) = 0;
    virtual bool HoldsRegistry() const = 0;
    virtual void ReleaseRegistry() = 0;
};

/// The host's automation: its events, its objects as text, its macros. It lets go of everything when it is
/// destroyed. Nothing is thrown; a failure leaves the outputs alone.
class IXlComHolder {
  public:
    virtual ~IXlComHolder() = default;
    /// Finds the host's automation. Called once, before anything else.
    virtual bool Start(XlComFailure& failure) = 0;
    /// Connects to the host's events, unless it is connected: they then reach the virtual operations of the
    /// application.
    virtual bool Connect(XlComFailure& failure) = 0;

    virtual bool DescribeWorkbook(XlHostObject* workbook, std::u16string& name) = 0;
    /// Gives the sheet's name and that of its workbook.
    virtual bool DescribeSheet(XlHostObject* sheet, std::u16string& workbook, std::u16string& name) = 0;
    virtual bool DescribeRange(XlHostObject* range, std::u16string& address) = 0;

    /// Has the host run a macro, whose name is the first of the values, with the others as its arguments.
    virtual bool Run(std::span<const XlComValue> values, CXlOper& answer) = 0;
    /// The same for a call that is spelt out as text.
    virtual bool RunText(const std::u16string& text, CXlOper& answer) = 0;
};

/// Makes the parts. This class makes parts that do nothing.
class CXlIntegration {
  public:
    virtual ~CXlIntegration() = default;
    virtual std::unique_ptr<IXlComHelper> MakeComHelper() const;
    virtual std::unique_ptr<IXlWizExUIFunctionRegistry> MakeWizardRegistry() const;
    /// Null if it cannot be made.
    virtual std::unique_ptr<IXlFormulaWizardDetector> MakeWizardDetector() const;
    /// Made for the first event that is switched on.
    virtual std::unique_ptr<IXlComHolder> MakeComHolder() const;
};

/// The integration of a build that has none.
const CXlIntegration& NoIntegration();

} // namespace metrify

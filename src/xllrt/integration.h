#pragma once

// What the application object asks of the integration with a real host: its automation objects, its dialogs,
// its events. A build without any of that does nothing in these places.

#include "xllrt/xl_oper.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace metrify {

/// A workbook, a sheet or a range, as the host's automation gives it. Only the integration looks inside.
class XlHostObject;

using XlEventArgument = std::variant<XlHostObject*, bool>;

/// The call of a macro that an event of the host leads to.
struct XlEventCall {
    std::u16string target;
    std::optional<int> number;  ///< of the event, for the observer function
    std::string_view signature; ///< a letter an argument: B workbook, S sheet, R range, F flag
    std::span<const XlEventArgument> arguments; ///< one for each letter
};

/// Tells whether the host's formula dialog is open.
class IXlFormulaWizardDetector {
  public:
    virtual ~IXlFormulaWizardDetector() = default;
};

/// The functions that want more than plain boxes in the host's formula dialog.
class IXlWizardRegistry {
  public:
    virtual ~IXlWizardRegistry() = default;
    virtual bool HasEntries() const = 0;
    /// Prepares it for use; false if that is not possible.
    virtual bool MakeReady() = 0;
    virtual void Close() = 0;
};

/// The road to the host's automation objects.
class IXlComHelper {
  public:
    virtual ~IXlComHelper() = default;
    virtual void HoldRegistry(IXlWizardRegistry& registry) = 0;
    virtual bool HoldsRegistry() const = 0;
    virtual void ReleaseRegistry() = 0;
    /// Has the host run a macro. False if that failed, with `answer` as it was.
    virtual bool Run(const XlEventCall& call, CXlOper& answer) = 0;
};

/// The connection to the host's events.
class IXlComHolder {
  public:
    virtual ~IXlComHolder() = default;
    /// Connects, if it is not connected. Throws a `CXlComException` if the host does not confirm.
    virtual void Connect() = 0;
};

/// Makes the parts. This class makes parts that do nothing.
class CXlIntegration {
  public:
    virtual ~CXlIntegration() = default;
    virtual std::unique_ptr<IXlComHelper> MakeComHelper() const;
    virtual std::unique_ptr<IXlWizardRegistry> MakeWizardRegistry() const;
    /// Null if it cannot be made.
    virtual std::unique_ptr<IXlFormulaWizardDetector> MakeWizardDetector() const;
    /// Throws a `CXlComException` if the host's automation cannot be reached.
    virtual std::unique_ptr<IXlComHolder> MakeComHolder() const;
};

/// The integration of a build that has none.
const CXlIntegration& NoIntegration();

} // namespace metrify

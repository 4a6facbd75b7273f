#pragma once

// The functions that add lists or buttons to the boxes of the host's formula dialog. The add-in registers
// them.

#include "xllrt/event/integration.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace metrify {

/// The kind of overlay on an argument's box.
enum class ArgumentUi { none, list, button };

/// A list of values for an argument.
class IXlWizExList {
  public:
    virtual int ItemCount() const = 0;
    virtual std::string ItemText(int item) const = 0;
    /// The text that an item puts into the box.
    virtual std::string ValueText(int item) const = 0;
    virtual ~IXlWizExList() = default;
};

/// A dialog for an argument.
class IXlWizExButton {
  public:
    /// Runs the dialog with the box's text. Returns true if the text was changed.
    virtual bool Run(std::string& text, void* parent_window) = 0;
    virtual ~IXlWizExButton() = default;
};

/// The key that opens the list or the dialog of a box.
struct XlWizExKey {
    std::uint16_t key = 0;      ///< a virtual key
    std::uint16_t modifier = 0; ///< 16 Shift, 17 Control, 18 Alt; anything else for none
    int content_mode = 0;       ///< 0 never; 1 in an empty box; 2 also over a constant; 3 always
};

/// What a function adds to the dialog. Argument indices are zero-based.
class IXlWizExFunction {
  public:
    virtual int KindCount() const = 0;
    virtual ArgumentUi KindOf(int argument) const = 0;
    /// The list of an argument, or null.
    virtual IXlWizExList* ListOf(int argument) = 0;
    virtual XlWizExKey KeyOf(int argument) const = 0;
    virtual ~IXlWizExFunction() = default;

    /// The dialog of an argument, or null.
    virtual IXlWizExButton* ButtonOf(int argument) = 0;
};

class CXlWizExUIFunctionRegistry final : public IXlWizExUIFunctionRegistry {
  public:
    bool HasEntries() const override { return !functions_.empty(); }
    bool UsesThemes() const override { return usesThemes; }
    IXlWizExFunction* FindFunction(std::string_view name) const override;
    const XlIconSize* IconSize(int kind) const override;
    bool MakeReady() override;
    void Close() override { functions_.clear(); }

    /// Adds a function, which must outlive the registry.
    void Add(std::string name, IXlWizExFunction& function);

    bool usesThemes = true;

  private:
    std::map<std::string, IXlWizExFunction*, std::less<>> functions_;
    XlIconSize list_icon_;
    XlIconSize button_icon_;
};

} // namespace metrify

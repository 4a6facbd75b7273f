#pragma once

// The functions that want a list or a button beside boxes of the host's formula dialog. How they come here is
// the add-in's affair.

#include "xllrt/event/integration.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace metrify {

/// What stands beside an argument's box.
enum class ArgumentUi { none, list, button };

/// A choice of values for an argument.
class IXlWizExList {
  public:
    virtual int ItemCount() const = 0;
    virtual std::string ItemText(int item) const = 0;
    /// What goes into the box for an item.
    virtual std::string ValueText(int item) const = 0;
    virtual ~IXlWizExList() = default;
};

/// A dialog for an argument.
class IXlWizExButton {
  public:
    /// Runs the dialog with the box's text. True if it changed the text.
    virtual bool Run(std::string& text, void* parent_window) = 0;
    virtual ~IXlWizExButton() = default;
};

/// The key that opens what stands beside a box.
struct XlWizExKey {
    std::uint16_t key = 0;      ///< a virtual key
    std::uint16_t modifier = 0; ///< 16 Shift, 17 Control, 18 Alt; anything else for none
    int content_mode = 0;       ///< 0 never; 1 in an empty box; 2 also over a constant; 3 always
};

/// What a function adds to its dialog. Arguments are counted from 0.
class IXlWizExFunction {
  public:
    virtual int KindCount() const = 0;
    virtual ArgumentUi KindOf(int argument) const = 0;
    /// The list of an argument with one, otherwise null.
    virtual IXlWizExList* ListOf(int argument) = 0;
    virtual XlWizExKey KeyOf(int argument) const = 0;
    virtual ~IXlWizExFunction() = default;

    /// The dialog of an argument with a button, otherwise null.
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

    /// Adds a function, which must stay as long as it is here.
    void Add(std::string name, IXlWizExFunction& function);

    bool usesThemes = true;

  private:
    std::map<std::string, IXlWizExFunction*, std::less<>> functions_;
    XlIconSize list_icon_;
    XlIconSize button_icon_;
};

} // namespace metrify

#pragma once

// A function with a list on its first argument's box and a button on its second one's.

#include "integration/wizard/wizard_registry.h"

#include <map>
#include <stdexcept>
#include <vector>
#include <windows.h>

namespace metrify {

class UnitList final : public IXlWizExList {
  public:
    int ItemCount() const override { return 4; }
    std::string ItemText(int item) const override { return Row(item)[0]; }
    std::string ValueText(int item) const override { return Row(item)[1]; }

  private:
    static const char* const* Row(int item) {
        static const char* const rows[][2] = {
            {"metre", "\"m\""}, {"foot", "\"ft\""}, {"inch", "\"in\""}, {"yard", "\"yd\""}};
        return rows[item];
    }
};

class TextButton final : public IXlWizExButton {
  public:
    bool Run(std::string& text, void* parent_window) override {
        ++runs;
        seen = text;
        parent = parent_window;
        was_dialog_enabled = IsWindowEnabled(static_cast<HWND>(parent_window)) != FALSE;
        if (throws)
            throw std::runtime_error("no dialog");
        text = answer;
        return changes;
    }

    std::string answer = "from the dialog";
    bool changes = true;
    bool throws = false;
    int runs = 0;
    std::string seen;
    void* parent = nullptr;
    bool was_dialog_enabled = true;
};

class WizardFunction final : public IXlWizExFunction {
  public:
    int KindCount() const override { return static_cast<int>(kinds.size()); }
    ArgumentUi KindOf(int argument) const override {
        const auto index = static_cast<std::size_t>(argument);
        return index < kinds.size() ? kinds[index] : ArgumentUi::none;
    }
    IXlWizExList* ListOf(int argument) override {
        return hasParts && KindOf(argument) == ArgumentUi::list ? &list : nullptr;
    }
    IXlWizExButton* ButtonOf(int argument) override {
        return hasParts && KindOf(argument) == ArgumentUi::button ? &button : nullptr;
    }
    XlWizExKey KeyOf(int argument) const override {
        const auto own = keys.find(argument);
        return own != keys.end() ? own->second : key;
    }

    std::vector<ArgumentUi> kinds{ArgumentUi::list, ArgumentUi::button};
    bool hasParts = true; ///< there is a list or a dialog where the kind requires one
    UnitList list;
    TextButton button;
    XlWizExKey key;                 ///< of arguments that are not in keys
    std::map<int, XlWizExKey> keys; ///< by argument
};

} // namespace metrify

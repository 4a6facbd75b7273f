#pragma once

// The macro call that handles an event of the host.

#include "xllrt/event/integration.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

/// The call in two forms: a list of values that starts with the target's name, and a text such as
/// `target(4,"[Book1]Sheet1")`.
class XlEventCall {
  public:
    /// The holder describes the objects and runs the call; it must outlive this.
    XlEventCall(IXlComHolder& holder, const std::u16string& target);

    void AddNumber(int number);

    /// Adds an argument for each letter: B workbook, S sheet, R range, F flag. An object that cannot
    /// be described becomes an empty argument.
    void AddArguments(std::string_view signature, std::span<const XlEventArgument> arguments);

    /// Returns false, with the answer unchanged, if the call fails.
    bool Run(CXlOper& answer) const;

    const std::vector<XlComValue>& values() const { return values_; }
    std::u16string Text() const;

  private:
    void Add(XlComValue value, const std::u16string& text);
    void AddName(bool is_described, const std::u16string& name);
    void AddObject(char letter, XlHostObject* object);

    IXlComHolder& holder_;
    std::vector<XlComValue> values_;
    std::u16string arguments_text_;
};

/// Selects for the whole process whether calls are run as texts. By default they are run as lists.
void RunEventCallsAsText(bool as_text);

} // namespace metrify

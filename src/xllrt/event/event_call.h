#pragma once

// The call of a macro that an event of the host leads to.

#include "xllrt/event/integration.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

/// The call in both its forms: a list of values, the target's name first, and a text such as
/// `target(4,"[Book1]Sheet1")`.
class XlEventCall {
  public:
    /// The holder describes the objects and runs the call; it must outlive this.
    XlEventCall(IXlComHolder& holder, const std::u16string& target);

    void AddNumber(int number);

    /// Adds an argument for each letter: B workbook, S sheet, R range, F flag. What cannot be described stays
    /// empty.
    void AddArguments(std::string_view signature, std::span<const XlEventArgument> arguments);

    /// False if it could not be run, with the answer as it was.
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

/// Has the process run such calls in the form of texts from now on, or not any more. It starts with lists.
void RunEventCallsAsText(bool as_text);

} // namespace metrify

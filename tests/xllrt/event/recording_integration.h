#pragma once

// An integration that records the calls of the host's automation. Objects of the host are texts:
// "Book1" is a workbook, "Book1!Sheet1" a sheet, "$A$1" a range. An empty one cannot be described.

#include "xllrt/event/integration.h"

#include <functional>
#include <string>
#include <vector>

namespace metrify {

class XlHostObject {
  public:
    std::u16string text;
};

struct AutomationScript {
    bool starts = true;
    bool connects = true;
    XlComFailure failure;
    /// Runs a macro. Returns false on failure.
    std::function<bool(std::span<const XlComValue> values, CXlOper& answer)> run =
        [](std::span<const XlComValue>, CXlOper&) { return true; };
    /// Called on each connection.
    std::function<void()> connecting = [] {};
    std::vector<std::string> calls;           ///< "start", "connect", "run", "end", "keep module"
    std::vector<std::vector<XlComValue>> ran; ///< the lists
    std::vector<std::u16string> ran_as_text;
};

class RecordingHolder final : public IXlComHolder {
  public:
    explicit RecordingHolder(AutomationScript& script) : script_(script) {}
    RecordingHolder(const RecordingHolder&) = delete;
    RecordingHolder& operator=(const RecordingHolder&) = delete;
    ~RecordingHolder() override { script_.calls.emplace_back("end"); }

    bool Start(XlComFailure& failure) override { return Do("start", script_.starts, failure); }
    bool Connect(XlComFailure& failure) override {
        script_.connecting();
        return Do("connect", script_.connects, failure);
    }
    bool DescribeWorkbook(XlHostObject* workbook, std::u16string& name) override {
        return Describe(workbook, name);
    }
    bool DescribeSheet(XlHostObject* sheet, std::u16string& workbook, std::u16string& name) override {
        const std::size_t mark = sheet->text.find(u'!');
        if (mark == std::u16string::npos)
            return false;
        workbook = sheet->text.substr(0, mark);
        name = sheet->text.substr(mark + 1);
        return true;
    }
    bool DescribeRange(XlHostObject* range, std::u16string& address) override {
        return Describe(range, address);
    }
    bool Run(std::span<const XlComValue> values, CXlOper& answer) override {
        script_.calls.emplace_back("run");
        script_.ran.emplace_back(values.begin(), values.end());
        return script_.run(values, answer);
    }
    bool RunText(const std::u16string& text, CXlOper& answer) override {
        script_.ran_as_text.push_back(text);
        return script_.run({}, answer);
    }

  private:
    bool Do(const char* what, bool succeeds, XlComFailure& failure) {
        script_.calls.emplace_back(what);
        if (!succeeds)
            failure = script_.failure;
        return succeeds;
    }
    static bool Describe(const XlHostObject* object, std::u16string& text) {
        if (object->text.empty())
            return false;
        text = object->text;
        return true;
    }

    AutomationScript& script_;
};

class RecordingIntegration final : public CXlIntegration {
  public:
    std::unique_ptr<IXlComHolder> MakeComHolder() const override {
        return std::make_unique<RecordingHolder>(script);
    }
    void KeepModule() const override { script.calls.emplace_back("keep module"); }

    mutable AutomationScript script;
};

} // namespace metrify

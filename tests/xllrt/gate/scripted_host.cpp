#include "scripted_host.h"

#include "xllrt/text/code_page.h"
#include "xllrt/value/record_memory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdarg>
#include <gtest/gtest.h>
#include <type_traits>
#include <utility>

namespace metrify {

namespace {

ScriptedHost* current_host = nullptr;

int AnswerExcel4(int function, XLOPER* result, int count, ...) {
    std::array<XLOPER*, 30> arguments{};
    std::va_list list;
    va_start(list, count);
    for (int i = 0; i < count; ++i)
        arguments[static_cast<std::size_t>(i)] = va_arg(list, XLOPER*);
    va_end(list);
    return current_host->Answer(function, result, count, arguments.data());
}

int METRIFY_HOST_CALL AnswerExcel4v(int function, XLOPER* result, int count, XLOPER* arguments[]) {
    return current_host->Answer(function, result, count, arguments);
}

int METRIFY_HOST_CALL AnswerExcel12(int function, int count, XLOPER12* arguments[], XLOPER12* result) {
    return current_host->Answer(function, result, count, arguments);
}

Excel12Entry FindAnswer() {
    return AnswerExcel12;
}

// Without the option of international texts.
int Plain(int function) {
    return function & ~xlIntl;
}

std::string NameOf(int function) {
    static const std::map<int, std::string> names{{xlFree, "xlFree"},
                                                  {xlCoerce, "xlCoerce"},
                                                  {xlGetHwnd, "xlGetHwnd"},
                                                  {xlGetName, "xlGetName"},
                                                  {xlfSetName, "xlfSetName"},
                                                  {xlfActiveCell, "xlfActiveCell"},
                                                  {xlfGetFormula, "xlfGetFormula"},
                                                  {xlfRegister, "xlfRegister"},
                                                  {xlfGetCell, "xlfGetCell"},
                                                  {xlfGetWorkspace, "xlfGetWorkspace"},
                                                  {xlfUnregister, "xlfUnregister"},
                                                  {xlfFormulaConvert, "xlfFormulaConvert"},
                                                  {xlfInfo, "xlfInfo"},
                                                  {0x8060, "0x8060"},
                                                  {0x8062, "0x8062"},
                                                  {xlcAlert, "xlcAlert"}};
    const auto found = names.find(Plain(function));
    const std::string name = found != names.end() ? found->second : std::to_string(Plain(function));
    return function == Plain(function) ? name : name + "|xlIntl";
}

std::string NumberText(double number) {
    std::array<char, 32> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

std::string Quoted(std::string_view text) {
    return std::string("\"").append(text).append("\"");
}

template <class Char>
std::string NarrowText(std::basic_string_view<Char> text) {
    if constexpr (std::is_same_v<Char, char>)
        return std::string(text);
    else
        return ToNarrow(text);
}

template <class Record>
std::string RenderedCells(const Record& record) {
    std::string text = "{";
    for (std::size_t i = 0; i < CellCountOf(record); ++i)
        text.append(i > 0 ? "," : "").append(Rendered(record.val.array.lparray[i]));
    return text.append("}");
}

template <class Record>
struct Filler {
    Record& record;

    void operator()(std::monostate) const { record.xltype = xltypeNil; }
    void operator()(double number) const {
        record.xltype = xltypeNum;
        record.val.num = number;
    }
    void operator()(bool value) const {
        record.xltype = xltypeBool;
        record.val.xbool = value ? 1 : 0;
    }
    void operator()(std::int32_t value) const {
        record.xltype = xltypeInt;
        StoreField(record.val.w, value);
    }
    void operator()(const std::u16string& text) const { MakeText(record, text); }
    void operator()(Reply::Error error) const {
        record.xltype = xltypeErr;
        StoreField(record.val.err, error.code);
    }
    void operator()(Reply::FullReference) const {
        Record source{};
        typename RecordFamily<Record>::RectangleList list{.count = 1, .reflft = {{0, 0, 0, 0}}};
        source.xltype = xltypeRef;
        source.val.mref.lpmref = &list;
        source.val.mref.idSheet = 7;
        bool allocated = false;
        CopyRecord(&record, &source, allocated);
    }
    void operator()(Reply::SingleReference) const {
        record.xltype = xltypeSRef;
        record.val.sref.count = 1;
        record.val.sref.ref = {0, 0, 0, 0};
    }
    void operator()(const Reply::Items& items) const {
        MakeCells(record, {1, static_cast<std::int32_t>(items.size())});
        for (std::size_t i = 0; i < items.size(); ++i)
            std::visit(Filler{record.val.array.lparray[i]}, items[i]);
    }
};

} // namespace

template <class Record>
std::string Rendered(const Record& record) {
    switch (TypeOf(record)) {
    case xltypeNum:
        return NumberText(record.val.num);
    case xltypeStr:
        return Quoted(NarrowText(TextOf(record)));
    case xltypeBool:
        return record.val.xbool != 0 ? "TRUE" : "FALSE";
    case xltypeInt:
        return std::to_string(record.val.w).append("i");
    case xltypeErr:
        return std::string("#").append(std::to_string(record.val.err));
    case xltypeMissing:
        return "missing";
    case xltypeNil:
        return "nil";
    case xltypeMulti:
        return RenderedCells(record);
    case xltypeRef:
        return "Ref";
    case xltypeSRef:
        return "SRef";
    default:
        return "?";
    }
}

template std::string Rendered(const XLOPER& record);
template std::string Rendered(const XLOPER12& record);

ScriptedHost::ScriptedHost(std::u16string told_version) : version(std::move(told_version)) {
    current_host = this;
    ConnectHost({.excel4 = AnswerExcel4, .excel4v = AnswerExcel4v, .find_entry = FindAnswer});
    ReplaceWindows(this);
}

ScriptedHost::~ScriptedHost() {
    EXPECT_EQ(handed_out_, 0) << "records were not returned";
    ReplaceWindows(nullptr);
    ConnectHost({});
    current_host = nullptr;
}

void ScriptedHost::On(int function, Reply reply) {
    On(
        function, [reply](const std::vector<std::string>&) { return reply; });
}

std::vector<std::string> ScriptedHost::TakeCalls() {
    return std::exchange(calls_, {});
}

std::vector<std::string> ScriptedHost::TakeCallsOf(const std::string& function) {
    std::vector<std::string> calls = TakeCalls();
    std::erase_if(calls, [&](const std::string& call) {
        return call.find(std::string(" ").append(function)) == std::string::npos;
    });
    return calls;
}

Reply ScriptedHost::DefaultReply(int function, const std::vector<std::string>& arguments) {
    switch (Plain(function)) {
    case xlfGetWorkspace:
        return arguments.at(0) == "37" ? Reply{0, international} : Reply{0, version};
    case xlGetName:
        return {0, path};
    case xlfRegister:
        return {0, next_id_++};
    case xlfInfo:
        return {0, version};
    case xlCoerce: {
        if (arguments.at(1) == "8i")
            return {0, Reply::FullReference()};
        // A text that begins with digits is a number, quoted or not.
        const std::string& text = arguments.at(0);
        const std::size_t begin = text.find_first_not_of('"');
        std::int32_t number = 0;
        const char* const first = text.data() + std::min(begin, text.size());
        const auto read = std::from_chars(first, text.data() + text.size(), number);
        return read.ec == std::errc() ? Reply{0, number} : Reply::Refused();
    }
    default:
        return {0, true};
    }
}

template <class Record>
int ScriptedHost::Answer(int function, Record* result, int count, Record** arguments) {
    if (function == xlFree) {
        for (int i = 0; i < count; ++i) {
            const std::uint16_t type = TypeOf(*arguments[i]);
            if (type == xltypeStr || type == xltypeRef || type == xltypeMulti)
                --handed_out_;
            DeepFree(*arguments[i]);
        }
        return xlretSuccess;
    }
    std::vector<std::string> words;
    std::string line = std::is_same_v<Record, XLOPER12> ? "12 " : "4 ";
    line.append(NameOf(function)).append("(");
    for (int i = 0; i < count; ++i) {
        words.push_back(Rendered(*arguments[i]));
        line.append(i > 0 ? ", " : "").append(words.back());
    }
    calls_.push_back(line.append(")"));
    const auto script = scripts_.find(Plain(function));
    const Reply reply = script != scripts_.end() ? script->second(words) : DefaultReply(function, words);
    const bool has_value = !std::holds_alternative<std::monostate>(reply.value);
    if (result && (reply.code == xlretSuccess || has_value)) {
        *result = Record();
        std::visit(Filler<Record>{*result}, reply.value);
        const std::uint16_t type = TypeOf(*result);
        if (type == xltypeStr || type == xltypeRef || type == xltypeMulti)
            ++handed_out_;
    }
    return reply.code;
}

WindowHandle ScriptedHost::FindWindowOfClass(const char* class_name, std::uint16_t low_bits) const {
    calls_.push_back(std::string("find window ") + class_name + " " + std::to_string(low_bits));
    return const_cast<ScriptedHost*>(this);
}

bool ScriptedHost::AskYesNo(WindowHandle owner, const std::u16string& text,
                            const std::u16string& title) const {
    calls_.push_back("ask " + ToNarrow(title) + ": " + ToNarrow(text) + (owner == this ? "" : " (no owner)"));
    return says_yes;
}

} // namespace metrify

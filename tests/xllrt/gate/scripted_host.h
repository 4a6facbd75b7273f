#pragma once

// A host that follows the script of a test and logs its calls in order.

#include "xllrt/gate/host_primitives.h"
#include "xllrt/gate/host_window.h"

#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace metrify {

/// The host's answer: a return code and a value. A value that comes with another code than 0 has no memory
/// of its own: nobody gives it back.
struct Reply {
    struct Error {
        int code;
    };
    struct FullReference {};                                         ///< the cell A1 of the sheet 7
    struct SingleReference {};                                       ///< the cell A1 of any sheet
    using Items = std::vector<std::variant<double, std::u16string>>; ///< one row

    int code = 0;
    std::variant<std::monostate, double, bool, std::int32_t, std::u16string, Error, FullReference,
                 SingleReference, Items>
        value = {};

    static Reply Refused(int code = xlretFailed) { return {code, {}}; }
};

/// Connected as long as it exists. Without a script it answers TRUE; by default it reports a version, a path
/// and international settings, and it coerces texts and numbers to integers.
class ScriptedHost final : public WindowPlatform {
  public:
    using Script = std::function<Reply(const std::vector<std::string>& arguments)>;

    explicit ScriptedHost(std::u16string version = u"14.0");
    /// Fails the test if a record was not returned.
    ~ScriptedHost() override;
    ScriptedHost(const ScriptedHost&) = delete;
    ScriptedHost& operator=(const ScriptedHost&) = delete;

    /// Sets the answer of a function.
    void On(int function, Script script) { scripts_[function] = std::move(script); }
    void On(int function, Reply reply);

    /// The calls since the last time, without `xlFree`: "12" or "4" for the family, the function with its
    /// options, and the arguments.
    std::vector<std::string> TakeCalls();
    /// Those of one function.
    std::vector<std::string> TakeCallsOf(const std::string& function);

    /// Adds a line to the log of calls.
    void Note(const std::string& line) { calls_.push_back(present ? line + present() : line); }
    std::function<std::string()> present;

    // Its version, path and settings.
    std::u16string version;
    std::u16string path = u"C:\\Addins\\Metrify.xll";
    Reply::Items international = {1.0, 1.0, u".", u",", u";", u"Z", u"S", u"yz", u"xz", u"{", u"}"};

    // Its windows, and the answers of the user.
    WindowHandle FindWindowOfClass(const char* class_name, std::uint16_t low_bits) const override;
    bool AskYesNo(WindowHandle owner, const std::u16string& text, const std::u16string& title) const override;
    bool says_yes = false;

    template <class Record>
    int Answer(int function, Record* result, int count, Record** arguments);

  private:
    Reply DefaultReply(int function, const std::vector<std::string>& arguments);

    std::map<int, Script> scripts_;
    mutable std::vector<std::string> calls_;
    double next_id_ = 1.0;
    int handed_out_ = 0;
};

/// A record as it is written in the log: 3.5, 14i, "text", TRUE, missing, #15, {row of cells}, Ref, SRef.
template <class Record>
std::string Rendered(const Record& record);

} // namespace metrify

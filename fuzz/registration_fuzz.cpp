// Records of functions with arbitrary texts, registered with a host and unregistered: the host gets what the
// record says, within its limits, and nothing is left over.
//
// Input: the host's version, decisions for the record, then its texts, separated by zero bytes.

#include "fuzz/input.h"
#include "host/core/host.h"
#include "host/core/host_exports.h"
#include "host/state/entry_type.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/registry/help_ids.h"
#include "xllrt/registry/registration.h"
#include "xllrt/registry/registration_arguments.h"
#include "xllrt/registry/resource_text.h"
#include "xllrt/text/code_page.h"
#include "xllrt/value/thread_state.h"

#include <array>
#include <cctype>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace metrify;
using metrify_fuzz::Input;
using metrify_fuzz::Require;

constexpr const char16_t* kModule = u"C:\\Add-ins\\Fuzz.xll";
constexpr const char* kHelpFile = "C:\\Add-ins\\Fuzz.chm";

// Each name is an entry of the module.
class AnyEntries final : public host::AddInModule {
  public:
    const std::u16string& Path() const override { return path_; }
    void* Find(const std::string& name) const override {
        return name.empty() ? nullptr : const_cast<AnyEntries*>(this);
    }

  private:
    std::u16string path_ = kModule;
};

// The texts of a record, which refers to them.
class Record {
  public:
    explicit Record(Input& input) {
        record_.macroType = static_cast<int>(input.Take(4));
        record_.helpId = static_cast<std::uint16_t>(input.TakeInteger());
        record_.minimumVersion = static_cast<std::uint16_t>(input.Take(17));
        record_.maximumVersion = static_cast<std::uint16_t>(input.Take(17));
        const unsigned missing = input.Take(256);
        for (std::string& text : texts_)
            text = input.TakeText();
        for (std::size_t i = 0; i < texts_.size(); ++i)
            wide_texts_[i] = ToWide(texts_[i]);
        record_.functionName = Wide(missing, 0);
        record_.narrow.entry = record_.wide.entry = Narrow(missing, 1);
        record_.narrow.type = Narrow(missing, 2);
        record_.wide.type = Narrow(missing, 3);
        record_.wide.argumentNames = Wide(missing, 4);
        record_.wide.category = Wide(missing, 5);
        record_.wide.description = Wide(missing, 6);
        record_.helpTopic = Wide(missing, 7);
        // The rest of the input is a list: texts with their terminators, then an empty one.
        help_ = ToWide(input.TakeRest());
        help_.append(2, u'\0');
        record_.wide.argumentHelp = help_.data();
    }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    const XlFunctionRecord& record() const { return record_; }
    const std::array<std::string, 8>& texts() const { return texts_; }

  private:
    const char* Narrow(unsigned missing, unsigned i) const {
        return (missing >> i & 1U) != 0 ? nullptr : texts_[i].c_str();
    }
    const XCHAR* Wide(unsigned missing, unsigned i) const {
        return (missing >> i & 1U) != 0 ? nullptr : wide_texts_[i].c_str();
    }

    XlFunctionRecord record_;
    std::array<std::string, 8> texts_;
    std::array<std::u16string, 8> wide_texts_;
    std::u16string help_;
};

// A type text that the host knows has as many parameters as are counted.
void CheckType(const std::string& type) {
    std::size_t letters = 0;
    for (std::size_t i = 1; i < type.size(); ++i)
        letters += std::isalpha(static_cast<unsigned char>(type[i])) != 0 ? 1 : 0;
    Require(CountArguments(type) == letters);
    const auto known = host::ReadEntryType(ToWide(type), true);
    const bool begins_with_type = known && std::isalpha(static_cast<unsigned char>(type[0])) != 0;
    Require(!begins_with_type || known->parameters.size() == letters);
}

void CheckResourceText(const std::string& text) {
    const std::string shown = LocalizedText(text.c_str());
    Require(text.find('#') != std::string::npos || shown == text);
}

// No text of a registration is longer than its family allows, and there are not too many values.
void CheckRegistered(const host::Registration& registration, const CXlFunctionDescriptor& descriptor) {
    Require(registration.id == descriptor.registerId);
    const std::size_t most = registration.is_wide ? 255 : 30;
    Require(registration.arguments.size() <= most);
    for (std::size_t i = 9; i < registration.arguments.size(); ++i)
        Require(registration.arguments[i].As<std::u16string>()->size() <= 255);
    Require(registration.type_text ==
            ToWide(registration.is_wide ? descriptor.wide.type : descriptor.narrow.type));
}

void RegisterAndUnregister(host::Host& host, CXlFunctionDescriptor& descriptor, bool is_short) {
    std::array<CXlFunctionDescriptor*, 1> functions{&descriptor};
    const CXlHelpIds help_ids = AssignHelpIds(functions);
    const std::string help_file = kHelpFile;
    RegistrationContext context{.moduleName = CXlOper(),
                                .askHostName = [](CXlOper& name) { return CallNoArgs(name, xlGetName); },
                                .helpFile = help_file,
                                .helpIds = help_ids,
                                .shortRegistration = is_short};
    context.moduleName.SetText(std::u16string_view(kModule));
    const bool is_done = RegisterFunction(context, descriptor);
    Require(is_done || descriptor.registered == 0);
    Require((descriptor.registered != 0) == (descriptor.registerId != 0.0));
    const host::Registration* const found = host.state().registrations.Find(descriptor.registerId);
    Require((found != nullptr) == (descriptor.registered != 0));
    if (found)
        CheckRegistered(*found, descriptor);
    const double id = descriptor.registerId;
    UnregisterFunction(context, descriptor);
    Require(descriptor.registered == 0 && !host.state().registrations.Find(id));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool has_slot = AllocateThreadStates();
    Require(has_slot);
    Input input(data, size);
    {
        host::Host host(static_cast<int>(4 + input.Take(13)));
        host.Adopt(std::make_unique<AnyEntries>());
        ConnectHost(host::NewestHostPrimitives());
        DetectHostVersion();
        const bool is_short = input.Take(2) != 0;
        const Record record(input);
        for (const std::string& text : record.texts()) {
            CheckType(text);
            CheckResourceText(text);
        }
        CXlFunctionDescriptor descriptor(record.record());
        RegisterAndUnregister(host, descriptor, is_short);
        DestroyThreadState();
        const host::LedgerCounts counts = host.state().ledger.Counts();
        Require(counts.Outstanding() == 0 && counts.refused == 0);
    }
    ConnectHost({});
    return 0;
}

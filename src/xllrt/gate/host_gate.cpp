#include "xllrt/gate/host_gate.h"

#include "xllrt/gate/host_primitives.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/record_memory.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <vector>

namespace metrify {

namespace {

int CallHost(int function, XLOPER& result, int count, XLOPER** arguments) {
    return Excel4v(function, &result, count, arguments);
}

int CallHost(int function, XLOPER12& result, int count, XLOPER12** arguments) {
    return Excel12v(function, &result, count, arguments);
}

// The most arguments of a call that allocates nothing: as many as the narrow family has.
constexpr std::size_t kUsualArguments = RecordFamily<XLOPER>::kMaxArguments;

// Pointers, of which the usual number needs no memory.
template <class Pointer>
class PointerList {
  public:
    explicit PointerList(std::size_t capacity) {
        if (capacity > usual_.size()) {
            many_.resize(capacity);
            pointers_ = many_.data();
        }
    }
    PointerList(const PointerList&) = delete;
    PointerList& operator=(const PointerList&) = delete;

    void Add(Pointer pointer) { pointers_[count_++] = pointer; }
    std::size_t Count() const { return count_; }
    Pointer* Data() { return pointers_; }
    std::span<const Pointer> All() const { return {pointers_, count_}; }

  private:
    std::array<Pointer, kUsualArguments> usual_;
    std::vector<Pointer> many_;
    Pointer* pointers_ = usual_.data();
    std::size_t count_ = 0;
};

// The records of a call in one family: those of the arguments if they have one in that family, otherwise
// conversions, which exist as long as the list.
template <class Record>
class Marshaller {
  public:
    explicit Marshaller(std::size_t count) : records_(count) {}

    // Returns 0, or the code for an argument that cannot be passed.
    int Add(const CXlOper* argument) {
        using Other = typename RecordFamily<Record>::Other;
        const unsigned state = argument ? argument->State() : 0U;
        if (state & RecordFamily<Record>::kValid)
            // The host takes plain pointers, and does not write through them.
            records_.Add(const_cast<Record*>(argument->RecordIn<Record>()));
        else if (state & RecordFamily<Other>::kValid)
            return AddConverted(argument->RecordIn<Other>());
        else
            return xlretInvXloper;
        return xlretSuccess;
    }

    int Count() const { return static_cast<int>(records_.Count()); }
    Record** Records() { return records_.Data(); }

  private:
    template <class Other>
    int AddConverted(const Other* source) {
        Record& converted = converted_.emplace_back(std::make_unique<RecordOwner<Record>>())->record;
        bool allocated = false;
        if (!CopyRecord(&converted, source, allocated))
            return kRetWrongFamily;
        records_.Add(&converted);
        return xlretSuccess;
    }

    PointerList<Record*> records_;
    std::vector<std::unique_ptr<RecordOwner<Record>>> converted_;
};

template <class Record>
int CallInFamily(CXlOper& result, int function, OperPointers arguments) {
    Marshaller<Record> marshaller(arguments.size());
    for (const CXlOper* argument : arguments)
        if (const int code = marshaller.Add(argument); code != xlretSuccess)
            return code;
    Record record = Record();
    const int code = CallHost(function, record, marshaller.Count(), marshaller.Records());
    // The old value of the result is released now and not before: it may have been an argument.
    if (code == xlretSuccess)
        result.TakeFromHost(record);
    return code;
}

// Calls with pointers to the values.
template <class Call>
int WithPointers(std::span<const CXlOper> values, Call call) {
    PointerList<const CXlOper*> pointers(values.size());
    for (const CXlOper& value : values)
        pointers.Add(&value);
    return call(pointers.All());
}

} // namespace

int CallArray(CXlOper& result, CallMode mode, int function, OperPointers arguments) {
    const bool is_wide = mode == CallMode::wide || (mode == CallMode::by_host_flag && HostFlag());
    return is_wide ? CallArray12(result, function, arguments) : Call4(result, function, arguments);
}

int CallArray12(CXlOper& result, int function, OperPointers arguments) {
    return HostFlag() ? CallInFamily<XLOPER12>(result, function, arguments) : kRetWrongFamily;
}

int CallArray12(CXlOper& result, int function, std::span<const CXlOper> arguments) {
    return WithPointers(
        arguments, [&](OperPointers pointers) { return CallArray12(result, function, pointers); });
}

int Call4(CXlOper& result, int function, OperPointers arguments) {
    constexpr std::size_t most = RecordFamily<XLOPER>::kMaxArguments;
    return arguments.size() <= most ? CallInFamily<XLOPER>(result, function, arguments) : kRetWrongFamily;
}

int Call4(CXlOper& result, int function, std::span<const CXlOper> arguments) {
    return WithPointers(
        arguments, [&](OperPointers pointers) { return Call4(result, function, pointers); });
}

int CallNoArgs(CXlOper& result, int function) {
    return CallArray(result, CallMode::by_host_flag, function, {});
}

int CallVa(CXlOper& result, int function, int count, std::va_list arguments) {
    PointerList<const CXlOper*> pointers(static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i)
        pointers.Add(va_arg(arguments, const CXlOper*));
    return CallArray(result, CallMode::by_host_flag, function, pointers.All());
}

} // namespace metrify

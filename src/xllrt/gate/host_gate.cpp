#include "xllrt/gate/host_gate.h"

#include "xllrt/gate/host_primitives.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/value/record_memory.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace metrify {

namespace {

int CallHost(int function, XLOPER& result, int count, XLOPER** arguments) {
    return Excel4v(function, &result, count, arguments);
}

int CallHost(int function, XLOPER12& result, int count, XLOPER12** arguments) {
    return Excel12v(function, &result, count, arguments);
}

// The records of a call in one family: those of the arguments where they are of that family, conversions of
// them otherwise, which live as long as the list.
template <class Record>
class Marshaller {
  public:
    explicit Marshaller(std::size_t count) { records_.reserve(count); }

    // Gives 0, or the code of an argument that cannot go.
    int Add(const CXlOper* argument) {
        using Other = typename RecordFamily<Record>::Other;
        const unsigned state = argument ? argument->State() : 0U;
        if (state & RecordFamily<Record>::kValid)
            // The host takes plain pointers, and does not write through them.
            records_.push_back(const_cast<Record*>(argument->RecordIn<Record>()));
        else if (state & RecordFamily<Other>::kValid)
            return AddConverted(argument->RecordIn<Other>());
        else
            return xlretInvXloper;
        return xlretSuccess;
    }

    int Count() const { return static_cast<int>(records_.size()); }
    Record** Records() { return records_.data(); }

  private:
    template <class Other>
    int AddConverted(const Other* source) {
        Record& converted = converted_.emplace_back(std::make_unique<RecordOwner<Record>>())->record;
        bool allocated = false;
        if (!CopyRecord(&converted, source, allocated))
            return kRetWrongFamily;
        records_.push_back(&converted);
        return xlretSuccess;
    }

    std::vector<Record*> records_;
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
    // Only now may the old value of the result go: it may have been an argument.
    if (code == xlretSuccess)
        result.TakeFromHost(record);
    return code;
}

std::vector<const CXlOper*> PointersTo(std::span<const CXlOper> values) {
    std::vector<const CXlOper*> pointers;
    pointers.reserve(values.size());
    for (const CXlOper& value : values)
        pointers.push_back(&value);
    return pointers;
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
    return CallArray12(result, function, PointersTo(arguments));
}

int Call4(CXlOper& result, int function, OperPointers arguments) {
    constexpr std::size_t most = RecordFamily<XLOPER>::kMaxArguments;
    return arguments.size() <= most ? CallInFamily<XLOPER>(result, function, arguments) : kRetWrongFamily;
}

int Call4(CXlOper& result, int function, std::span<const CXlOper> arguments) {
    return Call4(result, function, PointersTo(arguments));
}

int CallNoArgs(CXlOper& result, int function) {
    return CallArray(result, CallMode::by_host_flag, function, {});
}

int CallVa(CXlOper& result, int function, int count, std::va_list arguments) {
    std::vector<const CXlOper*> pointers(static_cast<std::size_t>(std::max(count, 0)));
    for (const CXlOper*& pointer : pointers)
        pointer = va_arg(arguments, const CXlOper*);
    return CallArray(result, CallMode::by_host_flag, function, pointers);
}

} // namespace metrify

#include "host/entry/entry_call.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace metrify::host {

namespace {

template <class Parameter>
Parameter As(const MachineWord& word) {
    if constexpr (std::is_same_v<Parameter, double>)
        return std::get<double>(word);
    else if constexpr (std::is_pointer_v<Parameter>)
        return static_cast<Parameter>(std::get<void*>(word));
    else
        return static_cast<Parameter>(std::get<std::int32_t>(word));
}

template <class Result, class... Parameters>
EntryResult Invoke(void* entry, std::span<const MachineWord> arguments) {
    const auto invoke = [=]<std::size_t... I>(std::index_sequence<I...>) {
        const auto function = reinterpret_cast<Result(METRIFY_HOST_CALL*)(Parameters...)>(entry);
        return function(As<Parameters>(arguments[I])...);
    };
    return EntryResult(invoke(std::index_sequence_for<Parameters...>()));
}

struct CallableSignature {
    std::string_view signature;
    EntryResult (*invoke)(void* entry, std::span<const MachineWord> arguments);
};

using Text4 = const char*;
using Text12 = const XCHAR*;
using Int = std::int32_t;
using Bool = std::int16_t;

constexpr CallableSignature signatures[] = {
    // Commands and functions without arguments.
    {"J", Invoke<Int>},
    {"A", Invoke<Bool>},
    {"R", Invoke<XLOPER*>},
    {"U", Invoke<XLOPER12*>},
    // Functions of one value.
    {"RP", Invoke<XLOPER*, XLOPER*>},
    {"RR", Invoke<XLOPER*, XLOPER*>},
    {"RC", Invoke<XLOPER*, Text4>},
    {"RJ", Invoke<XLOPER*, Int>},
    {"UQ", Invoke<XLOPER12*, XLOPER12*>},
    {"UU", Invoke<XLOPER12*, XLOPER12*>},
    {"UC%", Invoke<XLOPER12*, Text12>},
    {"UJ", Invoke<XLOPER12*, Int>},
    // A conversion: number, text, text.
    {"RBCC", Invoke<XLOPER*, double, Text4, Text4>},
    {"UBC%C%", Invoke<XLOPER12*, double, Text12, Text12>},
    // An observer of the host's events. Its type text declares a narrow result also for wide arguments,
    // although the wide entry returns a wide one.
    {"RJPPP", Invoke<XLOPER*, Int, XLOPER*, XLOPER*, XLOPER*>},
    {"RJQQQ", Invoke<XLOPER12*, Int, XLOPER12*, XLOPER12*, XLOPER12*>},
    // A ribbon's callback.
    {"RJCCJCCA", Invoke<XLOPER*, Int, Text4, Text4, Int, Text4, Text4, Bool>},
    {"UJC%C%JC%C%A", Invoke<XLOPER12*, Int, Text12, Text12, Int, Text12, Text12, Bool>},
};

const CallableSignature* Find(std::string_view signature) {
    return std::find_if(
        std::begin(signatures), std::end(signatures),
        [signature](const CallableSignature& row) { return row.signature == signature; });
}

} // namespace

bool IsCallable(std::string_view signature) {
    return Find(signature) != std::end(signatures);
}

EntryResult CallEntry(void* entry, std::string_view signature, std::span<const MachineWord> arguments) {
    return Find(signature)->invoke(entry, arguments);
}

} // namespace metrify::host

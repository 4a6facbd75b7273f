#pragma once

// The module of the add-in, open in a host, with the entries that the benchmarks call.

#include "host/core/host.h"
#include "host/program/program_platform.h"

#include <stdexcept>

namespace metrify_bench {

class LoadedAddIn {
  public:
    LoadedAddIn() : host_(15) {
        std::string error;
        if (!host_.Load(metrify::host::ModuleBesideProgram(), error) ||
            host_.CallEntryPoint("xlAutoOpen") != 1)
            throw std::runtime_error("the add-in did not open " + error);
        convert_ = reinterpret_cast<Convert>(host_.state().module->Find("Metrify_12"));
        auto_free_ = reinterpret_cast<AutoFree>(host_.state().module->Find("xlAutoFree12"));
    }

    metrify::host::Host& host() { return host_; }

    /// The part of the host in a call: the function must ask it for its release and return the answer.
    void AskRelease() {
        char16_t text[] = u"\7Release";
        metrify::XLOPER12 item{};
        item.xltype = metrify::xltypeStr;
        item.val.str = text;
        metrify::XLOPER12* argument = &item;
        metrify::XLOPER12 release{};
        host_.Call12(metrify::xlfInfo, &release, 1, &argument);
        metrify::XLOPER12* answer = &release;
        host_.Call12(metrify::xlFree, nullptr, 1, &answer);
    }

    /// A whole call, including the return of the result.
    void Call(double val, const char16_t* in_units, const char16_t* out_units) const {
        metrify::XLOPER12* result = convert_(val, in_units, out_units);
        if ((result->xltype & metrify::xlbitDLLFree) != 0)
            auto_free_(result);
    }

  private:
    using Convert = metrify::XLOPER12*(METRIFY_HOST_CALL*)(double, const char16_t*, const char16_t*);
    using AutoFree = void(METRIFY_HOST_CALL*)(metrify::XLOPER12*);

    metrify::host::Host host_;
    Convert convert_;
    AutoFree auto_free_;
};

} // namespace metrify_bench

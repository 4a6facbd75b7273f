#pragma once

// Translates faults of the operating system into exceptions.

#include "xllrt/fault/exceptions.h"
#include "xllrt/fault/guarded_call.h"

#include <cstdint>

namespace metrify {

/// Translates faults of this thread while it exists, in code called through `Run`. Scopes nest; the end of a
/// scope restores the enclosing one, or the host's own handling of faults.
class CXlSeTranslatorScope {
  public:
    CXlSeTranslatorScope() = default;
    CXlSeTranslatorScope(const CXlSeTranslatorScope&) = delete;
    CXlSeTranslatorScope& operator=(const CXlSeTranslatorScope&) = delete;

    /// Calls the body. A fault in it is thrown from here as a `CXlStructuredException`.
    template <class Body>
    void Run(Body&& body) const {
        auto call = [&body] { body(); };
        const std::uint32_t code =
            CallGuarded([](void* context) { (*static_cast<decltype(call)*>(context))(); }, &call);
        if (code != 0)
            throw CXlStructuredException::OfFault(code);
    }
};

} // namespace metrify

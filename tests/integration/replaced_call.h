#pragma once

// Replaces functions of the system during a test, for example to make them fail.

#include "integration/com/system_libraries.h"

#include <cstddef>
#include <unknwn.h>

namespace metrify::host {

/// A function pointer in read-only memory, replaced during the lifetime of this object.
class ReplacedPointer {
  public:
    ReplacedPointer(void** place, void* replacement);
    ~ReplacedPointer();
    ReplacedPointer(const ReplacedPointer&) = delete;
    ReplacedPointer& operator=(const ReplacedPointer&) = delete;

    void* original() const { return original_; }

  private:
    void** place_;
    void* original_;
};

/// Where a module, by default this program, keeps the address of an imported function; null if it does not
/// import it.
void** ImportedFunction(const char* name, void* module = nullptr);

/// Where this program keeps the address of a function that it loads from the folder of the system.
template <class Function>
void** LoadedFunction(Function* SystemFunctions::*function) {
    return reinterpret_cast<void**>(const_cast<Function**>(&(GetSystemFunctions().*function)));
}

/// Where the objects of a class keep the address of a method, by its number in the interface.
void** MethodOf(IUnknown* object, std::size_t number);

template <class Function>
void* AddressOf(Function* function) {
    return reinterpret_cast<void*>(function);
}

} // namespace metrify::host

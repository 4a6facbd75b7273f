#pragma once

// Functions of the system that a test puts one of its own in the place of, as long as it needs them to fail.

#include <cstddef>
#include <unknwn.h>

namespace metrify::host {

/// A pointer to a function in memory that is not meant to be written.
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

/// Where a module, without one this program, keeps the address of a function that it imports; null if it
/// imports none of the name.
void** ImportedFunction(const char* name, void* module = nullptr);

/// Where the objects of a class keep the address of a method, by its number in the interface.
void** MethodOf(IUnknown* object, std::size_t number);

template <class Function>
void* AddressOf(Function* function) {
    return reinterpret_cast<void*>(function);
}

} // namespace metrify::host

#include "xllrt/gate/host_primitives.h"

// Only a program that calls ConnectImportedHost needs the import library of XLCall32.
extern "C" {
__declspec(dllimport) int Excel4(int function, metrify::XLOPER* result, int count, ...);
__declspec(dllimport) int METRIFY_HOST_CALL
    Excel4v(int function, metrify::XLOPER* result, int count, metrify::XLOPER* arguments[]);
}

namespace metrify {

void ConnectImportedHost() {
    ConnectHost({.excel4 = &::Excel4, .excel4v = &::Excel4v});
}

} // namespace metrify

#include "units/default_system.h"

namespace metrify {

const default_system* match_default_system(cursor& expptr) {
    for (const default_system& row : default_systems)
        if (*expptr == row.name.front() && match_keyword(true, true, expptr, row.name) == 0)
            return &row;
    return nullptr;
}

} // namespace metrify

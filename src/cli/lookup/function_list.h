#pragma once

#include <iosfwd>
#include <string_view>

namespace metrify {

/// Writes the whole help of the function of that name, in any case. Otherwise lists the functions whose line
/// contains the text in any case or, if there are none, those of the chapters whose title does. 1 if nothing
/// is found; err then has the nearest names.
int list_functions(std::string_view text, std::ostream& out, std::ostream& err);

} // namespace metrify

#pragma once

// Colours of the messages in a session.

#include <string>
#include <string_view>

namespace metrify {

/// True if the terminal shows colours and the user has not declined them by the variable NO_COLOR.
bool has_colours();

/// The listing with its messages in red.
std::string with_coloured_errors(std::string_view listing);

} // namespace metrify

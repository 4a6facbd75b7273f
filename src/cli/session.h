#pragma once

// An interactive session. Every run of the calculator starts empty, so the session is a program that grows:
// each entry is run behind all the earlier ones, and only what it adds to the listing is shown. Variables,
// user units, default systems and the function block are thus kept as in a file, exactly.

#include <string>
#include <string_view>

namespace metrify {

class session {
  public:
    /// Runs the entry, one line or several, behind the earlier ones and gives what it adds to the listing.
    std::string enter(std::string_view entry);

    /// True if the entry's last line goes on: it ends in a continuation.
    static bool is_continued(std::string_view entry);

    /// Forgets all entries.
    void start_over();

  private:
    std::string program_;
    std::string listing_;
};

} // namespace metrify

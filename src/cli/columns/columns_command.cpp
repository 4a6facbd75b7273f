#include "cli/columns/columns_command.h"

#include "base/file_path.h"
#include "cli/hints/hint_writer.h"
#include "language/unit_definitions.h"

#include <cerrno>
#include <fcntl.h>
#include <iostream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace metrify {

namespace {

constexpr int status_usage = 2;

int open_to_read(const std::string& name) {
#ifdef _WIN32
    return ::_wopen(path_of(name).c_str(), O_RDONLY | O_BINARY);
#else
    return ::open(name.c_str(), O_RDONLY);
#endif
}

/// An open file, or standard input.
class input_file {
  public:
    explicit input_file(const std::string& name)
        : descriptor_(name == "-" ? STDIN_FILENO : open_to_read(name)) {}
    ~input_file() {
        if (descriptor_ > STDIN_FILENO)
            ::close(descriptor_);
    }
    input_file(const input_file&) = delete;
    input_file& operator=(const input_file&) = delete;

    bool is_open() const { return descriptor_ >= 0; }
    bool is_terminal() const { return ::isatty(descriptor_) != 0; }

    /// Bytes from the current position on, or 0 if it is no regular file.
    std::uint64_t size() const {
        struct stat about = {};
        if (::fstat(descriptor_, &about) != 0 || !S_ISREG(about.st_mode))
            return 0;
        const auto position = ::lseek(descriptor_, 0, SEEK_CUR);
        return position < about.st_size ? static_cast<std::uint64_t>(about.st_size - position) : 0;
    }

    std::ptrdiff_t read(char* to, std::size_t size) const {
        for (;;) {
            const auto count = ::read(descriptor_, to, static_cast<unsigned>(size)); // int on Windows
            if (count >= 0 || errno != EINTR)
                return count;
        }
    }

  private:
    int descriptor_;
};

} // namespace

int columns_command(const columns_arguments& arguments, const std::string& unit_definitions,
                    const columns_hints& hints) {
    if (arguments.delimiter.size() != 1 || arguments.delimiter == "\"" || arguments.delimiter == "\n") {
        std::cerr << "metrify: the delimiter must be one character, and no quote or line end\n";
        return status_usage;
    }
    define_units(unit_definitions);
    conversion_plan plan;
    std::string message;
    if (!make_conversion_plan(arguments.from, arguments.to, plan, message)) {
        std::cerr << message;
        if (hints.are_on)
            hint_writer(unit_definitions, hints.have_everyday_units, std::cerr)
                .explain_columns(arguments.from, arguments.to);
        return status_usage;
    }
    const input_file file(arguments.file);
    if (!file.is_open()) {
        std::cerr << "metrify: " << arguments.file << ": " << std::generic_category().message(errno) << '\n';
        return status_usage;
    }
    columns_options options = arguments.options;
    options.delimiter = arguments.delimiter[0];
    const bool has_progress =
        ::isatty(STDERR_FILENO) != 0 && ::isatty(STDOUT_FILENO) == 0 && !file.is_terminal();
    return convert_columns(plan, options,
                           {[&](char* to, std::size_t size) { return file.read(to, size); }, file.size(),
                            std::cout, std::cerr, has_progress ? &std::cerr : nullptr,
                            arguments.file == "-" ? "standard input" : arguments.file});
}

} // namespace metrify

#include "cli/standard_input.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace metrify {

standard_input_buffer::int_type standard_input_buffer::underflow() {
    const std::size_t count = std::fread(block_.data(), 1, block_.size(), stdin);
    // The stream catches this and sets badbit.
    if (count == 0 && std::ferror(stdin) != 0)
        throw std::system_error(errno, std::generic_category());
    setg(block_.data(), block_.data(), block_.data() + count);
    return count == 0 ? traits_type::eof() : traits_type::to_int_type(block_[0]);
}

} // namespace metrify

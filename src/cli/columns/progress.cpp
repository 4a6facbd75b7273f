#include "cli/columns/progress.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace metrify {

namespace {

std::string rate_text(double rows_per_second) {
    const auto thousands = static_cast<std::uint64_t>(rows_per_second / 1e3);
    if (thousands < 1)
        return std::to_string(static_cast<std::uint64_t>(rows_per_second)) + " rows/s";
    return std::to_string(thousands) + "k rows/s";
}

std::string time_text(double seconds) {
    const auto whole = static_cast<std::uint64_t>(std::llround(seconds));
    if (whole < 60)
        return std::to_string(whole) + " s";
    return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
}

} // namespace

std::string progress_line(std::uint64_t bytes, std::uint64_t total, std::uint64_t rows, double seconds) {
    constexpr std::size_t width = 30;
    const std::string rate = rate_text(seconds > 0.0 ? static_cast<double>(rows) / seconds : 0.0);
    if (total == 0 || bytes == 0)
        return std::to_string(rows) + " rows  " + rate;
    const double share = std::min(1.0, static_cast<double>(bytes) / static_cast<double>(total));
    std::string bar(static_cast<std::size_t>(share * width), '#');
    bar.resize(width, '.');
    const std::string percent = std::to_string(static_cast<int>(share * 100.0));
    return "[" + bar + "] " + percent + "%  " + rate + "  " + time_text(seconds / share - seconds) + " left";
}

progress::progress(std::ostream* terminal, std::uint64_t total) : terminal_(terminal), total_(total) {}

progress::~progress() {
    if (is_shown_)
        *terminal_ << "\r\x1b[K" << std::flush;
}

void progress::show(std::uint64_t bytes, std::uint64_t rows) {
    constexpr std::chrono::milliseconds interval(200);
    if (terminal_ == nullptr || clock::now() - shown_ < interval)
        return;
    shown_ = clock::now();
    const double seconds = std::chrono::duration<double>(shown_ - begin_).count();
    *terminal_ << "\r" << progress_line(bytes, total_, rows, seconds) << "\x1b[K" << std::flush;
    is_shown_ = true;
}

} // namespace metrify

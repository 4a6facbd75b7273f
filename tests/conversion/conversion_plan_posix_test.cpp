// Spans that end at memory that cannot be accessed.

#include "conversion/conversion_plan.h"

#include <gtest/gtest.h>
#include <span>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A page of numbers. An access after it ends the process.
class guarded_page {
  public:
    guarded_page()
        : size_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
          pages_(mmap(nullptr, 2 * size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (pages_ != MAP_FAILED)
            mprotect(static_cast<char*>(pages_) + size_, size_, PROT_NONE);
    }
    ~guarded_page() { munmap(pages_, 2 * size_); }
    guarded_page(const guarded_page&) = delete;
    guarded_page& operator=(const guarded_page&) = delete;

    bool is_made() const { return pages_ != MAP_FAILED; }
    std::span<double> last(std::size_t count) const {
        return std::span(static_cast<double*>(pages_), size_ / sizeof(double)).last(count);
    }

  private:
    std::size_t size_;
    void* pages_;
};

TEST(conversion_plan, accesses_nothing_after_the_spans) {
    const guarded_page from;
    const guarded_page to;
    ASSERT_TRUE(from.is_made() && to.is_made());
    metrify::conversion_plan plan;
    std::string message;
    ASSERT_TRUE(metrify::make_conversion_plan("km", "m", plan, message));
    for (std::size_t count = 1; count <= 24; ++count) {
        from.last(count).back() = 3.0;
        plan.apply(from.last(count), to.last(count));
        EXPECT_EQ(to.last(count).back(), 3000.0);
    }
}

} // namespace

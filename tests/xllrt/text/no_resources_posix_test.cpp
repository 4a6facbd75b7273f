// Modules have no string tables on this system.

#include "xllrt/platform/resource_platform.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

TEST(SystemResourcesOnPosix, are_none_in_any_language) {
    constexpr std::uint16_t us_english = 0x409;
    EXPECT_EQ(SystemResources().ThreadLanguage(), 0);
    EXPECT_TRUE(SystemResources().ModuleLanguages().empty());
    EXPECT_TRUE(SystemResources().BlockLanguages(3329).empty());
    EXPECT_TRUE(SystemResources().Block(3329, us_english).empty());
    EXPECT_EQ(SystemResources().CountryCode(us_english), std::nullopt);
}

} // namespace

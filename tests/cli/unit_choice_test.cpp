#include "cli/commands.h"
#include "cli/unit_choice.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace metrify;

class unit_file : public testing::Test {
  protected:
    ~unit_file() override { std::filesystem::remove(path_); }

    std::string with(const std::string& text) const {
        std::ofstream(path_, std::ios::binary) << text;
        return path_.string();
    }

    std::filesystem::path path_ = std::filesystem::temp_directory_path() / "metrify-unit-file";
};

std::string converted(const call_extras& extras, std::string_view in_units, std::string_view out_units) {
    std::ostringstream out;
    std::ostringstream err;
    convert_command(1, in_units, out_units, out, err, extras);
    return out.str() + err.str();
}

TEST_F(unit_file, adds_its_units) {
    call_extras extras;
    std::ostringstream err;
    EXPECT_TRUE(read_definitions({false, {with("DefUnit(pace, 0.75 m)")}}, extras.unit_definitions, err));
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(converted(extras, "pace", "m"), "0.75 m\n");
}

TEST_F(unit_file, can_use_and_replace_everyday_units) {
    call_extras extras;
    std::ostringstream err;
    const std::string file = with("DefUnit(load, 2 kWh)\nDefUnit(month, 30 day)\n");
    EXPECT_TRUE(read_definitions({true, {file}}, extras.unit_definitions, err));
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(converted(extras, "load", "MJ"), "7.2 MJ\n");
    EXPECT_EQ(converted(extras, "month", "day"), "30 day\n");
}

TEST_F(unit_file, is_reported_with_the_line_of_a_fault) {
    std::string definitions;
    std::ostringstream err;
    const std::string file = with("# units\nDefUnit(kg, 3)\n");
    EXPECT_FALSE(read_definitions({false, {file}}, definitions, err));
    EXPECT_EQ(err.str(),
              "metrify: " + file + ":2: ERROR: New unit name 'kg' matches an existing base unit.\n");
}

TEST_F(unit_file, is_reported_if_it_cannot_be_read) {
    std::string definitions;
    std::ostringstream err;
    EXPECT_FALSE(read_definitions({false, {"/no/such/file"}}, definitions, err));
    EXPECT_EQ(err.str(), "metrify: /no/such/file: No such file or directory\n");
}

TEST(everyday_choice, is_needed_for_everyday_units) {
    EXPECT_EQ(converted({}, "kWh", "MJ"), "ERROR: 'kWh' undefined.\n");
    call_extras extras;
    std::ostringstream err;
    EXPECT_TRUE(read_definitions({true, {}}, extras.unit_definitions, err));
    EXPECT_EQ(converted(extras, "kWh", "MJ"), "3.6 MJ\n");
}

} // namespace

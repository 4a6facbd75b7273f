// The command line of metrify.

#include "cli/lookup/unit_document.h"
#include "cli/unit_choice.h"
#include "tests/shell_posix.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace metrify;
using metrify::test::shell_result;

// The output has both streams.
shell_result run_metrify(const std::string& arguments) {
    return metrify::test::run_shell(METRIFY_BINARY_DIR "/metrify " + arguments + " 2>&1 </dev/null");
}

TEST(metrify_program, converts) {
    EXPECT_EQ(run_metrify("convert 3.5 ft m").output, "1.0668 m\n");
    EXPECT_EQ(run_metrify("convert 3.5 ft m").status, 0);
    EXPECT_EQ(run_metrify("convert -2 m m").output, "-2 m\n");
    EXPECT_EQ(run_metrify("convert -.5 km m").output, "-500 m\n");
    EXPECT_EQ(run_metrify("convert 1 nothing m").status, 1);
}

TEST(metrify_program, converts_without_the_name_of_the_command) {
    EXPECT_EQ(run_metrify("3.5 ft m").output, "1.0668 m\n");
    EXPECT_EQ(run_metrify("3.5 ft m").status, 0);
    EXPECT_EQ(run_metrify("-2 m m").output, "-2 m\n");
    EXPECT_EQ(run_metrify("-.5 km m").output, "-500 m\n");
    EXPECT_EQ(run_metrify("--also 68 km m").output.find("68000 m"), 0U);
    EXPECT_EQ(run_metrify("1 nothing m").status, 1);
}

TEST(metrify_program, runs_a_line_and_several_lines) {
    EXPECT_EQ(run_metrify("-e 'x = 3 ft; in'").output, "[  1 ] x = 3 ft; in\n       x = 36 in\n\n");
    EXPECT_EQ(run_metrify("-e 'x = 3 ft' -e 'x; in'").output,
              "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n[  2 ] x; in\n        = 36 in\n\n");
    EXPECT_EQ(run_metrify("run -e '3'").output, "[  1 ] 3\n        = 3 \n\n");
    EXPECT_EQ(run_metrify("-e 3").output, "[  1 ] 3\n        = 3 \n\n");
    EXPECT_EQ(run_metrify("run -e 3 file").status, 2);
}

TEST(metrify_program, is_strict_with_an_option) {
    EXPECT_EQ(run_metrify("-e nothing").status, 0);
    EXPECT_EQ(run_metrify("-e nothing --strict").status, 1);
    EXPECT_EQ(run_metrify("run --strict -e nothing").status, 1);
    EXPECT_EQ(run_metrify("run --strict -e '1 m'").status, 0);
}

TEST(metrify_program, shows_its_exit_statuses_in_its_help) {
    const std::string help = run_metrify("--help").output;
    for (const char* status : {"\n  0    ", "\n  1    ", "\n  2    ", "\n  130  "})
        EXPECT_NE(help.find(status), std::string::npos) << status;
}

TEST(metrify_program, accepts_a_number_to_convert) {
    for (const char* number : {"abc", "1x", "''"}) {
        const shell_result run = run_metrify(std::string("convert ") + number + " ft m");
        EXPECT_EQ(run.status, 2) << number;
        EXPECT_NE(run.output.find("is not a number"), std::string::npos) << run.output;
    }
}

TEST(metrify_program, rejects_wrong_usage) {
    EXPECT_EQ(run_metrify("convert 1").status, 2);
    EXPECT_EQ(run_metrify("nothing").status, 2);
    EXPECT_EQ(run_metrify("--nothing").status, 2);
    EXPECT_EQ(run_metrify("units a b").status, 2);
}

TEST(metrify_program, has_no_file_and_no_other_command_with_a_line_to_run) {
    const std::string refusal = "metrify: --execute goes with no file and with no command but run\n";
    for (const char* arguments : {"-e '1 m' run file", "-e '1 m' convert 5 m ft", "-e '1 m' units ft"}) {
        EXPECT_EQ(run_metrify(arguments).output, refusal) << arguments;
        EXPECT_EQ(run_metrify(arguments).status, 2) << arguments;
    }
    EXPECT_EQ(run_metrify("-e 3 run").output, "[  1 ] 3\n        = 3 \n\n");
}

TEST(metrify_program, lists_units_and_functions) {
    EXPECT_EQ(run_metrify("units fathom").status, 0);
    EXPECT_NE(run_metrify("units fathom").output.find("fathom"), std::string::npos);
    EXPECT_EQ(run_metrify("functions sqrt").status, 0);
    EXPECT_EQ(run_metrify("functions --markdown").status, 0);
}

TEST(metrify_program, runs_files_and_standard_input) {
    EXPECT_EQ(run_metrify("run /no/such/file").status, 2);
    EXPECT_EQ(run_metrify("run -").status, 0);
    EXPECT_EQ(run_metrify("").status, 0);
    EXPECT_EQ(run_metrify("").output, run_metrify("run").output);
}

TEST(metrify_program, prints_its_version_and_its_options) {
    EXPECT_EQ(run_metrify("--version").output,
              "metrify 0.1.0\nadd-in: Excel up to release 15.0, see https://www.metrify.example\n");
    EXPECT_EQ(run_metrify("--version").status, 0);
    EXPECT_EQ(run_metrify("--help").status, 0);
    EXPECT_EQ(run_metrify("convert --help").status, 0);
}

// Sets a variable, or removes it if the value is null, until the end of a test.
class environment_variable {
  public:
    environment_variable(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name))
            before_ = before;
        set(value);
    }
    environment_variable(const environment_variable&) = delete;
    environment_variable& operator=(const environment_variable&) = delete;
    ~environment_variable() { set(before_ ? before_->c_str() : nullptr); }

  private:
    void set(const char* value) const {
        if (value != nullptr)
            setenv(name_, value, 1);
        else
            unsetenv(name_);
    }

    const char* name_;
    std::optional<std::string> before_;
};

class own_units : public testing::Test {
  protected:
    own_units() {
        std::filesystem::create_directories(folder_ + "/metrify");
        std::ofstream(folder_ + "/metrify/units") << "DefUnit(pace, 0.75 m)\n";
        setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
    }
    ~own_units() override {
        unsetenv("XDG_CONFIG_HOME");
        std::filesystem::remove_all(folder_);
    }
    std::string folder_ = "/tmp/metrify-own-units-" + std::to_string(getpid());
};

TEST_F(own_units, do_not_change_what_run_and_convert_print) {
    EXPECT_EQ(run_metrify("convert 4 pace m").output, "ERROR: 'pace' undefined.\n");
    EXPECT_EQ(run_metrify("run " + folder_ + "/metrify/units").output,
              "[  1 ] DefUnit(pace, 0.75 m)\n        User defined unit 'pace'  = 0.75 m\n\n\n");
}

TEST_F(own_units, are_added_by_an_option) {
    const std::string file = folder_ + "/metrify/units";
    EXPECT_EQ(run_metrify("convert --units " + file + " 4 pace m").output, "3 m\n");
    EXPECT_EQ(run_metrify("convert 4 pace m --units " + file).output, "3 m\n");
}

TEST_F(own_units, are_in_the_folder_of_settings_before_the_home_folder) {
    const environment_variable home("HOME", "/home/of/metrify");
    EXPECT_EQ(own_units_file(), folder_ + "/metrify/units");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(own_units_file(), "/home/of/metrify/.config/metrify/units");
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(own_units_file(), "/home/of/metrify/.config/metrify/units");
}

TEST_F(own_units, are_in_the_folder_of_application_data_without_a_home_folder) {
    unsetenv("XDG_CONFIG_HOME");
    const environment_variable home("HOME", nullptr);
    const environment_variable without("APPDATA", nullptr);
    EXPECT_EQ(own_units_file(), "");
    const environment_variable data("APPDATA", "/data");
    EXPECT_EQ(own_units_file(), "/data/metrify/units");
}

TEST_F(own_units, come_before_the_files_of_the_options) {
    unit_choice choice = {false, {"other"}};
    add_own_units(choice);
    EXPECT_EQ(choice.files, (std::vector<std::string>{folder_ + "/metrify/units", "other"}));
    std::filesystem::remove(folder_ + "/metrify/units");
    unit_choice without = {false, {"other"}};
    add_own_units(without);
    EXPECT_EQ(without.files, std::vector<std::string>{"other"});
}

TEST(metrify_program, writes_the_page_on_units_on_request) {
    const shell_result run = run_metrify("units --markdown");
    EXPECT_EQ(run.output, unit_document());
    EXPECT_EQ(run.status, 0);
}

TEST(metrify_program, adds_everyday_units_by_an_option) {
    EXPECT_EQ(run_metrify("convert --everyday 1 kWh MJ").output, "3.6 MJ\n");
    EXPECT_EQ(run_metrify("convert 1 kWh MJ").status, 1);
    EXPECT_EQ(run_metrify("units --everyday kWh").status, 0);
}

TEST(metrify_program, refuses_a_units_file_with_a_fault) {
    EXPECT_EQ(run_metrify("convert --units /no/such/file 3 ft m").status, 2);
}

TEST(metrify_program, has_hints_only_on_request_if_standard_error_is_no_terminal) {
    EXPECT_EQ(run_metrify("convert 180 lb kg").output.find("hint"), std::string::npos);
    EXPECT_NE(run_metrify("convert --hints 180 lb kg").output.find("hint"), std::string::npos);
    EXPECT_EQ(run_metrify("convert --hints --no-hints 180 lb kg").output.find("hint"), std::string::npos);
}

TEST(metrify_program, explains_words_between_the_units) {
    const std::string refusal =
        "The following argument was not expected: m\nRun with --help for more information.\n";
    const std::string answer = ": `metrify convert 3.5 ft m` gives 1.0668 m\n";
    EXPECT_EQ(run_metrify("3.5 ft to m").output, refusal);
    EXPECT_EQ(run_metrify("3.5 ft to m").status, 2);
    EXPECT_EQ(run_metrify("--hints 3.5 ft to m").output,
              refusal + "metrify: hint: the units follow each other without `to`" + answer);
    EXPECT_EQ(run_metrify("--hints convert 3.5 ft in m").output,
              refusal + "metrify: hint: the units follow each other without `in`, which is the inch" +
                  answer);
    EXPECT_EQ(run_metrify("--hints 3.5 ft '->' m").output,
              "The following argument was not expected: ->\nRun with --help for more information.\n"
              "metrify: hint: the units follow each other without `->`" +
                  answer);
}

TEST(metrify_program, explains_a_decimal_comma_after_a_sign) {
    const shell_result run = run_metrify("--hints -3,5 ft m");
    EXPECT_EQ(run.output, "VAL: '-3,5' is not a number\nRun with --help for more information.\n"
                          "metrify: hint: the decimal sign is a point: `metrify convert -3.5 ft m` gives "
                          "-1.0668 m\n");
    EXPECT_EQ(run.status, 2);
}

} // namespace

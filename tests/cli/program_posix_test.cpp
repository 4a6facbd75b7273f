// The command line of metrify.

#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

namespace {

struct program_run {
    int status = -1;
    std::string output; ///< including the error stream
};

program_run run_metrify(const std::string& arguments) {
    program_run run;
    FILE* pipe = popen((METRIFY_BINARY_DIR "/metrify " + arguments + " 2>&1 </dev/null").c_str(), "r");
    if (pipe == nullptr)
        return run;
    std::array<char, 4096> buffer;
    while (const std::size_t count = fread(buffer.data(), 1, buffer.size(), pipe))
        run.output.append(buffer.data(), count);
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

TEST(metrify_program, converts) {
    EXPECT_EQ(run_metrify("convert 3.5 ft m").output, "1.0668 m\n");
    EXPECT_EQ(run_metrify("convert 3.5 ft m").status, 0);
    EXPECT_EQ(run_metrify("convert -2 m m").output, "-2 m\n");
    EXPECT_EQ(run_metrify("convert 1 nothing m").status, 1);
}

TEST(metrify_program, converts_without_the_name_of_the_command) {
    EXPECT_EQ(run_metrify("3.5 ft m").output, "1.0668 m\n");
    EXPECT_EQ(run_metrify("3.5 ft m").status, 0);
    EXPECT_EQ(run_metrify("-2 m m").output, "-2 m\n");
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
        const program_run run = run_metrify(std::string("convert ") + number + " ft m");
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

} // namespace

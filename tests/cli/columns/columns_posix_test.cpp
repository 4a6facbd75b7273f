// `metrify columns` as a program.

#include "tests/shell_posix.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using metrify::test::shell_result;

// The output has both streams. $METRIFY is the program.
shell_result shell(const std::string& command) {
    return metrify::test::run_shell("METRIFY='" METRIFY_BINARY_DIR "/metrify'; { " + command + "; } 2>&1");
}

TEST(columns_program, converts_in_more_than_six_digits) {
    // 1 m is 1/0.3048 = 3.28083989501312 ft in the table.
    const shell_result run = shell("printf 'n,h\\na,1\\n' | $METRIFY columns --from m --to ft -c h");
    EXPECT_EQ(run.output, "n,h\na,3.28083989501312\n");
    EXPECT_EQ(run.status, 0);
}
TEST(columns_program, converts_temperatures) {
    EXPECT_EQ(shell("printf '0\\n100\\n' | $METRIFY columns --from degC --to degK").output,
              "273.15\n373.15\n");
}
TEST(columns_program, shows_what_the_language_says_about_the_units) {
    const shell_result run = shell("$METRIFY columns --from ft --to kg </dev/null");
    EXPECT_EQ(run.output, "ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n");
    EXPECT_EQ(run.status, 2);
}
TEST(columns_program, explains_the_units_with_hints) {
    const std::string error = "ERROR: 'kWh' undefined.\n";
    EXPECT_EQ(shell("$METRIFY columns --from kWh --to J </dev/null").output, error);
    EXPECT_EQ(shell("$METRIFY columns --hints --from kWh --to J </dev/null").output,
              error + "metrify: hint: `kWh` is one of the everyday units, which `--everyday` adds: `metrify "
                      "columns --everyday --from kWh --to J`\n");
    EXPECT_EQ(shell("$METRIFY columns --hints --no-hints --from kWh --to J </dev/null").output, error);
}
TEST(columns_program, names_the_file_whose_byte_order_mark_is_ignored) {
    const shell_result run = shell("f=$(mktemp -d); printf '\\357\\273\\2771\\n' > $f/a.csv; cd $f; "
                                   "$METRIFY columns --from m --to cm a.csv; rm a.csv; rmdir $f");
    EXPECT_EQ(run.output, "metrify: a.csv: a byte order mark is ignored\n100\n");
}
TEST(columns_program, converts_everyday_units) {
    const shell_result run = shell("echo 2 | $METRIFY columns --everyday --from kWh --to J");
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_DOUBLE_EQ(std::strtod(run.output.c_str(), nullptr), 7.2e6) << run.output;
}
TEST(columns_program, separates_cells_by_tabs_and_by_any_character) {
    EXPECT_EQ(shell("printf '1\\t2\\n' | $METRIFY columns --from m --to cm --tsv -c 2").output, "1\t200\n");
    EXPECT_EQ(shell("printf '1;2\\n' | $METRIFY columns --from m --to cm -d ';' -c 2").output, "1;200\n");
    EXPECT_EQ(shell("$METRIFY columns --from m --to cm -d ab </dev/null").status, 2);
}
TEST(columns_program, is_told_about_the_first_row) {
    EXPECT_EQ(shell("printf '1\\n' | $METRIFY columns --from m --to cm --header").output, "1\n");
    EXPECT_EQ(shell("printf 'x\\n' | $METRIFY columns --from m --to cm --no-header").status, 1);
}
TEST(columns_program, reads_a_file) {
    EXPECT_EQ(shell("f=$(mktemp); echo 2 > $f; $METRIFY columns --from m --to cm $f; rm $f").output, "200\n");
    EXPECT_EQ(shell("$METRIFY columns --from m --to cm /no/such/file").output,
              "metrify: /no/such/file: No such file or directory\n");
    EXPECT_EQ(shell("$METRIFY columns --from m --to cm /no/such/file").status, 2);
}
TEST(columns_program, reports_output_that_is_lost) {
    EXPECT_EQ(shell("echo 1 | $METRIFY columns --from m --to cm >/dev/full").status, 2);
}

// A program that writes a row and waits for its answer.
TEST(columns_program, answers_each_row_if_it_is_line_buffered) {
    int to_program[2] = {};
    int from_program[2] = {};
    ASSERT_EQ(pipe(to_program), 0);
    ASSERT_EQ(pipe(from_program), 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(to_program[0], STDIN_FILENO);
        dup2(from_program[1], STDOUT_FILENO);
        close(to_program[1]);
        close(from_program[0]);
        execl(METRIFY_BINARY_DIR "/metrify", "metrify", "columns", "--from", "m", "--to", "cm",
              "--line-buffered", static_cast<char*>(nullptr));
        _exit(127);
    }
    close(to_program[0]);
    close(from_program[1]);
    for (const char* row : {"1\n", "2\n"}) {
        ASSERT_EQ(write(to_program[1], row, 2), 2);
        pollfd answered = {from_program[0], POLLIN, 0};
        ASSERT_EQ(poll(&answered, 1, 20000), 1);
        char answer[16] = {};
        EXPECT_EQ(read(from_program[0], answer, sizeof answer), 4);
        EXPECT_STREQ(answer, row[0] == '1' ? "100\n" : "200\n");
    }
    close(to_program[1]);
    close(from_program[0]);
    waitpid(child, nullptr, 0);
}

// The input keeps its rows for a while, so that there is something to show.
TEST(columns_program, shows_its_progress_at_a_terminal) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        const char* command = "{ echo 1; sleep 0.4; echo 2; sleep 0.1; } | " METRIFY_BINARY_DIR
                              "/metrify columns --from m --to cm > /dev/null";
        execl("/bin/sh", "sh", "-c", command, static_cast<char*>(nullptr));
        _exit(127);
    }
    std::string screen;
    char buffer[4096];
    for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;)
        screen.append(buffer, static_cast<std::size_t>(count));
    waitpid(child, nullptr, 0);
    close(terminal);
    EXPECT_NE(screen.find("\r2 rows  "), std::string::npos) << screen;
    EXPECT_TRUE(screen.ends_with("\r\x1b[K")) << screen;
}

// The largest size in memory, in KiB, while the numbers up to the given one are converted.
long memory_for(const char* rows) {
    const pid_t child = fork();
    if (child == 0) {
        FILE* numbers = popen((std::string("seq ") + rows).c_str(), "r");
        dup2(fileno(numbers), STDIN_FILENO);
        dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        execl(METRIFY_BINARY_DIR "/metrify", "metrify", "columns", "--from", "m", "--to", "cm",
              static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = -1;
    rusage usage = {};
    wait4(child, &status, 0, &usage);
    EXPECT_EQ(status, 0);
    return usage.ru_maxrss;
}

TEST(columns_program, needs_no_more_memory_for_a_large_input) {
    EXPECT_LT(memory_for("2000000"), memory_for("1000") + 8 * 1024); // 14 MB are read
}

} // namespace

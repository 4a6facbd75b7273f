// The metrify command with standard streams that can't be read or written.

#include "tests/shell_posix.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using metrify::test::shell_result;

// The output is that of the error stream. $METRIFY is the program.
shell_result lose_output(const std::string& command) {
    return metrify::test::run_shell("METRIFY='" METRIFY_BINARY_DIR "/metrify'; { " + command +
                                    "; } 2>&1 >/dev/null");
}

TEST(standard_output, that_is_lost_is_reported_by_each_command) {
    for (const char* command :
         {"echo 1 m | $METRIFY", "echo 1 m | $METRIFY run", "$METRIFY convert 3.5 ft m", "$METRIFY units",
          "$METRIFY functions", "$METRIFY functions sin", "$METRIFY functions --markdown", "$METRIFY --help",
          "$METRIFY run --help", "$METRIFY --version"}) {
        for (const char* lost : {" > /dev/full", " >&-"}) {
            const shell_result it = lose_output(std::string(command) + lost);
            EXPECT_EQ(it.status, 2) << command << lost;
            EXPECT_EQ(it.output, "metrify: standard output: not all of it could be written\n")
                << command << lost;
        }
    }
}

TEST(standard_output, that_is_lost_is_reported_for_a_long_listing) {
    const shell_result it =
        lose_output("for i in $(seq 2000); do echo $i m; done | $METRIFY run > /dev/full");
    EXPECT_EQ(it.status, 2);
    EXPECT_EQ(it.output, "metrify: standard output: not all of it could be written\n");
}

TEST(standard_output, that_is_written_does_not_change_the_status) {
    EXPECT_EQ(lose_output("$METRIFY convert 3.5 ft m").status, 0);
    EXPECT_EQ(lose_output("$METRIFY convert 3.5 ft kg").status, 1);
    EXPECT_EQ(lose_output("$METRIFY units 'no such unit'").status, 1);
    EXPECT_EQ(lose_output("echo 1 m | $METRIFY run").status, 0);
}

TEST(interrupted_run, shows_what_it_has_computed_and_has_its_own_status) {
    const shell_result it =
        lose_output("l=$(mktemp); printf '1 m\\nBesselJ(2000000000, 2000000001)\\n2 m\\n' > $l; "
                    "timeout --foreground -s INT 0.3 $METRIFY run $l >&2; rm $l");
    EXPECT_EQ(it.output, "[  1 ] 1 m\n        = 1 m\n\n"
                         "[  2 ] BesselJ(2000000000, 2000000001)\n       ERROR: interrupted.\n\n"
                         "metrify: interrupted\n");
    EXPECT_EQ(
        lose_output("printf 'BesselJ(2000000000, 2000000001)' | timeout --preserve-status --foreground -s "
                    "INT 0.3 $METRIFY")
            .status,
        130);
}

TEST(standard_input, that_cannot_be_read_is_reported) {
    for (const char* command : {"$METRIFY", "$METRIFY run", "$METRIFY run -"}) {
        const shell_result folder = lose_output(std::string(command) + " < /tmp");
        EXPECT_EQ(folder.status, 2) << command;
        EXPECT_EQ(folder.output, "metrify: standard input: Is a directory\n") << command;
        const shell_result closed = lose_output(std::string(command) + " <&-");
        EXPECT_EQ(closed.status, 2) << command;
        EXPECT_EQ(closed.output, "metrify: standard input: Bad file descriptor\n") << command;
    }
}

TEST(standard_input, can_be_closed_if_it_is_not_read) {
    EXPECT_EQ(lose_output("$METRIFY convert 3.5 ft m <&-").status, 0);
    EXPECT_EQ(lose_output("echo 1 m > \"${f:=$(mktemp)}\"; $METRIFY run \"$f\" <&-; s=$?; rm \"$f\"; exit $s")
                  .status,
              0);
}

TEST(standard_input, is_read_to_its_end_whatever_its_length) {
    const shell_result it = lose_output("for i in $(seq 5000); do echo \"$i m; m\"; done | $METRIFY run | "
                                        "grep -c '= 5000 m' >&2");
    EXPECT_EQ(it.output, "1\n");
}

} // namespace

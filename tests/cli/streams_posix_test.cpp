// The metrify command with standard streams that can't be read or written.

#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

namespace {

struct outcome {
    int status = -1;
    std::string err = {};
};

// What the command, run by a shell, ends with and says. $METRIFY is the program.
outcome shell(const std::string& command) {
    const std::string line = "METRIFY='" METRIFY_BINARY_DIR "/metrify'; { " + command + "; } 2>&1 >/dev/null";
    FILE* pipe = popen(line.c_str(), "r");
    if (pipe == nullptr)
        return {};
    outcome it;
    std::array<char, 4096> buffer;
    while (const std::size_t count = fread(buffer.data(), 1, buffer.size(), pipe))
        it.err.append(buffer.data(), count);
    const int status = pclose(pipe);
    it.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return it;
}

TEST(standard_output, that_is_lost_is_told_by_each_command) {
    for (const char* command :
         {"echo 1 m | $METRIFY", "echo 1 m | $METRIFY run", "$METRIFY convert 3.5 ft m", "$METRIFY units",
          "$METRIFY functions", "$METRIFY functions sin", "$METRIFY functions --markdown", "$METRIFY --help",
          "$METRIFY run --help", "$METRIFY --version"}) {
        for (const char* lost : {" > /dev/full", " >&-"}) {
            const outcome it = shell(std::string(command) + lost);
            EXPECT_EQ(it.status, 2) << command << lost;
            EXPECT_EQ(it.err, "metrify: standard output: not all of it could be written\n")
                << command << lost;
        }
    }
}

TEST(standard_output, that_is_lost_is_told_of_a_long_listing) {
    const outcome it = shell("for i in $(seq 2000); do echo $i m; done | $METRIFY run > /dev/full");
    EXPECT_EQ(it.status, 2);
    EXPECT_EQ(it.err, "metrify: standard output: not all of it could be written\n");
}

TEST(standard_output, that_is_there_leaves_the_status_alone) {
    EXPECT_EQ(shell("$METRIFY convert 3.5 ft m").status, 0);
    EXPECT_EQ(shell("$METRIFY convert 3.5 ft kg").status, 1);
    EXPECT_EQ(shell("$METRIFY units 'no such unit'").status, 1);
    EXPECT_EQ(shell("echo 1 m | $METRIFY run").status, 0);
}

TEST(standard_input, that_cant_be_read_is_told) {
    for (const char* command : {"$METRIFY", "$METRIFY run", "$METRIFY run -"}) {
        const outcome folder = shell(std::string(command) + " < /tmp");
        EXPECT_EQ(folder.status, 2) << command;
        EXPECT_EQ(folder.err, "metrify: standard input: Is a directory\n") << command;
        const outcome closed = shell(std::string(command) + " <&-");
        EXPECT_EQ(closed.status, 2) << command;
        EXPECT_EQ(closed.err, "metrify: standard input: Bad file descriptor\n") << command;
    }
}

TEST(standard_input, that_is_not_read_may_be_closed) {
    EXPECT_EQ(shell("$METRIFY convert 3.5 ft m <&-").status, 0);
    EXPECT_EQ(
        shell("echo 1 m > \"${f:=$(mktemp)}\"; $METRIFY run \"$f\" <&-; s=$?; rm \"$f\"; exit $s").status, 0);
}

TEST(standard_input, is_read_to_its_end_however_long) {
    const outcome it = shell("for i in $(seq 5000); do echo \"$i m; m\"; done | $METRIFY run | "
                             "grep -c '= 5000 m' >&2");
    EXPECT_EQ(it.err, "1\n");
}

} // namespace

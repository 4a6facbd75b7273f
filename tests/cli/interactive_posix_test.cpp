// The metrify command at a pseudo-terminal.

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

// A metrify process with its own terminal, and its own home folder for the history.
class terminal_session {
  public:
    explicit terminal_session(const std::string& home, const char* locale = "C",
                              const char* no_colour = "1") {
        child_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
        if (child_ == 0) {
            // A terminal that hangs up is then the end of the input.
            (void)std::signal(SIGHUP, SIG_IGN);
            setenv("HOME", home.c_str(), 1);
            unsetenv("XDG_CONFIG_HOME");
            setenv("TERM", "xterm", 1);
            setenv("LC_ALL", locale, 1);
            setenv("NO_COLOR", no_colour, 1);
            // An option of the leak sanitizer.
            setenv("LSAN_OPTIONS",
                   "suppressions=" METRIFY_SOURCE_DIR "/tests/cli/libedit.supp:fast_unwind_on_malloc=0", 1);
            execl(METRIFY_BINARY_DIR "/metrify", "metrify", static_cast<char*>(nullptr));
            _exit(127);
        }
    }
    ~terminal_session() {
        if (child_ > 0 && !ends_like_a_session()) {
            kill(child_, SIGKILL);
            waitpid(child_, nullptr, 0);
        }
        close(terminal_);
    }
    terminal_session(const terminal_session&) = delete;
    terminal_session& operator=(const terminal_session&) = delete;

    void type(std::string_view keys) {
        ASSERT_TRUE(takes_keys()) << screen_;
        ASSERT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }

    /// Presses Ctrl-C until the entry that is being run ends.
    void interrupt_run() {
        const auto is_running = [&] {
            termios modes{};
            return tcgetattr(terminal_, &modes) == 0 && (modes.c_lflag & ICANON) != 0;
        };
        while (!is_running())
            usleep(1000);
        for (; is_running(); usleep(50000))
            ASSERT_EQ(write(terminal_, "\x03", 1), 1);
    }

    /// Waits until the text appears after the text of the previous wait, or the program ends.
    bool shows(std::string_view text) {
        for (;;) {
            if (const std::size_t place = screen_.find(text, seen_); place != std::string::npos) {
                seen_ = place + text.size();
                return true;
            }
            if (!read_more())
                return false;
        }
    }

    /// The exit status once the program has ended.
    int wait_for_end() {
        while (read_more()) {
        }
        int status = -1;
        waitpid(child_, &status, 0);
        child_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// The exit status after the terminal has hung up; -1 if the program does not end.
    int hang_up() {
        EXPECT_TRUE(takes_keys()) << screen_;
        close(terminal_);
        terminal_ = -1;
        int status = -1;
        for (int tries = 0; tries < 1000 && waitpid(child_, &status, WNOHANG) == 0; ++tries)
            usleep(10000);
        if (!WIFEXITED(status)) {
            kill(child_, SIGKILL);
            waitpid(child_, nullptr, 0);
        }
        child_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    const std::string& screen() const { return screen_; }

  private:
    // Discards the line and gives the end of input. A program that is killed would not count what it has
    // executed.
    bool ends_like_a_session() const {
        for (int tries = 0; tries < 100; ++tries) {
            if (waitpid(child_, nullptr, WNOHANG) != 0 || write(terminal_, "\x15\x04", 2) != 2)
                return waitpid(child_, nullptr, WNOHANG) != 0;
            usleep(10000);
        }
        return false;
    }

    // The line editor sets the terminal a moment after it has shown its prompt. Until then the terminal
    // itself would treat keys such as that for the end of input.
    bool takes_keys() const {
        termios modes{};
        while (tcgetattr(terminal_, &modes) == 0 && (modes.c_lflag & ICANON) != 0) {
            pollfd hung_up = {terminal_, 0, 0};
            if (poll(&hung_up, 1, 1) > 0)
                return false;
        }
        return true;
    }

    // Waits for output. False once the program has ended.
    bool read_more() {
        char buffer[4096];
        const ssize_t count = read(terminal_, buffer, sizeof buffer);
        if (count <= 0)
            return false;
        screen_.append(buffer, static_cast<std::size_t>(count));
        return true;
    }

    int terminal_ = -1;
    pid_t child_ = -1;
    std::string screen_;
    std::size_t seen_ = 0;
};

class interactive : public testing::Test {
  protected:
    interactive() {
        char pattern[] = "/tmp/metrify-home-XXXXXX";
        home_ = mkdtemp(pattern);
    }
    ~interactive() override { std::system(("rm -rf " + home_).c_str()); }

    std::string home_;
};

TEST_F(interactive, keeps_variables_from_line_to_line_and_ends_at_the_end_of_input) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> ")) << it.screen();
    it.type("x = 3 ft\r");
    EXPECT_TRUE(it.shows("x = 0.9144 m")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type("x; in\r");
    EXPECT_TRUE(it.shows(" = 36 in")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type("\x04");
    EXPECT_EQ(it.wait_for_end(), 0) << it.screen();
}

TEST_F(interactive, has_help_on_starting_over_and_starts_over) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type(":help\r");
    EXPECT_TRUE(it.shows(":restart   forgets all of it and starts over")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type("x = 3 ft\r");
    ASSERT_TRUE(it.shows("x = 0.9144 m")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type(":restart\r");
    EXPECT_TRUE(it.shows("Everything is forgotten.")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type("x\r");
    EXPECT_TRUE(it.shows("ERROR: 'x' undefined.")) << it.screen();
    it.type(":quit\r");
    EXPECT_EQ(it.wait_for_end(), 0) << it.screen();
}

TEST_F(interactive, loads_the_units_of_the_user_and_keeps_them_when_it_starts_over) {
    std::filesystem::create_directories(home_ + "/.config/metrify");
    std::ofstream(home_ + "/.config/metrify/units") << "DefUnit(pace, 0.75 m)\n";
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("4 pace\r");
    EXPECT_TRUE(it.shows("[  1 ] 4 pace\r\n        = 3 m")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type(":restart\r");
    ASSERT_TRUE(it.shows("> "));
    it.type("8 pace\r");
    EXPECT_TRUE(it.shows("[  1 ] 8 pace\r\n        = 6 m")) << it.screen();
}

TEST_F(interactive, explains_an_error) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("x = 180 lb\r");
    ASSERT_TRUE(it.shows("> "));
    it.type("x + 5 metrs\r");
    EXPECT_TRUE(it.shows("metrify: hint for `x + 5 metrs`: ")) << it.screen();
    EXPECT_TRUE(it.shows("`meters`")) << it.screen();
}

TEST_F(interactive, recalls_an_interrupted_line) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("12 ft + 7 in");
    ASSERT_TRUE(it.shows("7 in")) << it.screen();
    it.type("\x03");
    ASSERT_TRUE(it.shows("> ")) << it.screen();
    it.type("\x1b[A");
    ASSERT_TRUE(it.shows("7 in")) << it.screen();
    it.type("\r");
    EXPECT_TRUE(it.shows(" = 3.8354 m")) << it.screen();
}

TEST_F(interactive, treats_a_continued_line_as_one_entry) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("1 m + \\\r");
    ASSERT_TRUE(it.shows("... ")) << it.screen();
    it.type("2 m\r");
    EXPECT_TRUE(it.shows(" = 3 m")) << it.screen();
}

// The message about an unknown unit with a non-ASCII byte. The screen may show the byte escaped; the listing
// contains the byte itself.
TEST_F(interactive, passes_each_typed_byte_to_the_language_unchanged) {
    for (const char* locale : {"C", "C.UTF-8", "no such locale"}) {
        terminal_session it(home_, locale);
        ASSERT_TRUE(it.shows("> "));
        it.type("1 \xC2\xB5m\r");
        EXPECT_TRUE(it.shows("[  1 ] 1 \xC2\xB5m\r\n")) << it.screen();
        EXPECT_TRUE(it.shows("near or in '\xC2\xB5m'.")) << it.screen();
        ASSERT_TRUE(it.shows("> "));
        it.type("20 \xC2\xB0"
                "C; degF\r");
        EXPECT_TRUE(it.shows("near or in '\xC2\xB0"
                             "C'."))
            << it.screen();
        ASSERT_TRUE(it.shows("> "));
        it.type("1 \xB5m\r"); // no character in the terminal's encoding
        EXPECT_TRUE(it.shows("near or in '\xB5m'.")) << it.screen();
        ASSERT_TRUE(it.shows("> "));
        it.type("2 \xE2\x82\r"); // the start of one
        EXPECT_TRUE(it.shows("near or in '\xE2\x82'.")) << it.screen();
        ASSERT_TRUE(it.shows("> "));
        it.type("# \xE2\x82\xAC \xF0\x9F\x98\x80 \xC2\x85\r");
        EXPECT_TRUE(it.shows("\n# \xE2\x82\xAC \xF0\x9F\x98\x80 \xC2\x85\r\n")) << it.screen();
        ASSERT_TRUE(it.shows("> "));
        it.type("1.5 m\r");
        EXPECT_TRUE(it.shows(" = 1.5 m")) << it.screen();
        ASSERT_TRUE(it.shows("> "));
        it.type(":quit\r");
        EXPECT_EQ(it.wait_for_end(), 0) << it.screen();
    }
}

TEST_F(interactive, recalls_characters_above_ascii) {
    terminal_session it(home_, "C.UTF-8");
    ASSERT_TRUE(it.shows("> "));
    it.type("# \xC2\xB5 \xE2\x82\xAC\r");
    ASSERT_TRUE(it.shows("\n# \xC2\xB5 \xE2\x82\xAC\r\n")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type("\x1b[A");
    ASSERT_TRUE(it.shows("\xE2\x82\xAC")) << it.screen();
    it.type("\r");
    EXPECT_TRUE(it.shows("\n# \xC2\xB5 \xE2\x82\xAC\r\n")) << it.screen();
}

TEST_F(interactive, completes_a_name_and_shows_the_candidates) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("besselj\t0, 0)\r");
    EXPECT_TRUE(it.shows("[  1 ] besselj(0, 0)")) << it.screen();
    EXPECT_TRUE(it.shows(" = 1 ")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type("Bessel\t");
    EXPECT_TRUE(it.shows("BesselI(  BesselJ(  BesselK(  BesselY(")) << it.screen();
    EXPECT_TRUE(it.shows("> Bessel")) << it.screen();
    it.type("\x03");
    ASSERT_TRUE(it.shows("^C"));
    it.type("speed_of_it = 3 m\r");
    ASSERT_TRUE(it.shows("speed_of_it = 3 m")) << it.screen();
    it.type("speed\t; cm\r");
    EXPECT_TRUE(it.shows(" = 300 cm")) << it.screen();
}

TEST_F(interactive, has_help_on_a_name_and_quits) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("help cm\r");
    EXPECT_TRUE(it.shows("1 cm = 0.01 m")) << it.screen();
    it.type("help\r");
    EXPECT_TRUE(it.shows("Type a line of the language")) << it.screen();
    it.type("quit\r");
    EXPECT_EQ(it.wait_for_end(), 0) << it.screen();
}

TEST_F(interactive, takes_a_command_for_a_name_if_the_user_has_defined_it) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("quit = 3 m\r");
    ASSERT_TRUE(it.shows("quit = 3 m")) << it.screen();
    it.type("quit\r");
    EXPECT_TRUE(it.shows("        = 3 m")) << it.screen();
    it.type("help * 2\r");
    EXPECT_TRUE(it.shows("ERROR")) << it.screen();
    it.type(":quit\r");
    EXPECT_EQ(it.wait_for_end(), 0) << it.screen();
}

TEST_F(interactive, keeps_the_last_value) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("2 ft + 1 ft\r");
    ASSERT_TRUE(it.shows(" = 0.9144 m")) << it.screen();
    it.type("ans; in\r");
    EXPECT_TRUE(it.shows(" = 36 in")) << it.screen();
}

TEST_F(interactive, shows_that_a_block_is_open) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("begin\r");
    ASSERT_TRUE(it.shows("... ")) << it.screen();
    it.type("y = 2 m\r");
    ASSERT_TRUE(it.shows("... ")) << it.screen();
    it.type("end\r");
    EXPECT_TRUE(it.shows("> ")) << it.screen();
}

TEST_F(interactive, ends_a_long_calculation_and_goes_on) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("x = 1 m\r");
    ASSERT_TRUE(it.shows(" = 1 m")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type("x = BesselJ(2000000000, 2000000001)\r");
    it.interrupt_run();
    it.type("x\r");
    EXPECT_TRUE(it.shows(" = 1 m")) << it.screen();
    EXPECT_NE(it.screen().find("ERROR: interrupted."), std::string::npos) << it.screen();
}

TEST_F(interactive, keeps_the_variables_of_pasted_lines_before_an_interrupted_one) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("x = 1 m\rx = 2 m\ry = 3 s\r");
    ASSERT_TRUE(it.shows("y = 3 s\r\n       y = 3 s")) << it.screen();
    ASSERT_TRUE(it.shows("> "));
    it.type("x = BesselJ(2000000000, 2000000001)\r");
    it.interrupt_run();
    it.type("y + 0 s\r");
    it.type("x + 0 m\r");
    it.type("quit\r");
    EXPECT_EQ(it.wait_for_end(), 0);
    EXPECT_NE(it.screen().find("ERROR: interrupted."), std::string::npos) << it.screen();
    EXPECT_NE(it.screen().find("] y + 0 s\r\n        = 3 s"), std::string::npos) << it.screen();
    EXPECT_NE(it.screen().find("] x + 0 m\r\n        = 2 m"), std::string::npos) << it.screen();
}

TEST_F(interactive, shows_errors_in_red_unless_colours_are_declined) {
    terminal_session coloured(home_, "C", "");
    ASSERT_TRUE(coloured.shows("> "));
    coloured.type("nothing\r");
    EXPECT_TRUE(coloured.shows("\x1b[31m       ERROR")) << coloured.screen();
    terminal_session plain(home_);
    ASSERT_TRUE(plain.shows("> "));
    plain.type("nothing\r");
    EXPECT_TRUE(plain.shows("\r\n       ERROR")) << plain.screen();
}

TEST_F(interactive, remembers_lines_from_session_to_session) {
    {
        terminal_session first(home_);
        ASSERT_TRUE(first.shows("> "));
        first.type("17 ft\r");
        ASSERT_TRUE(first.shows(" = 5.1816 m")) << first.screen();
        first.type(":quit\r");
        ASSERT_EQ(first.wait_for_end(), 0);
    }
    terminal_session second(home_);
    ASSERT_TRUE(second.shows("> "));
    second.type("\x1b[A\x1b[A");
    EXPECT_TRUE(second.shows("17 ft")) << second.screen();
}

TEST_F(interactive, rings_the_bell_for_a_name_that_cannot_be_completed) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    it.type("zzz\ty\r");
    EXPECT_TRUE(it.shows("'zzzy' undefined")) << it.screen();
    EXPECT_NE(it.screen().find("zzz\a"), std::string::npos) << it.screen();
}

TEST_F(interactive, ends_when_the_terminal_hangs_up) {
    terminal_session it(home_);
    ASSERT_TRUE(it.shows("> "));
    EXPECT_EQ(it.hang_up(), 0) << it.screen();
}

} // namespace

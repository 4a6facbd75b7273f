// `metrify plot` as a program, with gnuplot.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

class plot_program : public testing::Test {
  protected:
    plot_program() {
        char pattern[] = "/tmp/metrify-plot-XXXXXX";
        folder_ = mkdtemp(pattern);
    }
    ~plot_program() override { fs::remove_all(folder_); }

    // The status of the command; the program text is its standard input.
    int plot(const std::string& arguments, const std::string& environment = "") {
        const std::string command = "printf 'x = 1 m\\nbegin\\ny = x^2\\nend\\n' | " + environment +
                                    " '" METRIFY_BINARY_DIR "/metrify' plot - --over 'x = 0 .. 2 m' " +
                                    arguments + " > '" + file("out") + "' 2> '" + file("err") + "'";
        return WEXITSTATUS(std::system(command.c_str()));
    }
    std::string file(const std::string& name) const { return folder_ + "/" + name; }
    std::string text_of(const std::string& name) const {
        std::ifstream in(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::string folder_;
};

TEST_F(plot_program, draws_text) {
    EXPECT_EQ(plot("--of y"), 0);
    EXPECT_EQ(text_of("out").find("* y [m^2]\n"), 0U) << text_of("out");
    EXPECT_NE(text_of("out").find("\n4 |"), std::string::npos) << text_of("out");
}
TEST_F(plot_program, draws_pictures) {
    EXPECT_EQ(plot("--of 'y; cm^2' -o " + file("a.svg")), 0) << text_of("err");
    EXPECT_NE(text_of("a.svg").find(">y [cm^2]<"), std::string::npos);
    EXPECT_NE(text_of("a.svg").find(">x [m]<"), std::string::npos);
    EXPECT_EQ(plot("--of y -o " + file("a.png")), 0) << text_of("err");
    EXPECT_EQ(text_of("a.png").substr(1, 3), "PNG");
}
TEST_F(plot_program, refuses_a_negative_number_of_points) {
    EXPECT_EQ(plot("--of y --points -3"), 2);
}
TEST_F(plot_program, says_that_gnuplot_is_missing) {
    EXPECT_EQ(plot("--of y -o " + file("a.svg"), "PATH=" + folder_), 2);
    EXPECT_EQ(text_of("err"),
              "metrify: " + file("a.svg") +
                  ": gnuplot is missing or can't write it; without --output the plot is text\n");
}

} // namespace

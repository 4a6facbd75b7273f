// The examples in the documents for users: each block marked as a program gives the listing in the next
// block, byte for byte except for numbers near zero.

#include "conversion/conversion.h"
#include "language/driver.h"
#include "machine/solver_binding.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path source_folder(METRIFY_SOURCE_DIR);

std::string read_file(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.is_open()) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The blocks with this mark, in order.
std::vector<std::string> blocks(const std::string& text, const std::string& mark) {
    const std::string opening = "```" + mark + "\n";
    std::vector<std::string> found;
    for (std::size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, at)) {
        at += opening.size();
        const std::size_t end = text.find("```", at);
        found.push_back(text.substr(at, end - at));
    }
    return found;
}

// The residual of a solved equation depends on the platform's functions.
std::string with_residuals_masked(std::string_view listing) {
    static const std::regex residual(R"(-?[0-9]\.[0-9]{3,5}e-(0[7-9]|1[0-9])\b)");
    return std::regex_replace(std::string(listing), residual, "(next to 0)");
}

class document : public testing::TestWithParam<const char*> {};

TEST_P(document, shows_the_listings_of_its_programs) {
    const std::string text = read_file(source_folder / "docs" / GetParam());
    const std::vector<std::string> programs = blocks(text, "program");
    const std::vector<std::string> listings = blocks(text, "listing");
    ASSERT_FALSE(programs.empty());
    ASSERT_EQ(programs.size(), listings.size());
    for (std::size_t i = 0; i < programs.size(); ++i) {
        metrify::teardown_solver_binding();
        const metrify::listing shown = metrify::interpret_dimensional_input_lines(programs[i].c_str());
        EXPECT_EQ(with_residuals_masked(shown.view()), with_residuals_masked(listings[i])) << programs[i];
    }
}

INSTANTIATE_TEST_SUITE_P(documents, document, testing::Values("language.md", "solving.md", "examples.md"),
                         [](const testing::TestParamInfo<const char*>& file) {
                             return fs::path(file.param).stem().string();
                         });

TEST(examples, are_in_their_document_unchanged) {
    const std::vector<std::string> shown =
        blocks(read_file(source_folder / "docs" / "examples.md"), "program");
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(source_folder / "examples")) {
        if (!entry.is_regular_file())
            continue;
        ++count;
        EXPECT_NE(std::find(shown.begin(), shown.end(), read_file(entry.path())), shown.end())
            << entry.path();
    }
    EXPECT_EQ(count, shown.size());
    EXPECT_GE(count, 8U);
}

// The cells of the rows of a Markdown table below a heading, without backquotes.
std::vector<std::vector<std::string>> table_below(const std::string& text, const std::string& heading) {
    std::istringstream lines(text.substr(std::min(text.find("\n" + heading + "\n"), text.size())));
    std::vector<std::vector<std::string>> rows;
    std::string line;
    while (std::getline(lines, line) && (rows.empty() || line.starts_with("| "))) {
        if (!line.starts_with("| ") || line.starts_with("| number"))
            continue;
        std::erase(line, '`');
        rows.emplace_back();
        std::istringstream cells(line.substr(2));
        for (std::string cell; std::getline(cells, cell, '|');)
            rows.back().push_back(cell.substr(cell.find_first_not_of(' '),
                                              cell.find_last_not_of(' ') + 1 - cell.find_first_not_of(' ')));
    }
    return rows;
}

TEST(add_in_guide, shows_results_of_its_conversions) {
    const auto rows = table_below(read_file(source_folder / "docs" / "add-in.md"), "## Writing units");
    ASSERT_EQ(rows.size(), 7U);
    for (const std::vector<std::string>& row : rows) {
        ASSERT_EQ(row.size(), 5U);
        EXPECT_EQ(metrify::convert_units(std::stod(row[0]), row[1], row[2]).number, std::stod(row[3]))
            << row[1];
    }
}

// The guide is handed out alone, as a page that contains its pictures.
TEST(add_in_guide, refers_to_no_other_file_than_its_pictures) {
    static const std::regex link(R"((^|[^!])\[[^\]]*\]\((?!https?://|#)[^)]*\))");
    const std::string text = read_file(source_folder / "docs" / "add-in.md");
    std::smatch found;
    EXPECT_FALSE(std::regex_search(text, found, link)) << found.str();
}

// A file beside this one, or from the folder of the document.
TEST(documents, refer_to_files_that_exist) {
    static const std::regex link(R"(\]\((?!https?://|#)([^)#]*)(#[^)]*)?\))");
    std::vector<fs::path> documents = {source_folder / "README.md", source_folder / "CONTRIBUTING.md"};
    for (const fs::directory_entry& entry : fs::directory_iterator(source_folder / "docs"))
        if (entry.path().extension() == ".md")
            documents.push_back(entry.path());
    for (const fs::path& document : documents) {
        const std::string text = read_file(document);
        for (std::sregex_iterator it(text.begin(), text.end(), link), end; it != end; ++it)
            EXPECT_TRUE(fs::exists(document.parent_path() / (*it)[1].str())) << document << ": " << it->str();
    }
}

} // namespace

#include "fake_resources.h"
#include "xllrt/text/string_resource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using testing::ElementsAre;

std::u16string Loaded(std::uint32_t id, std::uint16_t language) {
    std::u16string text = u"(none)";
    LoadResourceText(text, id, language);
    return text;
}

TEST(StringResource, an_exact_language_is_chosen_at_any_position) {
    const std::uint16_t languages[] = {kUsEnglish, kGerman, kUkEnglish};
    EXPECT_EQ(ChooseLanguage(languages, kUkEnglish), kUkEnglish);
}

TEST(StringResource, otherwise_the_first_with_the_same_primary_language_is_chosen) {
    const std::uint16_t languages[] = {kGerman, kUsEnglish, kUkEnglish};
    EXPECT_EQ(ChooseLanguage(languages, 0x0C09), kUsEnglish);
}

TEST(StringResource, otherwise_the_loader_chooses) {
    const std::uint16_t languages[] = {kGerman, kUsEnglish};
    EXPECT_EQ(ChooseLanguage(languages, 0x040C), 0);
    EXPECT_EQ(ChooseLanguage({}, kUsEnglish), 0);
}

TEST(StringResource, the_primary_language_has_ten_bits) {
    const std::uint16_t languages[] = {0x0609};
    EXPECT_EQ(ChooseLanguage(languages, kUsEnglish), 0);
    EXPECT_EQ(ChooseLanguage(languages, 0x0A09), 0x0609);
}

TEST(StringResource, strings_are_found_by_block_and_entry) {
    FakeResources resources;
    resources.Add(32, kUsEnglish, u"first of block 3");
    resources.Add(47, kUsEnglish, u"last of block 3");
    resources.Add(48, kUsEnglish, u"first of block 4");
    EXPECT_EQ(Loaded(32, kUsEnglish), u"first of block 3");
    EXPECT_EQ(Loaded(47, kUsEnglish), u"last of block 3");
    EXPECT_EQ(Loaded(48, kUsEnglish), u"first of block 4");
}

TEST(StringResource, the_language_decides_among_several) {
    FakeResources resources;
    resources.Add(40, kUsEnglish, u"color");
    resources.Add(40, kUkEnglish, u"colour");
    resources.Add(40, kGerman, u"Farbe");
    EXPECT_EQ(Loaded(40, kUsEnglish), u"color");
    EXPECT_EQ(Loaded(40, kUkEnglish), u"colour");
    EXPECT_EQ(Loaded(40, 0x0807), u"Farbe");
    EXPECT_EQ(Loaded(40, 0x040C), u"color");
    EXPECT_THAT(resources.asked_languages, ElementsAre(kUsEnglish, kUkEnglish, kGerman, 0));
}

TEST(StringResource, an_empty_entry_counts_as_missing_and_leaves_the_text_unchanged) {
    FakeResources resources;
    resources.Add(40, kUsEnglish, u"present");
    std::u16string text = u"kept";
    EXPECT_FALSE(LoadResourceText(text, 41, kUsEnglish));
    EXPECT_EQ(text, u"kept");
}

TEST(StringResource, a_missing_block_fails) {
    const FakeResources resources;
    std::u16string text;
    EXPECT_FALSE(LoadResourceText(text, 40, kUsEnglish));
}

TEST(StringResource, an_id_beyond_16_bits_fails) {
    FakeResources resources;
    resources.Add(5, kUsEnglish, u"five");
    std::u16string text;
    EXPECT_FALSE(LoadResourceText(text, 0x10000 * 16 + 5, kUsEnglish));
    EXPECT_FALSE(LoadResourceText(text, 0x10005, kUsEnglish));
}

TEST(StringResource, a_block_that_ends_early_has_no_entry_there) {
    FakeResources resources;
    resources.SetImage(3, kUsEnglish, {u"\x0002ok\x0009no", 6});
    EXPECT_EQ(Loaded(32, kUsEnglish), u"ok");
    EXPECT_EQ(Loaded(33, kUsEnglish), u"(none)");
    EXPECT_EQ(Loaded(34, kUsEnglish), u"(none)");
}

TEST(StringResource, a_narrow_text_is_converted_with_the_code_page) {
    FakeResources resources;
    resources.Add(40, kUsEnglish, u"5 \u00b0");
    std::string text;
    EXPECT_TRUE(LoadResourceText(text, 40, kUsEnglish));
    EXPECT_EQ(text, "5 \xb0");
    EXPECT_FALSE(LoadResourceText(text, 41, kUsEnglish));
}

TEST(StringResource, the_language_is_that_of_the_thread_unless_one_is_set_for_the_process) {
    FakeResources resources;
    resources.thread_language = kGerman;
    EXPECT_EQ(TextLanguage(), kGerman);
    SetTextLanguage(kUkEnglish);
    EXPECT_EQ(TextLanguage(), kUkEnglish);
    SetTextLanguage(0);
    EXPECT_EQ(TextLanguage(), kGerman);
}

} // namespace

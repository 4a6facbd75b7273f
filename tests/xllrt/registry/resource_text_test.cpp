#include "tests/xllrt/text/fake_resources.h"
#include "xllrt/registry/resource_text.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

// The expansion of a text, and whether all of it was resolved.
struct Expansion {
    bool resolved;
    std::u16string text;

    bool operator==(const Expansion&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Expansion& expansion) {
    return out << (expansion.resolved ? "resolved: " : "not resolved: ")
               << std::string(expansion.text.begin(), expansion.text.end());
}

Expansion Resolved(const std::u16string& text) {
    return {true, text};
}

Expansion Unresolved(const std::u16string& text) {
    return {false, text};
}

class ResourceText : public testing::Test {
  protected:
    ResourceText() {
        resources.Add(5, kUsEnglish, u"five");
        resources.Add(15, kUsEnglish, u"fifteen");
        resources.Add(1000, kUsEnglish, u"a thousand");
        resources.Add(26, kUsEnglish, u"#5");
    }

    static Expansion Expanded(std::u16string_view text) {
        std::u16string expansion = u"old";
        const bool resolved = ExpandResourceText(text, expansion);
        return {resolved, expansion};
    }

    FakeResources resources;
};

TEST_F(ResourceText, a_text_without_reference_is_its_own_expansion) {
    EXPECT_EQ(Expanded(u"plain @5 0x5"), Resolved(u"plain @5 0x5"));
    EXPECT_EQ(Expanded(u""), Resolved(u""));
}

TEST_F(ResourceText, a_decimal_number_is_the_id_of_a_string) {
    EXPECT_EQ(Expanded(u"#5"), Resolved(u"five"));
    EXPECT_EQ(Expanded(u"#1000"), Resolved(u"a thousand"));
    EXPECT_EQ(Expanded(u"#015"), Resolved(u"fifteen")) << "not octal";
}

TEST_F(ResourceText, a_hexadecimal_number_has_digits_in_either_case) {
    EXPECT_EQ(Expanded(u"#0xf"), Resolved(u"fifteen"));
    EXPECT_EQ(Expanded(u"#0xF"), Resolved(u"fifteen"));
    EXPECT_EQ(Expanded(u"#0x3e8"), Resolved(u"a thousand"));
    EXPECT_EQ(Expanded(u"#0x3E8"), Resolved(u"a thousand"));
    EXPECT_EQ(Expanded(u"#0x0005"), Resolved(u"five"));
}

TEST_F(ResourceText, the_text_around_references_is_kept) {
    EXPECT_EQ(Expanded(u"a #5 b #15."), Resolved(u"a five b fifteen."));
    EXPECT_EQ(Expanded(u"#5#15"), Resolved(u"fivefifteen"));
    EXPECT_EQ(Expanded(u"#5a"), Resolved(u"fivea")) << "decimal digits end the number";
    EXPECT_EQ(Expanded(u"#0xFg"), Resolved(u"fifteeng"));
    EXPECT_EQ(Expanded(u"#5x"), Resolved(u"fivex"));
}

TEST_F(ResourceText, a_string_is_not_expanded_again) {
    EXPECT_EQ(Expanded(u"#26"), Resolved(u"#5"));
}

TEST_F(ResourceText, a_number_sign_without_a_number_is_not_a_reference) {
    EXPECT_EQ(Expanded(u"#"), Resolved(u"#"));
    EXPECT_EQ(Expanded(u"item #a #-5 # 5"), Resolved(u"item #a #-5 # 5"));
    EXPECT_EQ(Expanded(u"##5"), Resolved(u"#five"));
    EXPECT_EQ(Expanded(u"#@"), Resolved(u"#@"));
    EXPECT_EQ(Expanded(u"#@a#5"), Resolved(u"#@afive"));
    EXPECT_EQ(Expanded(u"#@@5"), Resolved(u"#@@5"));
    EXPECT_EQ(Expanded(u"#x5"), Resolved(u"#x5"));
}

TEST_F(ResourceText, a_number_without_a_string_stays) {
    EXPECT_EQ(Expanded(u"#6"), Unresolved(u"#6"));
    EXPECT_EQ(Expanded(u"a #0x6 b"), Unresolved(u"a #0x6 b"));
    EXPECT_EQ(Expanded(u"#@6"), Unresolved(u"#@6"));
    EXPECT_EQ(Expanded(u"#4294967301"), Unresolved(u"#4294967301")) << "5 in 32 bits";
    EXPECT_EQ(Expanded(u"#0x100000005"), Unresolved(u"#0x100000005"));
    EXPECT_EQ(Expanded(u"#65541"), Unresolved(u"#65541")) << "5 in 16 bits";
}

TEST_F(ResourceText, a_capital_x_is_part_of_the_reference_but_makes_no_id) {
    EXPECT_EQ(Expanded(u"#0XF"), Unresolved(u"#0XF"));
    EXPECT_EQ(Expanded(u"#0XF5 #5"), Unresolved(u"#0XF5 five"));
    EXPECT_EQ(Expanded(u"#0X"), Unresolved(u"#0X"));
}

TEST_F(ResourceText, a_prefix_without_digits_makes_no_id) {
    resources.Add(0, kUsEnglish, u"zero");
    EXPECT_EQ(Expanded(u"#0x"), Unresolved(u"#0x"));
    EXPECT_EQ(Expanded(u"#0xg"), Unresolved(u"#0xg"));
    EXPECT_EQ(Expanded(u"#@0x"), Unresolved(u"#@0x"));
}

TEST_F(ResourceText, zero_is_an_id_in_hexadecimal_only) {
    resources.Add(0, kUsEnglish, u"zero");
    EXPECT_EQ(Expanded(u"#0x0"), Resolved(u"zero"));
    EXPECT_EQ(Expanded(u"#0"), Unresolved(u"#0"));
    EXPECT_EQ(Expanded(u"#000"), Unresolved(u"#000"));
}

TEST_F(ResourceText, one_unresolved_reference_makes_the_whole_unresolved) {
    EXPECT_EQ(Expanded(u"#6 #5"), Unresolved(u"#6 five"));
    EXPECT_EQ(Expanded(u"#5 #6"), Unresolved(u"five #6"));
    EXPECT_EQ(Expanded(u"#6 #a"), Unresolved(u"#6 #a"));
}

TEST_F(ResourceText, the_language_is_that_of_the_thread) {
    resources.Add(5, kGerman, u"f\u00FCnf");
    EXPECT_EQ(Expanded(u"#5"), Resolved(u"five"));
    resources.thread_language = kGerman;
    EXPECT_EQ(Expanded(u"#5"), Resolved(u"f\u00FCnf"));
}

TEST_F(ResourceText, the_expansion_may_replace_the_text_itself) {
    std::u16string text = u"#5 and #15";
    EXPECT_TRUE(ExpandResourceText(text, text));
    EXPECT_EQ(text, u"five and fifteen");
}

TEST_F(ResourceText, a_narrow_text_is_converted_with_the_code_page) {
    resources.Add(6, kUsEnglish, u"caf\u00E9 \u0416");
    std::string expansion;
    EXPECT_TRUE(ExpandResourceText("\xE9 #6", expansion));
    EXPECT_EQ(expansion, "\xE9 caf\xE9 ?");
    EXPECT_FALSE(ExpandResourceText("#7 #5", expansion));
    EXPECT_EQ(expansion, "#7 five");
}

TEST_F(ResourceText, a_localized_text_is_the_expansion) {
    EXPECT_EQ(LocalizedText(u"a #5"), u"a five");
    EXPECT_EQ(LocalizedText("a #5"), "a five");
    EXPECT_EQ(LocalizedText(u"item #a"), u"item #a");
    EXPECT_EQ(LocalizedText("item #a"), "item #a");
}

TEST_F(ResourceText, a_partly_resolved_text_is_discarded) {
    EXPECT_EQ(LocalizedText(u"#5 #6"), u"#5 #6");
    EXPECT_EQ(LocalizedText("#5 #6"), "#5 #6");
}

TEST_F(ResourceText, no_text_is_the_empty_text) {
    EXPECT_EQ(LocalizedText(static_cast<const char16_t*>(nullptr)), u"");
    EXPECT_EQ(LocalizedText(static_cast<const char*>(nullptr)), "");
}

} // namespace

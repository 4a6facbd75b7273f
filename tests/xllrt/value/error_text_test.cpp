#include "tests/xllrt/text/expected_messages.h"
#include "xllrt/value/error_text.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

TEST(CellErrorText, every_code_of_the_host_has_its_text) {
    EXPECT_EQ(ErrorText(0), "#NULL!");
    EXPECT_EQ(ErrorText(7), "#DIV/0!");
    EXPECT_EQ(ErrorText(15), "#VALUE!");
    EXPECT_EQ(ErrorText(23), "#REF!");
    EXPECT_EQ(ErrorText(29), "#NAME?");
    EXPECT_EQ(ErrorText(36), "#NUM!");
    EXPECT_EQ(ErrorText(42), "#N/A");
    for (const int code : {0, 7, 15, 23, 29, 36, 42})
        EXPECT_EQ(WideErrorText(code), Wide(ErrorText(code)));
}

TEST(CellErrorText, any_other_code_has_none) {
    EXPECT_EQ(ErrorText(43), "");
    EXPECT_EQ(WideErrorText(43), u"");
}

TEST(CellErrorText, the_text_of_code_0_is_not_returned) {
    std::string text = "before";
    std::u16string wide = u"before";
    EXPECT_FALSE(ErrorCodeToText(0, text));
    EXPECT_FALSE(ErrorCodeToText(0, wide));
    EXPECT_EQ(text, "before");
    EXPECT_EQ(wide, u"before");
}

TEST(CellErrorText, the_text_of_the_other_codes_is_returned) {
    std::string text;
    std::u16string wide;
    EXPECT_TRUE(ErrorCodeToText(7, text));
    EXPECT_TRUE(ErrorCodeToText(42, wide));
    EXPECT_EQ(text, "#DIV/0!");
    EXPECT_EQ(wide, u"#N/A");
}

} // namespace

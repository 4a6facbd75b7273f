#include "tests/xllrt/app/add_in_fixture.h"
#include "tests/xllrt/text/fake_resources.h"
#include "xllrt/registry/registration_arguments.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;

class RegistrationArguments : public AddInTest {
  protected:
    RegistrationArguments() { SetHostVersion(14); }

    static std::vector<std::string> Wide(const CXlFunctionDescriptor& descriptor) {
        return Words(WideRegistration(descriptor, CXlOper(true), u"help"));
    }
    static std::vector<std::string> Narrow(const CXlFunctionDescriptor& descriptor) {
        return Words(NarrowRegistration(descriptor, CXlOper(true), u"help"));
    }
    static std::vector<std::string> Words(const std::vector<CXlOper>& values) {
        std::vector<std::string> words;
        for (const CXlOper& value : values)
            words.push_back(Rendered(*value.Record12()));
        return words;
    }

    // A function without arguments, with this description.
    static CXlFunctionDescriptor Command(const std::u16string& description) {
        CXlFunctionDescriptor descriptor = SimpleFunction(u"Command");
        descriptor.wide.type = "U$";
        descriptor.wide.argumentHelp.clear();
        descriptor.wide.description = description;
        return descriptor;
    }
};

TEST_F(RegistrationArguments, arguments_are_the_letters_behind_the_first_character) {
    EXPECT_EQ(CountArguments("UBC%C%$"), 3U);
    EXPECT_EQ(CountArguments("U$"), 0U);
    EXPECT_EQ(CountArguments("R"), 0U);
    EXPECT_EQ(CountArguments(""), 0U);
    EXPECT_EQ(CountArguments("RJCCJCCA"), 7U);
    EXPECT_EQ(CountArguments("UAZaz"), 4U);
    EXPECT_EQ(CountArguments("U@[`{09$%#!"), 0U);
}

TEST_F(RegistrationArguments, a_description_that_ends_in_a_letter_gets_two_dots) {
    EXPECT_EQ(Wide(Command(u"Does it")).at(9), "\"Does it..\"");
}

TEST_F(RegistrationArguments, one_that_ends_in_one_dot_gets_one_more) {
    EXPECT_EQ(Wide(Command(u"Does it.")).at(9), "\"Does it..\"");
}

TEST_F(RegistrationArguments, one_that_ends_in_two_dots_stays) {
    EXPECT_EQ(Wide(Command(u"Does it..")).at(9), "\"Does it..\"");
}

TEST_F(RegistrationArguments, only_dots_at_the_end_count) {
    EXPECT_EQ(Wide(Command(u"")).at(9), "\"..\"");
    EXPECT_EQ(Wide(Command(u".")).at(9), "\"..\"");
    EXPECT_EQ(Wide(Command(u"a.b")).at(9), "\"a.b..\"");
    EXPECT_EQ(Wide(Command(u"a..b")).at(9), "\"a..b..\"");
    EXPECT_EQ(Wide(Command(u"a...")).at(9), "\"a...\"");
}

TEST_F(RegistrationArguments, the_dot_rules_hold_on_the_narrow_path_too) {
    CXlFunctionDescriptor descriptor = Command(u"");
    descriptor.narrow.type = "R";
    descriptor.narrow.argumentHelp.clear();
    descriptor.narrow.description = "Does it";
    EXPECT_EQ(Narrow(descriptor).at(9), "\"Does it..\"");
    descriptor.narrow.description = "Does it.";
    EXPECT_EQ(Narrow(descriptor).at(9), "\"Does it..\"");
    descriptor.narrow.description = "Does it..";
    EXPECT_EQ(Narrow(descriptor).at(9), "\"Does it..\"");
}

TEST_F(RegistrationArguments, with_arguments_the_last_help_text_gets_the_dots) {
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.type = "UBB";
    descriptor.wide.argumentHelp = {u"first", u"second"};
    const std::vector<std::string> values = Wide(descriptor);
    ASSERT_EQ(values.size(), 12U);
    EXPECT_EQ(values[9], "\"Describes\"");
    EXPECT_EQ(values[10], "\"first\"");
    EXPECT_EQ(values[11], "\"second..\"");
}

TEST_F(RegistrationArguments, a_description_of_300_characters_arrives_with_255_and_no_dots) {
    const std::vector<std::string> values = Wide(Command(std::u16string(300, u'x')));
    EXPECT_EQ(values.at(9), '"' + std::string(255, 'x') + '"');
}

TEST_F(RegistrationArguments, one_of_254_characters_keeps_one_dot) {
    const std::vector<std::string> values = Wide(Command(std::u16string(254, u'x')));
    EXPECT_EQ(values.at(9), '"' + std::string(254, 'x') + ".\"");
}

TEST_F(RegistrationArguments, help_texts_longer_than_255_characters_are_cut_after_the_closing_mark) {
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.argumentHelp = {std::u16string(256, u'a'), std::u16string(255, u'b'),
                                    std::u16string(254, u'c')};
    std::vector<std::string> values = Wide(descriptor);
    ASSERT_EQ(values.size(), 13U);
    EXPECT_EQ(values[10], '"' + std::string(255, 'a') + '"');
    EXPECT_EQ(values[11], '"' + std::string(255, 'b') + '"');
    EXPECT_EQ(values[12], '"' + std::string(254, 'c') + ".\"");
    descriptor.narrow.argumentHelp = {std::string(256, 'a'), std::string(255, 'b'), std::string(254, 'c')};
    values = Narrow(descriptor);
    ASSERT_EQ(values.size(), 13U);
    EXPECT_EQ(values[10], '"' + std::string(255, 'a') + '"');
    EXPECT_EQ(values[11], '"' + std::string(255, 'b') + '"');
    EXPECT_EQ(values[12], '"' + std::string(254, 'c') + ".\"");
}

TEST_F(RegistrationArguments, the_closing_mark_goes_by_the_arguments_of_its_own_family) {
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.type = "U$";
    descriptor.narrow.type = "RB";
    EXPECT_EQ(Wide(descriptor).at(9), "\"Describes..\"");
    EXPECT_EQ(Wide(descriptor).at(10), "\"The value\"");
    EXPECT_EQ(Narrow(descriptor).at(9), "\"Describes\"");
    EXPECT_EQ(Narrow(descriptor).at(10), "\"The value..\"");
}

TEST_F(RegistrationArguments, all_of_25_help_texts_go_the_wide_way_and_20_the_narrow) {
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.argumentHelp.assign(25, u"help");
    descriptor.narrow.argumentHelp.assign(25, "help");
    EXPECT_EQ(Wide(descriptor).size(), 35U);
    EXPECT_EQ(Wide(descriptor).at(34), "\"help..\"");
    EXPECT_EQ(Wide(descriptor).at(29), "\"help\"");
    EXPECT_EQ(Narrow(descriptor).size(), 30U);
    EXPECT_EQ(Narrow(descriptor).at(29), "\"help..\"");
}

TEST_F(RegistrationArguments, a_category_that_is_a_number_arrives_as_an_integer) {
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.wide.category = u"14";
    EXPECT_EQ(Wide(descriptor).at(6), "14i");
    descriptor.wide.category = u"Metrify";
    EXPECT_EQ(Wide(descriptor).at(6), "\"Metrify\"");
    descriptor.wide.category = u"14th";
    EXPECT_EQ(Wide(descriptor).at(6), "\"14th\"");
}

TEST_F(RegistrationArguments, the_macro_type_is_decimal_text) {
    CXlFunctionDescriptor descriptor = SimpleFunction(u"Func");
    descriptor.macroType = 2;
    EXPECT_EQ(Wide(descriptor).at(5), "\"2\"");
}

TEST_F(RegistrationArguments, texts_may_refer_to_string_resources) {
    FakeResources resources;
    resources.Add(100, kUsEnglish, u"names");
    resources.Add(101, kUsEnglish, u"category");
    resources.Add(102, kUsEnglish, u"description");
    resources.Add(103, kUsEnglish, u"help");
    CXlFunctionDescriptor descriptor = SimpleFunction(u"#100");
    descriptor.wide.argumentNames = u"#100";
    descriptor.wide.category = u"#101";
    descriptor.wide.description = u"#102";
    descriptor.wide.argumentHelp = {u"#103"};
    const std::vector<std::string> values = Wide(descriptor);
    EXPECT_EQ(values[3], "\"#100\"") << "the name stays as it is";
    EXPECT_EQ(values[4], "\"names\"");
    EXPECT_EQ(values[6], "\"category\"");
    EXPECT_EQ(values[9], "\"description\"");
    EXPECT_EQ(values[10], "\"help..\"");
}

TEST_F(RegistrationArguments, narrow_texts_may_refer_to_string_resources_too) {
    FakeResources resources;
    resources.Add(100, kUsEnglish, u"Länge");
    resources.Add(101, kUsEnglish, u"Maße");
    resources.Add(102, kUsEnglish, u"für alle");
    resources.Add(103, kUsEnglish, u"Größe");
    CXlFunctionDescriptor descriptor = SimpleFunction(u"#100");
    descriptor.narrow.argumentNames = "#100";
    descriptor.narrow.category = "#101";
    descriptor.narrow.description = "#102";
    descriptor.narrow.argumentHelp = {"#103"};
    const std::vector<CXlOper> values = NarrowRegistration(descriptor, CXlOper(true), u"help");
    EXPECT_EQ(values[3].ToText(), "#100") << "the name stays as it is";
    EXPECT_EQ(values[4].ToText(), "L\xE4nge");
    EXPECT_EQ(values[6].ToText(), "Ma\xDF"
                                  "e");
    EXPECT_EQ(values[9].ToText(), "f\xFCr alle");
    EXPECT_EQ(values[10].ToText(), "Gr\xF6\xDF"
                                   "e..");
}

} // namespace

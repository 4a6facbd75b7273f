#include "tests/xllrt/app/add_in_fixture.h"
#include "tests/xllrt/text/fake_resources.h"
#include "xllrt/registry/host_language.h"
#include "xllrt/registry/resource_text.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint16_t kAustrianGerman = 0x0C07;

class HostLanguageTest : public AddInTest {
  protected:
    HostLanguageTest() {
        SetHostVersion(14);
        ForgetHostLanguage();
        resources.Add(40, kUsEnglish, u"color");
        resources.Add(40, kUkEnglish, u"colour");
        resources.Add(40, kGerman, u"Farbe");
    }
    ~HostLanguageTest() override { ForgetHostLanguage(); }

    void SetCountry(double code) { host.international[0] = code; }

    static std::u16string Expanded(std::u16string_view text) {
        std::u16string expansion;
        return ExpandResourceText(text, expansion) ? expansion : u"not resolved: " + expansion;
    }

    FakeResources resources;
};

TEST_F(HostLanguageTest, is_that_of_the_hosts_country) {
    SetCountry(49);
    EXPECT_EQ(HostLanguage(), 0x0407);
    EXPECT_THAT(host.TakeCalls(), ElementsAre("12 xlfGetWorkspace(37)"));
}

TEST_F(HostLanguageTest, is_the_first_of_the_modules_languages_in_that_country) {
    resources.country_codes = {{kUsEnglish, 1}, {kUkEnglish, 44}, {kGerman, 44}};
    SetCountry(44);
    EXPECT_EQ(HostLanguage(), 0x0809);
}

TEST_F(HostLanguageTest, is_looked_for_among_all_resources_of_the_module) {
    resources.country_codes[kAustrianGerman] = 43;
    resources.Add(1000, kAustrianGerman, u"elsewhere");
    SetCountry(43);
    EXPECT_EQ(HostLanguage(), 0x0C07);
}

TEST_F(HostLanguageTest, is_0_for_a_country_that_no_language_has) {
    SetCountry(81);
    EXPECT_EQ(HostLanguage(), 0);
}

TEST_F(HostLanguageTest, is_0_for_an_invalid_country) {
    resources.country_codes[kGerman] = 0;
    for (const double code : {-1.0, 65536.0, 1e300}) {
        ForgetHostLanguage();
        SetCountry(code);
        // A language of country 0.
        EXPECT_EQ(HostLanguage(), 0x0407) << code;
    }
}

TEST_F(HostLanguageTest, is_stored_once_found) {
    SetCountry(49);
    EXPECT_EQ(HostLanguage(), 0x0407);
    host.TakeCalls();
    resources.module_enumerations = 0;
    SetCountry(44);
    EXPECT_EQ(HostLanguage(), 0x0407);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
    EXPECT_EQ(resources.module_enumerations, 0);
}

TEST_F(HostLanguageTest, is_stored_also_if_there_is_none) {
    SetCountry(81);
    EXPECT_EQ(HostLanguage(), 0);
    host.TakeCalls();
    SetCountry(49);
    EXPECT_EQ(HostLanguage(), 0);
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
}

TEST_F(HostLanguageTest, is_0_and_not_stored_while_the_host_does_not_report_its_country) {
    host.On(xlfGetWorkspace, Reply::Refused());
    EXPECT_EQ(HostLanguage(), 0);
    host.On(xlfGetWorkspace, Reply{0, 49.0});
    EXPECT_EQ(HostLanguage(), 0x0407);
}

TEST_F(HostLanguageTest, is_that_of_references_with_an_at_sign) {
    SetCountry(49);
    EXPECT_EQ(Expanded(u"#@40"), u"Farbe");
    EXPECT_EQ(Expanded(u"#@0x28"), u"Farbe");
    EXPECT_EQ(Expanded(u"#40, #@40."), u"color, Farbe.");
}

TEST_F(HostLanguageTest, is_not_asked_for_by_other_references) {
    EXPECT_EQ(Expanded(u"#40 #a #@a"), u"color #a #@a");
    EXPECT_THAT(host.TakeCalls(), IsEmpty());
    EXPECT_EQ(resources.module_enumerations, 0);
}

TEST_F(HostLanguageTest, leaves_the_choice_to_the_loader_in_a_country_without_one) {
    SetCountry(81);
    EXPECT_EQ(Expanded(u"#@40"), u"color") << "the first one";
    EXPECT_THAT(resources.asked_languages, ElementsAre(0));
}

TEST_F(HostLanguageTest, may_be_one_that_the_string_does_not_have) {
    resources.Add(1000, kUsEnglish, u"only English");
    SetCountry(49);
    EXPECT_EQ(Expanded(u"#@1000"), u"only English");
}

} // namespace

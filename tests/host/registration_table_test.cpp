// Registrations, their names and their uses.

#include "host/state/registration_table.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

Registration Of(const char16_t* module, const char16_t* procedure, const char16_t* name) {
    return {0.0, module, procedure, u"A", name, {}, true, {}, nullptr, 0};
}

TEST(registration_table, registrations_are_numbered_from_1) {
    RegistrationTable table;
    EXPECT_EQ(table.Add(Of(u"m.xll", u"f", u"F")), 1.0);
    EXPECT_EQ(table.Add(Of(u"m.xll", u"g", u"G")), 2.0);
    EXPECT_EQ(table.Find(1.0)->name, u"F");
    EXPECT_EQ(table.Find(2.0)->name, u"G");
    EXPECT_EQ(table.Find(0.0), nullptr);
    EXPECT_EQ(table.Find(3.0), nullptr);
}

TEST(registration_table, the_same_registration_again_is_one_more_use) {
    RegistrationTable table;
    table.Add(Of(u"m.xll", u"f", u"F"));
    EXPECT_EQ(table.Add(Of(u"M.XLL", u"f", u"F")), 1.0);
    EXPECT_EQ(table.Find(1.0)->uses, 2);
    EXPECT_EQ(table.Find(1.0)->id, 1.0);
    EXPECT_EQ(table.All().size(), 1U);
    EXPECT_TRUE(table.Remove(1.0));
    EXPECT_TRUE(table.Find(1.0));
    EXPECT_TRUE(table.Remove(1.0));
    EXPECT_FALSE(table.Find(1.0));
    EXPECT_FALSE(table.Remove(1.0));
    EXPECT_TRUE(table.All().empty());
}

TEST(registration_table, registrations_differ_by_module_procedure_or_name) {
    RegistrationTable table;
    table.Add(Of(u"m.xll", u"f", u"F"));
    EXPECT_EQ(table.Add(Of(u"n.xll", u"f", u"F")), 2.0);
    EXPECT_EQ(table.Add(Of(u"m.xll", u"g", u"F")), 3.0);
    EXPECT_EQ(table.Add(Of(u"m.xll", u"f", u"G")), 4.0);
    EXPECT_EQ(table.All().size(), 4U);
}

TEST(registration_table, a_removed_registration_gets_a_new_number) {
    RegistrationTable table;
    table.Add(Of(u"m.xll", u"f", u"F"));
    table.Remove(1.0);
    EXPECT_EQ(table.Add(Of(u"m.xll", u"f", u"F")), 2.0);
    EXPECT_EQ(table.Find(2.0)->uses, 1);
}

TEST(registration_table, a_module_is_removed_as_a_whole) {
    RegistrationTable table;
    table.Add(Of(u"m.xll", u"f", u"F"));
    table.Add(Of(u"m.xll", u"f", u"F"));
    table.Add(Of(u"n.xll", u"g", u"G"));
    table.Add(Of(u"m.xll", u"h", u"H"));
    EXPECT_TRUE(table.RemoveModule(u"M.xll"));
    ASSERT_EQ(table.All().size(), 1U);
    EXPECT_EQ(table.All().front()->name, u"G");
    EXPECT_FALSE(table.RemoveModule(u"m.xll"));
    EXPECT_FALSE(table.RemoveModule(u"o.xll"));
}

TEST(registration_table, names_are_found_in_any_case) {
    RegistrationTable table;
    const double id = table.Add(Of(u"m.xll", u"f", u"F"));
    table.SetName(u"AzZ[@", id);
    EXPECT_EQ(table.Find(u"aZz[@")->procedure, u"f");
    EXPECT_TRUE(table.HasName(u"AZZ[@"));
    EXPECT_FALSE(table.HasName(u"azz{`"));
    EXPECT_EQ(table.Find(u"other"), nullptr);
    table.DeleteName(u"azz[@");
    EXPECT_FALSE(table.HasName(u"AzZ[@"));
    EXPECT_EQ(table.Find(u"AzZ[@"), nullptr);
}

TEST(registration_table, a_name_outlives_its_registration) {
    RegistrationTable table;
    const double id = table.Add(Of(u"m.xll", u"f", u"F"));
    table.SetName(u"F", id);
    table.Remove(id);
    EXPECT_TRUE(table.HasName(u"F"));
    EXPECT_EQ(table.Find(u"F"), nullptr);
}

TEST(registration_table, commands_are_registered_with_the_macro_type_2) {
    Registration registration = Of(u"m.xll", u"f", u"F");
    EXPECT_FALSE(registration.IsCommand());
    const auto with_type = [&registration](CellValue type) {
        registration.arguments = {u"m.xll", u"f", u"A", u"F", u"", std::move(type)};
        return registration.IsCommand();
    };
    EXPECT_TRUE(with_type(2.0));
    EXPECT_TRUE(with_type(u"2"));
    EXPECT_TRUE(with_type(2));
    EXPECT_FALSE(with_type(1.0));
    EXPECT_FALSE(with_type(0.0));
    EXPECT_FALSE(with_type(3.0));
    EXPECT_FALSE(with_type(MissingArgument{}));
    registration.arguments.resize(5);
    EXPECT_FALSE(registration.IsCommand());
}

} // namespace
} // namespace metrify::host

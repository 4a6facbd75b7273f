// The lifecycle of the add-in in one sequence: the calls it makes at each step, and what it shows.

#include "host/program/program_platform.h"
#include "host/sheet/utf8.h"
#include "tests/called_during_event.h"
#include "tests/expected_leaks.h"
#include "tests/host/host_requests.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace metrify::host {
namespace {

class observed_module : public testing::TestWithParam<int> {
  protected:
    observed_module() { host_.state().log.Start(); }

    void Load() {
        path_.insert(path_.rfind('.'), "Observed");
        std::string error;
        ASSERT_TRUE(host_.Load(path_, error)) << error;
    }

    // A thread that has called the add-in keeps the module loaded as long as it lives.
    template <class Result, class Body>
    static Result OnThread(Body body) {
        Result result;
        std::jthread([&] { result = body(); }).join();
        return result;
    }

    std::optional<CellValue> Run(const char16_t* macro, const std::vector<CellValue>& arguments = {}) {
        return OnThread<std::optional<CellValue>>([&] { return host_.RunCommand(macro, arguments); });
    }

    std::optional<CellValue> Evaluate(const char16_t* formula) {
        return OnThread<std::optional<CellValue>>([&] { return host_.Evaluate(formula); });
    }

    std::u16string LastMenu() { return host_.state().menus.menus().back().name; }

    void ExpectAsked(const char* step, const std::vector<HostRequest>& expected) {
        EXPECT_EQ(TakeRequests(host_), expected) << step;
    }

    // Calls in the family of the host.
    HostRequest Call(int function, std::vector<CellValue> arguments = {}) {
        return {function, host_.state().IsWide(), std::move(arguments)};
    }

    std::string path_ = ModuleBesideProgram();
    Host host_{GetParam()};
};

constexpr const char16_t* kObserver = u"xll_MetrifyObserved_observer";

TEST_P(observed_module, lives_from_loading_to_unloading) {
    Load();
    ExpectAsked("loaded and attached", {});

    ASSERT_EQ(host_.CallEntryPoint("xlAutoAdd"), 1);
    ExpectAsked("added", {});

    // ---- Opening
    ASSERT_EQ(host_.CallEntryPoint("xlAutoOpen"), 1);
    const HostRequest settings = Call(xlfGetWorkspace, {37.0});
    const HostRequest name = Call(xlGetName);
    std::vector<HostRequest> opening{
        {xlfGetWorkspace | xlIntl, false, {2}},
        {xlCoerce | xlIntl, false, {FromUtf8(std::to_string(GetParam()) + ".0"), std::int32_t{xltypeInt}}},
        settings,
        settings,
        name,
        Call(xlfAddMenu, {10, MenuTable(), u"Metrify"}),
        Call(xlfAddMenu, {10, MenuTable()}),
        name,
        name,
    };
    for (const std::vector<CellValue>& arguments : AllRegistered(host_, u"MetrifyObserved"))
        opening.push_back(Call(xlfRegister, arguments));
    opening.insert(opening.end(), {settings, settings, settings});
    ExpectAsked("opened", opening);
    EXPECT_EQ(LastMenu(), u"Metrify");

    // ---- The worksheet function
    EXPECT_EQ(Evaluate(u"=Metrify(3.5,\"ft\",\"m\")"), CellValue(RowOf({1.0668, u"m\n\n"})));
    ExpectAsked("calculated", {Call(xlfInfo, {u"Release"})});

    // ---- The macro
    Run(u"Metrify_Macro");
    const Reference cell{host_.state().books.Active()->id(), {{0, 0, 0, 0}}, true};
    const Reference full{cell.sheet, cell.areas, false};
    const CellValue missing = MissingArgument{};
    const HostRequest formula = Call(xlfGetFormula | xlIntl, {full});
    const HostRequest part_of_array = Call(xlfGetCell, {49.0, full});
    const HostRequest to_a1 = Call(xlfFormulaConvert | xlIntl, {u"", false, true, missing, full});
    ExpectAsked("macro run",
                {
                    Call(xlfActiveCell),
                    Call(xlCoerce, {cell, std::int32_t{xltypeRef}}),
                    // Whether it uses the function, and whether it is empty.
                    formula,
                    part_of_array,
                    to_a1,
                    formula,
                    part_of_array,
                    to_a1,
                    Call(xlfFormulaConvert | xlIntl, {u"=Metrify()", true, false, missing, full}),
                    // The formula is calculated as it is entered.
                    Call(xlfInfo, {u"Release"}),
                    Call(xlcFormula | xlIntl, {u"=Metrify()", full}),
                    Call(xlcFunctionWizard),
                });
    EXPECT_EQ(host_.state().wizard_openings, (std::vector<std::u16string>{u"=Metrify()"}));

    // ---- Events with an observer, and without
    EXPECT_EQ(Run(kObserver, {11.0, u"Keep.xls"}), CellValue(true));
    EXPECT_EQ(Run(kObserver, {11.0, u"Other.xls"}), CellValue(false));
    // The observer knows the path of its own module, which is not that of the program.
    EXPECT_EQ(Run(kObserver, {11.0, FromUtf8(path_)}), CellValue(true));
    EXPECT_EQ(Run(kObserver, {12.0, u"Other.xls", true}), CellValue(true));
    EXPECT_EQ(Run(kObserver, {12.0, u"Other.xls", false}), CellValue(false));
    EXPECT_EQ(Run(kObserver, {3.0, u"[Keep.xls]Sheet1", u"$A$1"}), CellValue(false));
    ExpectAsked("events observed", {});

    // ---- The ribbon's callback
    EXPECT_EQ(Run(u"Metrify.RibbonCallback", {8.0, u"id", u"tag", 1.0, u"", u"", true}), CellValue(-1.0));
    ExpectAsked("ribbon answered", {});

    // ---- Closing
    EXPECT_EQ(host_.CallEntryPoint("xlAutoClose"), 1);
    ExpectAsked("closed", {Call(xlfDeleteMenu, {10, u"Metrify"})});
    EXPECT_NE(LastMenu(), u"Metrify");
    EXPECT_EQ(Evaluate(u"=Metrify(3.5,\"ft\",\"m\")"), CellValue(RowOf({1.0668, u"m\n\n"})));
    TakeRequests(host_);

    // ---- Removing
    std::vector<HostRequest> removing{name};
    for (const char16_t* function : {u"Metrify.RibbonCallback", u"Metrify_Macro", u"Metrify", kObserver}) {
        const Registration* const registration = host_.state().registrations.Find(function);
        ASSERT_TRUE(registration);
        removing.push_back(Call(xlfUnregister, {registration->id}));
        removing.push_back(Call(xlfSetName, {function}));
        removing.push_back(name);
        removing.push_back(
            Call(xlfRegister, {host_.state().module->Path(), u"xlAutoRemove", u"J", function, missing, 0}));
    }
    {
        // Unloading leaves the state of each thread where it is.
        const ExpectedLeaks thread_state;
        EXPECT_EQ(host_.CallEntryPoint("xlAutoRemove"), 1);
    }
    ExpectAsked("removed", removing);
    EXPECT_FALSE(Run(u"Metrify_Macro_12"));

    // ---- Detaching
    host_.Unload();
    ExpectAsked("unloaded", {});
    EXPECT_TRUE(host_.state().registrations.All().empty());
    EXPECT_TRUE(host_.state().alerts.empty());
    EXPECT_EQ(host_.state().ledger.Counts().Outstanding(), 0U);
    EXPECT_EQ(host_.state().results.marked, host_.state().results.given_back);
}

// ---- Closing and unloading while an event is handled

Host* closing_host = nullptr;

void CloseTwice() {
    EXPECT_EQ(closing_host->CallEntryPoint("xlAutoClose"), 1);
    EXPECT_EQ(closing_host->CallEntryPoint("xlAutoClose"), 1);
}

void CloseAndUnload() {
    CloseTwice();
    closing_host->Unload();
    closing_host->Unload();
}

// The module may stay in memory, so that each test has a copy.
class ModuleCopy {
  public:
    ModuleCopy(std::string path, const std::string& name) : path_(std::move(path)) {
        const std::filesystem::path original(path_);
        path_ = original.parent_path() / (name + original.extension().string());
        std::filesystem::copy_file(original, path_, std::filesystem::copy_options::overwrite_existing);
    }
    ~ModuleCopy() {
        std::error_code ignored; // a loaded file cannot be removed on Windows
        std::filesystem::remove(path_, ignored);
    }
    ModuleCopy(const ModuleCopy&) = delete;
    ModuleCopy& operator=(const ModuleCopy&) = delete;

    std::string Path() const { return path_.string(); }

  private:
    std::filesystem::path path_;
};

class closing_during_event : public observed_module {
  protected:
    closing_during_event() { path_.insert(path_.rfind('.'), "Observed"); }

    void Open(const std::string& path) {
        std::string error;
        ASSERT_TRUE(host_.Load(path, error)) << error;
        ASSERT_EQ(OnThread<std::optional<std::int32_t>>([&] { return host_.CallEntryPoint("xlAutoOpen"); }),
                  1);
        closing_host = &host_;
    }

    // Unloading does not release the state of the thread.
    std::optional<CellValue> Raise(const std::string& name, void (*function)()) {
        const std::u16string observer = FromUtf8("xll_" + name + "_observer");
        return OnThread<std::optional<CellValue>>([&] {
            const ExpectedLeaks thread_state;
            return host_.RunCommand(observer, {8.0, FromUtf8(TextOfCall(function))});
        });
    }

    void ExpectNothingLeft() {
        EXPECT_EQ(host_.state().ledger.Counts().Outstanding(), 0U);
        EXPECT_EQ(host_.state().results.marked, host_.state().results.given_back);
        EXPECT_TRUE(host_.state().alerts.empty());
    }
};

TEST_P(closing_during_event, returns_to_the_host_which_may_unload_later) {
    const std::string name = "ClosedDuringEvent" + std::to_string(GetParam());
    const ModuleCopy copy(path_, name);
    Open(copy.Path());
    const std::size_t menus = host_.state().menus.menus().size();
    EXPECT_EQ(Raise(name, CloseTwice), CellValue(false));
    EXPECT_EQ(host_.state().menus.menus().size(), menus - 1);
    EXPECT_EQ(Evaluate(u"=Metrify(3.5,\"ft\",\"m\")"), CellValue(RowOf({1.0668, u"m\n\n"})));
    host_.Unload();
    ExpectNothingLeft();
}

TEST_P(closing_during_event, may_unload_the_module_which_ends_with_the_command) {
    const std::string name = "UnloadedDuringEvent" + std::to_string(GetParam());
    const ModuleCopy copy(path_, name);
    Open(copy.Path());
    EXPECT_EQ(Raise(name, CloseAndUnload), CellValue(false));
    EXPECT_EQ(host_.state().module, nullptr);
    EXPECT_TRUE(host_.state().registrations.All().empty());
    EXPECT_EQ(Raise(name, CloseAndUnload), std::nullopt);
    ExpectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(
    versions, closing_during_event, testing::Values(4, 11, 12, 15),
    [](const auto& version) { return "version_" + std::to_string(version.param); });

INSTANTIATE_TEST_SUITE_P(versions, observed_module, testing::Values(4, 11, 12, 15),
                         [](const auto& version) { return "version_" + std::to_string(version.param); });

} // namespace
} // namespace metrify::host

#include "cli/unit_choice.h"

#include "base/file_path.h"
#include "cli/console.h"
#include "cli/program_text.h"
#include "cli/units/everyday_units.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"

#include <filesystem>
#include <ostream>
#include <system_error>

namespace metrify {

namespace {

// The definitions are tried in order on a calculator of their own.
bool check_definitions(const std::string& file, const std::string& definitions, std::ostream& err) {
    const std::vector<definition_fault> faults = define_units(definitions);
    for (const definition_fault& fault : faults)
        err << "metrify: " << file << ":" << fault.line << ": " << fault.message << '\n';
    return faults.empty();
}

} // namespace

bool read_definitions(const unit_choice& choice, std::string& definitions, std::ostream& err) {
    calculator tried;
    const calculator_scope scope(tried);
    bool is_faultless = true;
    definitions.clear();
    if (choice.everyday) {
        definitions = everyday_units();
        define_units(definitions);
    }
    for (const std::string& file : choice.files) {
        program_text program;
        if (program.read_file(file)) {
            is_faultless = check_definitions(file, program.text, err) && is_faultless;
            definitions += program.text + '\n';
        } else {
            err << "metrify: " << file << ": " << program.reason << '\n';
            is_faultless = false;
        }
    }
    return is_faultless;
}

std::string own_units_file() {
    const std::string configured = environment_variable("XDG_CONFIG_HOME");
    // A relative path there is to be ignored.
    if (path_of(configured).is_absolute())
        return configured + "/metrify/units";
    if (const std::string home = environment_variable("HOME"); !home.empty())
        return home + "/.config/metrify/units";
    const std::string application_data = environment_variable("APPDATA"); // on Windows
    return application_data.empty() ? std::string() : application_data + "/metrify/units";
}

void add_own_units(unit_choice& choice) {
    const std::string file = own_units_file();
    std::error_code ignored;
    if (!file.empty() && std::filesystem::exists(path_of(file), ignored))
        choice.files.insert(choice.files.begin(), file);
}

} // namespace metrify

#pragma once

#include <string>
#include <string_view>

namespace metrify {

// The required text of every message in the string table; the built-in table differs only at number 49.
inline constexpr const char* expected_texts[] = {
    "",
    "#ERROR: {0}",
    "#WAIT!",
    "unknown type",
    "boolean",
    "number",
    "integer",
    "string",
    "error",
    "long integer",
    "Conversion error",
    "Expected {0}",
    "Expected {1} for {0}",
    "Expected at least 1 value for {0}",
    "Label {1} not found in {0}",
    "Expected vector for {0}",
    "Expected at least {1} values for {0}",
    "Expected 1 row in {0}",
    "Expected {1} rows in {0}",
    "Expected 1 column in {0}",
    "Expected {1} columns in {0}",
    "Expected 1 value in {0}",
    "Expected {1} values in {0}",
    "Expected 1 value in row {2} of {0}",
    "Expected {1} values in row {2} of {0}",
    "Expected 1 value in column {2} of {0}",
    "Expected {1} values in column {2} of {0}",
    "Expected at least {1} rows for {0}",
    "Expected at least {1} columns for {0}",
    "Failed to convert {0} from {1} to {2}",
    "Index out of range",
    "Illegal argument",
    "Bad XLOPER type",
    "Failed to convert {0} to any of the permitted types",
    "XlElemTraits is not implemented for this type",
    "Array is too large",
    "Array is empty",
    "String is too long",
    "Extended {0} parameter index {1} for argument {2} is out of range",
    "Right-hand side of cell assignment must be a scalar value",
    "Parameter ignoreItems is out of range (maximum = {0})",
    "Source must be a scalar value",
    "Expected all items in the array to be empty",
    "CXlOper instance is not initialized",
    "{0} is not initialized",
    "{0} is not initialized. Expected {1}.",
    "{0} is not initialized. Expected {1} vector.",
    "{0} is not initialized. Expected {1} matrix.",
    "Illegal value for result of common function. Must be 0, &xloResult or static.",
    "The following functions in {0} failed to register:\n{1}\nDo you wish to continue loading the add-in?",
    "Add-in Load Failure",
    "Memory allocation failed",
    "Excel API call failed",
    "Excel API call {0} failed with error code {1}",
    "'C' structured exception occurred",
    "'C' exception {0}",
    "Threw Excel error {0}",
    "COM call failed",
    "{0} failed with error code {1}",
    "short integer",
    "unsigned short integer",
    "Expected at least 1 value for {0}",
    "Expected at least 1 row for {0}",
    "Expected at least 1 column for {0}",
    "Expected one of {1} for {0}",
    "handle to {0}",
};

inline std::u16string Wide(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

} // namespace metrify

#include "sheet_functions.h"

#include "metrify/metrify.h"

#include <algorithm>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <cppuhelper/supportsservice.hxx>
#include <memory>
#include <optional>
#include <rtl/ustrbuf.hxx>
#include <string_view>
#include <vector>

namespace metrify::calc {

using com::sun::star::lang::IllegalArgumentException;
using com::sun::star::uno::RuntimeException;
using rtl::OString;
using rtl::OUString;

namespace {

struct Release {
    void operator()(metrify_cells* cells) const { metrify_cells_free(cells); }
    void operator()(metrify_text* text) const { metrify_text_free(text); }
};

OString Encoded(const OUString& text) {
    return OUStringToOString(text, RTL_TEXTENCODING_UTF8);
}

OUString Decoded(std::string_view text) {
    return OUString(text.data(), static_cast<sal_Int32>(text.size()), RTL_TEXTENCODING_UTF8);
}

std::size_t Size(const OString& text) {
    return static_cast<std::size_t>(text.getLength());
}

Any AnyOf(std::string_view text) {
    return Any(Decoded(text));
}

// Calc shows an error value for a call that throws.
void Check(metrify_status status) {
    if (status != METRIFY_OK)
        throw RuntimeException(Decoded(metrify_message()));
}

// Made in place, since copies of sequences take a good part of the time of a call.
template <class First>
Cells Row(const First& first, std::string_view second) {
    Sequence<Any> row(2);
    Any* const cells = row.getArray();
    cells[0] <<= first;
    cells[1] <<= Decoded(second);
    return {&row, 1};
}

// The text of a unit argument. Nothing for a number or a truth value, except that Calc passes an empty cell
// as 0.
std::optional<OString> UnitText(const Any& argument) {
    OUString text;
    double number = 0.0;
    if (!argument.hasValue() || (argument >>= text))
        return Encoded(text);
    if (!(argument >>= number))
        throw IllegalArgumentException();
    return number == 0.0 ? std::optional(OString()) : std::nullopt;
}

Cells ErrorRow(std::string_view message) {
    return Row(Decoded(message), {});
}

Cells Row(const metrify_cells& cells) {
    const std::string_view text(metrify_cells_text(&cells), metrify_cells_text_size(&cells));
    if (metrify_cells_kind(&cells) == METRIFY_KIND_NUMBER)
        return Row(metrify_cells_number(&cells), text);
    return ErrorRow(text);
}

// A number is written in its shortest form.
OUString TextOf(const Any& cell) {
    OUString text;
    double number = 0.0;
    if (!(cell >>= text) && (cell >>= number))
        text = OUString::number(number);
    return text;
}

// A line for each row; cells of a row are separated by a blank.
OString ProgramText(const Cells& rows) {
    rtl::OUStringBuffer program;
    for (const Sequence<Any>& row : rows) {
        OUString line;
        for (const Any& cell : row)
            if (const OUString text = TextOf(cell); !text.isEmpty())
                line += line.isEmpty() ? text : " " + text;
        program.append(line).append('\n');
    }
    return Encoded(program.makeStringAndClear());
}

// Calc passes an empty cell as 0 if it is the whole argument.
bool IsEmptyCell(const Cells& program) {
    double number = 1.0;
    return program.getLength() == 1 && program[0].getLength() == 1 && (program[0][0] >>= number) &&
           number == 0.0;
}

// One cell for each line. An empty listing is one empty cell, since a result has at least one.
Cells Column(std::string_view listing) {
    std::vector<Sequence<Any>> lines;
    do {
        const std::size_t end = std::min(listing.find('\n'), listing.size());
        const Any line = AnyOf(listing.substr(0, end));
        lines.emplace_back(&line, 1);
        listing.remove_prefix(std::min(end + 1, listing.size()));
    } while (!listing.empty());
    return {lines.data(), static_cast<sal_Int32>(lines.size())};
}

} // namespace

Cells SheetFunctions::metrify(double value, const Any& in_units, const Any& out_units) {
    const std::optional<OString> in = UnitText(in_units);
    if (!in)
        return ErrorRow("ERROR: InUnits is not a text.\n");
    const std::optional<OString> out = UnitText(out_units);
    if (!out)
        return ErrorRow("ERROR: OutUnits is not a text.\n");
    metrify_cells* cells = nullptr;
    Check(metrify_convert(value, in->getStr(), Size(*in), out->getStr(), Size(*out), &cells));
    return Row(*std::unique_ptr<metrify_cells, Release>(cells));
}

Cells SheetFunctions::metrifyListing(const Cells& program) {
    const OString text = IsEmptyCell(program) ? OString() : ProgramText(program);
    metrify_text* listing = nullptr;
    Check(metrify_run(text.getStr(), Size(text), &listing));
    const std::unique_ptr<metrify_text, Release> owner(listing);
    return Column({metrify_text_data(listing), metrify_text_size(listing)});
}

OUString SheetFunctions::ImplementationName() {
    return "org.metrify.comp.Sheet";
}

Sequence<OUString> SheetFunctions::ServiceNames() {
    const OUString name = "org.metrify.Sheet";
    return {&name, 1};
}

OUString SheetFunctions::getImplementationName() {
    return ImplementationName();
}

sal_Bool SheetFunctions::supportsService(const OUString& name) {
    return cppu::supportsService(this, name);
}

Sequence<OUString> SheetFunctions::getSupportedServiceNames() {
    return ServiceNames();
}

} // namespace metrify::calc

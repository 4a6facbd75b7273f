#include "cli/columns/bad_cells.h"
#include "cli/columns/column_choice.h"
#include "cli/columns/columns_command.h"
#include "cli/columns/csv_row.h"
#include "cli/columns/json_row.h"
#include "cli/columns/number_cell.h"
#include "cli/columns/progress.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <ostream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace metrify {

namespace {

constexpr std::size_t block_size = std::size_t{1} << 18U;
constexpr std::size_t longest_row = std::size_t{1} << 24U;
constexpr int status_bad_cells = 1;
constexpr int status_no_input = 2;
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

bool is_utf_16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

/// The part of the input that has been read and not yet converted.
class input_window {
  public:
    explicit input_window(const byte_source& source) : source_(source) {}

    std::string_view text() const { return std::string_view(buffer_).substr(begin_, end_ - begin_); }
    bool is_complete() const { return is_complete_; }
    std::uint64_t bytes_taken() const { return taken_; }

    void take(std::size_t count) {
        begin_ += count;
        taken_ += count;
    }

    /// Appends what can be read. False if it can't.
    bool read_more() {
        buffer_.erase(0, begin_);
        end_ -= begin_;
        begin_ = 0;
        // A long row is read in growing pieces, since it is scanned again after each.
        const std::size_t wanted = std::max(block_size, end_);
        if (buffer_.size() - end_ < wanted)
            buffer_.resize(end_ + wanted);
        const std::ptrdiff_t count = source_(buffer_.data() + end_, wanted);
        if (count < 0)
            return false;
        end_ += static_cast<std::size_t>(count);
        is_complete_ = count == 0;
        return true;
    }

  private:
    const byte_source& source_;
    std::string buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::uint64_t taken_ = 0;
    bool is_complete_ = false;
};

class columns_converter {
  public:
    columns_converter(const conversion_plan& plan, const columns_options& options)
        : plan_(plan), options_(options), choice_(options.columns) {}

    /// Converts a row and appends it to out. False if the first row doesn't have the columns.
    bool add_row(const csv_row& row, std::string& reason, std::string& out) {
        ++rows_;
        if (rows_ == 1) {
            if (!choice_.resolve(row, options_.header, reason))
                return false;
            note_ = choice_.note();
            keys_ = json_keys(choice_.names());
            width_ = row.cells.size();
        }
        const bool is_header = rows_ == 1 && choice_.has_header();
        const bool is_converted = !has_fault(row) && !is_header;
        if (!options_.as_json)
            append_separated(row, is_converted, out);
        else if (!is_header)
            append_json(row, is_converted, out);
        if (is_converted)
            report_missing(row);
        return true;
    }

    /// A blank last line is no row. As JSON it would be a line without a value.
    void add_blank_end(const csv_row& row, std::string& out) const {
        if (!options_.as_json)
            out.append(row.line_end);
    }

    std::uint64_t rows() const { return rows_; }
    /// On the choice of the columns; empty after the first call.
    std::string take_note() { return std::exchange(note_, {}); }
    const bad_cells& bad() const { return bad_; }

  private:
    // True if the cell is a number that has a result.
    bool convert(std::size_t index, std::string_view cell, double& result) {
        double value = 0.0;
        if (!read_number_cell(cell, value)) {
            const std::string plain = plain_cell(cell);
            const bool is_empty = plain.find_first_not_of(" \t") == std::string::npos;
            add_bad(is_empty ? bad_cells::kind::empty : bad_cells::kind::no_number, index, plain);
            return false;
        }
        result = plan_(value);
        if (!std::isfinite(result))
            add_bad(bad_cells::kind::too_large, index, plain_cell(cell));
        return std::isfinite(result);
    }

    void add_bad(bad_cells::kind what, std::size_t index, std::string_view cell) {
        bad_.add(what, rows_, choice_.label(index), cell);
    }

    // True if it is not certain which cells are those of the chosen columns.
    bool has_fault(const csv_row& row) {
        if (row.has_open_quote)
            bad_.add(bad_cells::kind::open_quote, rows_, {}, {});
        else if (row.cells.size() > width_)
            for (const std::size_t index : choice_.indexes())
                add_bad(bad_cells::kind::more_cells, index, {});
        return row.has_open_quote || row.cells.size() > width_;
    }

    void report_missing(const csv_row& row) {
        for (const std::size_t index : choice_.indexes())
            if (index >= row.cells.size())
                add_bad(bad_cells::kind::missing, index, {});
    }

    // Copies what is between the converted cells in one piece each.
    void append_separated(const csv_row& row, bool is_converted, std::string& out) {
        const char* copied = row.cells.front().data();
        const char* const end = row.line_end.data() + row.line_end.size();
        for (const std::size_t index : choice_.indexes()) {
            double result = 0.0;
            if (!is_converted || index >= row.cells.size() || !convert(index, row.cells[index], result))
                continue;
            const std::string_view cell = row.cells[index];
            out.append(copied, cell.data());
            append_number_cell(out, cell, result);
            copied = cell.data() + cell.size();
        }
        out.append(copied, end);
    }

    void append_json(const csv_row& row, bool is_converted, std::string& out) {
        json_row json(out, keys_);
        const std::vector<std::size_t>& chosen = choice_.indexes();
        auto next = chosen.begin();
        for (std::size_t index = 0; index < row.cells.size(); ++index) {
            const bool is_chosen = next != chosen.end() && *next == index;
            next += is_chosen ? 1 : 0;
            double result = 0.0;
            if (is_chosen && is_converted && convert(index, row.cells[index], result))
                json.add_number(result);
            else if (is_chosen && row.cells[index].empty())
                json.add_null();
            else if (row.cells[index].starts_with('"'))
                json.add_text(plain_cell(row.cells[index]));
            else
                json.add_text(row.cells[index]);
        }
        json.finish();
    }

    const conversion_plan& plan_;
    const columns_options& options_;
    column_choice choice_;
    std::vector<std::string> keys_;
    std::string note_;
    bad_cells bad_;
    std::uint64_t rows_ = 0;
    std::size_t width_ = 0; // cells of the first row
};

int fail(std::ostream& err, std::string_view reason) {
    err << "metrify: " << reason << '\n';
    return status_no_input;
}

// Converts the complete rows of the window. False if the first one can't be used.
bool convert_rows(input_window& window, columns_converter& converter, char delimiter, std::string& reason,
                  std::string& out) {
    csv_row row;
    while (!window.text().empty()) {
        const std::size_t length = row.read(window.text(), delimiter, window.is_complete());
        const bool is_last = length == window.text().size();
        const bool is_blank = row.cells.size() == 1 && row.cells.front().empty();
        if (length == 0 || (is_blank && is_last && !window.is_complete()))
            break;
        if (is_blank && is_last)
            converter.add_blank_end(row, out);
        else if (!converter.add_row(row, reason, out))
            return false;
        window.take(length);
    }
    return true;
}

} // namespace

int convert_columns(const conversion_plan& plan, const columns_options& options,
                    const columns_streams& streams) {
    input_window window(streams.in);
    columns_converter converter(plan, options);
    std::string out;
    std::string reason;
    const auto write = [&] {
        streams.out.write(out.data(), static_cast<std::streamsize>(out.size()));
        if (options.is_line_buffered)
            streams.out.flush();
        out.clear();
        return static_cast<bool>(streams.out);
    };
    {
        progress shown(streams.terminal, streams.size);
        while (!window.is_complete()) {
            if (!window.read_more())
                return fail(streams.err, std::generic_category().message(errno));
            if (window.bytes_taken() == 0 && is_utf_16(window.text()))
                return fail(streams.err, "the input is encoded in UTF-16; save it as UTF-8");
            if (window.bytes_taken() == 0 && window.text().starts_with(byte_order_mark)) {
                window.take(byte_order_mark.size());
                streams.err << "metrify: " << streams.name << ": a byte order mark is ignored\n";
            }
            if (!convert_rows(window, converter, options.delimiter, reason, out))
                return fail(streams.err, reason);
            if (const std::string note = converter.take_note(); !note.empty())
                streams.err << "metrify: " << note << '\n';
            if (window.text().size() > longest_row)
                return fail(streams.err, "row " + std::to_string(converter.rows() + 1) +
                                             " is too long; is there a quote without its end?");
            if (!write())
                break;
            shown.show(window.bytes_taken(), converter.rows());
        }
    }
    if (!converter.bad().any())
        return 0;
    converter.bad().report(streams.err);
    return status_bad_cells;
}

} // namespace metrify

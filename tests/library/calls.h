#pragma once

// Calls of the C interface with the results as values.

#include "metrify/metrify.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace metrify::test {

inline std::string taken(metrify_text* text) {
    std::string copy(metrify_text_data(text), metrify_text_size(text));
    metrify_text_free(text);
    return copy;
}

inline std::string listing_of(std::string_view program) {
    metrify_text* listing = nullptr;
    EXPECT_EQ(metrify_run(program.data(), program.size(), &listing), METRIFY_OK) << metrify_message();
    return taken(listing);
}

struct cells {
    metrify_kind kind;
    double number;
    std::string text;
};

inline cells converted(double value, std::string_view in, std::string_view out) {
    metrify_cells* answer = nullptr;
    EXPECT_EQ(metrify_convert(value, in.data(), in.size(), out.data(), out.size(), &answer), METRIFY_OK);
    cells copy = {metrify_cells_kind(answer),
                  metrify_cells_number(answer),
                  {metrify_cells_text(answer), metrify_cells_text_size(answer)}};
    metrify_cells_free(answer);
    return copy;
}

class calculator_handle {
  public:
    calculator_handle() { EXPECT_EQ(metrify_calculator_new(&handle_), METRIFY_OK); }
    ~calculator_handle() { metrify_calculator_free(handle_); }
    calculator_handle(const calculator_handle&) = delete;
    calculator_handle& operator=(const calculator_handle&) = delete;

    metrify_calculator* get() const { return handle_; }
    std::string enter(std::string_view lines) {
        metrify_text* listing = nullptr;
        EXPECT_EQ(metrify_calculator_enter(handle_, lines.data(), lines.size(), &listing), METRIFY_OK);
        return taken(listing);
    }

  private:
    metrify_calculator* handle_ = nullptr;
};

class plan_handle {
  public:
    plan_handle(std::string_view in, std::string_view out)
        : status_(metrify_plan_new(in.data(), in.size(), out.data(), out.size(), &handle_)),
          message_(metrify_message()) {}
    ~plan_handle() { metrify_plan_free(handle_); }
    plan_handle(const plan_handle&) = delete;
    plan_handle& operator=(const plan_handle&) = delete;

    metrify_plan* get() const { return handle_; }
    metrify_status status() const { return status_; }
    const std::string& message() const { return message_; }

  private:
    metrify_plan* handle_ = nullptr;
    metrify_status status_;
    std::string message_;
};

} // namespace metrify::test

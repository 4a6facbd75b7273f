// Calls of the library in any order, as a program in C makes them: each gives a documented status with its
// message, and hands out a result if and only if it succeeds.

#include "fuzz/input.h"
#include "metrify/metrify.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

using metrify_fuzz::Input;
using metrify_fuzz::Require;

constexpr std::size_t kSlots = 3;
constexpr std::size_t kLongestText = 64;

// A text of the input, which may contain a zero byte.
std::string TakeAnyText(Input& input) {
    std::string text = input.TakeText().substr(0, kLongestText);
    if (input.Take(16) == 0)
        text += '\0';
    return text;
}

void CheckStatus(metrify_status status) {
    const std::string_view message = metrify_message();
    switch (status) {
    case METRIFY_OK:
        return Require(message.empty());
    case METRIFY_REFUSED:
        return Require(message.starts_with("ERROR"));
    case METRIFY_BAD_ARGUMENT:
        return Require(!message.empty());
    default:
        // Nobody interrupts a call, and there is memory.
        Require(false);
    }
}

// The status of a call that hands out a text or cells.
template <class Handle>
void CheckResult(metrify_status status, const Handle* result, bool has_zero_byte) {
    CheckStatus(status);
    Require(status == (has_zero_byte ? METRIFY_BAD_ARGUMENT : METRIFY_OK));
    Require((result != nullptr) == (status == METRIFY_OK));
}

std::string TakenText(metrify_text* text) {
    std::string copy(metrify_text_data(text), metrify_text_size(text));
    Require(std::strlen(metrify_text_data(text)) == copy.size());
    metrify_text_free(text);
    return copy;
}

bool HasZeroByte(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

std::string Run(const std::string& program) {
    metrify_text* listing = nullptr;
    const metrify_status status = metrify_run(program.data(), program.size(), &listing);
    CheckResult(status, listing, HasZeroByte(program));
    return TakenText(listing);
}

class Session {
  public:
    explicit Session(const Input& input) : input_(input) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() {
        for (metrify_calculator* calculator : calculators_)
            metrify_calculator_free(calculator);
        for (metrify_plan* plan : plans_)
            metrify_plan_free(plan);
    }

    void Run() {
        while (!input_.IsEmpty())
            Step(input_.Take(kSlots));
    }

  private:
    void Step(std::size_t slot) {
        switch (input_.Take(9)) {
        case 0:
            return RunTwice();
        case 1:
            return Convert();
        case 2:
            return Enter(calculators_[slot]);
        case 3:
            return Renew(calculators_[slot]);
        case 4:
            return CheckStatus(metrify_calculator_reset(calculators_[slot]));
        case 5:
            // Without a call that is being run, it has no effect.
            return metrify_interrupt(calculators_[slot]);
        case 6:
            return Plan(plans_[slot]);
        case 7:
            return Apply(plans_[slot]);
        default:
            return LookUp();
        }
    }

    // Each run has a calculator of its own.
    void RunTwice() {
        const std::string program = TakeAnyText(input_);
        Require(::Run(program) == ::Run(program));
    }

    void Convert() {
        const double value = input_.TakeNumber();
        const std::string in = TakeAnyText(input_);
        const std::string out = TakeAnyText(input_);
        metrify_cells* cells = nullptr;
        const metrify_status status =
            metrify_convert(value, in.data(), in.size(), out.data(), out.size(), &cells);
        CheckResult(status, cells, HasZeroByte(in) || HasZeroByte(out));
        const double number = metrify_cells_number(cells);
        Require(metrify_cells_kind(cells) == METRIFY_KIND_NUMBER || std::isnan(number));
        Require(std::strlen(metrify_cells_text(cells)) == metrify_cells_text_size(cells));
        metrify_cells_free(cells);
    }

    void Enter(metrify_calculator* calculator) {
        const std::string lines = TakeAnyText(input_);
        metrify_text* listing = nullptr;
        const metrify_status status =
            metrify_calculator_enter(calculator, lines.data(), lines.size(), &listing);
        CheckResult(status, listing, calculator == nullptr || HasZeroByte(lines));
        TakenText(listing);
    }

    void Renew(metrify_calculator*& calculator) {
        metrify_calculator_free(calculator);
        calculator = nullptr;
        if (input_.Take(4) != 0)
            CheckStatus(metrify_calculator_new(&calculator));
    }

    void Plan(metrify_plan*& plan) {
        const std::string in = TakeAnyText(input_);
        const std::string out = TakeAnyText(input_);
        metrify_plan_free(plan);
        const metrify_status status = metrify_plan_new(in.data(), in.size(), out.data(), out.size(), &plan);
        CheckStatus(status);
        Require((plan != nullptr) == (status == METRIFY_OK));
    }

    void Apply(const metrify_plan* plan) {
        std::array<double, 8> numbers;
        numbers.fill(input_.TakeNumber());
        const auto stride =
            static_cast<std::ptrdiff_t>(input_.Take(3)) * static_cast<std::ptrdiff_t>(sizeof(double));
        const std::size_t odd = input_.Take(8) == 0 ? 1 : 0;
        // With a stride of two numbers, half as many.
        const metrify_status status =
            metrify_plan_apply(plan, numbers.data(), stride + static_cast<std::ptrdiff_t>(odd),
                               numbers.data(), stride + static_cast<std::ptrdiff_t>(odd), numbers.size() / 2);
        CheckStatus(status);
        Require(status == (plan == nullptr || odd != 0 ? METRIFY_BAD_ARGUMENT : METRIFY_OK));
        Require(plan != nullptr || std::isnan(metrify_plan_convert(plan, 1.0)));
    }

    void LookUp() {
        const std::string name = TakeAnyText(input_);
        metrify_unit unit = {};
        if (const metrify_status status = metrify_unit_find(name.data(), name.size(), &unit);
            status == METRIFY_OK)
            Require(unit.name == name);
        else
            CheckStatus(status);
        metrify_function function = {};
        CheckStatus(metrify_function_find(name.data(), name.size(), &function));
        const std::size_t index = static_cast<std::uint32_t>(input_.TakeInteger());
        Require((metrify_unit_at(index, &unit) == METRIFY_OK) == (index < metrify_unit_count()));
        Require((metrify_function_at(index, &function) == METRIFY_OK) == (index < metrify_function_count()));
    }

    Input input_;
    std::array<metrify_calculator*, kSlots> calculators_{};
    std::array<metrify_plan*, kSlots> plans_{};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Session(Input(data, size)).Run();
    return 0;
}

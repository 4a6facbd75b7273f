#include "tests/xllrt/app/add_in_fixture.h"
#include "tests/xllrt/text/fake_resources.h"
#include "xllrt/fault/exceptions.h"
#include "xllrt/registry/function_result.h"
#include "xllrt/text/dual_string.h"
#include "xllrt/text/string_formatter.h"

#include <new>
#include <string>
#include <type_traits>

namespace {

using namespace metrify;

// ---- The classes

std::string Ascii(const std::u16string& text) {
    return {text.begin(), text.end()};
}

void ExpectMessage(const CXlRuntimeException& exception, const std::string& message) {
    EXPECT_EQ(exception.what(), message);
    EXPECT_EQ(Ascii(exception.WideMessage()), message);
}

TEST(Exceptions, all_have_one_base) {
    static_assert(std::is_base_of_v<std::runtime_error, CXlRuntimeException>);
    static_assert(std::is_base_of_v<CXlRuntimeException, CXlConversionException>);
    static_assert(std::is_base_of_v<CXlRuntimeException, CXlOutOfRangeException>);
    static_assert(std::is_base_of_v<CXlRuntimeException, CXlIllegalArgumentException>);
    static_assert(std::is_base_of_v<CXlRuntimeException, CXlBadOperTypeException>);
    static_assert(std::is_base_of_v<CXlRuntimeException, CXlStringTooLongException>);
    static_assert(std::is_base_of_v<CXlRuntimeException, CXlStructuredException>);
    static_assert(std::is_base_of_v<CXlRuntimeException, CXlComException>);
    static_assert(std::is_base_of_v<CXlRuntimeException, CXlErrorException>);
}

TEST(Exceptions, the_error_of_the_formatter_is_not_one_of_them) {
    static_assert(!std::is_base_of_v<CXlRuntimeException, psl::StringFormatterError>);
}

TEST(Exceptions, a_number_selects_the_unformatted_text_of_the_catalogue) {
    ExpectMessage(CXlRuntimeException(11U), "Expected {0}");
}

TEST(Exceptions, a_number_outside_the_catalogue_is_an_unknown_error) {
    ExpectMessage(CXlRuntimeException(66U), "Unknown error");
    ExpectMessage(CXlRuntimeException(0xFFFFFFFFU), "Unknown error");
}

TEST(Exceptions, a_narrow_text_is_widened_with_the_code_page) {
    const CXlRuntimeException exception(std::string("caf\xE9"));
    EXPECT_STREQ(exception.what(), "caf\xE9");
    EXPECT_EQ(exception.WideMessage(), u"caf\u00E9");
}

TEST(Exceptions, a_wide_text_is_narrowed_with_the_code_page) {
    const CXlRuntimeException exception(std::u16string(u"caf\u00E9"));
    EXPECT_STREQ(exception.what(), "caf\xE9");
    EXPECT_EQ(exception.WideMessage(), u"caf\u00E9");
}

TEST(Exceptions, a_copy_has_both_texts) {
    const CXlRuntimeException exception(std::u16string(u"caf\u00E9"));
    const CXlRuntimeException copy(exception); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_STREQ(copy.what(), "caf\xE9");
    EXPECT_EQ(copy.WideMessage(), u"caf\u00E9");
}

TEST(Exceptions, every_class_takes_the_number_of_its_message) {
    ExpectMessage(CXlConversionException(10U), "Conversion error");
    ExpectMessage(CXlOutOfRangeException(30U), "Index out of range");
    ExpectMessage(CXlIllegalArgumentException(31U), "Illegal argument");
    ExpectMessage(CXlIllegalArgumentException(41U), "Source must be a scalar value");
    ExpectMessage(CXlIllegalArgumentException(48U),
                  "Illegal value for result of common function. Must be 0, &xloResult or static.");
    ExpectMessage(CXlBadOperTypeException(32U), "Bad XLOPER type");
    ExpectMessage(CXlStringTooLongException(37U), "String is too long");
    ExpectMessage(CXlStructuredException(54U), "'C' structured exception occurred");
    ExpectMessage(CXlComException(57U), "COM call failed");
    ExpectMessage(CXlErrorException(30U), "Index out of range");
}

TEST(Exceptions, a_single_number_is_a_message_number_and_never_a_code) {
    ExpectMessage(CXlStructuredException(55), "'C' exception {0}");
    EXPECT_EQ(CXlStructuredException(55).Code(), 0U);
    ExpectMessage(CXlComException(58), "{0} failed with error code {1}");
    EXPECT_EQ(CXlComException(58).Code(), 0U);
    EXPECT_EQ(CXlComException(58).Call(), u"");
    ExpectMessage(CXlErrorException(42), "Expected all items in the array to be empty");
    EXPECT_EQ(CXlErrorException(42).ErrorCode(), 0U);
}

TEST(Exceptions, a_code_may_accompany_the_message) {
    const CXlStructuredException numbered(54U, 0xC0000005);
    ExpectMessage(numbered, "'C' structured exception occurred");
    EXPECT_EQ(numbered.Code(), 0xC0000005);
    EXPECT_EQ(CXlStructuredException(u"text", 0xC0000005).Code(), 0xC0000005);
    const CXlErrorException error(30U, 42);
    ExpectMessage(error, "Index out of range");
    EXPECT_EQ(error.ErrorCode(), 42U);
}

TEST(Exceptions, the_wide_message_of_a_number_is_not_made_from_the_narrow_one) {
    FakeResources resources;
    resources.Add(53248 + 10, kUsEnglish, u"\u0416 caf\u00E9");
    const auto expect_both = [](const CXlRuntimeException& exception) {
        EXPECT_STREQ(exception.what(), "? caf\xE9");
        EXPECT_EQ(exception.WideMessage(), u"\u0416 caf\u00E9") << "the first letter is not in the code page";
    };
    expect_both(CXlRuntimeException(10U));
    expect_both(CXlConversionException(10U));
    expect_both(CXlOutOfRangeException(10U));
    expect_both(CXlIllegalArgumentException(10U));
    expect_both(CXlBadOperTypeException(10U));
    expect_both(CXlStringTooLongException(10U));
    expect_both(CXlStructuredException(10U));
    expect_both(CXlComException(10U));
    expect_both(CXlErrorException(10U));
}

TEST(Exceptions, the_messages_of_codes_are_made_wide) {
    FakeResources resources;
    resources.Add(53248 + 55, kUsEnglish, u"\u0416 {0}");
    resources.Add(53248 + 58, kUsEnglish, u"\u0416 {0} {1}");
    EXPECT_EQ(CXlStructuredException::OfFault(0xC0000005).WideMessage(), u"\u0416 0xC0000005");
    EXPECT_EQ(CXlComException(u"\u0417", 0x80004005).WideMessage(), u"\u0416 \u0417 0x80004005");
}

TEST(Exceptions, every_class_takes_a_message_already_formatted) {
    const std::u16string message = u"Expected {0}";
    ExpectMessage(CXlConversionException(message), "Expected {0}");
    ExpectMessage(CXlOutOfRangeException(message), "Expected {0}");
    ExpectMessage(CXlIllegalArgumentException(message), "Expected {0}");
    ExpectMessage(CXlBadOperTypeException(message), "Expected {0}");
    ExpectMessage(CXlStringTooLongException(message), "Expected {0}");
    ExpectMessage(CXlStructuredException(message), "Expected {0}");
    EXPECT_EQ(CXlStructuredException(message).Code(), 0U);
    ExpectMessage(CXlComException(message), "Expected {0}");
    EXPECT_EQ(CXlComException(message).Call(), u"");
    EXPECT_EQ(CXlComException(message).Code(), 0U);
    ExpectMessage(CXlErrorException(message), "Expected {0}");
    EXPECT_EQ(CXlErrorException(message).ErrorCode(), 0U);
}

TEST(Exceptions, a_fault_carries_its_code_and_shows_it_in_hexadecimal) {
    const CXlStructuredException exception = CXlStructuredException::OfFault(0xC0000094);
    EXPECT_EQ(exception.Code(), 0xC0000094);
    ExpectMessage(exception, "'C' exception 0xC0000094");
}

TEST(Exceptions, a_fault_without_record_has_code_0) {
    ExpectMessage(CXlStructuredException::OfFault(0), "'C' exception 0x0");
}

TEST(Exceptions, a_failed_com_call_shows_its_name_and_code) {
    const CXlComException exception(u"CoCreateInstance", 0x8000400A);
    EXPECT_EQ(exception.Call(), u"CoCreateInstance");
    EXPECT_EQ(exception.Code(), 0x8000400A);
    ExpectMessage(exception, "CoCreateInstance failed with error code 0x8000400A");
}

TEST(Exceptions, a_failure_whose_code_is_not_an_error_has_only_the_name_and_code_0) {
    const CXlComException exception(u"No active object", 1);
    EXPECT_EQ(exception.Code(), 0U);
    ExpectMessage(exception, "No active object");
}

TEST(Exceptions, an_error_carries_the_code_of_the_cell) {
    EXPECT_EQ(CXlErrorException(u"gone", 42).ErrorCode(), 42U);
}

// ---- Results of function calls

class FunctionResult : public AddInTest {
  protected:
    FunctionResult() { SetHostVersion(14); }

    // As an entry calls a common function.
    template <class Body>
    void Run(Body body) {
        CallCommonFunction(result, body, PutException);
    }

    CXlOper result;
};

TEST_F(FunctionResult, a_null_pointer_leaves_the_result_unchanged) {
    result.SetNumber(2.5);
    ApplyResult(result, nullptr);
    EXPECT_EQ(result.ToNumber(true), 2.5);
}

TEST_F(FunctionResult, its_own_address_leaves_the_result_unchanged) {
    result.SetText("kept");
    ApplyResult(result, &result);
    EXPECT_EQ(result.ToText(true), "kept");
}

TEST_F(FunctionResult, the_static_result_is_copied_with_all_it_points_at) {
    result.SetText("earlier");
    CXlOper& fixed = ThisThreadState().staticResult;
    fixed.SetText("fixed");
    ApplyResult(result, &fixed);
    EXPECT_EQ(result.ToText(true), "fixed");
    EXPECT_EQ(fixed.ToText(true), "fixed");
    EXPECT_EQ(result.State(), CXlOper::kValid12 | CXlOper::kOwned12);
    EXPECT_NE(result.Record12()->val.str, fixed.Record12()->val.str);
}

TEST_F(FunctionResult, the_static_result_replaces_both_records) {
    const XLOPER narrow{};
    result = CXlOper::Wrap4(&narrow);
    CXlOper& fixed = ThisThreadState().staticResult;
    fixed.SetNumber(2.5);
    ApplyResult(result, &fixed);
    EXPECT_EQ(result.State(), CXlOper::kValid12);
}

TEST_F(FunctionResult, any_other_pointer_is_an_illegal_argument) {
    const CXlOper other(2.5);
    try {
        ApplyResult(result, &other);
        FAIL() << "nothing was thrown";
    } catch (const CXlIllegalArgumentException& exception) {
        ExpectMessage(exception,
                      "Illegal value for result of common function. Must be 0, &xloResult or static.");
    }
}

TEST_F(FunctionResult, a_wrong_pointer_becomes_the_text_of_the_cell) {
    const CXlOper other(2.5);
    Run([&] { return &other; });
    EXPECT_EQ(result.ToText(true),
              "#ERROR: Illegal value for result of common function. Must be 0, &xloResult or static.");
}

TEST_F(FunctionResult, a_function_that_returns_its_result_gives_it) {
    Run([&] {
        result.SetNumber(2.5);
        return &result;
    });
    EXPECT_EQ(result.ReturnValue12()->xltype, xltypeNum);
    EXPECT_EQ(result.ReturnValue12()->val.num, 2.5);
}

TEST_F(FunctionResult, a_function_that_fills_nothing_and_returns_null_is_a_value_error) {
    Run([]() -> const CXlOper* { return nullptr; });
    EXPECT_EQ(result.State(), 0);
    EXPECT_EQ(result.ReturnValue12()->xltype, xltypeErr);
    EXPECT_EQ(result.ReturnValue12()->val.err, 15);
    EXPECT_EQ(result.ReturnValue4()->xltype, xltypeErr);
    EXPECT_EQ(result.ReturnValue4()->val.err, 15);
}

TEST_F(FunctionResult, a_failed_conversion_becomes_the_text_of_the_cell) {
    const CXlOper argument;
    Run([&]() -> const CXlOper* {
        result.SetNumber(argument.ToNumber(true));
        return &result;
    });
    EXPECT_EQ(result.ToText(true), "#ERROR: Expected number");
}

TEST_F(FunctionResult, every_class_but_one_becomes_the_text_of_the_cell) {
    PutException(result, CXlRuntimeException(std::string("any text")));
    EXPECT_EQ(result.ToText(true), "#ERROR: any text");
    PutException(result, CXlConversionException(10U));
    EXPECT_EQ(result.ToText(true), "#ERROR: Conversion error");
    PutException(result, CXlOutOfRangeException(30U));
    EXPECT_EQ(result.ToText(true), "#ERROR: Index out of range");
    PutException(result, CXlIllegalArgumentException(31U));
    EXPECT_EQ(result.ToText(true), "#ERROR: Illegal argument");
    PutException(result, CXlBadOperTypeException(32U));
    EXPECT_EQ(result.ToText(true), "#ERROR: Bad XLOPER type");
    PutException(result, CXlStringTooLongException(37U));
    EXPECT_EQ(result.ToText(true), "#ERROR: String is too long");
    PutException(result, CXlStructuredException::OfFault(0xC0000005));
    EXPECT_EQ(result.ToText(true), "#ERROR: 'C' exception 0xC0000005");
    PutException(result, CXlComException(u"Invoke", 0x80020009));
    EXPECT_EQ(result.ToText(true), "#ERROR: Invoke failed with error code 0x80020009");
}

TEST_F(FunctionResult, an_error_exception_with_code_42_is_the_cell_error) {
    PutException(result, CXlErrorException(u"not shown", 42));
    ASSERT_EQ(result.State(), CXlOper::kValid12);
    EXPECT_EQ(Rendered(*result.Record12()), "#42");
}

TEST_F(FunctionResult, a_class_derived_from_the_error_exception_is_not_the_cell_error) {
    class Derived : public CXlErrorException {
      public:
        using CXlErrorException::CXlErrorException;
    };
    PutException(result, Derived(u"shown", 42));
    EXPECT_EQ(result.ToText(true), "#ERROR: shown");
}

TEST_F(FunctionResult, a_wide_host_gets_the_wide_message) {
    PutException(result, CXlRuntimeException(std::u16string(u"\u0416")));
    EXPECT_EQ(result.State(), CXlOper::kValid12 | CXlOper::kOwned12);
    EXPECT_EQ(result.ToWideText(true), u"#ERROR: \u0416") << "which no code page 1252 holds";
}

TEST_F(FunctionResult, a_narrow_host_gets_the_narrow_message) {
    SetHostVersion(11);
    PutException(result, CXlRuntimeException(std::string("caf\xE9")));
    EXPECT_EQ(result.State(), CXlOper::kValid4 | CXlOper::kOwned4);
    EXPECT_EQ(result.ToText(true), "#ERROR: caf\xE9");
}

TEST_F(FunctionResult, what_the_function_had_stored_is_released_first) {
    Run([&]() -> const CXlOper* {
        result.SetText("half done");
        throw CXlErrorException(u"not shown", 42);
    });
    EXPECT_EQ(result.State(), CXlOper::kValid12) << "nothing is owned any longer";
    EXPECT_TRUE(result.IsError());
}

TEST_F(FunctionResult, other_exceptions_are_not_caught) {
    result.SetNumber(2.5);
    EXPECT_THROW(Run([]() -> const CXlOper* { throw psl::StringFormatterError(); }),
                 psl::StringFormatterError);
    EXPECT_THROW(Run([]() -> const CXlOper* { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_EQ(result.ToNumber(true), 2.5);
}

// ---- Texts in two widths

TEST(DualString, a_narrow_text_is_not_copied) {
    const char* text = "ft";
    CXlDualString dual(text);
    EXPECT_EQ(dual.Narrow(), text);
    EXPECT_EQ(dual.State(), 2);
}

TEST(DualString, a_wide_text_is_not_copied) {
    const XCHAR* text = u"ft";
    CXlDualString dual(text);
    EXPECT_EQ(dual.Wide(), text);
    EXPECT_EQ(dual.State(), 32);
}

TEST(DualString, the_wide_text_is_converted_with_the_code_page_and_owned) {
    CXlDualString dual("caf\xE9");
    EXPECT_EQ(std::u16string(dual.Wide()), u"caf\u00E9");
    EXPECT_EQ(dual.State(), 0x02 | 0x30);
    EXPECT_STREQ(dual.Narrow(), "caf\xE9");
}

TEST(DualString, the_narrow_text_is_converted_with_the_code_page_and_owned) {
    CXlDualString dual(u"caf\u00E9");
    EXPECT_STREQ(dual.Narrow(), "caf\xE9");
    EXPECT_EQ(dual.State(), 0x20 | 0x03);
    EXPECT_EQ(std::u16string(dual.Wide()), u"caf\u00E9");
}

TEST(DualString, a_text_is_converted_once) {
    CXlDualString narrow("ft");
    EXPECT_EQ(narrow.Wide(), narrow.Wide());
    CXlDualString wide(u"ft");
    EXPECT_EQ(wide.Narrow(), wide.Narrow());
}

TEST(DualString, an_empty_text_is_converted_to_a_shared_one_that_is_not_owned) {
    CXlDualString narrow("");
    EXPECT_EQ(std::u16string(narrow.Wide()), u"");
    EXPECT_EQ(narrow.State(), 0x02 | 0x20);
    CXlDualString wide(u"");
    EXPECT_STREQ(wide.Narrow(), "");
    EXPECT_EQ(wide.State(), 0x20 | 0x02);
}

TEST(DualString, a_null_pointer_is_the_empty_text) {
    CXlDualString narrow(static_cast<const char*>(nullptr));
    EXPECT_STREQ(narrow.Narrow(), "");
    EXPECT_EQ(std::u16string(narrow.Wide()), u"");
    CXlDualString wide(static_cast<const XCHAR*>(nullptr));
    EXPECT_EQ(std::u16string(wide.Wide()), u"");
    EXPECT_STREQ(wide.Narrow(), "");
}

TEST(DualString, without_any_text_both_are_empty) {
    CXlDualString dual;
    EXPECT_STREQ(dual.Narrow(), "");
    EXPECT_EQ(dual.State(), 0x02);
    EXPECT_EQ(std::u16string(dual.Wide()), u"");
    EXPECT_EQ(dual.State(), 0x02 | 0x20);
}

TEST(DualString, an_assigned_text_is_a_private_copy) {
    CXlDualString dual;
    std::string text = "ft";
    dual.Assign(text);
    text = "m";
    EXPECT_STREQ(dual.Narrow(), "ft");
    EXPECT_EQ(dual.State(), 3);
}

TEST(DualString, an_assigned_text_replaces_both_widths) {
    CXlDualString dual(u"ft");
    EXPECT_STREQ(dual.Narrow(), "ft");
    dual.Assign("m");
    EXPECT_EQ(dual.State(), 3);
    EXPECT_STREQ(dual.Narrow(), "m");
    EXPECT_EQ(std::u16string(dual.Wide()), u"m");
}

} // namespace

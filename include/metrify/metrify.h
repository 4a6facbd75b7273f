/* Metrify: a calculator with units, for programs in C and every language that can call C.
 *
 * Texts are UTF-8 or any other superset of ASCII, given by address and size in bytes; a text of size 0 may
 * have a null address. Texts that the library hands out are terminated and hold no other zero byte.
 *
 * A function that returns a metrify_status stores its result through its last pointer. If it fails, the
 * result is a null handle or unchanged, and metrify_message() tells why. No exception leaves the library, and
 * nothing, not even exhausted memory, ends the process. Functions named metrify_..._free accept null.
 *
 * Threads: all functions may be called from any thread at any time. A calculator may be used by one thread at
 * a time, and by different threads in turn; only metrify_interrupt may be called meanwhile. A plan, a text,
 * cells and the tables never change, and any number of threads may read them at the same time.
 */
#ifndef METRIFY_METRIFY_H
#define METRIFY_METRIFY_H

#include <stddef.h>

/* Marks the functions that the shared library exports. */
#if defined(__GNUC__) && !defined(_WIN32)
#define METRIFY_API __attribute__((visibility("default")))
#else
#define METRIFY_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef enum metrify_status {
    METRIFY_OK = 0,
    METRIFY_REFUSED = 1, /* the language refuses a text; the message is the language's own */
    METRIFY_BAD_ARGUMENT =
        2, /* a null pointer, an index out of range, an unknown name, a zero byte in a text */
    METRIFY_OUT_OF_MEMORY = 3,
    METRIFY_INTERRUPTED = 4 /* metrify_interrupt ended the call */
} metrify_status;

/* The version of the library, such as "0.1.0". */
METRIFY_API const char* metrify_version(void);

/* The message of the calling thread's latest call that returned a metrify_status, and "" if it returned
 * METRIFY_OK. Valid until the thread's next call of such a function. */
METRIFY_API const char* metrify_message(void);

/* --- Texts ------------------------------------------------------------------------------------------- */

/* A text that the caller owns. */
typedef struct metrify_text metrify_text;

/* "" and 0 for a null text. */
METRIFY_API const char* metrify_text_data(const metrify_text* text);
METRIFY_API size_t metrify_text_size(const metrify_text* text);
METRIFY_API void metrify_text_free(metrify_text* text);

/* --- Programs ---------------------------------------------------------------------------------------- */

/* Runs a program in the language with a calculator of its own. The listing is the output of `metrify run`,
 * byte for byte, if the program has no byte order mark and no carriage returns at line ends: the command
 * drops them, and this function does not. Errors of statements are part of the listing and no failure of the
 * call. */
METRIFY_API metrify_status metrify_run(const char* program, size_t size, metrify_text** listing);

/* --- The worksheet function -------------------------------------------------------------------------- */

typedef enum metrify_kind {
    METRIFY_KIND_NUMBER = 0, /* a number and a text of units */
    METRIFY_KIND_ERROR = 1,  /* a message and an empty cell */
    METRIFY_KIND_EMPTY = 2   /* neither, which only units with a line break lead to */
} metrify_kind;

/* The two cells that the worksheet function returns. */
typedef struct metrify_cells metrify_cells;

/* Converts a number from one unit expression to another, or to default units if out_units is empty. The
 * number is read and shown with six significant digits, as in a worksheet; a plan has full precision. An
 * error in the units is an answer, METRIFY_KIND_ERROR, and no failure of the call. */
METRIFY_API metrify_status metrify_convert(double value, const char* in_units, size_t in_size,
                                           const char* out_units, size_t out_size, metrify_cells** cells);

/* METRIFY_KIND_EMPTY for null cells. */
METRIFY_API metrify_kind metrify_cells_kind(const metrify_cells* cells);
/* The first cell of METRIFY_KIND_NUMBER, otherwise not-a-number. */
METRIFY_API double metrify_cells_number(const metrify_cells* cells);
/* METRIFY_KIND_NUMBER: the second cell. METRIFY_KIND_ERROR: the first cell. Otherwise "". Texts of cells
 * end in the line breaks that the worksheet function returns. */
METRIFY_API const char* metrify_cells_text(const metrify_cells* cells);
METRIFY_API size_t metrify_cells_text_size(const metrify_cells* cells);
METRIFY_API void metrify_cells_free(metrify_cells* cells);

/* --- Calculators ------------------------------------------------------------------------------------- */

/* A calculator that keeps variables, user units, default units, the function block and the number of the
 * statement from call to call. */
typedef struct metrify_calculator metrify_calculator;

METRIFY_API metrify_status metrify_calculator_new(metrify_calculator** calculator);
/* Runs one line or several. The listing has what these lines add to it. A call that runs out of memory also
 * resets the calculator. */
METRIFY_API metrify_status metrify_calculator_enter(metrify_calculator* calculator, const char* lines,
                                                    size_t size, metrify_text** listing);
/* Ends the call of metrify_calculator_enter that is being run, which returns METRIFY_INTERRUPTED without a
 * listing; the variables are those before the statement that was being run. Other threads and signal handlers
 * may call it. It has no effect if no call is being run, or if the call ends by itself at the same time. */
METRIFY_API void metrify_interrupt(metrify_calculator* calculator);
/* Makes the calculator as good as new. */
METRIFY_API metrify_status metrify_calculator_reset(metrify_calculator* calculator);
METRIFY_API void metrify_calculator_free(metrify_calculator* calculator);

/* --- Conversion of many numbers ---------------------------------------------------------------------- */

/* A conversion from one unit expression to another that has been read and checked, for any number of numbers
 * in full double precision. */
typedef struct metrify_plan metrify_plan;

/* Without out_units, the results are in default units. METRIFY_REFUSED if a text is no unit expression, or if
 * the units are incompatible. */
METRIFY_API metrify_status metrify_plan_new(const char* in_units, size_t in_size, const char* out_units,
                                            size_t out_size, metrify_plan** plan);
/* Converts count numbers. A stride is the distance in bytes from one number to the next, and may be negative
 * or 0; it is a multiple of sizeof(double), and the numbers are aligned. `to` may be `from` with the same
 * stride, otherwise they must not overlap. */
METRIFY_API metrify_status metrify_plan_apply(const metrify_plan* plan, const double* from,
                                              ptrdiff_t from_stride, double* to, ptrdiff_t to_stride,
                                              size_t count);
/* Converts one number. Not-a-number for a null plan. */
METRIFY_API double metrify_plan_convert(const metrify_plan* plan, double value);
/* The units of the results, as a listing shows them. "" for a null plan. */
METRIFY_API const char* metrify_plan_units(const metrify_plan* plan);
METRIFY_API void metrify_plan_free(metrify_plan* plan);

/* --- Tables ------------------------------------------------------------------------------------------ */

/* The texts of the tables are terminated and live as long as the library. */

/* The base dimensions: angle, time, mass, length, absolute temperature, amount of substance, temperature
 * difference, charge. */
enum { METRIFY_DIMENSIONS = 8 };

/* The name of the base unit of a dimension: "rad", "s", "kg", "m", "degK", "mol", "degKdiff", "C". Null if
 * there is no such dimension. */
METRIFY_API const char* metrify_dimension_name(size_t dimension);

/* A unit. A quantity that is y in the base system is y * factor + offset in this unit. */
typedef struct metrify_unit {
    const char* name;
    double factor;                        /* the number of these units in one unit of the base system */
    double offset;                        /* other than 0 for degC and degF alone */
    double exponents[METRIFY_DIMENSIONS]; /* of the base units */
} metrify_unit;

/* All units of the language, grouped by dimension. */
METRIFY_API size_t metrify_unit_count(void);
METRIFY_API metrify_status metrify_unit_at(size_t index, metrify_unit* unit);
/* The unit of exactly that name, case included. */
METRIFY_API metrify_status metrify_unit_find(const char* name, size_t size, metrify_unit* unit);

/* A built-in function. */
typedef struct metrify_function {
    const char* name;
    const char* arguments; /* as written between the parentheses, such as "x, y" */
    const char* chapter;   /* such as "Trigonometry" */
    const char* help;      /* one line: what it is */
    const char* takes;     /* the units of the arguments; "" if nothing is to be said */
    const char* gives;     /* the units of the result */
    const char* domain;
    const char* example; /* a line of the language, or a program */
    const char* answer;  /* what the listing shows for the example */
} metrify_function;

/* All built-in functions, chapter by chapter. */
METRIFY_API size_t metrify_function_count(void);
METRIFY_API metrify_status metrify_function_at(size_t index, metrify_function* function);
/* The function of that name in any case. */
METRIFY_API metrify_status metrify_function_find(const char* name, size_t size, metrify_function* function);

#ifdef __cplusplus
}
#endif

#endif

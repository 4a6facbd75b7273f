/* A process whose memory is exhausted, from one allocation of a call on, and for each allocation in turn. The
 * library's calls return METRIFY_OUT_OF_MEMORY, leak nothing, and succeed when there is memory again. */

#include "metrify/metrify.h"

#include <stdio.h>
#include <string.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void __libc_free(void* block);

/* The allocations that succeed before all others fail; negative: none fails. */
static long left = -1;
static int has_failed;
/* The blocks that were allocated and not released. */
static long live_blocks;

static int is_exhausted(void) {
    if (left > 0)
        --left;
    has_failed = has_failed || left == 0;
    return left == 0;
}
static void* counted(void* block) {
    live_blocks += block != NULL;
    return block;
}
void* malloc(size_t size) {
    return is_exhausted() ? NULL : counted(__libc_malloc(size));
}
void* calloc(size_t count, size_t size) {
    return is_exhausted() ? NULL : counted(__libc_calloc(count, size));
}
void* realloc(void* old, size_t size) {
    void* const block = is_exhausted() ? NULL : __libc_realloc(old, size);
    return old == NULL ? counted(block) : block;
}
void free(void* block) {
    live_blocks -= block != NULL;
    __libc_free(block);
}

static const char program[] = "# a comment, long enough for a text of its own: ........................\n"
                              "DefUnit(ell, 18 in)\n"
                              "x = 2\n"
                              "begin\n"
                              "y = x^2 - 9\n"
                              "end\n"
                              "solve(y, x)\n"
                              "x * [1, 2, 3] ell; cm\n"
                              "fmin(y, x)\n"
                              "PrintFunc\n"
                              "1 foo\n";
static metrify_text* listing;
static metrify_cells* cells;
static metrify_plan* plan;
static metrify_calculator* made;
static metrify_calculator* calculator;

static metrify_status call_run(void) {
    return metrify_run(program, strlen(program), &listing);
}
static metrify_status call_convert(void) {
    return metrify_convert(3.5, "ft", 2, "m", 1, &cells);
}
static metrify_status call_plan(void) {
    return metrify_plan_new("ft", 2, "s", 1, &plan);
}
static metrify_status call_new(void) {
    return metrify_calculator_new(&made);
}
static metrify_status call_enter(void) {
    return metrify_calculator_enter(calculator, program, strlen(program), &listing);
}

/* The results are those of calls with enough memory, and are released. */

static int take_listing(void) {
    metrify_text* expected = NULL;
    const int is_right = metrify_run(program, strlen(program), &expected) == METRIFY_OK &&
                         strcmp(metrify_text_data(listing), metrify_text_data(expected)) == 0;
    metrify_text_free(expected);
    metrify_text_free(listing);
    return is_right;
}
static int take_cells(void) {
    const int is_right = metrify_cells_number(cells) == 1.0668;
    metrify_cells_free(cells);
    return is_right;
}
static int take_no_plan(void) {
    return plan == NULL;
}
static int take_calculator(void) {
    metrify_calculator_free(calculator);
    calculator = made;
    return calculator != NULL;
}
static int take_listing_of_calculator(void) {
    return take_listing() && metrify_calculator_reset(calculator) == METRIFY_OK;
}

struct operation {
    const char* name;
    metrify_status (*call)(void);
    metrify_status expected;
    int (*take)(void);
};

static int fails_well(const struct operation* tested, metrify_status status, long leaked) {
    if (status == METRIFY_OUT_OF_MEMORY && strcmp(metrify_message(), "out of memory") == 0 && leaked == 0)
        return 1;
    printf("%s: status %d, message '%s', %ld blocks leaked\n", tested->name, status, metrify_message(),
           leaked);
    return 0;
}

/* Repeats a call with one more allocation each time, until none fails. The first calls of a process may keep
 * memory for later ones. */
static int survives(const struct operation* tested, int may_keep_memory) {
    long failures = 0;
    for (;; ++failures) {
        const long before = live_blocks;
        has_failed = 0;
        left = failures + 1;
        const metrify_status status = tested->call();
        left = -1;
        if (!has_failed) {
            printf("%s: status %d after %ld failures\n", tested->name, status, failures);
            return status == tested->expected && tested->take() && failures > 0;
        }
        if (!fails_well(tested, status, may_keep_memory ? 0 : live_blocks - before))
            return 0;
    }
}

int main(void) {
    static const struct operation operations[] = {
        {"run", call_run, METRIFY_OK, take_listing},
        {"convert", call_convert, METRIFY_OK, take_cells},
        {"plan", call_plan, METRIFY_REFUSED, take_no_plan},
        {"new calculator", call_new, METRIFY_OK, take_calculator},
        {"calculator", call_enter, METRIFY_OK, take_listing_of_calculator},
    };
    setvbuf(stdout, NULL, _IONBF, 0); /* no block of its own */
    int passed = 1;
    for (size_t i = 0; i < sizeof operations / sizeof *operations; ++i)
        passed = survives(&operations[i], 1) && survives(&operations[i], 0) && passed;
    metrify_calculator_free(calculator);
    puts(passed ? "passed" : "failed");
    return !passed;
}

/* Converts a column of numbers. */

#include <metrify/metrify.h>
#include <stdio.h>

int main(void) {
    const double feet[] = {1, 10, 100};
    double metres[3];
    metrify_plan* plan;
    size_t i;

    if (metrify_plan_new("ft", 2, "m", 1, &plan) != METRIFY_OK) {
        fputs(metrify_message(), stderr);
        return 1;
    }
    metrify_plan_apply(plan, feet, sizeof(double), metres, sizeof(double), 3);
    for (i = 0; i < 3; ++i)
        printf("%g ft = %g %s\n", feet[i], metres[i], metrify_plan_units(plan));
    metrify_plan_free(plan);
    return 0;
}

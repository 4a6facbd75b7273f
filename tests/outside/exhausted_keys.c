/* The library is loaded into a process that has no key for a thread's own data left. Loading it succeeds, and what it
 * would keep for the thread is refused with METRIFY_OUT_OF_MEMORY. */

#include "metrify/metrify.h"

#include <dlfcn.h>
#include <pthread.h>
#include <stdio.h>
#include <string.h>

typedef metrify_status convert_function(double, const char*, size_t, const char*, size_t, metrify_cells**);

static int use_all_keys(void) {
    pthread_key_t key;
    int count = 0;
    while (pthread_key_create(&key, NULL) == 0)
        ++count;
    return count;
}

int main(int count, char** arguments) {
    if (count != 2 || use_all_keys() == 0)
        return 2;
    void* const library = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    if (library == NULL) {
        fprintf(stderr, "%s\n", dlerror());
        return 2;
    }
    convert_function* convert = NULL;
    void* const found = dlsym(library, "metrify_convert");
    memcpy(&convert, &found, sizeof convert);
    metrify_cells* cells = NULL;
    for (int i = 0; i < 2; ++i) {
        const metrify_status status = convert(3.5, "ft", 2, "m", 1, &cells);
        if (status != METRIFY_OUT_OF_MEMORY) {
            fprintf(stderr, "status %d\n", (int)status);
            return 1;
        }
    }
    return dlclose(library);
}

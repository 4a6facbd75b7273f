#pragma once

// What the module shows to its host. Where the format of the module knows no visibility, the module's
// definition file does the naming.

#ifdef __ELF__
#define METRIFY_EXPORT __attribute__((visibility("default")))
#else
#define METRIFY_EXPORT
#endif

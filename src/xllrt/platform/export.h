#pragma once

// What the module exports. In formats without visibility the exports are listed in the module's definition
// file.

#ifdef __ELF__
#define METRIFY_EXPORT __attribute__((visibility("default")))
#else
#define METRIFY_EXPORT
#endif

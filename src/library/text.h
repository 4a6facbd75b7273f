#pragma once

// A text that belongs to a caller in C.

#include "metrify/metrify.h"

#include <string>

struct metrify_text {
    std::string text;
};

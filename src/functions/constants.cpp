#include "functions/constants.h"

namespace metrify {

void run_function(const constant_function& constant, compile_ctx& ctx, text_str*&) {
    push_value(scalar_value(constant.value, constant.dim), ctx);
}

} // namespace metrify

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/run_time_error.h"

#include <cstring>

namespace tessel {

RunTimeError RunTimeError::withAdvice(const std::string& advice) const {
    return {Number(number_), description() + '\n' + advice};
}

// Not strerror, which speaks the machine's language in the middle of a sentence of ours.
RunTimeError RunTimeError::file(const std::string& path, const std::string& action, int errnoValue) {
    const char* const reason = ::strerrordesc_np(errnoValue);
    return file(path, action, reason != nullptr ? reason : "error " + std::to_string(errnoValue));
}

}  // namespace tessel

#include "app/run_time_error.h"

#include <system_error>

RunTimeError RunTimeError::file(const std::string& path, const std::string& action, int errnoValue) {
    return file(path, action, std::generic_category().message(errnoValue));
}

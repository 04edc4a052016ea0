// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cerrno>

namespace tessel {

/// Makes a system call again as long as a signal interrupts it (EINTR). Not for close(), which has closed the
/// file even then.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

}  // namespace tessel

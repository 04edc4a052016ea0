// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// The last events of a run, told on standard error when the program crashes, hangs for minutes, or is
/// stopped by a sanitizer: enough to see what led there, and to do it again.
class LastEvents {
  public:
    /// From now on crashes are told. `seed` is what makes the same run again.
    static void watch(unsigned long long seed);

    /// Notes an event; those before the last fifty are forgotten.
    static void note(long number, const char* text);

    /// Writes the events, oldest first. May be called in a signal handler.
    static void write();
};

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// Something that happens to a file while the program reads it, at a moment that a test can name: `act` is
/// called with the file's descriptor before the program's own reading number `reading` (from 1, counted
/// since this object was made; what Qt reads does not count). One object at a time.
class BeforeReading {
  public:
    BeforeReading(int reading, std::function<void(int file)> act);
    ~BeforeReading();
    BeforeReading(const BeforeReading&) = delete;
    BeforeReading& operator=(const BeforeReading&) = delete;

    /// Whether the moment has come.
    bool happened() const;
};

/// From now on every reading from the file fails like that from a broken card: the process's memory is a file
/// whose first bytes nobody can read.
void breakDevice(int file);

}  // namespace tessel

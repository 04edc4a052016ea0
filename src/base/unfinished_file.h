// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <sys/types.h>

namespace tessel {

/// A new file in a folder, open for reading and writing, that is to get its own name when it is whole. Until
/// then it has none, where the file system has such files, and vanishes with the program; elsewhere it is
/// called ".tessel-PROCESS-NUMBER". It is locked as long as it is open, which tells every program that it is
/// no leftover. What is not kept is removed.
class UnfinishedFile {
  public:
    UnfinishedFile() = default;
    ~UnfinishedFile() { discard(); }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    /// Opens it; false, and the reason in errno, when the folder cannot take it. `mode` is what open() takes.
    bool open(const std::string& folder, mode_t mode);

    int descriptor() const { return file_; }

    /// Gives it a name if it has none; false, and the reason in errno, when that cannot be.
    bool giveName();
    const std::string& name() const { return name_; }

    /// It has been renamed: its name is not ours any more.
    void nameIsTaken() { name_.clear(); }
    /// Takes its name away; it lives as long as it is open.
    void removeName();
    void discard();

  private:
    bool openNameless(mode_t mode);
    bool openNamed(mode_t mode);

    std::string folder_;
    std::string name_;  // empty as long as the file has no name
    int file_ = -1;
};

/// The path of an unfinished file of this program in a folder, as it has a name. While the program lives
/// nobody takes such a file for a leftover.
std::string unfinishedName(const std::string& folder, int number);

/// Removes the files in a folder that programs were writing when they were killed. One that a living program
/// holds is left alone: it is locked, or its name has the number of a process that lives. In the folders of
/// other machines, whose locks and processes may not be seen from here, only what nobody has touched for a
/// day is removed. Fails silently.
void removeLeftovers(const std::string& folder);

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/unfinished_file.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace tessel {

/// Writes a file beside its name and puts it in place in one step, so that whatever fails on the way, also
/// the power, a file of that name is either the old one or the new one, whole. What is not committed leaves
/// no trace; what a killed program left in the folder is removed (unfinished_file.h).
///
/// A file that takes another's place keeps its owner, group, mode and extended attributes where that is
/// allowed (kept_attributes.h). One that would lose something by being replaced, because it has several names
/// (hard links), or that cannot be, because its folder may not be written, is written in place when it is
/// committed (in_place_writing.h).
///
/// Every failure throws RunTimeError with the target's path and the system's reason.
class FileReplacement {
  public:
    /// Begins a replacement of `path` (absolute or relative; a symbolic link is followed, also to a file that
    /// is not there yet). Requires that the folder exists, and is writable unless the file exists; refuses a
    /// target that is no ordinary file, is write-protected, or cannot be looked at.
    explicit FileReplacement(const std::string& path);
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    void write(std::string_view text) {
        if (text.size() > buffer_.capacity() - buffer_.size()) flush();
        buffer_.append(text);  // grows only for a text larger than the whole buffer
    }

    /// The file that is being written, open for reading too, for whoever writes at any place of it instead of
    /// by write().
    int descriptor() const { return file_.descriptor(); }

    /// Writes what is left, puts the file in place and makes both durable: contents and name. Nothing may be
    /// written afterwards.
    void commit();

    /// Does that for two files that belong together: whatever fails, both are the new ones or both are as
    /// they were, but where the program or the power ends between their two changes of name. Files that
    /// would have to be written in place are refused, and two that are the same one. An old file that cannot
    /// be put back is left beside its name, as the error tells (".old-1").
    static void commitTogether(FileReplacement& first, FileReplacement& second);

  private:
    class PutAside;

    void lookAtTarget();
    void open();
    void flush();
    void makeReady();
    bool takePlace();
    bool isSameFileAs(const FileReplacement& other) const;
    void makeReadyToReplace();
    void replace();
    void reportDelayedErrors();
    void syncFolder();
    [[noreturn]] void fail(int errnoValue);

    std::string target_;
    struct stat old_ {};
    bool exists_ = false;
    bool inPlace_ = false;
    std::string elsewhere_;  // the folder in which it is made ready when that is not the target's
    UnfinishedFile file_;
    std::string buffer_;
};

}  // namespace tessel

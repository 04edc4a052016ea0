#pragma once

#include <string>
#include <string_view>

/// Writes a file beside its name and puts it in place in one step, so that whatever fails on the way, a file
/// of that name is either the old one or the new one, whole. What is not committed leaves no trace; where the
/// file system has files without a name, not even when the program is killed while it writes.
///
/// Every failure throws RunTimeError with the target's path and the system's reason.
class FileReplacement {
  public:
    /// Begins a replacement of `path` (absolute or relative; a symbolic link is followed). Requires that the
    /// folder exists and is writable; refuses a target that is a folder or is write-protected.
    explicit FileReplacement(const std::string& path);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    void write(std::string_view text) {
        if (text.size() > buffer_.capacity() - buffer_.size()) flush();
        buffer_.append(text);  // grows only for a text larger than the whole buffer
    }

    /// Writes what is left, makes it durable and puts the file in place. Nothing may be written afterwards.
    void commit();

  private:
    void open();
    void giveName();
    std::string besideTarget(const std::string& name) const;
    void flush();
    void discard();
    [[noreturn]] void fail(int errnoValue);

    std::string target_;
    std::string temporary_;  // empty as long as the file has no name
    int file_ = -1;
    std::string buffer_;
};

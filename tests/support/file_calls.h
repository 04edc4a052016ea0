// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// A call to the system by the program's own code about a file.
struct FileCall {
    std::string name;   ///< "open", "write", ...
    std::string path;   ///< where the call has one; of linkat and rename the old one
    std::string to;     ///< of linkat and rename the new one
    std::string bytes;  ///< of write and pwrite
    int file = -1;      ///< where the call has one; of a watched open its result
    int flags = 0;      ///< of open
    long at = 0;        ///< of pwrite
    long result = 0;
};

/// What a call gives instead of being made.
struct FileAnswer {
    long result = -1;
    int error = 0;
    long value = 0;  ///< of statfs the kind of file system, of fstatvfs the free blocks of 4096 bytes
};

/// While the object lives, the calls of this program's own code that make, write, name, lock and sync files
/// are recorded in their order, and a test can answer them in the system's place; closing can be answered,
/// and is not recorded. What Qt does to files is not seen. One object at a time.
class WatchedFileCalls {
  public:
    using Answerer = std::function<std::optional<FileAnswer>(const FileCall&)>;

    explicit WatchedFileCalls(Answerer answerer = {});
    ~WatchedFileCalls();
    WatchedFileCalls(const WatchedFileCalls&) = delete;
    WatchedFileCalls& operator=(const WatchedFileCalls&) = delete;

    const std::vector<FileCall>& calls() const { return calls_; }
    /// How often a call of this name has been made.
    long count(const std::string& name) const;

    /// For the calls themselves. What an answerer does to files itself is neither asked nor recorded.
    bool isAnswering() const { return isAnswering_; }
    std::optional<FileAnswer> answer(const FileCall& call);
    void record(FileCall call) { calls_.push_back(std::move(call)); }

  private:
    Answerer answerer_;
    bool isAnswering_ = false;
    std::vector<FileCall> calls_;
};

/// Answers every call for a file without a name as a file system does that has none.
std::optional<FileAnswer> noNamelessFiles(const FileCall& call);

/// Answers the calls of this name with an error, and no others.
inline WatchedFileCalls::Answerer failing(const std::string& name, int error) {
    return [name, error](const FileCall& call) {
        return call.name == name ? std::optional(FileAnswer{-1, error}) : std::nullopt;
    };
}

}  // namespace tessel

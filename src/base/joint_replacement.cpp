// SPDX-License-Identifier: GPL-3.0-or-later
// Two files that are replaced together.
#include "base/file_replacement.h"
#include "base/file_system.h"
#include "base/run_time_error.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace tessel {

// The file that another is about to replace, under a second name. Comes back unless it is let go.
class FileReplacement::PutAside {
  public:
    // Throws where it cannot be done; then the file is where it was.
    explicit PutAside(FileReplacement& replacement) : by_(replacement) {
        if (by_.exists_ && !link()) moveAway();
    }
    ~PutAside() {
        if (!isLetGo_) putBack();
        if (!isNeeded_ && !name_.empty()) ::unlink(name_.c_str());
    }
    PutAside(const PutAside&) = delete;
    PutAside& operator=(const PutAside&) = delete;

    // Takes the new file out of its place again; false when that cannot be.
    bool putBack() {
        isLetGo_ = true;
        if (name_.empty()) return ::unlink(by_.target_.c_str()) == 0 || errno == ENOENT;
        isNeeded_ = uninterrupted([&] { return std::rename(name_.c_str(), by_.target_.c_str()); }) != 0;
        if (isNeeded_) giveLastingName();
        return !isNeeded_;
    }
    void letGo() { isLetGo_ = true; }
    const std::string& name() const { return name_; }

  private:
    // For as long as the program lives: then the name is one of a leftover.
    std::string passingName(int number) const {
        return unfinishedName(std::filesystem::path(by_.target_).parent_path().string(), number);
    }
    // For as long as a user needs the file.
    std::string lastingName(int number) const { return by_.target_ + ".old-" + std::to_string(number + 1); }

    // Gives the file at `path` the first free one of these names too, which is name_ then; false when it
    // cannot have two.
    template <typename Name>
    bool linkFrom(const std::string& path, Name nameOf) {
        for (int number = 0;; ++number) {
            const std::string name = nameOf(number);
            const auto call = [&] { return ::linkat(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), 0); };
            if (uninterrupted(call) == 0) {
                name_ = name;
                return true;
            }
            if (errno != EEXIST) return false;
        }
    }

    bool link() {
        return linkFrom(by_.target_, [this](int number) { return passingName(number); });
    }

    // Where a file can have no second name.
    void moveAway() {
        int number = 0;
        while (::access(lastingName(number).c_str(), F_OK) == 0)
            ++number;
        const std::string name = lastingName(number);
        if (uninterrupted([&] { return std::rename(by_.target_.c_str(), name.c_str()); }) != 0)
            by_.fail(errno);
        name_ = name;
        isLasting_ = true;
    }

    void giveLastingName() {
        const std::string passing = name_;
        if (!isLasting_ && linkFrom(passing, [this](int number) { return lastingName(number); }))
            ::unlink(passing.c_str());
    }

    FileReplacement& by_;
    std::string name_;  // empty where there is no old file
    bool isLetGo_ = false;
    bool isLasting_ = false;  // nobody takes it for a leftover
    bool isNeeded_ = false;   // could not be put back: it is the only name that the old file has
};

bool FileReplacement::isSameFileAs(const FileReplacement& other) const {
    if (exists_ && other.exists_) return old_.st_ino == other.old_.st_ino && old_.st_dev == other.old_.st_dev;
    const auto placeOf = [](const std::string& path) {
        std::error_code error;
        return std::filesystem::weakly_canonical(path, error);
    };
    return exists_ == other.exists_ && placeOf(target_) == placeOf(other.target_);
}

void FileReplacement::makeReadyToReplace() {
    flush();
    if (inPlace_) {
        const char* const reason =
            old_.st_nlink > 1 ? "it has several names (hard links)" : "its folder may not be written";
        throw RunTimeError::file(target_, "cannot be replaced together with another file", reason);
    }
    makeReady();
}

void FileReplacement::replace() {
    if (!takePlace()) fail(errno);
}

void FileReplacement::commitTogether(FileReplacement& first, FileReplacement& second) {
    if (first.isSameFileAs(second))
        throw RunTimeError::file(second.target_, "cannot be replaced together with another file",
                                 "the name of the other one leads to it too");
    first.makeReadyToReplace();
    second.makeReadyToReplace();
    PutAside old(first);
    try {
        first.replace();
        second.replace();
        old.letGo();
    } catch (const RunTimeError& error) {
        if (old.putBack()) throw;
        throw RunTimeError(RunTimeError::kFile, error.description() + "; " + first.target_ +
                                                    " is the new one all the same, the old one lies in " +
                                                    old.name());
    }
    first.syncFolder();
    second.syncFolder();
    first.file_.discard();
    second.file_.discard();
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
// Two files that are replaced together.
#include "base/file_replacement.h"
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
        return !isNeeded_;
    }
    void letGo() { isLetGo_ = true; }
    const std::string& name() const { return name_; }

  private:
    std::string nameOf(int number) const {
        return unfinishedName(std::filesystem::path(by_.target_).parent_path().string(), number);
    }

    bool link() {
        for (int number = 0;; ++number) {
            const std::string name = nameOf(number);
            const auto call = [&] {
                return ::linkat(AT_FDCWD, by_.target_.c_str(), AT_FDCWD, name.c_str(), 0);
            };
            if (uninterrupted(call) == 0) {
                name_ = name;
                return true;
            }
            if (errno != EEXIST) return false;
        }
    }

    // Where a file can have no second name.
    void moveAway() {
        int number = 0;
        while (::access(nameOf(number).c_str(), F_OK) == 0)
            ++number;
        const std::string name = nameOf(number);
        if (uninterrupted([&] { return std::rename(by_.target_.c_str(), name.c_str()); }) != 0)
            by_.fail(errno);
        name_ = name;
    }

    FileReplacement& by_;
    std::string name_;  // empty where there is no old file
    bool isLetGo_ = false;
    bool isNeeded_ = false;  // could not be put back: it is the only name that the old file has
};

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

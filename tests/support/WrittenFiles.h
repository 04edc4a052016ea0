// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/temporary_folder.h"

namespace tessel {

/// A kind of file that the program writes, as a test has it written over an older one of its name.
class FileToWrite {
  public:
    virtual ~FileToWrite() = default;

    virtual std::string name() const = 0;
    /// Puts the one there that is old.
    virtual void makeOld(const std::string& path);
    /// Writes the new one. What the user is told when that fails, or nothing.
    virtual std::string write(const std::string& path) = 0;
    /// What the file at the path says, without what differs each time that it is written ("" where it has
    /// been torn).
    virtual std::string contents(const std::string& path) const;
};

struct KindOfFile {
    const char* name;
    std::function<std::unique_ptr<FileToWrite>()> make;
};

inline void PrintTo(const KindOfFile& kind, std::ostream* out) {
    *out << kind.name;
}

/// Those that a user has written under a name that he chooses, and the error log.
std::vector<KindOfFile> filesOfTheUser();
/// And the recovery file, of which the program chooses the name and goes on writing behind what is there.
std::vector<KindOfFile> allWrittenFiles();

/// For tests of them: a folder with an old one.
class WrittenFileTest : public testing::TestWithParam<KindOfFile> {
  protected:
    WrittenFileTest();

    /// "old" or "new", "none" where there is no file, "torn" for anything else.
    std::string stateOf(const std::string& where) const;
    std::string state() const { return stateOf(path); }

    const std::unique_ptr<FileToWrite> file = GetParam().make();
    const TemporaryFolder folder;
    const std::string path = folder / file->name();

  private:
    std::string old_, new_;
};

/// Whether a user who is told this has the new file all the same.
bool isInPlace(const std::string& told);

}  // namespace tessel

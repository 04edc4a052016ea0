// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

/// A folder that lives as long as the object.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }
    /// The path of a file in the folder.
    std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }

  private:
    std::string path_;
};

/// How many files and folders lie in the folder.
std::size_t filesIn(const TemporaryFolder& folder);

/// For tests of files.
class FolderTest : public testing::Test {
  protected:
    const TemporaryFolder folder;
    const std::string path = folder / "out.txt";

    /// The file at `path` still is the old one, "old", and nothing else has been left.
    void expectOldFileAlone() const;
};

/// A file's bytes; fails the test when it cannot be read.
std::string readFile(const std::string& path);
void writeFile(const std::string& path, std::string_view bytes);
/// Writes it as the program does that replaces a file.
void replaceFile(const std::string& path, std::string_view bytes = "new");

}  // namespace tessel

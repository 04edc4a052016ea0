// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_replacement.h"

#include "support/file_calls.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

using FileReplacementTest = FolderTest;

// What is told when a file is to be replaced.
std::string refusal(const std::string& target) {
    return descriptionOf([&] { FileReplacement file(target); });
}

// Whether a folder's file system has files without a name, which vanish with the process that writes them.
bool hasNamelessFiles(const std::string& folder) {
    const int file = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    if (file >= 0) ::close(file);
    return file >= 0;
}

}  // namespace

TEST_F(FileReplacementTest, PutsTheFileInPlaceWhenCommitted) {
    writeFile(path, "old");
    FileReplacement file(path);
    file.write("new ");
    file.write("text");
    EXPECT_EQ(readFile(path), "old");
    file.commit();
    EXPECT_EQ(readFile(path), "new text");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST_F(FileReplacementTest, LeavesTheOldFileAndNoTraceWhenNotCommitted) {
    writeFile(path, "old");
    FileReplacement(path).write(std::string(1'000'000, 'x'));
    expectOldFileAlone();
}

TEST_F(FileReplacementTest, WritesTextsOfEverySizeInOrder) {
    FileReplacement file(path);
    std::string expected;
    for (const std::size_t size : {0U, 1U, 200'000U, 262'144U, 5U, 1'000'000U, 262'143U, 2U}) {
        const std::string text(size, static_cast<char>('a' + size % 26));
        file.write(text);
        expected += text;
    }
    file.commit();
    EXPECT_EQ(readFile(path), expected);
}

TEST_F(FileReplacementTest, RefusesWhatCannotBeReplaced) {
    writeFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(refusal(path), path + " cannot be written: Permission denied");
    EXPECT_EQ(refusal(folder.path()), folder.path() + " cannot be written: Is a directory");
    EXPECT_EQ(refusal(folder / "none/out.txt"),
              folder / "none/out.txt cannot be written: No such file or directory");
    expectOldFileAlone();
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_NE(refusal(folder / "pipe"), "no error");
    EXPECT_EQ(filesIn(folder), 2U);
}

TEST_F(FileReplacementTest, HasNoNameUntilItIsWholeWhereThatIsPossible) {
    FileReplacement file(path);
    file.write(std::string(1'000'000, 'x'));
    EXPECT_EQ(filesIn(folder), hasNamelessFiles(folder.path()) ? 0U : 1U);
    file.commit();
    EXPECT_EQ(readFile(path).size(), 1'000'000U);
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST_F(FileReplacementTest, LeavesAFileAloneThatHasTheNameItWanted) {
    const std::string taken = folder / (".tessel-" + std::to_string(::getpid()) + "-0");
    writeFile(taken, "another's");
    replaceFile(path, "text");
    EXPECT_EQ(readFile(path), "text");
    EXPECT_EQ(readFile(taken), "another's");
    EXPECT_EQ(filesIn(folder), 2U);
}

TEST_F(FileReplacementTest, TakesAPathWithoutAFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    replaceFile("out.txt", "text");
    fs::current_path(before);
    EXPECT_EQ(readFile(path), "text");
}

TEST_F(FileReplacementTest, DoesItsWorkOnFileSystemsWithoutNamelessFilesToo) {
    writeFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0604), 0);
    const WatchedFileCalls watched(noNamelessFiles);
    {
        FileReplacement file(path);
        file.write("half");
        EXPECT_EQ(filesIn(folder), 2U);
    }
    expectOldFileAlone();
    replaceFile(path);
    EXPECT_EQ(refusal(folder / "none/out.txt"),
              folder / "none/out.txt cannot be written: No such file or directory");
    EXPECT_EQ(readFile(path), "new");
    EXPECT_EQ(filesIn(folder), 1U);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0604));
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_replacement.h"

#include "support/file_size_limit.h"
#include "support/nameless_files.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

class FileReplacementTest : public FolderTest {
  protected:
    void replace(const std::string& target, const std::string& text) const {
        FileReplacement file(target);
        file.write(text);
        file.commit();
    }
    void expectOldFileAlone() const {
        EXPECT_EQ(readFile(path), "old");
        EXPECT_EQ(filesIn(folder), 1U);
    }
    // What is told when a file is to be replaced.
    static std::string refusal(const std::string& target) {
        return descriptionOf([&] { FileReplacement file(target); });
    }
};

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

TEST_F(FileReplacementTest, KeepsPermissionsAndFollowsALink) {
    writeFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    fs::create_symlink(path, folder / "link.txt");
    replace(folder / "link.txt", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link.txt"));
    EXPECT_EQ(readFile(path), "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
}

TEST_F(FileReplacementTest, LeavesTheOldFileWhenTheDiskIsFull) {
    writeFile(path, "old");
    std::string description;
    {
        const FileSizeLimit limit(300'000);
        description = descriptionOf([&] { replace(path, std::string(1'000'000, 'x')); });
    }
    EXPECT_EQ(description, path + " cannot be written: File too large");
    expectOldFileAlone();
}

TEST_F(FileReplacementTest, SaysSoWhenTheFolderVanishesMeanwhile) {
    fs::create_directory(folder / "gone");
    FileReplacement file(folder / "gone/out.txt");
    file.write("text");
    fs::remove_all(folder / "gone");
    EXPECT_EQ(descriptionOf([&] { file.commit(); }),
              folder / "gone/out.txt cannot be written: No such file or directory");
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
    replace(path, "text");
    EXPECT_EQ(readFile(path), "text");
    EXPECT_EQ(readFile(taken), "another's");
    EXPECT_EQ(filesIn(folder), 2U);
}

TEST_F(FileReplacementTest, TakesAPathWithoutAFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    replace("out.txt", "text");
    fs::current_path(before);
    EXPECT_EQ(readFile(path), "text");
}

TEST_F(FileReplacementTest, DoesItsWorkOnFileSystemsWithoutNamelessFilesToo) {
    writeFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0604), 0);
    const auto without = [this] {
        ASSERT_TRUE(forbidNamelessFiles());
        ASSERT_FALSE(hasNamelessFiles(folder.path()));
        {
            FileReplacement file(path);
            file.write("half");
            EXPECT_EQ(filesIn(folder), 2U);
        }
        expectOldFileAlone();
        replace(path, "new");
        EXPECT_EQ(refusal(folder / "none/out.txt"),
                  folder / "none/out.txt cannot be written: No such file or directory");
    };
    const auto inAProcess = [&] {
        without();
        std::_Exit(testing::Test::HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(inAProcess(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(readFile(path), "new");
    EXPECT_EQ(filesIn(folder), 1U);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0604));
}

TEST_F(FileReplacementTest, RefusesANewFileInAFolderThatMayNotBeWrittenAndWritesElsewhere) {
    for (const char* name : {"closed", "open"})
        fs::create_directory(folder / name);
    writeFile(folder / "open/theirs.txt", "old");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod((folder / "closed").c_str(), 0555), 0);
    ASSERT_EQ(::chmod((folder / "open").c_str(), 0777), 0);
    {
        const UnprivilegedUser user;
        EXPECT_EQ(refusal(folder / "closed/new.txt"),
                  folder / "closed/new.txt cannot be written: Permission denied");
        FileReplacement file(folder / "open/out.txt");
        file.write("text");
        const auto names = std::distance(fs::directory_iterator(folder / "open"), fs::directory_iterator{});
        EXPECT_EQ(names, hasNamelessFiles(folder / "open") ? 1 : 2);
        file.commit();
    }
    EXPECT_EQ(readFile(folder / "open/out.txt"), "text");
    EXPECT_TRUE(fs::is_empty(folder / "closed"));
    fs::permissions(folder / "closed", fs::perms::owner_all);
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/file_replacement.h"

#include "base/run_time_error.h"
#include "support/file_size_limit.h"
#include "support/nameless_files.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tessel {

namespace {

namespace fs = std::filesystem;

template <typename Action>
std::string descriptionOf(Action action) {
    try {
        action();
    } catch (const RunTimeError& error) {
        return error.description();
    }
    return "no error";
}

}  // namespace

TEST(FileReplacement, PutsTheFileInPlaceWhenCommitted) {
    const TemporaryFolder folder;
    writeFile(folder / "out.txt", "old");
    FileReplacement file(folder / "out.txt");
    file.write("new ");
    file.write("text");
    EXPECT_EQ(readFile(folder / "out.txt"), "old");
    file.commit();
    EXPECT_EQ(readFile(folder / "out.txt"), "new text");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(FileReplacement, LeavesTheOldFileAndNoTraceWhenNotCommitted) {
    const TemporaryFolder folder;
    writeFile(folder / "out.txt", "old");
    {
        FileReplacement file(folder / "out.txt");
        file.write(std::string(1'000'000, 'x'));
    }
    EXPECT_EQ(readFile(folder / "out.txt"), "old");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(FileReplacement, WritesTextsOfEverySizeInOrder) {
    const TemporaryFolder folder;
    FileReplacement file(folder / "out.txt");
    std::string expected;
    for (const std::size_t size : {0U, 1U, 200'000U, 262'144U, 5U, 1'000'000U, 262'143U, 2U}) {
        const std::string text(size, static_cast<char>('a' + size % 26));
        file.write(text);
        expected += text;
    }
    file.commit();
    EXPECT_EQ(readFile(folder / "out.txt"), expected);
}

TEST(FileReplacement, RefusesATargetThatIsAFolderOrGone) {
    const TemporaryFolder folder;
    EXPECT_EQ(descriptionOf([&] { FileReplacement file(folder.path()); }),
              folder.path() + " cannot be written: Is a directory");
    EXPECT_EQ(descriptionOf([&] { FileReplacement file(folder / "none/out.txt"); }),
              folder / "none/out.txt cannot be written: No such file or directory");
}

TEST(FileReplacement, RefusesAWriteProtectedTarget) {
    const TemporaryFolder folder;
    writeFile(folder / "out.txt", "old");
    ASSERT_EQ(::chmod((folder / "out.txt").c_str(), 0444), 0);
    EXPECT_EQ(descriptionOf([&] { FileReplacement file(folder / "out.txt"); }),
              folder / "out.txt cannot be written: Permission denied");
    EXPECT_EQ(readFile(folder / "out.txt"), "old");
}

TEST(FileReplacement, RefusesAPipe) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_THROW(FileReplacement(folder / "pipe"), RunTimeError);
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(FileReplacement, KeepsPermissionsAndFollowsALink) {
    const TemporaryFolder folder;
    writeFile(folder / "real.txt", "old");
    ASSERT_EQ(::chmod((folder / "real.txt").c_str(), 0640), 0);
    fs::create_symlink(folder / "real.txt", folder / "link.txt");
    FileReplacement file(folder / "link.txt");
    file.write("new");
    file.commit();
    EXPECT_TRUE(fs::is_symlink(folder / "link.txt"));
    EXPECT_EQ(readFile(folder / "real.txt"), "new");
    struct stat status {};
    ASSERT_EQ(::stat((folder / "real.txt").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST(FileReplacement, LeavesTheOldFileWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    writeFile(folder / "out.txt", "old");
    std::string description;
    {
        const FileSizeLimit limit(300'000);
        description = descriptionOf([&] {
            FileReplacement file(folder / "out.txt");
            for (int i = 0; i < 100; ++i)
                file.write(std::string(10'000, 'x'));
            file.commit();
        });
    }
    EXPECT_EQ(description, folder / "out.txt cannot be written: File too large");
    EXPECT_EQ(readFile(folder / "out.txt"), "old");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(FileReplacement, SaysSoWhenTheFolderVanishesMeanwhile) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "gone");
    FileReplacement file(folder / "gone/out.txt");
    file.write("text");
    fs::remove_all(folder / "gone");
    EXPECT_EQ(descriptionOf([&] { file.commit(); }),
              folder / "gone/out.txt cannot be written: No such file or directory");
}

TEST(FileReplacement, HasNoNameUntilItIsWholeWhereThatIsPossible) {
    const TemporaryFolder folder;
    FileReplacement file(folder / "out.txt");
    file.write(std::string(1'000'000, 'x'));
    EXPECT_EQ(filesIn(folder), hasNamelessFiles(folder.path()) ? 0U : 1U);
    file.commit();
    EXPECT_EQ(readFile(folder / "out.txt").size(), 1'000'000U);
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(FileReplacement, LeavesAFileAloneThatHasTheNameItWanted) {
    const TemporaryFolder folder;
    const std::string taken = folder / (".tessel-" + std::to_string(::getpid()) + "-0");
    writeFile(taken, "another's");
    FileReplacement file(folder / "out.txt");
    file.write("text");
    file.commit();
    EXPECT_EQ(readFile(folder / "out.txt"), "text");
    EXPECT_EQ(readFile(taken), "another's");
    EXPECT_EQ(filesIn(folder), 2U);
}

TEST(FileReplacement, TakesAPathWithoutAFolder) {
    const TemporaryFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    FileReplacement file("out.txt");
    file.write("text");
    file.commit();
    fs::current_path(before);
    EXPECT_EQ(readFile(folder / "out.txt"), "text");
}

namespace {

void replaceWithoutNamelessFiles(const TemporaryFolder& folder) {
    ASSERT_TRUE(forbidNamelessFiles());
    ASSERT_FALSE(hasNamelessFiles(folder.path()));
    {
        FileReplacement file(folder / "out.txt");
        file.write("half");
        EXPECT_EQ(filesIn(folder), 2U);
    }
    EXPECT_EQ(readFile(folder / "out.txt"), "old");
    EXPECT_EQ(filesIn(folder), 1U);
    FileReplacement file(folder / "out.txt");
    file.write("new");
    file.commit();
    EXPECT_EQ(descriptionOf([&] { FileReplacement none(folder / "none/out.txt"); }),
              folder / "none/out.txt cannot be written: No such file or directory");
}

}  // namespace

TEST(FileReplacement, DoesItsWorkOnFileSystemsWithoutNamelessFilesToo) {
    const TemporaryFolder folder;
    writeFile(folder / "out.txt", "old");
    ASSERT_EQ(::chmod((folder / "out.txt").c_str(), 0604), 0);
    EXPECT_EXIT(
        {
            replaceWithoutNamelessFiles(folder);
            std::_Exit(testing::Test::HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(readFile(folder / "out.txt"), "new");
    EXPECT_EQ(filesIn(folder), 1U);
    EXPECT_EQ(fs::status(folder / "out.txt").permissions(), fs::perms(0604));
}

TEST(FileReplacement, RefusesANewFileInAFolderThatMayNotBeWrittenAndWritesElsewhere) {
    const TemporaryFolder folder;
    for (const char* name : {"closed", "open"})
        fs::create_directory(folder / name);
    writeFile(folder / "open/theirs.txt", "old");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod((folder / "closed").c_str(), 0555), 0);
    ASSERT_EQ(::chmod((folder / "open").c_str(), 0777), 0);
    {
        const UnprivilegedUser user;
        EXPECT_EQ(descriptionOf([&] { FileReplacement file(folder / "closed/new.txt"); }),
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

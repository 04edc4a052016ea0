#include "app/program_directories.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

TEST(ProgramDirectories, AreTheProgramsOwnFolderWhenItsHelpStandsBesideIt) {
    TemporaryFolder folder;
    fs::create_directories(folder / "bin/helpdocs");
    fs::create_directories(folder / "share/varn-tessel");
    Session session;
    findProgramDirectories(session, folder / "bin", folder / "home/data");
    EXPECT_EQ(session.AppDir, folder / "bin");
    EXPECT_EQ(session.DataDir, folder / "bin");
    EXPECT_FALSE(fs::exists(folder / "home"));
}

TEST(ProgramDirectories, OfAnInstalledProgramReadFromShareAndWriteInTheUsersFolder) {
    TemporaryFolder folder;
    fs::create_directories(folder / "bin");
    fs::create_directories(folder / "share/varn-tessel");
    Session session;
    findProgramDirectories(session, folder / "bin", folder / "home/data");
    EXPECT_EQ(session.AppDir, folder / "share/varn-tessel");
    EXPECT_EQ(session.DataDir, folder / "home/data");
    EXPECT_TRUE(fs::is_directory(folder / "home/data"));
}

TEST(ProgramDirectories, FallBackToTheReadingFolderWhenThereIsNoUsersFolder) {
    TemporaryFolder folder;
    fs::create_directories(folder / "bin");
    fs::create_directories(folder / "share/varn-tessel");
    writeFile(folder / "home", "a file, not a folder");
    Session session;
    findProgramDirectories(session, folder / "bin", folder / "home/data");
    EXPECT_EQ(session.DataDir, folder / "share/varn-tessel");
    findProgramDirectories(session, folder / "bin", "");
    EXPECT_EQ(session.DataDir, folder / "share/varn-tessel");
}

TEST(ProgramDirectories, AreTheProgramsOwnFolderWhenThereIsNothingElse) {
    TemporaryFolder folder;
    Session session;
    findProgramDirectories(session, folder.path(), folder / "home");
    EXPECT_EQ(session.AppDir, folder.path());
    EXPECT_EQ(session.DataDir, folder.path());
}

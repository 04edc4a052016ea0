// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/program_directories.h"

#include "support/temporary_folder.h"

namespace tessel {

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

TEST(ProgramDirectories, MayHaveNamesThatAreNotUtf8) {
    TemporaryFolder folder;
    fs::create_directories(folder / "Gel\xE4nde/bin");
    fs::create_directories(folder / "Gel\xE4nde/share/varn-tessel");
    Session session;
    findProgramDirectories(session, folder / "Gel\xE4nde/bin", folder / "Andr\xE9/data");
    EXPECT_EQ(session.AppDir, folder / "Gel\xE4nde/share/varn-tessel");
    EXPECT_EQ(session.DataDir, folder / "Andr\xE9/data");
}

TEST(ProgramDirectories, BeginAtTheProgramThatRuns) {
    EXPECT_TRUE(fs::exists(executableFolder() + "/tessel_compute_tests"));
}

TEST(UserDataFolder, IsWhatTheEnvironmentSays) {
    const auto valueOf = [](const char* name) {
        const char* const value = std::getenv(name);
        return value == nullptr ? std::optional<std::string>() : value;
    };
    const auto set = [](const char* name, const std::optional<std::string>& value) {
        value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name);
    };
    const auto home = valueOf("HOME");
    const auto data = valueOf("XDG_DATA_HOME");
    set("HOME", "/home/Andr\xE9");
    for (const auto& none : {std::optional<std::string>(), std::optional<std::string>(""),
                             std::optional<std::string>("relative")}) {
        set("XDG_DATA_HOME", none);
        EXPECT_EQ(userDataFolder(), "/home/Andr\xE9/.local/share");
    }
    set("HOME", {});
    EXPECT_EQ(userDataFolder(), "");
    set("XDG_DATA_HOME", "/data/\xFC");
    EXPECT_EQ(userDataFolder(), "/data/\xFC");
    set("HOME", home);
    set("XDG_DATA_HOME", data);
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/program_directories.h"

#include "support/environment.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

namespace fs = std::filesystem;

// The folders that a program in `bin` of this folder finds: the one to read in and the one to write in.
class ProgramDirectories : public FolderTest {
  protected:
    std::pair<std::string, std::string> found(const std::string& bin, const std::string& users) const {
        Session session;
        findProgramDirectories(session, bin, users);
        return {session.AppDir, session.DataDir};
    }
    const std::string share = folder / "share/varn-tessel";
};

}  // namespace

TEST_F(ProgramDirectories, AreShareAndTheUsersFolderUnlessHelpStandsBesideTheProgram) {
    using Folders = std::pair<std::string, std::string>;
    const std::string bin = folder / "bin", users = folder / "home/data";
    EXPECT_EQ(found(bin, users), (Folders{bin, bin})) << "there is nothing else";
    fs::create_directories(bin);
    fs::create_directories(share);
    for (const std::string& none : {std::string(), path + "/data"}) {
        writeFile(path, "a file, not a folder");
        EXPECT_EQ(found(bin, none), (Folders{share, share})) << "there is no users' folder";
    }
    EXPECT_EQ(found(bin, users), (Folders{share, users}));
    EXPECT_TRUE(fs::is_directory(users));
    fs::create_directories(folder / "bin/helpdocs");
    EXPECT_EQ(found(bin, folder / "other/data"), (Folders{bin, bin}));
    EXPECT_FALSE(fs::exists(folder / "other"));
}

TEST_F(ProgramDirectories, MayHaveNamesThatAreNotUtf8) {
    fs::create_directories(folder / "Gel\xE4nde/bin");
    fs::create_directories(folder / "Gel\xE4nde/share/varn-tessel");
    EXPECT_EQ(found(folder / "Gel\xE4nde/bin", folder / "Andr\xE9/data"),
              std::pair(folder / "Gel\xE4nde/share/varn-tessel", folder / "Andr\xE9/data"));
}

TEST_F(ProgramDirectories, BeginAtTheProgramThatRuns) {
    EXPECT_TRUE(fs::exists(executableFolder() + "/tessel_compute_tests"));
}

TEST(UserDataFolder, IsWhatTheEnvironmentSays) {
    const Environment home("HOME", "/home/Andr\xE9"), data("XDG_DATA_HOME", {}), state("XDG_STATE_HOME", {});
    for (const auto& none : {std::optional<std::string>(), std::optional<std::string>(""),
                             std::optional<std::string>("relative")}) {
        data.set(none);
        EXPECT_EQ(userDataFolder(), "/home/Andr\xE9/.local/share");
        state.set(none);
        EXPECT_EQ(userStateFolder(), "/home/Andr\xE9/.local/state");
    }
    home.set({});
    EXPECT_EQ(userDataFolder(), "");
    data.set("/data/\xFC");
    EXPECT_EQ(userDataFolder(), "/data/\xFC");
    EXPECT_EQ(userStateFolder(), "");
    state.set("/state/\xFC");
    EXPECT_EQ(userStateFolder(), "/state/\xFC");
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every file that a user has written under a name of his own, whatever stands in its place and
// whatever happens to its folder meanwhile. What fails at a single call: EveryWrittenFile_test.cpp.
#include "support/WrittenFiles.h"
#include "support/file_calls.h"
#include "support/own_mounts.h"
#include "support/unprivileged_user.h"

#include <sys/wait.h>
#include <sys/xattr.h>

namespace tessel {

namespace {

namespace fs = std::filesystem;

using Answer = std::optional<FileAnswer>;

class EveryFileOfTheUser : public WrittenFileTest {
  protected:
    // Writes it while something happens before call number `moment`. What is told; nothing when there are not
    // so many calls.
    std::optional<std::string> toldWhen(const std::function<void()>& happens, long moment, bool nameless,
                                        const std::string& where) {
        long calls = 0;
        const WatchedFileCalls watched([&](const FileCall& call) -> Answer {
            if (++calls == moment) happens();
            return nameless ? std::nullopt : noNamelessFiles(call);
        });
        const std::string told = file->write(where);
        return calls >= moment ? std::optional(told) : std::nullopt;
    }
    void expectNothingLostWhenAnotherPlaceComes(const std::string& told, const std::string& there,
                                                const std::string& here) const;
    void expectRefused(const std::string& where, int reason) const {
        const std::string told = file->write(where);
        EXPECT_TRUE(told.ends_with(std::string(" cannot be written: ") + std::strerror(reason))) << told;
    }
};

}  // namespace

// What stands in its place
// -----------------------------------------------------------------------------------------------

TEST_P(EveryFileOfTheUser, IsRefusedWhereSomethingElseIs) {
    const std::pair<int, std::function<void()>> obstacles[] = {
        {EACCES, [this] { file->makeOld(path), fs::permissions(path, fs::perms(0444)); }},
        {EISDIR, [this] { fs::create_directory(path); }},
        {EINVAL, [this] { ::mkfifo(path.c_str(), 0600); }},
        {EINVAL, [this] { fs::create_symlink("/dev/full", path); }},
        {ELOOP, [this] { fs::create_symlink(path, path); }},
        {ENOENT, [this] { fs::create_symlink("gone/away", path); }}};
    for (const auto& [reason, put] : obstacles) {
        fs::remove(path);
        put();
        const fs::file_status before = fs::symlink_status(path);
        expectRefused(path, reason);
        EXPECT_EQ(fs::symlink_status(path).type(), before.type());
        EXPECT_EQ(fs::symlink_status(path).permissions(), before.permissions());
        EXPECT_TRUE(before.type() != fs::file_type::regular || state() == "old");
        EXPECT_EQ(filesIn(folder), 1U);
    }
}

TEST_P(EveryFileOfTheUser, IsRefusedUnderANameThatCannotBe) {
    expectRefused(folder / "none/" + file->name(), ENOENT);
    expectRefused(path + "/" + file->name(), ENOTDIR);
    expectRefused(folder / std::string(300, 'x') + file->name(), ENAMETOOLONG);
    EXPECT_EQ(state(), "old");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST_P(EveryFileOfTheUser, IsWrittenUnderAnyNameThatCanBe) {
    for (const char* const name :
         {"two  blanks", "Gr\xFC\xDF", "100%1 %n %s", "; rm -rf `ls` $HOME \"'", "."}) {
        const std::string where = folder / name + file->name();
        EXPECT_EQ(file->write(where), "") << name;
        EXPECT_EQ(stateOf(where), "new") << name;
    }
    EXPECT_EQ(filesIn(folder), 6U);
}

TEST_P(EveryFileOfTheUser, KeepsItsOtherNamesAndTheLinksToIt) {
    fs::create_hard_link(path, folder / "second");
    fs::create_symlink(path, folder / "link");
    fs::create_symlink("later", folder / "link to one that is not there yet");
    for (const char* const name : {"link", "link to one that is not there yet"}) {
        EXPECT_EQ(file->write(folder / name), "");
        EXPECT_TRUE(fs::is_symlink(folder / name));
    }
    EXPECT_EQ(fs::hard_link_count(path), 2U);
    for (const char* const name : {"second", "later"})
        EXPECT_EQ(stateOf(folder / name), "new") << name;
    EXPECT_EQ(filesIn(folder), 5U);
}

TEST_P(EveryFileOfTheUser, KeepsOwnerModeAndAttributes) {
    const bool isRoot = ::geteuid() == 0;
    const uid_t owner = isRoot ? 1234 : ::geteuid();
    ASSERT_EQ(::chown(path.c_str(), owner, ::getegid()), 0);
    ASSERT_EQ(::chmod(path.c_str(), 0604), 0);
    ASSERT_EQ(::setxattr(path.c_str(), "user.origin", "field 7", 7, 0), 0);
    EXPECT_EQ(file->write(path), "");
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(status.st_mode & 07777, 0604U);
    EXPECT_EQ(::getxattr(path.c_str(), "user.origin", nullptr, 0), 7);
    EXPECT_EQ(state(), "new");
}

TEST_P(EveryFileOfTheUser, HasTheRightsThatTheUserWantsNewFilesToHave) {
    fs::remove(path);
    const mode_t before = ::umask(0027);
    EXPECT_EQ(file->write(path), "");
    ::umask(before);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
}

// Its folder
// -----------------------------------------------------------------------------------------------

TEST_P(EveryFileOfTheUser, IsWrittenInAFolderOfOthersOnlyWhereItMay) {
    fs::permissions(folder.path(), fs::perms(0755));
    for (const unsigned mode : {0555U, 01777U}) {  // not to be changed; where nobody takes what is another's
        const std::string laboratory = folder / "laboratory" + std::to_string(mode) + "/";
        fs::create_directory(laboratory);
        for (const auto& [name, rights] : {std::pair{"open.", 0666U}, {"closed.", 0444U}}) {
            file->makeOld(laboratory + name + file->name());
            fs::permissions(laboratory + name + file->name(), fs::perms(rights));
        }
        fs::permissions(laboratory, fs::perms(mode));
        {
            const UnprivilegedUser user;
            EXPECT_EQ(file->write(laboratory + "open." + file->name()), "");
            expectRefused(laboratory + "closed." + file->name(), EACCES);
            if (mode == 0555U) expectRefused(laboratory + "new." + file->name(), EACCES);
        }
        EXPECT_EQ(stateOf(laboratory + "open." + file->name()), "new");
        EXPECT_EQ(stateOf(laboratory + "closed." + file->name()), "old");
        EXPECT_EQ(std::distance(fs::directory_iterator(laboratory), fs::directory_iterator()), 2);
        fs::permissions(laboratory, fs::perms::owner_all);
    }
}

// Whatever happens while it is written
// -----------------------------------------------------------------------------------------------

TEST_P(EveryFileOfTheUser, IsWholeWhenAnotherProgramWritesItMeanwhile) {
    const auto another = [this] {
        const pid_t program = ::fork();
        if (program == 0) std::_Exit(GetParam().make()->write(path).empty() ? 0 : 1);
        int end = 0;
        EXPECT_EQ(::waitpid(program, &end, 0), program);
        EXPECT_EQ(end, 0);
        EXPECT_EQ(state(), "new");
    };
    for (const bool nameless : {true, false}) {
        for (long moment = 1;; ++moment) {
            file->makeOld(path);
            const auto told = toldWhen(another, moment, nameless, path);
            if (!told) break;
            ASSERT_EQ(*told, "") << moment;
            ASSERT_EQ(state(), "new") << moment;
            ASSERT_EQ(filesIn(folder), 1U) << moment;
        }
    }
}

TEST_P(EveryFileOfTheUser, IsTheOldOneOrTheNewOneWhenItsRightsOrItsFoldersAreChangedMeanwhile) {
    fs::permissions(folder.path(), fs::perms::all);
    const UnprivilegedUser user;
    const std::string mine = folder / "mine", where = mine + "/" + file->name();
    for (const auto& [changed, rights] : {std::pair{mine, 0555U}, {mine, 0U}, {where, 0444U}, {where, 0U}}) {
        for (const bool nameless : {true, false}) {
            for (long moment = 1;; ++moment) {
                fs::remove_all(mine);
                fs::create_directory(mine);
                file->makeOld(where);
                const auto told =
                    toldWhen([&] { fs::permissions(changed, fs::perms(rights)); }, moment, nameless, where);
                fs::permissions(mine, fs::perms::owner_all);
                fs::permissions(where, fs::perms::owner_all);
                if (!told) break;
                ASSERT_EQ(stateOf(where), isInPlace(*told) ? "new" : "old") << moment << *told;
            }
        }
    }
}

// The old one is where its folder is, or the new one is there or under the name that the user has chosen.
void EveryFileOfTheUser::expectNothingLostWhenAnotherPlaceComes(const std::string& told,
                                                                const std::string& there,
                                                                const std::string& here) const {
    const std::set<std::string> states{stateOf(there), stateOf(here)};
    EXPECT_EQ(states.count("torn"), 0U) << told;
    EXPECT_EQ(states.count(isInPlace(told) ? "new" : "old"), 1U) << told;
}

TEST_P(EveryFileOfTheUser, IsTheOldOneOrTheNewOneWhenItsFolderIsMovedAwayMeanwhile) {
    const std::string drive = folder / "drive", moved = folder / "moved";
    for (const bool isEmptyThen : {false, true}) {
        const auto move = [&] {
            fs::rename(drive, moved);
            if (isEmptyThen) fs::create_directory(drive);
        };
        for (long moment = 1;; ++moment) {
            fs::remove_all(moved);
            fs::create_directory(drive);
            file->makeOld(drive + "/" + file->name());
            const auto told = toldWhen(move, moment, moment % 2 == 0, drive + "/" + file->name());
            if (!told) break;
            expectNothingLostWhenAnotherPlaceComes(*told, moved + "/" + file->name(),
                                                   drive + "/" + file->name());
        }
    }
}

// On a drive of its own. Where this machine lets nobody mount one, the tests above stand for these.
TEST_P(EveryFileOfTheUser, IsTheOldOneOrTheNewOneWhenItsDriveVanishesMeanwhile) {
    const std::string place = folder / "drive", where = place + "/" + file->name();
    fs::create_directory(place);
    runWithOwnMounts([&] {
        for (long moment = 1; !HasFailure(); ++moment) {
            const Drive drive(place);
            file->makeOld(where);
            const auto told = toldWhen([&] { drive.vanish(); }, moment, moment % 2 == 0, where);
            if (!told) break;
            expectNothingLostWhenAnotherPlaceComes(*told, drive / file->name(), where);
            fs::remove_all(place);
            fs::create_directory(place);
        }
    });
}

TEST_P(EveryFileOfTheUser, IsTheOldOneOnADriveThatIsFullOrMayOnlyBeRead) {
    runWithOwnMounts([&] {
        const Drive drive(folder.path());
        file->makeOld(path);
        drive.fill("ballast");
        expectRefused(path, ENOSPC);
        EXPECT_EQ(state(), "old");
        EXPECT_EQ(filesIn(folder), 2U);
        fs::create_hard_link(path, folder / "second");
        expectRefused(path, ENOSPC);
        fs::remove(folder / "ballast");
        drive.makeReadOnly();
        expectRefused(path, EROFS);
        EXPECT_EQ(state(), "old");
        EXPECT_EQ(stateOf(folder / "second"), "old");
    });
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryFileOfTheUser, testing::ValuesIn(filesOfTheUser()),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace tessel

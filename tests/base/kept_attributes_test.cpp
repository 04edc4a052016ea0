// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/kept_attributes.h"

#include "support/run_time_errors.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

#include <sys/xattr.h>

namespace tessel {

namespace {

namespace fs = std::filesystem;

constexpr uid_t kSomebody = 1234;
constexpr gid_t kGroup = 2345;

struct stat statusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status;
}

// An access list as the system stores it: owner, one more user, group, mask and others.
struct AccessList {
    struct Entry {
        std::uint16_t tag, rights;
        std::uint32_t who;
    };
    std::uint32_t version = 2;
    std::array<Entry, 5> entries;
};

AccessList readableBySomebodyElse() {
    constexpr std::uint32_t kNobody = 0xFFFFFFFF;
    return {2,
            {{{0x01, 6, kNobody},
              {0x02, 4, kSomebody},
              {0x04, 0, kNobody},
              {0x10, 4, kNobody},
              {0x20, 0, kNobody}}}};
}

bool giveList(const std::string& path, const char* kind) {
    const AccessList list = readableBySomebodyElse();
    return ::setxattr(path.c_str(), kind, &list, sizeof list, 0) == 0;
}

std::string attribute(const std::string& path, const char* name) {
    std::string value(256, '\0');
    const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
    value.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return value;
}

std::string refusal(const std::string& path) {
    return descriptionOf([&] { replaceFile(path); });
}

// Whether this process may give files away.
bool isRoot() {
    return ::geteuid() == 0;
}

class KeptAttributes : public FolderTest {
  protected:
    KeptAttributes() { writeFile(path, "old"); }
};
using FollowedLinks = FolderTest;
using FileReplacementTarget = FolderTest;

}  // namespace

TEST_F(KeptAttributes, AreOwnerGroupAndModeWhereTheUserMayGiveThem) {
    const uid_t owner = isRoot() ? kSomebody : ::geteuid();
    const gid_t group = isRoot() ? kGroup : ::getegid();
    ASSERT_EQ(::chown(path.c_str(), owner, group), 0);
    ASSERT_EQ(::chmod(path.c_str(), 06755), 0);
    const ino_t before = statusOf(path).st_ino;
    replaceFile(path);
    const struct stat after = statusOf(path);
    EXPECT_NE(after.st_ino, before);
    EXPECT_EQ(after.st_uid, owner);
    EXPECT_EQ(after.st_gid, group);
    EXPECT_EQ(after.st_mode & 07777, 06755U);
}

TEST_F(KeptAttributes, NeverGiveTheOwnersNameToAnotherOne) {
    fs::permissions(folder.path(), fs::perms::all);
    ASSERT_EQ(::chmod(path.c_str(), 06777), 0);
    {
        const UnprivilegedUser user;
        replaceFile(path);
    }
    const struct stat after = statusOf(path);
    EXPECT_EQ(after.st_uid != ::geteuid(), isRoot());
    EXPECT_EQ(after.st_mode & 07777, isRoot() ? 0777U : 06777U);
    EXPECT_EQ(readFile(path), "new");
}

TEST_F(KeptAttributes, AreTheExtendedOnes) {
    const std::string large(3000, 'x');
    ASSERT_EQ(::setxattr(path.c_str(), "user.origin", "field 7", 7, 0), 0);
    ASSERT_EQ(::setxattr(path.c_str(), "user.empty", "", 0, 0), 0);
    ASSERT_EQ(::setxattr(path.c_str(), "user.comment", large.data(), 256, 0), 0);
    replaceFile(path);
    EXPECT_EQ(attribute(path, "user.origin"), "field 7");
    EXPECT_EQ(attribute(path, "user.comment"), large.substr(0, 256));
    EXPECT_EQ(::getxattr(path.c_str(), "user.empty", nullptr, 0), 0);
}

TEST_F(KeptAttributes, AreAccessLists) {
    ASSERT_TRUE(giveList(path, "system.posix_acl_access"));
    const std::string list = attribute(path, "system.posix_acl_access");
    ASSERT_FALSE(list.empty());
    replaceFile(path);
    EXPECT_EQ(attribute(path, "system.posix_acl_access"), list);
    EXPECT_EQ(statusOf(path).st_mode & 0777, 0640U);
}

TEST_F(KeptAttributes, AreNotWidenedByTheFoldersAccessList) {
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    ASSERT_TRUE(giveList(folder.path(), "system.posix_acl_default"));
    replaceFile(path);
    EXPECT_EQ(attribute(path, "system.posix_acl_access"), "");
    EXPECT_EQ(statusOf(path).st_mode & 0777, 0640U);
    replaceFile(folder / "new.txt");
    EXPECT_NE(attribute(folder / "new.txt", "system.posix_acl_access"), "");
}

TEST_F(KeptAttributes, AreNotTheRightsOfAProgram) {
    const std::array<std::uint32_t, 5> rights{0x02000001, 1, 0, 0, 0};
    // Which only an administrator's process may give.
    ::setxattr(path.c_str(), "security.capability", rights.data(), sizeof rights, 0);
    replaceFile(path);
    EXPECT_EQ(attribute(path, "security.capability"), "");
}

TEST_F(FollowedLinks, LeadToAFileThatIsNotThereYetAndToOneThatIs) {
    fs::create_directories(folder / "a/b");
    fs::create_symlink("a/b/second", folder / "first");
    fs::create_symlink("../real.txt", folder / "a/b/second");
    replaceFile(folder / "first");
    EXPECT_TRUE(fs::is_symlink(folder / "first"));
    EXPECT_TRUE(fs::is_symlink(folder / "a/b/second"));
    EXPECT_FALSE(fs::is_symlink(folder / "a/real.txt"));
    EXPECT_EQ(readFile(folder / "a/real.txt"), "new");
    replaceFile(folder / "first", "newer");
    EXPECT_TRUE(fs::is_symlink(folder / "a/b/second"));
    EXPECT_EQ(readFile(folder / "a/real.txt"), "newer");
    fs::create_symlink(folder / "absolute.txt", folder / "third");
    replaceFile(folder / "third");
    EXPECT_EQ(readFile(folder / "absolute.txt"), "new");
}

TEST_F(FollowedLinks, ThatLeadNowhereOrRoundAreRefused) {
    fs::create_symlink("gone/out.txt", folder / "lost");
    EXPECT_EQ(refusal(folder / "lost"), folder / "gone/out.txt cannot be written: No such file or directory");
    fs::create_symlink("round", folder / "round");
    EXPECT_EQ(refusal(folder / "round"),
              folder / "round cannot be written: Too many levels of symbolic links");
    EXPECT_EQ(filesIn(folder), 2U);
}

TEST_F(FileReplacementTarget, ThatCannotBeLookedAtIsNotTakenForANewFile) {
    fs::create_directory(folder / "closed");
    writeFile(folder / "closed/out.txt", "old");
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(folder / "closed", fs::perms::none);
    {
        const UnprivilegedUser user;
        EXPECT_EQ(refusal(folder / "closed/out.txt"),
                  folder / "closed/out.txt cannot be written: Permission denied");
    }
    fs::permissions(folder / "closed", fs::perms::owner_all);
    EXPECT_EQ(readFile(folder / "closed/out.txt"), "old");
}

}  // namespace tessel

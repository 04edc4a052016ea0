// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/kept_attributes.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace tessel {

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr std::size_t kLargestAttribute = 65536;  // list and value, the system's own limit

// Rights of a program and signatures of contents, none of which a new content inherits.
bool belongsToContents(std::string_view name) {
    constexpr std::array<std::string_view, 3> kNames = {"security.capability", "security.ima",
                                                        "security.evm"};
    return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

void keepOwner(const struct stat& old, int to) {
    // Whoever may not give the file away may still give it to one of his groups.
    constexpr auto kSame = static_cast<uid_t>(-1);
    if (::fchown(to, old.st_uid, old.st_gid) != 0 && ::fchown(to, kSame, old.st_gid) != 0) return;
}

void keepExtendedAttributes(const std::string& path, int to) {
    // A folder may hand down an access list that the old file did not have.
    ::fremovexattr(to, kAccessList);
    std::vector<char> names(kLargestAttribute);
    const ssize_t length = ::listxattr(path.c_str(), names.data(), names.size());
    if (length <= 0) return;
    std::vector<char> value(kLargestAttribute);
    for (std::string_view rest(names.data(), static_cast<std::size_t>(length)); !rest.empty();) {
        const std::string name(rest.substr(0, rest.find('\0')));
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
        if (belongsToContents(name)) continue;
        const ssize_t size = ::getxattr(path.c_str(), name.c_str(), value.data(), value.size());
        if (size >= 0) ::fsetxattr(to, name.c_str(), value.data(), static_cast<std::size_t>(size), 0);
    }
}

mode_t modeFor(const struct stat& old, int to) {
    constexpr mode_t kAll = 07777;
    struct stat fresh {};
    const bool isSame = ::fstat(to, &fresh) == 0 && fresh.st_uid == old.st_uid && fresh.st_gid == old.st_gid;
    return old.st_mode & (isSame ? kAll : kAll & ~static_cast<mode_t>(S_ISUID | S_ISGID));
}

}  // namespace

void keepAttributes(const std::string& path, const struct stat& old, int to) {
    keepOwner(old, to);
    keepExtendedAttributes(path, to);
    // A file system that knows no such mode keeps the file to its owner.
    static_cast<void>(::fchmod(to, modeFor(old, to)));
}

}  // namespace tessel

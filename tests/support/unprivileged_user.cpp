// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/unprivileged_user.h"

#include <grp.h>
#include <sys/prctl.h>

namespace tessel {

namespace {

constexpr uid_t kNobody = 65534;

}  // namespace

UnprivilegedUser::UnprivilegedUser() : wasRoot_(::geteuid() == 0) {
    if (!wasRoot_) return;
    groups_.resize(64);
    const int groups = ::getgroups(static_cast<int>(groups_.size()), groups_.data());
    groups_.resize(groups < 0 ? 0 : static_cast<std::size_t>(groups));
    // The saved IDs stay root's: they are the way back.
    const bool changed = ::setgroups(0, nullptr) == 0 && ::setresgid(kNobody, kNobody, 0) == 0 &&
                         ::setresuid(kNobody, kNobody, 0) == 0;
    EXPECT_TRUE(changed) << "root could not become somebody else";
    ::prctl(PR_SET_DUMPABLE, 1);  // or /proc/self would stay root's
}

UnprivilegedUser::~UnprivilegedUser() {
    if (!wasRoot_) return;
    const bool back = ::setresuid(0, 0, 0) == 0 && ::setresgid(0, 0, 0) == 0 &&
                      ::setgroups(groups_.size(), groups_.data()) == 0;
    EXPECT_TRUE(back) << "the test could not become root again";
    ::prctl(PR_SET_DUMPABLE, 1);
}

}  // namespace tessel

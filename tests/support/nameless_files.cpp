// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/nameless_files.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace tessel {

bool hasNamelessFiles(const std::string& folder) {
    const int file = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    if (file >= 0) ::close(file);
    return file >= 0;
}

bool forbidNamelessFiles() {
    constexpr unsigned kNumber = offsetof(seccomp_data, nr);
    constexpr unsigned kFlags =
        offsetof(seccomp_data, args) + 2 * sizeof(__u64);  // of openat, the lower half
    constexpr unsigned kNameless = O_TMPFILE & ~O_DIRECTORY;
    std::array<sock_filter, 6> filter = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kNumber),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kFlags),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, kNameless, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EOPNOTSUPP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/resource.h>

namespace tessel {

/// No file that this process writes may grow beyond so many bytes while the object lives: a full disk for one
/// process. What the system then sends is the program's to deal with.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit before_{};
};

}  // namespace tessel

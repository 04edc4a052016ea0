// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

namespace tessel {

/// While the object lives, this process is a user to whom nothing is open that is not open to everybody. Root
/// could write into a read-only folder and read what nobody may read; tests of these need somebody else.
/// Whoever is not root stays who he is.
class UnprivilegedUser {
  public:
    UnprivilegedUser();
    ~UnprivilegedUser();
    UnprivilegedUser(const UnprivilegedUser&) = delete;
    UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;

  private:
    bool wasRoot_;
    std::vector<gid_t> groups_;
};

}  // namespace tessel

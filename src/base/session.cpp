// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/session.h"

namespace tessel {

Session& theSession() {
    static Session session;
    return session;
}

}  // namespace tessel

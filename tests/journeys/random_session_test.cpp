// SPDX-License-Identifier: GPL-3.0-or-later
// Three thousand random acts in the real windows; random_session makes as many as wanted.
#include "journeys/random/RandomSession.h"

namespace tessel {

TEST(RandomSession, MakesThreeThousandActsWithoutADifferenceFromThePlainModel) {
    constexpr std::uint64_t kSeed = 31;
    RandomSession session(kSeed);
    EXPECT_EQ(session.run(3000), "");
    // A session that makes no use of a menu item, button, box or key would prove nothing about it.
    EXPECT_EQ(session.notReached(), std::vector<std::string>{});
}

}  // namespace tessel

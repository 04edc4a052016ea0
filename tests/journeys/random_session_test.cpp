// A thousand random acts in the real windows; random_session makes as many as wanted.
#include "journeys/random/RandomSession.h"

#include <gtest/gtest.h>

TEST(RandomSession, MakesAThousandActsWithoutADifferenceFromThePlainModel) {
    constexpr std::uint64_t kSeed = 20261121;
    RandomSession session(kSeed);
    EXPECT_EQ(session.run(1000), "");
    // A session that makes no use of an act would prove nothing about it.
    EXPECT_GE(session.actsMade().size(), 20U);
}

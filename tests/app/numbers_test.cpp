#include "app/numbers.h"

#include <gtest/gtest.h>

TEST(NumericString, AcceptsBlanksAroundSignPointAndExponent) {
    EXPECT_EQ(numericValue(" \t12.5 \t"), 12.5);
    EXPECT_EQ(numericValue("-.5"), -0.5);
    EXPECT_EQ(numericValue("5."), 5.0);
    EXPECT_EQ(numericValue("+.5E+1"), 5.0);
    EXPECT_EQ(numericValue("1d5"), 1e5);
    EXPECT_EQ(numericValue("1D-5"), 1e-5);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/rich_text_link.h"

#include <gtest/gtest.h>

namespace tessel {

TEST(LinkAddress, StandsBetweenQuotesOrAlone) {
    EXPECT_EQ(linkAddress("HYPERLINK \"http://example.org/a b\""), "http://example.org/a b");
    EXPECT_EQ(linkAddress(" HYPERLINK http://example.org/ "), "http://example.org/");
}

TEST(LinkAddress, MayNameAPlace) {
    EXPECT_EQ(linkAddress("HYPERLINK \\l \"rows\""), "#rows");
    EXPECT_EQ(linkAddress("HYPERLINK \"a.htm\" \\l \"rows\""), "a.htm#rows");
}

TEST(LinkAddress, LeavesHintsAndSwitchesOut) {
    EXPECT_EQ(linkAddress("HYPERLINK \\o \"a hint\" \"http://example.org\" \\n"), "http://example.org");
}

TEST(LinkAddress, IsEmptyForOtherFieldsAndDamage) {
    EXPECT_EQ(linkAddress("PAGE"), "");
    EXPECT_EQ(linkAddress(""), "");
    EXPECT_EQ(linkAddress("HYPERLINK"), "");
    EXPECT_EQ(linkAddress("HYPERLINK \""), "");
    EXPECT_EQ(linkAddress("HYPERLINK \"open"), "open");
}

}  // namespace tessel

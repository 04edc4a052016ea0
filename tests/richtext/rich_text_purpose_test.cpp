// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/rich_text_purpose.h"

#include <gtest/gtest.h>

namespace tessel {

TEST(RichTextPurpose, IsSaidByAGroupsFirstWord) {
    EXPECT_EQ(purposeOfWord("fonttbl"), RichTextPurpose::Fonts);
    EXPECT_EQ(purposeOfWord("info"), RichTextPurpose::Skipped);
    EXPECT_EQ(purposeOfWord("listtext"), RichTextPurpose::Body);
    EXPECT_FALSE(purposeOfWord("b").has_value());
}

TEST(RichTextPurpose, OfADamagedTableEndsWhereTextMustHaveBegun) {
    EXPECT_TRUE(endsDamagedTable(RichTextPurpose::Fonts, "pard"));
    EXPECT_TRUE(endsDamagedTable(RichTextPurpose::Styles, "par"));
    EXPECT_FALSE(endsDamagedTable(RichTextPurpose::Styles, "pard"));
    EXPECT_FALSE(endsDamagedTable(RichTextPurpose::Skipped, "par"));
}

}  // namespace tessel

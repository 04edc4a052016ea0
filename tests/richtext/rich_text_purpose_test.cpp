// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/rich_text_purpose.h"

namespace tessel {

TEST(RichTextPurpose, IsSaidByAGroupsFirstWord) {
    EXPECT_EQ(purposeOfWord("fonttbl"), RichTextPurpose::kFonts);
    EXPECT_EQ(purposeOfWord("info"), RichTextPurpose::kSkipped);
    EXPECT_EQ(purposeOfWord("listtext"), RichTextPurpose::kBody);
    EXPECT_FALSE(purposeOfWord("b").has_value());
}

TEST(RichTextPurpose, OfADamagedTableEndsWhereTextMustHaveBegun) {
    EXPECT_TRUE(endsDamagedTable(RichTextPurpose::kFonts, "pard"));
    EXPECT_TRUE(endsDamagedTable(RichTextPurpose::kStyles, "par"));
    EXPECT_FALSE(endsDamagedTable(RichTextPurpose::kStyles, "pard"));
    EXPECT_FALSE(endsDamagedTable(RichTextPurpose::kSkipped, "par"));
}

}  // namespace tessel

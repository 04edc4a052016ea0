// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/ShownText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tessel {

TEST(ShownText, TakesUtf8ForWhatItIsAndOtherBytesForCharacters) {
    EXPECT_EQ(shownText("Gr\xc3\xb6\xc3\x9f"
                        "e"),
              u"Gr\u00f6\u00dfe"_s);
    EXPECT_EQ(shownText("Gr\xf6\xdf"
                        "e"),
              u"Gr\u00f6\u00dfe"_s);
    EXPECT_EQ(shownText(""), QString());
}

TEST(ShownText, ShowsControlCharactersHarmlessly) {
    EXPECT_EQ(shownText(std::string("a\0b", 3)), u"a\ufffdb"_s);
    EXPECT_EQ(shownText("\x1b[31mred\x7f\r"), u"\ufffd[31mred\ufffd\ufffd"_s);
    EXPECT_EQ(shownText("1\t2\n3"), u"1 2\n3"_s);
    EXPECT_EQ(shownText("\x85"), QString(QChar::ReplacementCharacter)) << "a control of a code page";
}

TEST(ShownText, LetsNoCharacterTurnOrBreakALine) {
    EXPECT_EQ(shownText("dat.\xe2\x80\xae"
                        "fdp"),
              u"dat.\ufffdfdp"_s)
        << "right-to-left override";
    EXPECT_EQ(shownText("a\xe2\x80\xa8"
                        "b\xe2\x80\xa9"
                        "c"),
              u"a\ufffdb\ufffdc"_s)
        << "separators";
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/ShownText.h"

namespace tessel {

TEST(ShownText, TakesUtf8ForWhatItIsAndOtherBytesForCharactersAndControlsForHarmless) {
    const std::tuple<const char*, std::string, QString> cases[] = {
        {"UTF-8", "Gr\xc3\xb6\xc3\x9f.", u"Gr\u00f6\u00df."_s},
        {"a code page", "Gr\xf6\xdf.", u"Gr\u00f6\u00df."_s},
        {"nothing", "", {}},
        {"NUL", {"a\0b", 3}, u"a\ufffdb"_s},
        {"controls", "\x1b[31mred\x7f\r", u"\ufffd[31mred\ufffd\ufffd"_s},
        {"a tab and a line's end", "1\t2\n3", u"1 2\n3"_s},
        {"a control of a code page", "\x85", u"\ufffd"_s},
        {"right-to-left override", "dat.\xe2\x80\xaeltx", u"dat.\ufffdltx"_s},
        {"separators", "a\xe2\x80\xa8-\xe2\x80\xa9-", u"a\ufffd-\ufffd-"_s}};
    for (const auto& [what, bytes, shown] : cases)
        EXPECT_EQ(shownText(bytes), shown) << what;
}

}  // namespace tessel

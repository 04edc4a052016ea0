// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/yaml_writer.h"

namespace tessel {

namespace {

std::string valueOf(double value) {
    YamlWriter yaml;
    yaml.number("n", value);
    return yaml.document();
}

}  // namespace

TEST(YamlWriter, WritesOneEntryALineAndGoesTwoBlanksIn) {
    YamlWriter yaml;
    yaml.comment("What this is.");
    yaml.number("format", std::int64_t{1});
    yaml.map("file", [&] {
        yaml.text("path", "/a b");
        yaml.map("inner", [&] { yaml.plain("known", "true"); });
        yaml.number("size", 2.5);
    });
    const std::vector<std::vector<int>> items = {{1, 2}, {}};
    yaml.list("items", items, [&](const std::vector<int>& item) {
        yaml.number("count", static_cast<std::int64_t>(item.size()));
        yaml.list("parts", item, [&](int part) { yaml.number("part", std::int64_t{part}); });
        yaml.map("last", [&] { yaml.text("word", "x"); });
    });
    EXPECT_EQ(yaml.document(),
              "# What this is.\n"
              "format: 1\n"
              "file:\n"
              "  path: \"/a b\"\n"
              "  inner:\n"
              "    known: true\n"
              "  size: 2.5\n"
              "items:\n"
              "  - count: 2\n"
              "    parts:\n"
              "      - part: 1\n"
              "      - part: 2\n"
              "    last:\n"
              "      word: \"x\"\n"
              "  - count: 0\n"
              "    parts: []\n"
              "    last:\n"
              "      word: \"x\"\n");
}

TEST(YamlWriter, QuotesTextsAndEscapesWhatDoesNotShow) {
    EXPECT_EQ(YamlWriter::quoted("yes: 'no' # [x], \"y\""), R"("yes: 'no' # [x], \"y\"")");
    EXPECT_EQ(YamlWriter::quoted(std::string_view("a\0\n\t\x1b\x7f", 6)), R"("a\x00\n\t\x1B\x7F")");
    EXPECT_EQ(YamlWriter::quoted("f\xC3\xBCr \xE2\x82\xAC \xF0\x9F\x8C\xB1"),
              "\"f\xC3\xBCr \xE2\x82\xAC \xF0\x9F\x8C\xB1\"");
    // A line end of Unicode, a mark that turns the line, a byte-order mark, and no character at all.
    EXPECT_EQ(YamlWriter::quoted("\xC2\x85\xE2\x80\xA8\xE2\x80\xAE\xEF\xBB\xBF\xEF\xBF\xBF\xF0\x9F\xBF\xBF"),
              R"("\x85\u2028\u202E\uFEFF\uFFFF\U0001FFFF")");
}

TEST(YamlWriter, WritesBytesThatAreNoTextInWords) {
    EXPECT_EQ(YamlWriter::quoted("f\xFCr"), R"("f\\xFCr")");
    EXPECT_EQ(YamlWriter::quoted("C:\\x"), R"("C:\\x5Cx")");
    // Cut off, longer than it need be, half of a pair, beyond the last character, a following byte alone.
    EXPECT_EQ(YamlWriter::quoted("\xE2\x82"), R"("\\xE2\\x82")");
    EXPECT_EQ(YamlWriter::quoted("\xC0\xAF\xE0\x9F\xBF"), R"("\\xC0\\xAF\\xE0\\x9F\\xBF")");
    EXPECT_EQ(YamlWriter::quoted("\xF0\x8F\xBF\xBF"), R"("\\xF0\\x8F\\xBF\\xBF")");
    EXPECT_EQ(YamlWriter::quoted("\xED\xA0\x80"), R"("\\xED\\xA0\\x80")");
    EXPECT_EQ(YamlWriter::quoted("\xF4\x90\x80\x80"), R"("\\xF4\\x90\\x80\\x80")");
    EXPECT_EQ(YamlWriter::quoted("\xF5\xBF\xC3("), R"("\\xF5\\xBF\\xC3(")");
}

TEST(YamlWriter, WritesNumbersThatReadBackAsTheyAre) {
    EXPECT_EQ(valueOf(0), "n: 0\n");
    EXPECT_EQ(valueOf(-0.5), "n: -0.5\n");
    EXPECT_EQ(valueOf(100000), "n: 100000\n");
    EXPECT_EQ(valueOf(0.1), "n: 0.1\n");
    EXPECT_EQ(valueOf(0.30000000000000004), "n: 0.30000000000000004\n");
    EXPECT_EQ(valueOf(999999999999999), "n: 999999999999999\n");
    EXPECT_EQ(valueOf(1e15), "n: 1.0e+15\n");
    EXPECT_EQ(valueOf(-2.5e-7), "n: -2.5e-07\n");
    EXPECT_EQ(valueOf(std::numeric_limits<double>::infinity()), "n: .inf\n");
    EXPECT_EQ(valueOf(-std::numeric_limits<double>::infinity()), "n: -.inf\n");
    EXPECT_EQ(valueOf(std::numeric_limits<double>::quiet_NaN()), "n: .nan\n");
}

TEST(YamlWriter, PutsAsManyRunsOnALineAsThereIsRoomFor) {
    YamlWriter yaml;
    yaml.runs("none", {});
    yaml.runs("some", std::vector<NumberRun>{{1, 3}, {5, 5}, {-2.5, -2.5}});
    EXPECT_EQ(yaml.document(), "none: []\nsome: [[1, 3], [5, 5], [-2.5, -2.5]]\n");
    YamlWriter inner;
    inner.map("map", [&] { inner.runs("many", std::vector<NumberRun>(20, {100000, 200000})); });
    std::size_t longest = 0, lines = 0;
    for (std::size_t at = 0; at < inner.document().size(); ++lines) {
        const std::size_t end = inner.document().find('\n', at);
        longest = std::max(longest, end - at);
        at = end + 1;
    }
    EXPECT_LE(longest, 100U);
    EXPECT_EQ(lines, 5U);
    EXPECT_NE(inner.document().find("],\n    [100000"), std::string::npos);
}

}  // namespace tessel

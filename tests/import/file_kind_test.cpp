// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/file_kind.h"

#include "base/run_time_error.h"
#include "import/error_log.h"
#include "import/generic_reader.h"
#include "import/trimble_reader.h"
#include "support/reads.h"
#include "support/temporary_folder.h"
#include "support/utf16.h"

namespace tessel {

namespace {

FileKind kindOf(const std::string& bytes) {
    return recogniseFileKind(std::string_view(bytes));
}

}  // namespace

TEST(FileKind, OfAnOrdinaryFileSaysNothing) {
    for (const char* const plain : {"1,2,3\n4,5,6\n", "1 2 3\r\n", "", "1\n2\n3\n", "  1  2.5  3\r4 5 6"}) {
        const FileKind kind = kindOf(plain);
        EXPECT_TRUE(kind.isText && kind.encoding == TextEncoding::kBytes) << plain;
        EXPECT_FALSE(kind.decimalCommas || kind.tabs) << plain;
        EXPECT_EQ(kind.headerLines, 0) << plain;
    }
}

TEST(FileKind, KnowsDecimalCommasTabsAndTheLinesInFrontOfTheNumbers) {
    const struct {
        const char* what;
        const char* bytes;
        bool decimalCommas, tabs;
        int headerLines;
    } cases[] = {
        {"decimal commas", "1,5;2,5;3\n", true, false, 0},
        {"below a header", "Site;X;Y;EM1\n1;100,5;200,5;-3,1\n2;101;201;30\n3;101,5;201;30\n", true, false,
         1},
        {"with blanks", "1,5; 2,5;;3\n", true, false, 0},
        {"no decimal comma", "1;2;3\n4;5;6\n", false, false, 0},
        {"points", "1.5;2.5;3\n", false, false, 0},
        {"nothing behind the comma", "1,;2\n", false, false, 0},
        {"no semicolon", "1,5 2,5 3\n", false, false, 0},
        {"most lines are others", "1,5;2,5;3\n1,2,3\n4,5,6\n", false, false, 0},
        {"half of them are", "1,5;2,5;3\n1,2,3\n", false, false, 0},
        {"tabs", "1\t2\t3\n", false, true, 0},
        {"tabs and commas", "X\tY\tEM\n1.5,\t2\t3\n", false, true, 1},
        {"tabs around the values only", "1 2 3\t\n\t4 5 6\n", false, false, 0},
        {"tabs in the header", "X\tY\tEM\n1 2 3\n4 5 6\n", false, false, 1},
        {"a header", "X,Y,EM1\n1,2,3\n", false, false, 1},
        {"a long one", "Field 7\n\nX Y EM1\n1 2 3\nX Y\n", false, false, 3},
        {"blank lines are no header", "\n\n1 2 3\n", false, false, 0},
        {"no numbers", "X,Y\nno numbers\n", false, false, 0},
        {"degrees",
         "Latitude\tLongitude\tTime\tCond.1\tCond.2\n5224.461145N\t00220.6W\t09:51:46\t4.9\t2.3\t7\n", false,
         true, 1}};
    for (const auto& [what, bytes, decimalCommas, tabs, headerLines] : cases) {
        const FileKind kind = kindOf(bytes);
        EXPECT_EQ(kind.decimalCommas, decimalCommas) << what;
        EXPECT_EQ(kind.tabs, tabs) << what;
        EXPECT_EQ(kind.headerLines, headerLines) << what;
    }
}

TEST(FileKind, OfUtf16IsFoundInItsCharacters) {
    const FileKind kind = kindOf(utf16(u"\uFEFFX;Y\r\n1,5;2\r\n"));
    EXPECT_EQ(kind.encoding, TextEncoding::kUtf16LittleEndian);
    EXPECT_TRUE(kind.isText && kind.decimalCommas);
    EXPECT_EQ(kind.headerLines, 1);
}

TEST(FileKind, SaysNothingElseOfABinaryFile) {
    const FileKind kind = kindOf(
        "\x1F\x8B"
        "X\n1\t2\t3\n");
    EXPECT_FALSE(kind.isText);
    EXPECT_FALSE(kind.tabs);
    EXPECT_EQ(kind.headerLines, 0);
}

TEST(FileKind, LooksAtTheFirst64KiBOnly) {
    std::string bytes;
    while (bytes.size() <= kFirstBytes)
        bytes += "1,2,3\n";
    bytes += "\x1F\x8B";
    for (int i = 0; i < 100'000; ++i)
        bytes += "1\t2\t3\n\1\2\3";
    EXPECT_TRUE(kindOf(bytes).isText);
    EXPECT_FALSE(kindOf(bytes).tabs);
    const TemporaryFolder folder;
    writeFile(folder / "long.csv", bytes);
    const BeforeReading third(3, [](int) {});
    EXPECT_TRUE(recogniseFileKind(folder / "long.csv").isText);
    EXPECT_FALSE(third.happened());
}

TEST(FileKind, OfNoFileIsAnError) {
    for (const char* const path : {"/nowhere/at.all", "/tmp", "/dev/zero", "/proc/self/status"})
        EXPECT_THROW(recogniseFileKind(std::string(path)), RunTimeError) << path;
}

TEST(FileKind, StandsInTheSummaryOfBothImports) {
    const TemporaryFolder folder;
    writeFile(folder / "tabs.dat", "X\tY\tEM\n1\t2\t3\n");
    GenericOptions generic;
    generic.path = folder / "tabs.dat";
    generic.errorLogPath = folder / "error_log.dat";
    const ImportResult read = importGenericFile(generic, {});
    EXPECT_TRUE(read.summary.kind.tabs);
    EXPECT_EQ(read.summary.kind.headerLines, 1);
    TrimbleOptions trimble;
    trimble.path = folder / "tabs.dat";
    trimble.errorLogPath = folder / "error_log.dat";
    EXPECT_TRUE(importTrimbleFile(trimble).summary.kind.tabs);
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/file_kind.h"

#include "base/run_time_error.h"
#include "import/error_log.h"
#include "import/generic_reader.h"
#include "import/trimble_reader.h"
#include "support/reads.h"
#include "support/temporary_folder.h"

using namespace std::string_literals;

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

TEST(FileKind, KnowsSemicolonsWithDecimalCommas) {
    EXPECT_TRUE(kindOf("1,5;2,5;3\n").decimalCommas);
    EXPECT_TRUE(kindOf("Site;X;Y;EM1\n1;100,5;200,5;-3,1\n2;101;201;30\n3;101,5;201;30\n").decimalCommas);
    EXPECT_TRUE(kindOf("1,5; 2,5;;3\n").decimalCommas);
    EXPECT_FALSE(kindOf("1;2;3\n4;5;6\n").decimalCommas) << "no decimal comma";
    EXPECT_FALSE(kindOf("1.5;2.5;3\n").decimalCommas);
    EXPECT_FALSE(kindOf("1,;2\n").decimalCommas) << "nothing behind the comma";
    EXPECT_FALSE(kindOf("1,5 2,5 3\n").decimalCommas) << "no semicolon";
    EXPECT_FALSE(kindOf("1,5;2,5;3\n1,2,3\n4,5,6\n").decimalCommas) << "most lines are others";
    EXPECT_FALSE(kindOf("1,5;2,5;3\n1,2,3\n").decimalCommas) << "half of them are";
}

TEST(FileKind, KnowsTabsBetweenValuesOfMostLines) {
    EXPECT_TRUE(kindOf("1\t2\t3\n").tabs);
    EXPECT_TRUE(kindOf("X\tY\tEM\n1.5,\t2\t3\n").tabs);
    EXPECT_FALSE(kindOf("1 2 3\t\n\t4 5 6\n").tabs) << "around the values only";
    EXPECT_FALSE(kindOf("X\tY\tEM\n1 2 3\n4 5 6\n").tabs);
}

TEST(FileKind, CountsTheLinesInFrontOfTheNumbers) {
    EXPECT_EQ(kindOf("X,Y,EM1\n1,2,3\n").headerLines, 1);
    EXPECT_EQ(kindOf("Field 7\n\nX Y EM1\n1 2 3\nX Y\n").headerLines, 3);
    EXPECT_EQ(kindOf("\n\n1 2 3\n").headerLines, 0) << "blank lines are no header";
    EXPECT_EQ(kindOf("X,Y\nno numbers\n").headerLines, 0);
    EXPECT_EQ(
        kindOf("Latitude\tLongitude\tTime\tCond.1\tCond.2\n5224.461145N\t00220.6W\t09:51:46\t4.9\t2.3\t7\n")
            .headerLines,
        1);
}

TEST(FileKind, OfUtf16IsFoundInItsCharacters) {
    std::string bytes = "\xFF\xFE"s;
    for (const char c : "X;Y\r\n1,5;2\r\n"s)
        bytes += {c, '\0'};
    const FileKind kind = kindOf(bytes);
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/line_reader.h"

#include "base/run_time_error.h"
#include "support/reads.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tessel {

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(std::string_view bytes) {
    const TemporaryFolder folder;
    const std::string path = folder / "lines.dat";
    writeFile(path, bytes);
    LineReader reader(path);
    Lines lines;
    for (std::string_view line; reader.next(line);) {
        lines.emplace_back(line);
        EXPECT_EQ(reader.lineNumber(), static_cast<std::int64_t>(lines.size()));
    }
    return lines;
}

std::string descriptionOfOpening(const std::string& path) {
    try {
        const LineReader reader(path);
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), RunTimeError::kFile);
        return error.description();
    }
    return "opened";
}

// The rule written plainly: CR LF, LF and CR end a line; what follows the last of them is a line if it is
// there.
Lines plainlyLines(std::string_view bytes) {
    Lines lines;
    std::string line;
    bool open = false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        open = bytes[i] != '\n' && bytes[i] != '\r';
        if (open) {
            line += bytes[i];
            continue;
        }
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
        lines.push_back(line);
        line.clear();
    }
    if (open) lines.push_back(line);
    return lines;
}

// The number of the descriptor behind which a file is open, -1 when there is none.
int descriptorOf(const std::string& path) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code ignored;
        if (std::filesystem::read_symlink(entry.path(), ignored) == path)
            return std::stoi(entry.path().filename().string());
    }
    return -1;
}

}  // namespace

TEST(LineReader, GivesNothingOfAnEmptyFile) {
    EXPECT_EQ(linesOf(""), Lines{});
    EXPECT_EQ(linesOf("\xEF\xBB\xBF"), Lines{});
}

TEST(LineReader, TakesEveryKindOfLineEndMixedToo) {
    EXPECT_EQ(linesOf("a\nb\n"), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf("a\rb\r"), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf("a\r\nb\r\n"), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf("a\rb\nc\r\nd\n\re\r\r\nf"), (Lines{"a", "b", "c", "d", "", "e", "", "f"}));
    EXPECT_EQ(linesOf("\n\n"), (Lines{"", ""}));
    EXPECT_EQ(linesOf("\r"), (Lines{""}));
}

TEST(LineReader, GivesALastLineWithoutEnd) {
    EXPECT_EQ(linesOf("a"), Lines{"a"});
    EXPECT_EQ(linesOf("a\nb"), (Lines{"a", "b"}));
}

TEST(LineReader, PassesOverAByteOrderMarkAtTheStartOnly) {
    EXPECT_EQ(linesOf("\xEF\xBB\xBF"
                      "a\n\xEF\xBB\xBF"
                      "b"),
              (Lines{"a",
                     "\xEF\xBB\xBF"
                     "b"}));
    EXPECT_EQ(linesOf("\xEF\xBB"), Lines{"\xEF\xBB"});
}

TEST(LineReader, KeepsNulControlAndHighBytes) {
    const std::string bytes("a\0b\x01\x1A\xFF\x8A\x8D\v\f\x85", 11);
    EXPECT_EQ(linesOf(bytes + "\n" + bytes), (Lines{bytes, bytes}));
}

TEST(LineReader, GivesTheLinesOfRandomBytesWhereverTheyEnd) {
    std::mt19937 random(11);
    constexpr std::string_view kAlphabet = "ab\r\n\x0B\x8A\x8D";
    for (int round = 0; round < 300; ++round) {
        std::string bytes(random() % 60, ' ');
        for (char& c : bytes)
            c = kAlphabet[random() % kAlphabet.size()];
        ASSERT_EQ(linesOf(bytes), plainlyLines(bytes));
    }
}

TEST(LineReader, GivesTheLinesOfAFileOfManyBlocks) {
    std::mt19937 random(12);
    std::string bytes;
    while (bytes.size() < 1'500'000) {
        bytes.append(random() % 90, 'x');
        bytes += std::array<const char*, 3>{"\n", "\r", "\r\n"}[random() % 3];
        if (random() % 500 == 0) bytes.append(random() % 400'000, 'y');
    }
    EXPECT_EQ(linesOf(bytes), plainlyLines(bytes));
}

TEST(LineReader, KeepsCarriageReturnAndLineFeedTogetherAcrossTheEndOfABlock) {
    for (const std::size_t length : {262143U, 262142U, 262144U, 524287U})
        EXPECT_EQ(linesOf(std::string(length, 'x') + "\r\ny\r\n"), (Lines{std::string(length, 'x'), "y"}));
}

TEST(LineReader, ReadsASingleLineOfAHundredMegabytes) {
    const TemporaryFolder folder;
    const std::string path = folder / "one_line.dat";
    constexpr std::size_t kLength = 100'000'000;
    writeFile(path, "a\n" + std::string(kLength, 'x'));
    LineReader reader(path);
    std::string_view line;
    ASSERT_TRUE(reader.next(line));
    ASSERT_TRUE(reader.next(line));
    EXPECT_EQ(line.size(), kLength);
    EXPECT_FALSE(reader.next(line));
}

// Twice as many lines must take about twice the time; a search through the buffer at each line would show.
TEST(LineReader, ReadsCarriageReturnsAloneAsFastAsLineFeeds) {
    const TemporaryFolder folder;
    const auto seconds = [&](char end) {
        std::string bytes;
        for (int i = 0; i < 500'000; ++i)
            bytes.append("12345678").push_back(end);
        writeFile(folder / "ends.dat", bytes);
        const auto start = std::chrono::steady_clock::now();
        LineReader reader(folder / "ends.dat");
        for (std::string_view line; reader.next(line);) {
        }
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    EXPECT_LT(seconds('\r'), 10 * seconds('\n') + 0.1);
}

TEST(LineReader, SaysWhyAFileCannotBeRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(descriptionOfOpening(folder / "none.dat"),
              folder / "none.dat cannot be opened: No such file or directory");
    EXPECT_EQ(descriptionOfOpening(folder.path()), folder.path() + " cannot be read: it is a folder");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(descriptionOfOpening(folder / "pipe"),
              folder / "pipe cannot be read: it is not a regular file");
    EXPECT_EQ(descriptionOfOpening("/dev/zero"), "/dev/zero cannot be read: it is not a regular file");
}

TEST(LineReader, SaysSoWhenTheFileShrinksWhileItIsRead) {
    const TemporaryFolder folder;
    const std::string path = folder / "shrinks.dat";
    writeFile(path, std::string(1'000'000, 'x') + "\n" + std::string(1'000'000, 'x') + "\n");
    LineReader reader(path);
    std::string_view line;
    ASSERT_TRUE(reader.next(line));
    std::filesystem::resize_file(path, 1'100'000);
    EXPECT_THROW(
        {
            while (reader.next(line)) {
            }
        },
        RunTimeError);
}

TEST(LineReader, SaysSoWhenReadingFailsFromTheStart) {
    const TemporaryFolder folder;
    const std::string path = folder / "card.dat";
    writeFile(path, "1 2 3");
    int broken = -1;
    const BeforeReading first(1, [&](int file) { breakDevice(broken = file); });
    EXPECT_EQ(descriptionOfOpening(path), path + " cannot be read: Input/output error");
    EXPECT_EQ(::fcntl(broken, F_GETFD), -1) << "left open";
}

TEST(LineReader, SaysSoWhenReadingFailsMidway) {
    const TemporaryFolder folder;
    const std::string path = folder / "card.dat";
    writeFile(path, std::string(1'000'000, 'x') + "\n" + std::string(1'000'000, 'x') + "\n");
    LineReader reader(path);
    std::string_view line;
    ASSERT_TRUE(reader.next(line));
    breakDevice(descriptorOf(path));
    try {
        while (reader.next(line)) {
        }
        ADD_FAILURE() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.description(), path + " cannot be read: Input/output error");
    }
}

TEST(LineReader, SaysSoWhenAFileMayNotBeRead) {
    const TemporaryFolder folder;
    writeFile(folder / "secret.dat", "1 2 3");
    ASSERT_EQ(::chmod((folder / "secret.dat").c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const UnprivilegedUser user;
    EXPECT_EQ(descriptionOfOpening(folder / "secret.dat"),
              folder / "secret.dat cannot be opened: Permission denied");
}

namespace {

std::string utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : text)
        for (const bool first : {true, false})
            bytes += static_cast<char>(first == bigEndian ? unit >> 8 : unit & 0xFF);
    return bytes;
}

}  // namespace

TEST(LineReader, DecodesUtf16WithAndWithoutMark) {
    const std::u16string text = u"Häuser 1;2\r\n3 4 5\r6 7 8\n\n9";
    const Lines lines = {"H\u00E4user 1;2", "3 4 5", "6 7 8", "", "9"};
    for (const bool bigEndian : {false, true}) {
        EXPECT_EQ(linesOf(utf16(text, bigEndian)), lines);
        EXPECT_EQ(linesOf(utf16(u"\uFEFF" + text, bigEndian)), lines);
    }
    EXPECT_EQ(linesOf(utf16(u"\uFEFF", false)), Lines{});
    EXPECT_EQ(linesOf(utf16(u"1 2 3\n4", false) + "x"), (Lines{"1 2 3", "4\uFFFD"}));
}

TEST(LineReader, DecodesUtf16OfManyBlocksAndLongLines) {
    std::mt19937 random(13);
    std::u16string text = u"\uFEFF";
    std::string bytes;
    for (int line = 0; line < 20'000; ++line) {
        const std::size_t length = line % 6'000 == 5'999 ? 700'000 : random() % 60;
        text.append(length, u'x').append(u"\U00010348\r\n");
        bytes.append(length, 'x').append("\U00010348\r\n");
    }
    EXPECT_EQ(linesOf(utf16(text, false)), plainlyLines(bytes));
}

TEST(LineReader, GivesTheFirstBytesAsTheyStandInTheFile) {
    const TemporaryFolder folder;
    for (const std::string& bytes : {std::string(),
                                     std::string("\xEF\xBB\xBF"
                                                 "a\n"),
                                     utf16(u"\uFEFF1 2\n", true)}) {
        writeFile(folder / "a.dat", bytes);
        EXPECT_EQ(LineReader(folder / "a.dat").firstBytes(), bytes);
    }
    const std::string large(300'000, 'x');
    writeFile(folder / "a.dat", large);
    EXPECT_TRUE(large.starts_with(LineReader(folder / "a.dat").firstBytes()));
    EXPECT_GE(LineReader(folder / "a.dat").firstBytes().size(), 65'536U);
}

// A logger that writes on would be read for ever, and what it writes meanwhile would be half a line.
TEST(LineReader, ReadsOfAFileThatGrowsWhatWasThereWhenItWasOpened) {
    const TemporaryFolder folder;
    const std::string path = folder / "growing.dat";
    std::string bytes;
    while (bytes.size() < 1'000'000)
        bytes += "468095.9,468750.0,36.1\n";
    bytes += "468095.9,4687";
    writeFile(path, bytes);
    const Lines expected = plainlyLines(bytes);
    LineReader reader(path);
    Lines lines;
    for (std::string_view line; lines.size() <= expected.size() && reader.next(line);) {
        lines.emplace_back(line);
        if (lines.size() % 1'000 == 1)
            std::ofstream(path, std::ios::app) << "50.0,36.1\n468095.9,468750.0,36.1\n";
    }
    EXPECT_EQ(lines, expected);
}

}  // namespace tessel

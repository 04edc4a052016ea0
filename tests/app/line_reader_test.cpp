#include "app/line_reader.h"

#include "app/run_time_error.h"
#include "support/reads.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

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

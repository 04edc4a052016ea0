// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/line_reader.h"

#include "support/reads.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"
#include "support/unprivileged_user.h"
#include "support/utf16.h"

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

std::string refusal(const std::string& path) {
    return descriptionOf([&] { const LineReader reader(path); });
}

using LineReaderTest = FolderTest;
const std::string kMark = "\xEF\xBB\xBF";

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

TEST_F(LineReaderTest, TakesEveryKindOfLineEndAndPassesOverAMarkAtTheStart) {
    const std::pair<std::string, Lines> cases[] = {
        {"", {}},
        {kMark, {}},
        {"a", {"a"}},
        {"a\nb", {"a", "b"}},
        {"a\nb\n", {"a", "b"}},
        {"a\rb\r", {"a", "b"}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\rb\nc\r\nd\n\re\r\r\nf", {"a", "b", "c", "d", "", "e", "", "f"}},
        {"\n\n", {"", ""}},
        {"\r", {""}},
        {kMark + "a\n" + kMark + "b", {"a", kMark + "b"}},
        {"\xEF\xBB", {"\xEF\xBB"}}};
    for (const auto& [bytes, lines] : cases)
        EXPECT_EQ(linesOf(bytes), lines) << bytes;
}

TEST_F(LineReaderTest, KeepsNulControlAndHighBytes) {
    const std::string bytes("a\0b\x01\x1A\xFF\x8A\x8D\v\f\x85", 11);
    EXPECT_EQ(linesOf(bytes + "\n" + bytes), (Lines{bytes, bytes}));
}

TEST_F(LineReaderTest, GivesTheLinesOfRandomBytesWhereverTheyEnd) {
    std::mt19937 random(11);
    constexpr std::string_view kAlphabet = "ab\r\n\x0B\x8A\x8D";
    for (int round = 0; round < 300; ++round) {
        std::string bytes(random() % 60, ' ');
        for (char& c : bytes)
            c = kAlphabet[random() % kAlphabet.size()];
        ASSERT_EQ(linesOf(bytes), plainlyLines(bytes));
    }
}

TEST_F(LineReaderTest, GivesTheLinesOfAFileOfManyBlocks) {
    std::mt19937 random(12);
    std::string bytes;
    while (bytes.size() < 1'500'000) {
        bytes.append(random() % 90, 'x');
        bytes += std::array<const char*, 3>{"\n", "\r", "\r\n"}[random() % 3];
        if (random() % 500 == 0) bytes.append(random() % 400'000, 'y');
    }
    EXPECT_EQ(linesOf(bytes), plainlyLines(bytes));
}

TEST_F(LineReaderTest, KeepsCarriageReturnAndLineFeedTogetherAcrossTheEndOfABlock) {
    for (const std::size_t length : {262143U, 262142U, 262144U, 524287U})
        EXPECT_EQ(linesOf(std::string(length, 'x') + "\r\ny\r\n"), (Lines{std::string(length, 'x'), "y"}));
}

TEST_F(LineReaderTest, ReadsASingleLineOfAHundredMegabytes) {
    constexpr std::size_t kLength = 100'000'000;
    writeFile(path, "a\n" + std::string(kLength, 'x'));
    LineReader reader(path);
    std::string_view line;
    ASSERT_TRUE(reader.next(line));
    ASSERT_TRUE(reader.next(line));
    EXPECT_EQ(line.size(), kLength);
    EXPECT_FALSE(reader.next(line));
}

TEST_F(LineReaderTest, SaysWhyAFileCannotBeRead) {
    EXPECT_EQ(refusal(path), path + " cannot be opened: No such file or directory");
    EXPECT_EQ(errorNumberOf([&] { const LineReader reader(path); }), RunTimeError::kFile);
    EXPECT_EQ(refusal(folder.path()), folder.path() + " cannot be read: it is a folder");
    EXPECT_EQ(refusal("/dev/zero"), "/dev/zero cannot be read: it is not a regular file");
}

TEST_F(LineReaderTest, SaysSoWhenReadingFailsMidwayAndWhenTheFileShrinks) {
    const std::string million = std::string(1'000'000, 'x').append("\n");
    writeFile(path, million + million);
    const auto readOn = [&](const std::function<void()>& meanwhile) {
        LineReader reader(path);
        std::string_view line;
        EXPECT_TRUE(reader.next(line));
        meanwhile();
        return descriptionOf([&] {
            while (reader.next(line)) {
            }
        });
    };
    EXPECT_EQ(readOn([&] { breakDevice(descriptorOf(path)); }), path + " cannot be read: Input/output error");
    EXPECT_EQ(readOn([&] { std::filesystem::resize_file(path, 1'100'000); }),
              path + " cannot be read: it has become shorter meanwhile");
}

TEST_F(LineReaderTest, SaysSoWhenReadingFailsFromTheStart) {
    writeFile(path, "1 2 3");
    int broken = -1;
    const BeforeReading first(1, [&](int file) { breakDevice(broken = file); });
    EXPECT_EQ(refusal(path), path + " cannot be read: Input/output error");
    EXPECT_EQ(::fcntl(broken, F_GETFD), -1) << "left open";
}

TEST_F(LineReaderTest, SaysSoWhenAFileMayNotBeRead) {
    writeFile(path, "1 2 3");
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const UnprivilegedUser user;
    EXPECT_EQ(refusal(path), path + " cannot be opened: Permission denied");
}

TEST_F(LineReaderTest, DecodesUtf16WithAndWithoutMark) {
    const std::u16string text = u"Häuser 1;2\r\n3 4 5\r6 7 8\n\n9";
    const Lines lines = {"H\u00E4user 1;2", "3 4 5", "6 7 8", "", "9"};
    for (const bool bigEndian : {false, true}) {
        EXPECT_EQ(linesOf(utf16(text, bigEndian)), lines);
        EXPECT_EQ(linesOf(utf16(u"\uFEFF" + text, bigEndian)), lines);
    }
    EXPECT_EQ(linesOf(utf16(u"\uFEFF")), Lines{});
    EXPECT_EQ(linesOf(utf16(u"1 2 3\n4") + "x"), (Lines{"1 2 3", "4\uFFFD"}));
}

TEST_F(LineReaderTest, DecodesUtf16OfManyBlocksAndLongLines) {
    std::mt19937 random(13);
    std::u16string text = u"\uFEFF";
    std::string bytes;
    for (int line = 0; line < 20'000; ++line) {
        const std::size_t length = line % 6'000 == 5'999 ? 700'000 : random() % 60;
        text.append(length, u'x').append(u"\U00010348\r\n");
        bytes.append(length, 'x').append("\U00010348\r\n");
    }
    EXPECT_EQ(linesOf(utf16(text)), plainlyLines(bytes));
}

TEST_F(LineReaderTest, GivesTheFirstBytesAsTheyStandInTheFile) {
    for (const std::string& bytes : {std::string(), kMark + "a\n", utf16(u"\uFEFF1 2\n", true)}) {
        writeFile(path, bytes);
        EXPECT_EQ(LineReader(path).firstBytes(), bytes);
    }
    const std::string large(300'000, 'x');
    writeFile(path, large);
    EXPECT_TRUE(large.starts_with(LineReader(path).firstBytes()));
    EXPECT_GE(LineReader(path).firstBytes().size(), 65'536U);
}

// A logger that writes on would be read for ever, and what it writes meanwhile would be half a line.
TEST_F(LineReaderTest, ReadsOfAFileThatGrowsWhatWasThereWhenItWasOpened) {
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

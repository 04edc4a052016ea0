// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/line_blocks.h"

#include "support/reads.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"
#include "support/utf16.h"

namespace tessel {

namespace {

using Texts = std::vector<std::string>;
using LineBlocksTest = FolderTest;

Texts blocksOf(const std::string& path, std::size_t blockSize) {
    LineBlocks file(path, blockSize);
    Texts blocks;
    for (LineBlock block; file.next(block);)
        blocks.emplace_back(block.text());
    return blocks;
}

std::string joined(const Texts& blocks) {
    return std::accumulate(blocks.begin(), blocks.end(), std::string());
}

// Each of them ends with a line, and none begins between the two bytes of a line end.
void expectWholeLines(const Texts& blocks) {
    for (std::size_t i = 0; i + 1 < blocks.size(); ++i) {
        ASSERT_FALSE(blocks[i].empty());
        EXPECT_TRUE(blocks[i].back() == '\n' || blocks[i].back() == '\r') << blocks[i];
        EXPECT_FALSE(blocks[i].back() == '\r' && blocks[i + 1].front() == '\n') << blocks[i];
    }
}

}  // namespace

TEST_F(LineBlocksTest, OfEverySizeAreWholeLinesAndTogetherTheFile) {
    std::mt19937 random(21);
    constexpr std::string_view kAlphabet = "abc\r\n";
    for (int round = 0; round < 60; ++round) {
        std::string bytes(random() % 60, ' ');
        for (char& c : bytes)
            c = kAlphabet[random() % kAlphabet.size()];
        writeFile(path, bytes);
        for (std::size_t size = 0; size <= bytes.size() + 2; ++size) {
            const Texts blocks = blocksOf(path, size);
            ASSERT_EQ(joined(blocks), bytes);
            expectWholeLines(blocks);
            EXPECT_TRUE(blocks.empty() || !blocks.back().empty());
        }
    }
}

TEST_F(LineBlocksTest, AreLargerThanAskedForOnlyWhereALineIs) {
    std::string bytes;
    for (int line = 0; line < 2000; ++line)
        bytes += std::string(line == 1000 ? 30'000 : 50, 'x') + "\r\n";
    writeFile(path, bytes);
    const Texts blocks = blocksOf(path, 1000);
    EXPECT_EQ(joined(blocks), bytes);
    expectWholeLines(blocks);
    EXPECT_EQ(std::ranges::count_if(blocks, [](const std::string& text) { return text.size() > 1000; }), 1);
    EXPECT_LT(blocks.size(), 120U);
    const auto largest = std::ranges::max(blocks, {}, &std::string::size);
    EXPECT_LE(largest.size(), 30'002U + 1'500U) << "of a long line, not twice its size";
}

TEST_F(LineBlocksTest, EndBehindACrThatWasTheLastByteOfALongLineRead) {
    const std::string first = std::string(23, 'x') + '\r', second = std::string(40, 'y') + '\n';
    writeFile(path, first + second);
    EXPECT_EQ(blocksOf(path, 16), (Texts{first, second}));
}

TEST_F(LineBlocksTest, CutLineEndsAcrossTheirBordersWherever) {
    std::mt19937 random(9);
    for (int turn = 0; turn < 300; ++turn) {
        std::string bytes;
        for (auto count = random() % 60; count > 0; --count)
            bytes += std::string(random() % 4 == 0 ? random() % 40 : random() % 3, 'x') +
                     (random() % 3 == 0   ? "\r\n"
                      : random() % 2 == 0 ? "\r"
                                          : "\n");
        writeFile(path, bytes);
        for (const std::size_t size : {1U, 2U, 3U, 7U, 16U}) {
            const Texts blocks = blocksOf(path, size);
            ASSERT_EQ(joined(blocks), bytes) << turn;
            expectWholeLines(blocks);
        }
    }
}

TEST_F(LineBlocksTest, ReadAFileBeyondItsFirstBytes) {
    std::string bytes;
    while (bytes.size() < 1'000'000)
        bytes += std::to_string(bytes.size()) + "\n";
    writeFile(path, "\xEF\xBB\xBF" + bytes);
    EXPECT_EQ(LineBlocks(path).firstBytes(), "\xEF\xBB\xBF" + bytes.substr(0, 65'533));
    for (const std::size_t size : {1'000U, 65'536U, 100'000U, 262'144U, 2'000'000U}) {
        const Texts blocks = blocksOf(path, size);
        EXPECT_EQ(joined(blocks), bytes);
        EXPECT_GE(blocks.size(), bytes.size() / size);
    }
}

TEST_F(LineBlocksTest, HoldUtf16InUtf8) {
    std::u16string text = u"\uFEFF";
    std::string bytes;
    for (int line = 0; line < 20'000; ++line) {
        text += u"1 \U00010348 \u00E4\r\n";
        bytes += "1 \U00010348 \u00E4\r\n";
    }
    writeFile(path, utf16(text) + "x");
    for (const std::size_t size : {1U, 20U, 262'144U}) {
        const Texts blocks = blocksOf(path, size);
        EXPECT_EQ(joined(blocks), bytes + "\uFFFD");
        expectWholeLines(blocks);
    }
}

TEST_F(LineBlocksTest, SaySoWhenReadingFailsMidway) {
    writeFile(path, std::string(300'000, '\n'));
    const BeforeReading third(3, [](int file) { breakDevice(file); });
    EXPECT_EQ(descriptionOf([&] { blocksOf(path, 100'000); }), path + " cannot be read: Input/output error");
}

}  // namespace tessel

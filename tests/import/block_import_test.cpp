// SPDX-License-Identifier: GPL-3.0-or-later
// Files read in blocks by several threads, beside the same files read in one block.
#include "import/block_import.h"

#include "base/text_lines.h"
#include "import/error_log.h"
#include "import/generic_reader.h"
#include "import/table_reader.h"
#include "import/trimble_reader.h"
#include "support/failing_allocations.h"
#include "support/reads.h"
#include "support/run_time_errors.h"
#include "support/survey_bits.h"
#include "support/temporary_folder.h"
#include "support/utf16.h"

namespace tessel {

namespace {

constexpr ImportPlan kOneBlock{.blockSize = 1'000'000, .largestForOneThread = 1'000'000'000, .threads = 1};

ImportPlan inBlocks(std::size_t blockSize, std::size_t threads) {
    return {.blockSize = blockSize, .largestForOneThread = 0, .threads = threads};
}

std::string inWords(const ImportSummary& summary) {
    std::ostringstream words;
    words << summary.path << ' ' << summary.file.size << ' ' << summary.kind.headerLines << ' '
          << summary.linesRead << " lines, " << summary.linesNotFitting << " not fitting, first "
          << summary.firstLineNotFitting << ", " << summary.linesCut << " cut, first " << summary.firstLineCut
          << '\n';
    for (const RejectedLines& rejected : summary.rejected)
        words << rejected.reason << ' ' << rejected.lines << ' ' << rejected.firstLine << '\n';
    for (const std::string& line : summary.firstLogLines)
        words << line << '\n';
    return words.str();
}

class BlockImports : public FolderTest {
  protected:
    using Import = std::function<ImportResult(const ImportPlan&)>;

    BlockImports() {
        generic.path = trimble.path = table.path = path;
        generic.layout = kGenericLayouts[3];
        generic.cutoff = trimble.EMCutoff = table.EMCutoff = -5;
        trimble.SiteIDPresent = trimble.TwoEMColumns = true;
        trimble.SiteIDField = {1, 3, 3};
        trimble.XField = {4, 7, 4};
        trimble.YField = {8, 11, 4};
        trimble.EM1Field = {12, 14, 3};
        trimble.EM2Field = {15, 17, 3};
        trimble.MinDistance = table.MinDistance = 50;
        table.roles = {TableRole::kSite, TableRole::kX, TableRole::kY, TableRole::kEM1, TableRole::kEM2};
        table.shape.linesToSkip = 3;
        logTo(folder / "no such folder/error_log.dat");  // quick: nothing is written
    }

    void logTo(const std::string& logPath) {
        generic.errorLogPath = trimble.errorLogPath = table.errorLogPath = logPath;
    }

    static void expectEqual(const ImportResult& result, const ImportResult& expected) {
        ASSERT_EQ(differences(result.survey, expected.survey), "");
        ASSERT_EQ(inWords(result.summary), inWords(expected.summary));
        ASSERT_EQ(result.rejected, expected.rejected);
        ASSERT_EQ(result.rows, expected.rows);
    }

    // A file, and all that an import tells of it, is the same however it is read.
    void expectTheSame(const Import& import, std::string_view bytes) {
        writeFile(path, bytes);
        const ImportResult expected = import(kOneBlock);
        for (std::size_t size = 1; size <= bytes.size() + 1; ++size)
            for (const std::size_t threads : {1U, 3U}) {
                SCOPED_TRACE(std::to_string(size) + " bytes, threads: " + std::to_string(threads));
                expectEqual(import(inBlocks(size, threads)), expected);
                if (HasFatalFailure()) return;
            }
    }

    // The same with the log that is written.
    void expectTheSameLog(const Import& import, std::string_view bytes) {
        logTo(folder / "error_log.dat");
        writeFile(path, bytes);
        const ImportResult expected = import(kOneBlock);
        const std::string expectedLog = readFile(folder / "error_log.dat");
        for (const std::size_t size : {900U, 20'000U, 90'001U})
            for (const std::size_t threads : {1U, 2U, 5U}) {
                expectEqual(import(inBlocks(size, threads)), expected);
                ASSERT_EQ(readFile(folder / "error_log.dat"), expectedLog);
            }
    }

    GenericOptions generic;
    TrimbleOptions trimble;
    TableOptions table;
    const Import importTrimble = [this](const ImportPlan& plan) { return importTrimbleFile(trimble, plan); };
    const Import importGeneric = [this](const ImportPlan& plan) {
        return importGenericFile(generic, Survey{}, plan);
    };
    const Import importATable = [this](const ImportPlan& plan) { return importTable(table, plan); };
};

// Lines as loggers leave them, with every kind of end, the last without one.
std::string madeLines(std::mt19937& random, std::span<const std::string_view> parts) {
    constexpr std::array<std::string_view, 4> kEnds = {"\n", "\r\n", "\r", "\n\n"};
    std::string bytes;
    for (int line = 0; line < 14; ++line) {
        bytes += parts[random() % parts.size()];
        if (line < 13 || random() % 2 == 0) bytes += kEnds[random() % kEnds.size()];
    }
    return bytes;
}

// Gives each block's number of lines on; throws at a line "throw". With "carry" on a line the next block has
// to know of it.
class CountingReader {
  public:
    struct Carried {
        bool something = false;
        bool isNothing() const { return !something; }
    };
    struct Options {
        std::atomic<int>& reads;
    };

    explicit CountingReader(const Options& options) : reads_(options.reads), found_(FileColumns{}) {}

    Carried read(std::string_view text, const Carried&) {
        ++reads_;
        found_.clear();
        TextLines lines(text);
        bool carries = false;
        for (std::string_view line; lines.next(line);) {
            ++found_.linesRead;
            if (line == "throw") throw std::runtime_error("as told");
            carries = carries || line == "carry";
        }
        return {carries};
    }
    const FoundSites& found() const { return found_; }

  private:
    std::atomic<int>& reads_;
    FoundSites found_;
};

class CountedBlocks : public FolderTest {
  protected:
    // How often a block of ten lines was read.
    int readsOf(const std::string& line, int blocks, std::size_t threads) {
        std::string bytes;
        for (int i = 0; i < blocks * 10; ++i)
            bytes += line + '\n';
        writeFile(path, bytes);
        LineBlocks file(path, bytes.size() / static_cast<std::size_t>(blocks));
        SiteCollector sites(survey, log, 0);
        std::atomic<int> reads = 0;
        BlockImport<CountingReader>(file, sites).run(inBlocks(1, threads), CountingReader::Options{reads});
        EXPECT_EQ(sites.linesRead(), blocks * 10);
        return reads;
    }

    Survey survey;
    ErrorLog log{folder / "error_log.dat"};
};

}  // namespace

TEST_F(BlockImports, OfFixedColumnsGiveTheSameWhereverBlocksEnd) {
    constexpr std::array<std::string_view, 9> kParts = {
        "  1 1.5 2.5 30 31",
        "  2 100 200 40 41  and more",
        "  3 1.5 bad 30 31",
        "  4 9.5 8.5 -9 31",
        "  5 7.5 8.5 19 -9",
        " no 7.5 8.5 19 19",
        "  6 1.5 2.512345 31",
        "",
        "  7 4.5 5.5 xx 21 a line that is longer than any other of them, and as bad as the worst of them"};
    std::mt19937 random(31);
    for (int round = 0; round < 4; ++round)
        expectTheSame(importTrimble, madeLines(random, kParts));
}

TEST_F(BlockImports, OfRecordsGiveTheSameWhereverBlocksEnd) {
    constexpr std::array<std::string_view, 11> kParts = {"1,10,20,30,31,1",
                                                         "2,11,21,32,33,1,3,12,22,34,35,1",
                                                         "4,13,23,",
                                                         "36,37,1",
                                                         "5 14 24",
                                                         "6,15,25,-9,38,1",
                                                         "7,,25,30,38,1",
                                                         "8,\"x y\",25,30,38,1,",
                                                         "",
                                                         ",",
                                                         "9"};
    std::mt19937 random(32);
    for (int round = 0; round < 4; ++round)
        expectTheSame(importGeneric, madeLines(random, kParts));
    generic.decimalCommas = true;
    expectTheSame(importGeneric, "1;1,5;2,5;3;4;1\n2;1,5;\n2,5;3;4;1\r\n3;1,5;2.5;3;4;1\n4;1,5;2,5;3;\r4;1");
}

TEST_F(BlockImports, OfAValueALineGiveTheSame) {
    std::string bytes;
    for (int value = 0; value < 200; ++value)
        bytes += value % 40 == 39 ? "bad\n" : "1\n";
    expectTheSame(importGeneric, bytes);
}

// In one block numbers are read by the shapes of those above them; in a block of its own a line has none
// above it.
TEST_F(BlockImports, OfLinesWithAnyByteChangedGiveTheSameAsLineByLine) {
    constexpr std::string_view kBytes = "0123456789.-+ ,\te\"x;\n\r";
    std::mt19937 random(35);
    for (const auto& [import, line] : {std::pair(importTrimble, "  1 9.5-1.25 30-.5"),
                                       std::pair(importGeneric, "12,9.50,-1.25,30.5,-.5,1")})
        for (int file = 0; file < 200; ++file) {
            std::string bytes;
            for (int i = 0; i < 40; ++i) {
                std::string changed(line);
                if (i % 3 == 0) changed[random() % changed.size()] = kBytes[random() % kBytes.size()];
                if (i % 7 == 0)
                    changed.insert(random() % changed.size(), 1, kBytes[random() % kBytes.size()]);
                bytes += changed + '\n';
            }
            writeFile(path, bytes);
            expectEqual(import(kOneBlock), import(inBlocks(1, 1)));
            ASSERT_FALSE(HasFailure()) << bytes;
        }
}

TEST_F(BlockImports, OfTablesGiveTheSameWhereverBlocksEnd) {
    constexpr std::array<std::string_view, 6> kParts = {
        "1,10,20,30,31", "2,11,21,-9,33", "x,12,22,30,31", " , ,", "", "3,\"13\",23,30,31,and more"};
    std::mt19937 random(33);
    for (int round = 0; round < 4; ++round)
        expectTheSame(importATable, madeLines(random, kParts));
    table.shape.linesToSkip = 1000;
    expectTheSame(importATable, "1,10,20,30,31\n2,10,20,30,31\n");
}

TEST_F(BlockImports, OfUtf16GiveTheSame) {
    expectTheSame(importGeneric, utf16(u"\uFEFF1,10,20,30,31,1\n2,10,bad,30,31,1\r\n3,10,20,\n30,31,1"));
}

TEST_F(BlockImports, OfManyBlocksGiveTheSameAndTheSameLog) {
    std::string bytes;
    std::mt19937 random(34);
    for (int line = 0; line < 20'000; ++line)
        bytes += std::to_string(line) + ",10,20," + (random() % 50 == 0 ? "bad" : "30") +
                 (random() % 50 == 0 ? ",\n31,1\n" : ",31,1\r\n");
    expectTheSameLog(importGeneric, bytes);
    table.shape.linesToSkip = 15'000;
    expectTheSameLog(importATable, bytes);
    trimble.SiteIDPresent = trimble.TwoEMColumns = false;
    trimble.XField = trimble.YField = trimble.EM1Field = {1, 2, 2};
    expectTheSameLog(importTrimble, bytes);
}

// A card that breaks while several threads read.
TEST_F(BlockImports, ThatCannotReadOnSaySoAndLeaveTheLastLog) {
    logTo(folder / "error_log.dat");
    std::string bytes;
    while (bytes.size() < 300'000)
        bytes += "1,10,20,30,31,1\nbad\n";
    for (const Import& import : {importGeneric, importATable, importTrimble}) {
        writeFile(path, bytes);
        writeFile(folder / "error_log.dat", "last");
        const BeforeReading fifth(5, [](int file) { breakDevice(file); });
        EXPECT_EQ(descriptionOf([&] { import(inBlocks(20'000, 3)); }),
                  path + " cannot be read: Input/output error");
        EXPECT_EQ(readFile(folder / "error_log.dat"), "last");
    }
}

TEST_F(BlockImports, MakeRoomForSitesByTheFirstLineWithSome) {
    generic.layout = kGenericLayouts[4];
    std::string twoALine, blankBehind = "1,2,3\n\n";
    for (int i = 0; i < 2000; ++i) {
        twoALine += "1,2,3,4,5,6\n";
        blankBehind += "1,2,3\n";
    }
    for (const std::string& bytes : {twoALine, blankBehind}) {
        writeFile(path, bytes);
        const Survey survey = importGenericFile(generic, {}, kOneBlock).survey;
        EXPECT_LT(survey.SourceLine.capacity(), 2 * static_cast<std::size_t>(survey.NumSites) + 300);
    }
}

TEST_F(BlockImports, TakeSeveralThreadsForFilesAbove16MiB) {
    const ImportPlan plan;
    EXPECT_EQ(plan.threadsFor(std::int64_t{16} << 20), 1U);
    EXPECT_EQ(plan.threadsFor((std::int64_t{16} << 20) + 1), usefulThreads());
}

TEST_F(CountedBlocks, AreReadOnceButByThreadsThatHaveToKnowOfTheOneBefore) {
    EXPECT_EQ(readsOf("line", 100, 1), 100);
    EXPECT_EQ(readsOf("line", 100, 4), 100);
    EXPECT_EQ(readsOf("carry", 100, 1), 100);
}

// Guessing ends when it does not pay.
TEST_F(CountedBlocks, AreHardlyEverReadTwiceThoughEachHasToKnowOfTheOneBefore) {
    EXPECT_LE(readsOf("carry", 100, 4), 106);
}

TEST_F(CountedBlocks, OfAThreadWithoutMemoryAreAllReadOrNone) {
    writeFile(path, std::string(10'000, '\n'));
    int failures = 0;
    bool succeeded = false;
    for (long allocations = 0; allocations < 1000 && !succeeded; ++allocations) {
        LineBlocks file(path, 50);
        SiteCollector collector(survey, log, 0);
        BlockImport<CountingReader> blocks(file, collector);
        std::atomic<int> reads = 0;
        const FailingAllocations wanting(allocations);
        try {
            blocks.run(inBlocks(1, 2), CountingReader::Options{reads});
            succeeded = true;
        } catch (const std::bad_alloc&) {
            ++failures;
        }
        EXPECT_TRUE(collector.linesRead() == 10'000 || !succeeded);
    }
    EXPECT_TRUE(succeeded);
    EXPECT_GT(failures, 3);
}

TEST_F(CountedBlocks, HandOnWhatAReaderThrows) {
    for (const std::size_t threads : {1U, 3U}) {
        writeFile(path, "1\n2\n3\nthrow\n5\n6\n7\n8\n");
        LineBlocks file(path, 2);
        std::atomic<int> reads = 0;
        SiteCollector collector(survey, log, 0);
        BlockImport<CountingReader> blocks(file, collector);
        EXPECT_THROW(blocks.run(inBlocks(1, threads), CountingReader::Options{reads}), std::runtime_error);
        EXPECT_EQ(collector.linesRead(), 3);
    }
}

}  // namespace tessel

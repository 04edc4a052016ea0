// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/error_log.h"

#include "import/import_report.h"
#include "support/file_size_limit.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

std::string problemOf(const ErrorLog& log) {
    ImportSummary summary;
    log.describe(summary);
    return summary.logProblem;
}

using ErrorLogTest = FolderTest;

}  // namespace

TEST_F(ErrorLogTest, HoldsOneLineForEachRejectedOne) {
    ErrorLog log(path);
    log.reject(17, "  1.0 abc 2.0", reject_reason::kX);
    log.reject(1000000, std::string_view("a\0\x01\xFF", 4), reject_reason::kEM1BelowCutoff);
    log.commit();
    EXPECT_EQ(readFile(path),
              "Line # 17   1.0 abc 2.0  -> non-numeric X-coord data\r\n" +
                  std::string("Line # 1000000 a\0\x01\xFF  -> 1st EM reading below cut-off\r\n", 54));
    EXPECT_EQ(problemOf(log), "");
}

TEST_F(ErrorLogTest, StaysTheOldOneUntilCommitted) {
    writeFile(path, "old");
    {
        ErrorLog log(path);
        log.reject(1, "x", reject_reason::kY);
    }
    EXPECT_EQ(readFile(path), "old");
}

TEST_F(ErrorLogTest, ThatCannotBeCreatedSaysWhyAndTakesEverything) {
    ErrorLog log(folder / "none/error_log.dat");
    EXPECT_EQ(problemOf(log), folder / "none/error_log.dat cannot be written: No such file or directory");
    log.reject(1, "x", reject_reason::kY);
    log.commit();
}

TEST_F(ErrorLogTest, ThatTheDiskHasNoRoomForSaysWhyTakesEverythingAndStaysTheOldOne) {
    writeFile(path, "old");
    {
        const FileSizeLimit limit(300'000);
        ErrorLog log(path);
        EXPECT_TRUE(problemOf(log).empty());
        for (int line = 1; line <= 1000; ++line)
            log.reject(line, std::string(1000, 'x'), reject_reason::kX);
        EXPECT_EQ(problemOf(log), path + " cannot be written: File too large");
        log.commit();
    }
    EXPECT_EQ(readFile(path), "old");
}

TEST_F(ErrorLogTest, WhoseFolderVanishesSaysWhyWhenItIsToBePutInPlace) {
    std::filesystem::create_directory(folder / "gone");
    ErrorLog log(folder / "gone/error_log.dat");
    log.reject(1, "line", reject_reason::kX);
    std::filesystem::remove_all(folder / "gone");
    log.commit();
    EXPECT_EQ(problemOf(log), folder / "gone/error_log.dat cannot be written: No such file or directory");
}

TEST_F(ErrorLogTest, LiesInTheDataFolder) {
    Session session;
    session.DataDir = "/some/where";
    EXPECT_EQ(errorLogPath(session), "/some/where/error_log.dat");
}

TEST(ImportReport, OfTheTrimbleImportLeavesABlankForTheSign) {
    EXPECT_EQ(trimbleImportReport(12, 3),
              "There are  12 valid records in this file.\n\n"
              "There are  3 records in this file\n"
              "containing non-numeric or invalid numeric values.\n\n"
              "Please refer to the error_log.dat text file for more details.");
    EXPECT_EQ(trimbleImportReport(0, 0),
              "There are  0 valid records in this file.\n\n"
              "There are  0 records in this file\n"
              "containing non-numeric or invalid numeric values.");
}

TEST(ImportReport, OfTheGenericImportNamesDroppedRecordsOnlyWhenThereAreSome) {
    EXPECT_EQ(genericImportReport(12, 3),
              "There are 12 valid records in this file.\n\n"
              "There are 3 records in this file\n"
              "containing non-numeric or invalid numeric values.\n"
              "Please refer to the error_log.dat text file for more details.");
    EXPECT_EQ(genericImportReport(0, 0), "There are 0 valid records in this file.");
}

TEST(NumberField, HasABlankOrAMinusForItsSign) {
    EXPECT_EQ(numberField(17), " 17");
    EXPECT_EQ(numberField(0), " 0");
    EXPECT_EQ(numberField(-3), "-3");
}

TEST_F(ErrorLogTest, CountsRejectedLinesByReasonEvenWhereItCannotBeWritten) {
    ErrorLog log(folder / "none/error_log.dat");
    log.reject(3, "x", reject_reason::kY);
    log.reject(4, "y", reject_reason::kX);
    log.reject(9, "z", reject_reason::kY);
    ImportSummary summary;
    log.describe(summary);
    ASSERT_EQ(summary.rejected.size(), 2U);
    EXPECT_EQ(summary.rejected[0].reason, reject_reason::kY);
    EXPECT_EQ(summary.rejected[0].lines, 2);
    EXPECT_EQ(summary.rejected[0].firstLine, 3);
    EXPECT_EQ(summary.rejected[1].firstLine, 4);
    EXPECT_EQ(summary.firstLogLines.front(), "Line # 3 x  -> non-numeric Y-coord data");
    EXPECT_EQ(summary.logPath, folder / "none/error_log.dat");
    EXPECT_FALSE(summary.logProblem.empty());
}

}  // namespace tessel

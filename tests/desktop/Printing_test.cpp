// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Printing.h"

#include "desktop/FileDialogs.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

class PrintingFailure : public testing::Test {
  protected:
    PrintingFailure() {
        setDefaultPrinterName([this] { return printer; });
        setFileResponder([this](const FileQuestion&) { return fromPath(target); });
    }

    // Prints a page with much on it; gives the description of the error.
    std::string failure() const {
        return descriptionOf([] {
            printPage(nullptr, u"page"_s, [](QPainter& painter, const QPrinter&) {
                for (int i = 0; i < 20'000; ++i)
                    painter.drawText((i * 7919) % 2000, (i * 104729) % 3000, QString::number(i));
            });
        });
    }
    void expectOldFileAlone() const {
        EXPECT_EQ(readFile(folder / "page.pdf"), "old");
        EXPECT_EQ(filesIn(folder), 1U);
    }

    const TemporaryFolder folder;
    std::string target = folder / "page.pdf";
    QString printer;
};

}  // namespace

TEST_F(PrintingFailure, WhenTheTargetIsReadOnlyOrAFolderOrItsFolderIsGone) {
    writeFile(target, "old");
    std::filesystem::permissions(target, std::filesystem::perms::owner_read);
    EXPECT_EQ(failure(), target + " cannot be written: Permission denied");
    expectOldFileAlone();
    target = folder / "gone/page.pdf";
    EXPECT_EQ(failure(), target + " cannot be written: No such file or directory");
    target = folder.path();
    EXPECT_EQ(failure(), target + " cannot be written: Is a directory");
}

TEST_F(PrintingFailure, WhenThereIsNoFolderForTemporaryFilesLeavesTheOldFile) {
    writeFile(target, "old");
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QByteArray::fromStdString(target));  // a file, and no folder
    const std::string description = failure();
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
    EXPECT_EQ(description, target + " cannot be written: no folder for the page can be made in " + target);
    expectOldFileAlone();
}

TEST_F(PrintingFailure, IsNoneWhenTheFileCanBeWritten) {
    EXPECT_EQ(failure(), "no error");
    EXPECT_EQ(readFile(target).find("%PDF-"), 0U);
}

}  // namespace tessel

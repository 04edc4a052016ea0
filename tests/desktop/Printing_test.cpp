// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Printing.h"

#include "desktop/FileDialogs.h"
#include "support/environment.h"
#include "support/run_time_errors.h"
#include "support/temporary_folder.h"

namespace tessel {

using PrintingFailure = FolderTest;

TEST_F(PrintingFailure, WhenThereIsNoFolderForTemporaryFilesLeavesTheOldFile) {
    writeFile(path, "old");
    setDefaultPrinterName([] { return QString(); });
    setFileResponder([this](const FileQuestion&) { return fromPath(path); });
    const Environment noFolder("TMPDIR", path);
    const std::string told = descriptionOf([] {
        printPage(nullptr, u"page"_s, [](QPainter& painter, const QPrinter&) { painter.drawPoint(1, 1); });
    });
    EXPECT_EQ(told, path + " cannot be written: no folder for the page can be made in " + path);
    expectOldFileAlone();
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Journeys.h"

#include "app/frmMain.h"
#include "desktop/FileDialogs.h"
#include "desktop/FileNames.h"
#include "support/UserDriver.h"

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

void typePositions(QWidget& window, const QString& boxes, const QString (&positions)[2]) {
    typeInto(window, boxes + u"_0"_s, positions[0]);
    typeInto(window, boxes + u"_1"_s, positions[1]);
}

void accept(QWidget& window, const QString& button, const BeforeAccepting& look) {
    if (look) look(window);
    clickOn(window, button);
}

// Answers the next file dialog, and those after it, with one file.
class ChosenFile {
  public:
    explicit ChosenFile(const QString& file) {
        setFileResponder([file](const FileQuestion&) { return file; });
    }
    ~ChosenFile() { setFileResponder({}); }
    ChosenFile(const ChosenFile&) = delete;
    ChosenFile& operator=(const ChosenFile&) = delete;
};

}  // namespace

std::string sensorLines(int sites, int rejected) {
    std::string bytes;
    for (int i = 0; i < sites; ++i)
        bytes += std::to_string(1'000'000 + i) + " 2000000      12\r\n";
    for (int i = 0; i < rejected; ++i)
        bytes += "no number anywhere\r\n";
    return bytes;
}

TrimbleEntries sensorEntries(const std::string& path) {
    return {fromPath(path), u"20"_s, {}, {u"1"_s, u"7"_s}, {u"9"_s, u"15"_s}, {u"17"_s, u"24"_s}, {}};
}

void importTrimbleFile(frmMain& main, const TrimbleEntries& entries, const BeforeAccepting& look) {
    const ChosenFile chosen(entries.file);
    chooseItem(main, u"mnuOpen"_s);
    QWidget& parameters = shownWindow(u"frmDataControl"_s);
    typeInto(parameters, u"Text2"_s, entries.minDistance);
    accept(parameters, u"Command1"_s, look);

    QWidget& format = shownWindow(u"frmIniDisplay"_s);
    if (!entries.siteNumber[0].isEmpty()) {
        clickOn(format, u"Check1"_s);
        typePositions(format, u"Text1"_s, entries.siteNumber);
    }
    typePositions(format, u"Text2"_s, entries.x);
    typePositions(format, u"Text3"_s, entries.y);
    typePositions(format, u"Text4"_s, entries.em1);
    if (!entries.em2[0].isEmpty()) {
        clickOn(format, u"Check2"_s);
        typePositions(format, u"Text5"_s, entries.em2);
    }
    accept(format, u"Command1"_s, look);
    waitUntilClosed(u"frmIniDisplay"_s);
}

void exportTransectFile(frmMain& main, const QString& file, const QString& firstRow,
                        const BeforeAccepting& look) {
    const ChosenFile chosen(file);
    chooseItem(main, u"mnuSave"_s);
    QWidget& output = shownWindow(u"frmOutput"_s);
    clickOn(output, u"Command1"_s);
    typeInto(output, u"txtBRN"_s, firstRow);
    accept(output, u"Command2"_s, look);
    waitUntilClosed(u"frmOutput"_s);
}

}  // namespace tessel

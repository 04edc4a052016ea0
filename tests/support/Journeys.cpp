// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Journeys.h"

#include "app/frmMain.h"
#include "desktop/FileDialogs.h"
#include "desktop/FileNames.h"
#include "support/UserDriver.h"

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

void accept(QWidget& window, const QString& button, const BeforeAccepting& look) {
    if (look) look(window);
    clickOn(window, button);
}

}  // namespace

ChosenFile::ChosenFile(const std::string& path) {
    setFileResponder([path](const FileQuestion&) { return fromPath(path); });
}

ChosenFile::~ChosenFile() {
    setFileResponder({});
}

void typePositions(QWidget& window, const QString& boxes, const FieldPositions& positions) {
    typeInto(window, boxes + u"_0"_s, QString::number(positions[0]));
    typeInto(window, boxes + u"_1"_s, QString::number(positions[1]));
}

std::string sensorLines(int sites, int rejected) {
    std::string bytes;
    for (int i = 0; i < sites; ++i)
        bytes += std::to_string(1'000'000 + i) + " 2000000      12\r\n";
    for (int i = 0; i < rejected; ++i)
        bytes += "no number anywhere\r\n";
    return bytes;
}

TrimbleEntries sensorEntries(const std::string& path) {
    return {path, u"20"_s, {}, {1, 7}, {9, 15}, {17, 24}, {}};
}

void importTrimbleFile(frmMain& main, const TrimbleEntries& entries, const BeforeAccepting& look) {
    const ChosenFile chosen(entries.file);
    chooseItem(main, u"mnuOpen"_s);
    QWidget& parameters = shownWindow(u"frmDataControl"_s);
    typeInto(parameters, u"Text2"_s, entries.minDistance);
    accept(parameters, u"Command1"_s, look);

    QWidget& format = shownWindow(u"frmIniDisplay"_s);
    if (entries.siteNumber[0] > 0) {
        clickOn(format, u"Check1"_s);
        typePositions(format, u"Text1"_s, entries.siteNumber);
    }
    typePositions(format, u"Text2"_s, entries.x);
    typePositions(format, u"Text3"_s, entries.y);
    typePositions(format, u"Text4"_s, entries.em1);
    if (entries.em2[0] > 0) {
        clickOn(format, u"Check2"_s);
        typePositions(format, u"Text5"_s, entries.em2);
    }
    accept(format, u"Command1"_s, look);
    waitUntilClosed(u"frmIniDisplay"_s);
}

void exportTransectFile(frmMain& main, const std::string& path, const QString& firstRow,
                        const BeforeAccepting& look) {
    const ChosenFile chosen(path);
    chooseItem(main, u"mnuSave"_s);
    QWidget& output = shownWindow(u"frmOutput"_s);
    clickOn(output, u"Command1"_s);
    typeInto(output, u"txtBRN"_s, firstRow);
    accept(output, u"Command2"_s, look);
    waitUntilClosed(u"frmOutput"_s);
}

}  // namespace tessel

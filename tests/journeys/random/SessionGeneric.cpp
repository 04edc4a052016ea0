// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "journeys/random/entries.h"
#include "support/UserDriver.h"

namespace tessel {

using namespace entries;

// The delimited file and its window.

struct RandomSession::GenericFile {
    std::string bytes, log;
    PlainSurvey survey;
    long dropped = 0;
    bool decimalCommas = false;  // and semicolons between values
    QString rowFault;            // what the user is told about the row numbers
};

namespace {

std::vector<std::string> valuesOf(const PlainSite& site, int layout) {
    std::vector<std::string> values;
    if (layout % 4 >= 2) values.push_back(printed(site.id, 0));
    values.push_back(coordinate(site.x));
    values.push_back(coordinate(site.y));
    values.push_back(printed(site.em1, 2));
    if (layout % 2 == 1) values.push_back(printed(site.em2, 2));
    if (layout < 4) values.push_back(std::to_string(site.row));
    return values;
}

}  // namespace

RandomSession::GenericFile RandomSession::genericFile(int layout, double cutoff) {
    const bool withRows = layout < 4, withIDs = layout % 4 >= 2, two = layout % 2 == 1;
    GenericFile file;
    file.survey.ids = withIDs;
    file.survey.two = two;
    const int firstRow = !many_ && chance(6) ? 2 : 1;
    const bool fallsBack = !many_ && chance(6);
    const int gap = !many_ && chance(6) ? 1 : 0;
    const bool manyRows = many_ || chance(25);
    const std::vector<PlainSite> sites = drivenSites();
    const int separators = sites.empty() ? 0 : below(4);
    file.decimalCommas = separators == 3;
    for (std::size_t number = 0; number < sites.size(); ++number) {
        PlainSite site = sites[number];
        site.row = manyRows ? static_cast<int>(site.id) : site.row + firstRow - 1 + (site.row > 2 ? gap : 0);
        if (fallsBack && site.row > 2) site.row = 1;
        const bool damaged = !many_ && chance(2);
        std::vector<std::string> values = valuesOf(site, layout);
        if (damaged) values[withIDs ? 2 : 1] = "***";
        if (!two) site.em2 = 0;
        if (!withIDs) site.id = 0;
        if (!withRows) site.row = 1;
        // A last value that is missing shows by the comma in front of it and by the next line, which is
        // whole.
        const bool incomplete = separators == 0 && !many_ && number + 1 < sites.size() && chance(2);
        if (incomplete) values.back().clear();
        if (file.decimalCommas)
            for (std::string& value : values)
                std::replace(value.begin(), value.end(), '.', ',');
        const auto line = 1 + std::count(file.bytes.begin(), file.bytes.end(), '\n');
        site.line = line;
        std::string logged = "Line # " + std::to_string(line);
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (!values[i].empty()) logged += ' ' + values[i];
            if (i > 0)
                file.bytes += separators == 0   ? ","
                              : separators == 1 ? " "
                              : separators == 3 ? ";"
                              : chance(50)      ? " , "
                                                : "\t";
            file.bytes += values[i];
        }
        file.bytes += separators == 2 && chance(20) ? " " : "\r\n";
        const std::string reason = incomplete                 ? "incomplete record"
                                   : two && site.em2 < cutoff ? "2nd EM reading below cut-off"
                                   : damaged                  ? "non-numeric Y-coord data"
                                   : site.em1 < cutoff        ? "1st EM reading below cut-off"
                                                              : "";
        if (reason.empty()) {
            file.survey.sites.push_back(site);
            continue;
        }
        ++file.dropped;
        file.log += logged + "  -> " + reason + "\r\n";
    }
    if (chance(5)) {
        const auto line = 1 + std::count(file.bytes.begin(), file.bytes.end(), '\n');
        file.bytes += "1 2";
        file.log += "Line # " + std::to_string(line) + " 1 2  -> incomplete record at end of file\r\n";
        ++file.dropped;
    }
    return file;
}

namespace {

// The row check; what the user is told, and the rows counted.
QString checkRows(PlainSurvey& survey) {
    survey.rows = survey.rowIndex = 0;
    if (survey.empty()) return {};
    if (survey.sites.front().row != 1) return u"Fatal Error! Initial row # not equal to 1. Input aborted."_s;
    int rows = 1;
    for (std::size_t i = 1; i < survey.sites.size(); ++i) {
        const int step = survey.sites[i].row - survey.sites[i - 1].row;
        if (step == 0) continue;
        if (step != 1) return u"Fatal Error! Row #'s are not sorted in sequential order. Input aborted."_s;
        ++rows;
    }
    survey.rows = survey.rowIndex = rows;
    return rows <= 250 ? QString()
                       : u"Warning! Row count > 250.\n"
                         u"This input data file may cause the VARN-Tessel program to crash."_s;
}

}  // namespace

void RandomSession::refuseGeneric(QWidget& window) {
    while (chance(25)) {
        const bool number = chance(50);
        typeInto(window, u"txtminEC"_s, number ? QString::fromLatin1(oneOf(kBadNumbers).text) : u"0.0"_s);
        typeInto(
            window, u"txtGFile"_s,
            oneOf(std::vector<QString>{u""_s, u"/no/such/file"_s, QString::fromStdString(folder_.path())}));
        expect(number ? u"Error!  Non-numeric minimum EC cutoff value."_s
                      : u"Please enter a valid input filename."_s);
        clickOn(window, u"cmdImport"_s);
    }
}

void RandomSession::lookAroundGeneric(QWidget& window) {
    helpOf(window, 106, chance(50) ? u"cmdHelp"_s : u"mnuGSFIhelp"_s);
    refuseGeneric(window);
    if (!chance(20)) return;
    expect(
        u"A generic signal data file must satisfy the following format restrictions:\n"
        u"1.  All records must be either comma or space delimited.\n"
        u"2.  The file column structure must exactly match one of the 8 choices shown on the screen.\n"
        u"       (no extra data columns can be present in the file)\n"
        u"3.  There can be no missing data records.\n"
        u"4.  If your file contains row numbers, then the first row must start at 1\n"
        u"       and all remaining rows must increase in a sequential, incremental order."_s);
    chooseItem(window, u"mnuFormat"_s);
}

namespace {

// Offered for such a file only, a moment after its name has been typed, and never ticked by the program.
void tickDecimalComma(QWidget& window) {
    const auto* const box = window.findChild<QCheckBox*>(u"chkDecimalComma"_s);
    std::ignore = QTest::qWaitFor([box] { return box->isVisible(); });  // or it is not found below
    clickOn(window, u"chkDecimalComma"_s);
}

}  // namespace

void RandomSession::importGeneric() {
    if (chance(50))
        chooseItem(*main_, u"mnuOpen2"_s);
    else
        pressKey(*main_, Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    QWidget& window = shownWindow(u"frmGeneric"_s);
    lookAroundGeneric(window);
    if (chance(8)) return leave(window, u"cmdCancel"_s);
    const int layout = below(many_ ? 4 : 8);
    const QString cutoff =
        many_ ? u"-100"_s : oneOf(std::vector<QString>{u"0.0"_s, u"-100"_s, u"-100"_s, u"25"_s});
    GenericFile file = genericFile(layout, cutoff.toDouble());
    file.rowFault = checkRows(file.survey);
    const QString path = QString::fromStdString(folder_ / "generic.txt");
    writeFile(folder_ / "generic.txt", file.bytes);
    typeInto(window, u"txtGFile"_s, path);
    if (chance(70)) {
        expectFile(chance(30) ? QString() : path);
        clickOn(window, u"cmdBrowse"_s);
        sameText("txtGFile", controlAs<QLineEdit>(window, u"txtGFile"_s).text(), path);
    }
    typeInto(window, u"txtminEC"_s, cutoff);
    clickOn(window, u"optCF_%1"_s.arg(layout));
    if (file.decimalCommas) tickDecimalComma(window);
    finishGenericImport(window, file);
}

void RandomSession::finishGenericImport(QWidget& window, GenericFile& file) {
    file.survey.measure = survey_.measure == 0 ? 1 : survey_.measure;
    file.survey.minDistance = survey_.minDistance;
    const bool refused = file.rowFault.startsWith(u"Fatal"_s);
    noteVast(file.survey, "an import");
    QString report = u"There are %1 valid records in this file."_s.arg(file.survey.sites.size());
    if (file.dropped > 0)
        report +=
            u"\n\nThere are %1 records in this file\ncontaining non-numeric or invalid numeric values.\n"
            u"Please refer to the error_log.dat text file for more details."_s.arg(file.dropped);
    expect(report, u"VARN-Tessel File Import Message"_s);
    if (!file.rowFault.isEmpty()) expect(file.rowFault);
    clickOn(window, u"cmdImport"_s);
    survey_ = file.survey;
    log_ = file.log;
    surveyImported();
    measured_ = !survey_.empty() && !refused;
    counted_ = measured_;
    if (!refused) return;
    setMenus(false, {"mnuSigCorr", "mnuHist", "mnuClear", "mnuData", "mnuInvokeIDE", "mnuIDEW", "mnuDistance",
                     "mnuGrid", "mnuStat", "mnuRow", "mnuAdjust", "mnuEL", "mnuSave", "mnuRecord",
                     "mnuSaveTable", "mnuCoordinates"});
    leave(window, u"cmdCancel"_s);
}

}  // namespace tessel

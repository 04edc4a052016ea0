// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"
#include "journeys/random/RandomSession.h"
#include "journeys/random/entries.h"
#include "support/ExpectedBoxes.h"
#include "support/UserDriver.h"

namespace tessel {

// The delimited file and its window.

struct RandomSession::GenericFile {
    std::string bytes, log;
    PlainSurvey survey;
    long dropped = 0;
    QString rowFault;  // what the user is told about the row numbers
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
    const int separators = sites.empty() ? 0 : below(3);
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
        const auto line = 1 + std::count(file.bytes.begin(), file.bytes.end(), '\n');
        site.line = line;
        std::string logged = "Line # " + std::to_string(line);
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (!values[i].empty()) logged += ' ' + values[i];
            if (i > 0)
                file.bytes += separators == 0 ? "," : separators == 1 ? " " : chance(50) ? " , " : "\t";
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

void RandomSession::importGeneric() {
    useOrPress(*main_, u"mnuOpen2"_s, Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    QWidget& window = shownWindow(u"frmGeneric"_s);
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
    finishGenericImport(window, file);
}

void RandomSession::finishGenericImport(QWidget& window, GenericFile& file) {
    file.survey.measure = survey_.measure == 0 ? 1 : survey_.measure;
    file.survey.minDistance = survey_.minDistance;
    const bool refused = file.rowFault.startsWith(u"Fatal"_s);
    noteVast(file.survey, "an import");
    expect(genericReport(std::ssize(file.survey.sites), file.dropped), kGenericReportTitle);
    if (!file.rowFault.isEmpty()) expect(file.rowFault);
    clickOn(window, u"cmdImport"_s);
    survey_ = file.survey;
    log_ = file.log;
    surveyImported();
    measured_ = !survey_.empty() && !refused;
    counted_ = measured_;
    if (!refused) return;
    setMenus(false, kSurveyItems);
    setMenus(false, {"mnuSave"});
    leave(window, u"cmdCancel"_s);
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/RunningProgram.h"

#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"
#include "desktop/TextEditor.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

constexpr const char* kLog = "the last import's log";

}  // namespace

Survey shortSurvey() {
    return madeSurvey({{1, 2, 30, 40, 1}, {2, 2, 31, 41, 1}, {3, 2, 32, 42, 1}});
}

Survey rowsAlongY(int rows) {
    std::vector<MadeSite> sites = {{0, 0, 10, 20, 1},  {0, 5, 11, 22, 1},  {0, 9, 12, 21, 1},
                                   {10, 9, 13, 25, 2}, {10, 5, 14, 27, 2}, {10, 0, 15, 26, 2},
                                   {20, 0, 16, 28, 3}, {20, 5, 17, 23, 3}, {20, 9, 18, 24, 3}};
    sites.resize(static_cast<std::size_t>(3 * rows));
    Survey survey = madeSurvey(sites);
    survey.MinDistance = 7;
    return survey;
}

RunningProgram::RunningProgram(const Survey& survey) : before(survey) {
    surveyUnderTest() = survey;
    theSession().AppDir = theSession().DataDir = folder.path();
    main = createProgram();
    if (survey.NumSites > 0) {
        main->menusFollow(MenuEvent::kSitesImported);
        writeFile(folder / "error_log.dat", kLog);
    }
    main->show();
}

RunningProgram::~RunningProgram() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window != main.get()) window->hide();
}

void RunningProgram::expectSurveyAndLogAsBefore() const {
    expectSameSurvey(theSurvey(), before);
    EXPECT_EQ(readFile(folder / "error_log.dat"), kLog);
}

void RunningProgram::expectTrimbleReport(int valid, int rejected) {
    boxes.tell(trimbleReport(valid, rejected), kTrimbleReportTitle);
}

void RunningProgram::expectGenericReport(int valid, int rejected) {
    boxes.tell(genericReport(valid, rejected), kGenericReportTitle);
}

void RunningProgram::exportTo(const std::string& path, const QString& firstRow, const BeforeAccepting& look) {
    boxes.tell(u"Output data saved to "_s + legible(fromPath(path)), u"VARN-Tesl"_s);
    exportTransectFile(*main, path, firstRow, look);
}

void RunningProgram::importGeneric(const std::string& path, int layout) {
    chooseItem(*main, u"mnuOpen2"_s);
    QWidget& window = shownWindow(u"frmGeneric"_s);
    chooseFile(path);
    clickOn(window, u"cmdBrowse"_s);
    clickOn(window, u"optCF_%1"_s.arg(layout));
    clickOn(window, u"cmdImport"_s);
    if (isShown(u"frmGeneric"_s)) window.close();
    waitUntilClosed(u"frmGeneric"_s);
}

void RunningProgram::importTwoRows() {
    writeFile(folder / "rows.csv", "0,0,10\n0,5,11\n0,9,12\n10,9,13\n10,5,14\n10,0,15\n");
    expectGenericReport(6, 0);
    importGeneric(folder / "rows.csv", 4);
    findRows(u"6"_s);
}

void RunningProgram::inRowDialog(const QString& option, const QStringList& inputs, const QStringList& texts) {
    chooseItem(*main, u"mnuData"_s);
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    clickOn(dialog, option);
    for (qsizetype i = 0; i < inputs.size(); ++i)
        typeInto(dialog, inputs[i], texts[i]);
    clickOn(dialog, u"Command1"_s);
}

void RunningProgram::deleteRow(int row) {
    inRowDialog(u"Option2"_s, {u"Text4"_s}, {QString::number(row)});
    waitUntilClosed(u"frmDataEdit"_s);
}

void RunningProgram::findRows(const QString& distance) {
    inRowDialog(u"Option3"_s, {u"Text1"_s}, {distance});
    waitUntilClosed(u"frmDataEdit"_s);
}

void RunningProgram::saveTable(const std::string& path, const QStringList& clicks) {
    chooseFile(path);
    chooseItem(*main, u"mnuSaveTable"_s);
    QWidget& window = shownWindow(u"frmSaveTable"_s);
    for (const QString& name : clicks)
        clickOn(window, name);
    clickOn(window, u"cmdSave"_s);
    waitUntilClosed(u"frmSaveTable"_s);
}

bool RunningProgram::drop(const QList<QUrl>& addresses) {
    QMimeData data;
    data.setUrls(addresses);
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QCoreApplication::sendEvent(main.get(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent dropped(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(main.get(), &dropped);
    return true;
}

void RunningProgram::chooseFile(const std::string& path) {
    setFileResponder([path](const FileQuestion&) { return fromPath(path); });
}

void RunningProgram::expectTooManyRows() {
    boxes.tell(u"Too many rows: Please specify a larger distance value"_s);
}

void RunningProgram::expectNoSitesLeft() {
    boxes.tell(u"There is no more point left in the file!"_s);
}

bool RunningProgram::isVisible(const QString& name) const {
    return main->findChild<QWidget*>(name)->isVisible();
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/RunningProgram.h"

#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"
#include "desktop/TextEditor.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

constexpr const char* kLog = "the last import's log";

QString counted(const QString& beginning, int valid, const QString& between, int rejected) {
    return beginning.arg(valid) + (rejected > 0 ? between.arg(rejected) : QString());
}

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
    tessel::expectTrimbleReport(boxes, valid, rejected);
}

void RunningProgram::expectGenericReport(int valid, int rejected) {
    boxes.tell(counted(u"There are %1 valid records in this file."_s, valid,
                       u"\n\nThere are %1 records in this file\n"
                       u"containing non-numeric or invalid numeric values.\n"
                       u"Please refer to the error_log.dat text file for more details."_s,
                       rejected),
               u"VARN-Tessel File Import Message"_s);
}

void RunningProgram::exportTo(const std::string& path, const QString& firstRow, const BeforeAccepting& look) {
    boxes.tell(u"Output data saved to "_s + legible(fromPath(path)), u"VARN-Tesl"_s);
    exportTransectFile(*main, fromPath(path), firstRow, look);
}

void RunningProgram::importGeneric(const std::string& path, int layout) {
    chooseItem(*main, u"mnuOpen2"_s);
    QWidget& window = shownWindow(u"frmGeneric"_s);
    setFileResponder([path](const FileQuestion&) { return fromPath(path); });
    clickOn(window, u"cmdBrowse"_s);
    clickOn(window, u"optCF_%1"_s.arg(layout));
    clickOn(window, u"cmdImport"_s);
    if (isShown(u"frmGeneric"_s)) window.close();
    waitUntilClosed(u"frmGeneric"_s);
}

void RunningProgram::inRowDialog(const QString& option, const QStringList& inputs, const QStringList& texts) {
    chooseItem(*main, u"mnuData"_s);
    QWidget& dialog = shownWindow(u"frmDataEdit"_s);
    clickOn(dialog, option);
    for (qsizetype i = 0; i < inputs.size(); ++i)
        typeInto(dialog, inputs[i], texts[i]);
    clickOn(dialog, u"Command1"_s);
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

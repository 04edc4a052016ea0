// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ImportTest.h"

#include "base/session.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

namespace {

Survey surveyOfTheBeginning() {
    Survey survey = surveyWithRows({{0, 0, 0, 0, 1, 1}, {77, 0, 0, 0, 1, 2}});
    survey.chooseDistance(2);
    survey.EMCutoff = -1;
    survey.MinDistance = 3;
    return survey;
}

}  // namespace

ImportTest::ImportTest() {
    surveyUnderTest() = surveyOfTheBeginning();
    theSession().AppDir = theSession().DataDir = folder.path();
    theSession().DataSaved = true;
    chooseFile({});
    main.show();
}

void ImportTest::expectSurveyUntouched() const {
    Survey expected = surveyOfTheBeginning();
    expected.MinDistance = theSurvey().MinDistance;
    expectSameSurvey(theSurvey(), expected);
    EXPECT_TRUE(theSession().DataSaved);
}

void ImportTest::expectMenus(bool surveyItems, bool save) const {
    for (const char16_t* name :
         {u"mnuSigCorr", u"mnuHist", u"mnuClear", u"mnuData", u"mnuInvokeIDE", u"mnuIDEW", u"mnuDistance",
          u"mnuGrid", u"mnuStat", u"mnuRow", u"mnuAdjust", u"mnuEL"})
        EXPECT_EQ(main.menuItem(QString::fromUtf16(name))->isEnabled(), surveyItems)
            << QString::fromUtf16(name).toStdString();
    EXPECT_EQ(main.mnuSave->isEnabled(), save);
}

std::string ImportTest::sensorFile(std::string_view bytes) const {
    const std::string path = folder / "sensor file ü.dat";
    writeFile(path, bytes);
    return path;
}

void ImportTest::type(QLineEdit& box, const QString& text) {
    box.setFocus();
    box.clear();
    // QTest::keyClicks knows ASCII only.
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
        QCoreApplication::sendEvent(&box, &press);
    }
}

void ImportTest::click(QWidget& button) {
    ASSERT_TRUE(button.isVisible() && button.isEnabled());
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(12, button.height() / 2));
}

void ImportTest::chooseFile(const std::string& path) {
    setFileResponder([this, path](const FileQuestion& question) {
        ++fileDialogs_;
        lastQuestion_ = question;
        return fromPath(path);
    });
}

}  // namespace tessel

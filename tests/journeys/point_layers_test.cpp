// SPDX-License-Identifier: GPL-3.0-or-later
// Files of points that arrive: survey files of ours are opened, those of other programs imported.
#include "storage/point_layers.h"

#include "journal/journal.h"
#include "storage/database.h"
#include "storage/survey_file.h"
#include "support/RunningProgram.h"
#include "support/made_layers.h"
#include "support/made_survey.h"

namespace tessel {

namespace {

class ArrivingPoints : public testing::Test, protected RunningProgram {
  protected:
    ArrivingPoints() {
        Journal journal(std::size_t{1} << 20);
        Survey survey = madeSurvey({{1, 0, 10, 20, 1}, {1, 5, 11, 21, 1}, {9, 5, 12, 22, 2}});
        survey.PositionsCRS = 32630;
        journal.replaceSurvey({ActKind::kImport, "import", "Imported", {}}, survey);
        saveSurvey(path(), journal, {});
        chooseFile(path());
    }

    // Nothing of ours is in it any more, but for a layer.
    void makeForeign(const std::string& statements = {}) const {
        const int file = ::open(path().c_str(), O_RDWR | O_CLOEXEC);
        Database(file, path(), Database::Use::kWrite)
            .run("DROP TABLE survey; DROP TABLE survey_state;" + statements);
        ::close(file);
    }
    // The window that asks for the columns, once it shows them.
    QWidget& window() const {
        QWidget& window = shownWindow(u"frmTable"_s);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return window.findChild<QTableView*>(u"tblPreview"_s)->model()->columnCount() > 0; }));
        return window;
    }
    static QString head(QWidget& window, int column) {
        return controlAs<QTableView>(window, u"tblPreview"_s)
            .model()
            ->headerData(column, Qt::Horizontal)
            .toString();
    }
    std::string path() const { return folder / "field.gpkg"; }
};

}  // namespace

TEST_F(ArrivingPoints, OfOursAreOpenedWhenTheyAreDropped) {
    drop(path());
    EXPECT_EQ(theSurvey().NumSites, 3);
    EXPECT_EQ(main->lblSurveyFile->text(), u"field.gpkg"_s);
}

TEST_F(ArrivingPoints, OfAnotherProgramAreImportedByTheColumnsThatTheUserSays) {
    makeForeign();
    chooseItem(*main, u"mnuOpenSurvey"_s);
    QWidget& asking = window();
    EXPECT_EQ(controlAs<QLineEdit>(asking, u"txtFile"_s).text(), fromPath(path()));
    EXPECT_EQ(head(asking, 0), u"X\nX"_s);
    EXPECT_EQ(head(asking, 4), u"em1\nEM1"_s);
    EXPECT_TRUE(asking.findChild<QWidget*>(u"cmbLayer"_s)->isVisible());
    EXPECT_FALSE(asking.findChild<QWidget*>(u"cmbSeparator"_s)->isVisible());
    EXPECT_EQ(head(asking, 3), u"row\nrow number"_s);
    expectGenericReport(3, 0);
    clickOn(asking, u"cmdImport"_s);
    waitUntilClosed(u"frmTable"_s);
    EXPECT_EQ(theSurvey().NumRows, 2);
    EXPECT_EQ(theSurvey().PositionsCRS, 32630);
    EXPECT_EQ(theSurvey().SiteData(kEM2, 2), 22);
    EXPECT_EQ(theSession().InputFileName, path());
    EXPECT_EQ(main->lblSurveyFile->text(), u"Survey not saved"_s);
    chooseItem(*main, u"mnuUndo"_s);
    EXPECT_EQ(theSurvey().NumSites, 0);
}

TEST_F(ArrivingPoints, OfSeveralLayersAreThoseThatTheUserChooses) {
    makeForeign("ALTER TABLE removed_sites ADD COLUMN depth DOUBLE");
    drop(path());
    QWidget& asking = window();
    auto& layers = controlAs<QComboBox>(asking, u"cmbLayer"_s);
    EXPECT_EQ(layers.currentText(), u"sites"_s);
    EXPECT_EQ(layers.count(), 2);
    EXPECT_EQ(asking.findChild<QTableView*>(u"tblPreview"_s)->model()->columnCount(), 7);
    layers.setFocus();
    QTest::keyClick(&layers, Qt::Key_Down);
    EXPECT_EQ(asking.findChild<QTableView*>(u"tblPreview"_s)->model()->columnCount(), 10);
    EXPECT_EQ(head(asking, 9), u"depth\n-"_s);
}

TEST_F(ArrivingPoints, AreAskedForAsTextAgainWhenTheFileIsOne) {
    makeForeign();
    drop(path());
    QWidget& asking = window();
    writeFile(folder / "text.csv", "X,Y,EM1\n1,2,3\n");
    typeInto(asking, u"txtFile"_s, fromPath(folder / "text.csv"));
    QWidget* const separator = asking.findChild<QWidget*>(u"cmbSeparator"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return separator->isVisible(); }));
    EXPECT_FALSE(asking.findChild<QWidget*>(u"cmbLayer"_s)->isVisible());
}

TEST_F(ArrivingPoints, InDegreesAreWhereTheyAreAndNeverInMinutes) {
    makeGeoPackage(
        path(),
        layerOf("a", "x REAL, y REAL, em1 REAL", 4326) + featureIn("a", pointAt(-220.5, 5224.5), "1, 2, 3"),
        4326);
    drop(path());
    QWidget& asking = window();
    EXPECT_EQ(head(asking, 0), u"longitude\nlongitude"_s);
    EXPECT_EQ(head(asking, 2), u"x\n-"_s);
    EXPECT_FALSE(controlAs<QCheckBox>(asking, u"chkMinutes"_s).isChecked());
}

TEST_F(ArrivingPoints, ThatCannotBeReadLeaveTheOtherLayersOfTheirFile) {
    makeGeoPackage(path(),
                   layerOf("a", "em1 REAL", 4978) + featureIn("a", pointAt(1, 2), "3") +
                       layerOf("b", "em1 REAL") + featureIn("b", pointAt(1, 2), "3"),
                   4978);
    drop(path());
    QWidget& asking = shownWindow(u"frmTable"_s);
    auto& layers = *asking.findChild<QComboBox*>(u"cmbLayer"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return layers.isVisible(); }));
    EXPECT_EQ(layers.count(), 2);
    auto& notice = controlAs<QLabel>(asking, u"lblNotice"_s);
    const QString refusal =
        fromPath(path()) + u" cannot be read: layer a: its coordinate system is none of a map"_s;
    EXPECT_EQ(notice.text(), refusal);
    layers.setFocus();
    QTest::keyClick(&layers, Qt::Key_Down);
    EXPECT_EQ(notice.text(), QString());
    EXPECT_TRUE(asking.findChild<QWidget*>(u"cmdImport"_s)->isEnabled());
    QTest::keyClick(&layers, Qt::Key_Up);
    EXPECT_EQ(notice.text(), refusal);
    EXPECT_EQ(asking.findChild<QTableView*>(u"tblPreview"_s)->model()->columnCount(), 0);
}

TEST_F(ArrivingPoints, InAFileThatIsNoDatabaseAreTold) {
    for (const char* const name : {"field.gpkg", "upper case.GPKG"}) {
        writeFile(folder / name, "1,2,3\n");
        boxes.tell(fromPath(folder / name) + u" cannot be opened: it is no database"_s);
        drop(folder / name);
        EXPECT_EQ(boxes.pending(), 0);
    }
}

TEST_F(ArrivingPoints, ThatThereAreNotIsSaid) {
    makeForeign("DELETE FROM gpkg_geometry_columns");
    const QString refusal =
        fromPath(path()) + u" cannot be opened as a survey: it is a GeoPackage of another program"_s;
    boxes.tell(refusal);
    drop(path());
    boxes.tell(refusal);
    chooseItem(*main, u"mnuOpenSurvey"_s);
    chooseItem(*main, u"mnuImportTable"_s);
    QWidget& asking = shownWindow(u"frmTable"_s);
    typeInto(asking, u"txtFile"_s, fromPath(path()));
    auto& notice = controlAs<QLabel>(asking, u"lblNotice"_s);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return notice.text() == u"There is no layer of points in this file."_s; }));
    EXPECT_FALSE(asking.findChild<QWidget*>(u"cmdImport"_s)->isEnabled());
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
// Drives the real windows through a typical run on a sample survey and keeps a picture of every window:
//     varn-tessel-walkthrough SAMPLES FOLDER
// leaves the exported transect file, the error log and the pictures in FOLDER.
#include "app/frmMain.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "drawing/PictureBox.h"
#include "plots/Chart2D.h"
#include "program/Program.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"

namespace tessel {

namespace {

class Walkthrough {
  public:
    Walkthrough(const QString& samples, const QString& folder)
        : samples_(samples), folder_(folder), main_(createProgram()) {
        QObject::connect(&boxes_, &QTimer::timeout, &boxes_, [this] { answerBox(); });
        boxes_.start(20);
    }

    void run() {
        main_->show();
        settle(3000);
        keep(*main_, u"01-start"_s);
        import();
        deleteLostFixes();
        lookAtRows();
        findRows();
        lookAtReadings();
        editOnTheMap();
        editARow();
        takeBack();
        analyse();
        otherImports();
        otherWindows();
        saveWhatIsDone();
    }

  private:
    static void settle(int milliseconds = 150) { QTest::qWait(milliseconds); }

    void keep(QWidget& window, const QString& name) {
        settle();
        if (!window.grab().save(folder_ + u'/' + name + u".png"_s))
            throw DriverError("cannot write a picture into " + folder_.toStdString());
        say(u"picture "_s + name + u".png"_s);
    }

    // A window that an item opens, as it opens.
    void keepOpened(const QString& item, const QString& window, const QString& name) {
        chooseItem(*main_, item);
        keep(shownWindow(window), name);
        shownWindow(window).close();
    }

    static void say(const QString& text) { QTextStream(stdout) << text << Qt::endl; }

    // Reads a message as a user does, keeps its picture and agrees.
    void answerBox() {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible()) return;
        say(box->windowTitle() + u" says: "_s + box->text().replace(u'\n', u' '));
        box->grab().save(folder_ + u"/message-%1.png"_s.arg(++messages_, 2, 10, QChar(u'0')));
        auto* const yes = box->button(QMessageBox::Yes);
        (yes != nullptr ? yes : box->button(QMessageBox::Ok))->click();
    }

    void import() {
        // Names without a folder: the pictures are the same on every computer.
        QDir::setCurrent(samples_);
        const TrimbleEntries entries{
            "field_without_stops.dat", u"10"_s, {1, 8}, {10, 21}, {23, 34}, {36, 43}, {45, 52}};
        beforeClick_ = [this](QWidget& window) { keep(window, u"02-"_s + window.objectName()); };
        importTrimbleFile(*main_, entries, beforeClick_);
        keep(*main_, u"03-imported"_s);
    }

    void deleteLostFixes() {
        chooseItem(*main_, u"mnuSuspects"_s);
        QWidget& window = shownWindow(u"frmSuspects"_s);
        clickOn(window, u"chkFar"_s);
        waitForTheSearch(window);
        clickOn(window, u"chkRepeated"_s);
        waitForTheSearch(window);
        clickOn(window, u"cmdDeleteSuspects"_s);
        waitForTheSearch(window);
        clickOn(window, u"chkFar"_s);
        clickOn(window, u"chkRepeated"_s);
        clickOn(window, u"chkSpikes"_s);
        waitForTheSearch(window);
        keep(window, u"07-frmSuspects"_s);
        window.close();
    }

    void waitForTheSearch(QWidget& window) {
        auto& status = controlAs<QLabel>(window, u"lblSuspects"_s);
        for (int i = 0; i < 100 && status.text().contains(u"flagged"_s) == false; ++i)
            settle(50);
        settle();
    }

    void lookAtRows() {
        chooseItem(*main_, u"mnuTrue_Dis"_s);
        keep(*main_, u"05-lag-distances"_s);
        chooseItem(*main_, u"mnuData"_s);
        QWidget& dialog = shownWindow(u"frmDataEdit"_s);
        clickOn(dialog, u"Option3"_s);
        typeInto(dialog, u"Text1"_s, u"10"_s);
        keep(dialog, u"06-frmDataEdit"_s);
        clickOn(dialog, u"Command1"_s);
        waitUntilClosed(u"frmDataEdit"_s);
    }

    void findRows() {
        chooseItem(*main_, u"mnuTurns"_s);
        QWidget& turns = shownWindow(u"frmTurns"_s);
        keep(turns, u"09-frmTurns"_s);
        keep(*main_, u"10-turns-on-the-grid"_s);
        clickOn(turns, u"optTurnsDelete"_s);
        clickOn(turns, u"cmdOk"_s);
        waitUntilClosed(u"frmTurns"_s);
        chooseItem(*main_, u"mnuGrid"_s);
        keep(*main_, u"11-survey-grid"_s);
        keepOpened(u"mnuStat"_s, u"frmStat"_s, u"11-frmStat"_s);
    }

    void lookAtReadings() {
        chooseItem(*main_, u"mnuGridEM1"_s);
        keep(*main_, u"12-grid-by-reading"_s);
        keepOpened(u"mnuSavePicture"_s, u"frmPicture"_s, u"13-frmPicture"_s);
    }

    void editOnTheMap() {
        chooseItem(*main_, u"mnuIDEW"_s);
        QWidget& map = shownWindow(u"frmClip"_s);
        chooseItem(map, u"mnuFullMapTrue"_s);
        pickItem(map, u"comboRow"_s, 11);
        keep(map, u"14-frmClip"_s);
        pickItem(map, u"comboRow"_s, 0);
        chooseItem(map, u"mnuColourEM1"_s);
        chooseItem(map, u"mnuZsw"_s);
        clickOn(map, u"cmdClipOn"_s);
        auto& box = controlAs<PictureBox>(map, u"picMapZoom"_s);
        const auto at = [&box](double x, double y) {
            return QPoint(static_cast<int>(box.width() * x), static_cast<int>(box.height() * y));
        };
        QTest::mouseMove(&box, at(0.24, 0.10));
        QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, at(0.24, 0.10));
        QTest::mouseMove(&box, at(0.62, 0.27));
        keep(map, u"15-frmClip-rectangle"_s);
        QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, at(0.62, 0.27));
        clickOn(map, u"cmdClipOff"_s);
        clickOn(map, u"cmdDelete"_s);
        keep(map, u"16-frmClip-deleted"_s);
        chooseItem(map, u"mnuDone"_s);
        waitUntilClosed(u"frmClip"_s);
    }

    // Where the pipe crosses row 12: Shift and drag select its readings.
    void editARow() {
        chooseItem(*main_, u"mnuY"_s);
        QWidget& window = *main_;
        clickOn(window, u"Option2"_s);
        typeInto(window, u"Text1"_s, u"12"_s);
        clickOn(window, u"Command3"_s);
        auto& profile = controlAs<Chart2D>(window, u"Chart2D3"_s);
        const Chart2D::Point pipe = highestPoint(profile);
        const QRect plot = profile.plotArea().toAlignedRect();
        const auto beside = [&](double metres) {
            return qRound(profile.dataToPixel(pipe.x + metres, 0).x());
        };
        const QPoint from(beside(-13), plot.top() + 10), to(beside(5), plot.bottom() - 10);
        QTest::mousePress(&profile, Qt::LeftButton, Qt::ShiftModifier, from);
        QTest::mouseMove(&profile, (from + to) / 2);
        QTest::mouseMove(&profile, to);
        keep(window, u"17-row-plots-box"_s);
        QTest::mouseRelease(&profile, Qt::LeftButton, Qt::ShiftModifier, to);
        keep(window, u"17-row-plots"_s);
        clickOn(window, u"Command5"_s);
        keep(window, u"18-row-plots-deleted"_s);
        clickOn(window, u"Command4"_s);
    }

    static Chart2D::Point highestPoint(const Chart2D& chart) {
        Chart2D::Point highest{0, -1e300};
        for (qsizetype i = 0; i < chart.pointCount(Chart2D::kData, 1); ++i) {
            const auto point = chart.point(Chart2D::kData, 1, i);
            if (point.y < 1e300 && point.y > highest.y) highest = point;
        }
        return highest;
    }

    void takeBack() { keepOpened(u"mnuHistory"_s, u"frmHistory"_s, u"19-frmHistory"_s); }

    void analyse() {
        keepOpened(u"mnuAdjust"_s, u"frmAdjustData"_s, u"20-frmAdjustData"_s);
        chooseItem(*main_, u"mnuHist"_s);
        QWidget& histograms = shownWindow(u"frmHistForm"_s);
        chooseItem(histograms, u"mnuPlot"_s);
        keep(histograms, u"21-frmHistForm"_s);
        chooseItem(histograms, u"mnuDone"_s);
        chooseItem(*main_, u"mnuSigCorr"_s);
        QWidget& correlation = shownWindow(u"frmSigCorrStruct"_s);
        chooseItem(correlation, u"mnuPlot1"_s);
        keep(correlation, u"22-frmSigCorrStruct"_s);
        chooseItem(correlation, u"mnuExit"_s);
    }

    void otherImports() {
        chooseItem(*main_, u"mnuOpen2"_s);
        QWidget& generic = shownWindow(u"frmGeneric"_s);
        typeInto(generic, u"txtGFile"_s, u"generic_4_site_xy_ec1_ec2_row.csv"_s);
        clickOn(generic, u"optCF_3"_s);
        keep(generic, u"23-frmGeneric"_s);
        clickOn(generic, u"cmdCancel"_s);
        chooseItem(*main_, u"mnuImportTable"_s);
        QWidget& table = shownWindow(u"frmTable"_s);
        typeInto(table, u"txtFile"_s, u"field_in_degrees.csv"_s);
        settle(500);
        keep(table, u"24-frmTable"_s);
        clickOn(table, u"cmdCancel"_s);
    }

    void otherWindows() {
        keepOpened(u"mnuCoordinates"_s, u"frmCoordinates"_s, u"25-frmCoordinates"_s);
        keepOpened(u"mnuHmain1"_s, u"frmHelpTesl"_s, u"26-frmHelpTesl"_s);
        keepOpened(u"mnuHelpAbout"_s, u"frmAbout"_s, u"27-frmAbout"_s);
    }

    void saveWhatIsDone() {
        setFileResponder([this](const FileQuestion&) { return folder_ + u"/field.csv"_s; });
        chooseItem(*main_, u"mnuSaveTable"_s);
        QWidget& table = shownWindow(u"frmSaveTable"_s);
        keep(table, u"28-frmSaveTable"_s);
        clickOn(table, u"cmdSave"_s);
        waitUntilClosed(u"frmSaveTable"_s);
        setFileResponder({});
        beforeClick_ = [this](QWidget& window) { keep(window, u"29-"_s + window.objectName()); };
        QDir::setCurrent(folder_);
        exportTransectFile(*main_, "transect.txt", u"1"_s, beforeClick_);
        main_->close();
    }

    QString samples_;
    QString folder_;
    std::unique_ptr<frmMain> main_;
    QTimer boxes_;
    int messages_ = 0;
    BeforeAccepting beforeClick_;
};

}  // namespace

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    Application application(argc, argv);
    if (argc != 3 || !QDir().mkpath(QString::fromLocal8Bit(argv[2]))) {
        QTextStream(stderr) << "usage: varn-tessel-walkthrough SAMPLES FOLDER\n";
        return 2;
    }
    const QString samples = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    const QString folder = QDir(QString::fromLocal8Bit(argv[2])).absolutePath();
    theSession().AppDir = Application::applicationDirPath().toStdString();
    theSession().DataDir = toPath(folder);
    int outcome = 0;
    QTimer::singleShot(0, &application, [&] {
        try {
            Walkthrough(samples, folder).run();
        } catch (const std::exception& error) {
            QTextStream(stderr) << "error: " << error.what() << '\n';
            outcome = 1;
        }
        Application::exit(outcome);
    });
    Application::exec();
    return outcome;
}

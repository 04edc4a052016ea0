// SPDX-License-Identifier: GPL-3.0-or-later
// Drives the real windows through a typical run on a sample survey and keeps a picture of every window:
//     varn-tessel-walkthrough SAMPLES FOLDER
// leaves the exported transect file, the error log and the pictures in FOLDER.
#include "app/frmMain.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "drawing/PictureBox.h"
#include "plots/Chart2D.h"
#include "program/Program.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"

#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;

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
        review();
        editOnTheMap();
        editARow();
        rowDialog();
        analyse();
        otherWindows();
        exportSurvey();
    }

  private:
    static void settle(int milliseconds = 150) { QTest::qWait(milliseconds); }

    void keep(QWidget& window, const QString& name) {
        settle();
        if (!window.grab().save(folder_ + u'/' + name + u".png"_s))
            throw DriverError("cannot write a picture into " + folder_.toStdString());
        say(u"picture "_s + name + u".png"_s);
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
        TrimbleEntries entries{u"serpentine_two_readings.dat"_s,
                               u"3"_s,
                               {u"1"_s, u"8"_s},
                               {u"10"_s, u"21"_s},
                               {u"23"_s, u"34"_s},
                               {u"36"_s, u"43"_s},
                               {u"45"_s, u"52"_s}};
        beforeClick_ = [this](QWidget& window) { keep(window, u"02-"_s + window.objectName()); };
        importTrimbleFile(*main_, entries, beforeClick_);
        keep(*main_, u"03-imported"_s);
    }

    void review() {
        chooseItem(*main_, u"mnuStat"_s);
        keep(shownWindow(u"frmStat"_s), u"04-frmStat"_s);
        shownWindow(u"frmStat"_s).close();
        chooseItem(*main_, u"mnuTrue_Dis"_s);
        keep(*main_, u"05-lag-distances"_s);
        chooseItem(*main_, u"mnuGrid"_s);
        keep(*main_, u"06-survey-grid"_s);
    }

    void editOnTheMap() {
        chooseItem(*main_, u"mnuIDEW"_s);
        QWidget& map = shownWindow(u"frmClip"_s);
        chooseItem(map, u"mnuFullMapTrue"_s);
        pickItem(map, u"comboRow"_s, 17);
        keep(map, u"07-frmClip"_s);
        chooseItem(map, u"mnuZnw"_s);
        clickOn(map, u"cmdClipOn"_s);
        auto& box = controlAs<PictureBox>(map, u"picMapZoom"_s);
        const auto at = [&box](double x, double y) {
            return QPoint(static_cast<int>(box.width() * x), static_cast<int>(box.height() * y));
        };
        QTest::mouseMove(&box, at(0.06, 0.28));
        QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, at(0.06, 0.28));
        QTest::mouseMove(&box, at(0.97, 0.345));
        keep(map, u"08-frmClip-rectangle"_s);
        QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, at(0.97, 0.345));
        clickOn(map, u"cmdClipOff"_s);
        clickOn(map, u"cmdDelete"_s);
        chooseItem(map, u"mnuFullMapTrue"_s);
        keep(map, u"09-frmClip-deleted"_s);
        chooseItem(map, u"mnuDone"_s);
        waitUntilClosed(u"frmClip"_s);
    }

    // The highest reading of row 4 is a piece of metal: picks it on the profile and deletes its site.
    void editARow() {
        chooseItem(*main_, u"mnuY"_s);
        QWidget& window = *main_;
        clickOn(window, u"Option2"_s);
        typeInto(window, u"Text1"_s, u"4"_s);
        clickOn(window, u"Command3"_s);
        auto& profile = controlAs<Chart2D>(window, u"Chart2D3"_s);
        Chart2D::Point highest{0, -1e300};
        for (qsizetype i = 0; i < profile.pointCount(Chart2D::kData, 1); ++i) {
            const auto point = profile.point(Chart2D::kData, 1, i);
            if (point.y < 1e300 && point.y > highest.y) highest = point;
        }
        const QPoint pixel = profile.dataToPixel(highest.x, highest.y).toPoint();
        QTest::mouseMove(&profile, pixel);
        QTest::mouseClick(&profile, Qt::LeftButton, Qt::NoModifier, pixel);
        QTest::mouseMove(&profile, pixel + QPoint(1, 0));
        keep(window, u"10-row-plots"_s);
        clickOn(window, u"Command5"_s);
        keep(window, u"11-row-plots-deleted"_s);
        clickOn(window, u"Command4"_s);
    }

    void rowDialog() {
        chooseItem(*main_, u"mnuData"_s);
        QWidget& dialog = shownWindow(u"frmDataEdit"_s);
        clickOn(dialog, u"Option3"_s);
        typeInto(dialog, u"Text1"_s, u"3"_s);
        keep(dialog, u"12-frmDataEdit"_s);
        clickOn(dialog, u"Command1"_s);
        waitUntilClosed(u"frmDataEdit"_s);
    }

    void analyse() {
        chooseItem(*main_, u"mnuAdjust"_s);
        QWidget& adjust = shownWindow(u"frmAdjustData"_s);
        keep(adjust, u"13-frmAdjustData"_s);
        clickOn(adjust, u"cmdFinished"_s);
        chooseItem(*main_, u"mnuHist"_s);
        QWidget& histograms = shownWindow(u"frmHistForm"_s);
        chooseItem(histograms, u"mnuPlot"_s);
        keep(histograms, u"14-frmHistForm"_s);
        chooseItem(histograms, u"mnuDone"_s);
        chooseItem(*main_, u"mnuSigCorr"_s);
        QWidget& correlation = shownWindow(u"frmSigCorrStruct"_s);
        chooseItem(correlation, u"mnuPlot1"_s);
        keep(correlation, u"15-frmSigCorrStruct"_s);
        chooseItem(correlation, u"mnuExit"_s);
    }

    void otherWindows() {
        chooseItem(*main_, u"mnuOpen2"_s);
        QWidget& generic = shownWindow(u"frmGeneric"_s);
        typeInto(generic, u"txtGFile"_s, u"generic_4_site_xy_ec1_ec2_row.csv"_s);
        clickOn(generic, u"optCF_3"_s);
        keep(generic, u"16-frmGeneric"_s);
        clickOn(generic, u"cmdCancel"_s);
        chooseItem(*main_, u"mnuHmain1"_s);
        keep(shownWindow(u"frmHelpTesl"_s), u"17-frmHelpTesl"_s);
        shownWindow(u"frmHelpTesl"_s).close();
        chooseItem(*main_, u"mnuHelpAbout"_s);
        QWidget& about = shownWindow(u"frmAbout"_s);
        keep(about, u"18-frmAbout"_s);
        clickOn(about, u"Command1"_s);
    }

    void exportSurvey() {
        beforeClick_ = [this](QWidget& window) { keep(window, u"19-"_s + window.objectName()); };
        QDir::setCurrent(folder_);
        exportTransectFile(*main_, u"transect.txt"_s, u"1"_s, beforeClick_);
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

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/frmMain.h"
#include "base/palette16.h"
#include "base/session.h"
#include "desktop/Windows.h"
#include "plots/frmClip.h"
#include "program/Program.h"
#include "rows/row_detection.h"
#include "support/ExpectedBoxes.h"
#include "support/Pixels.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/survey_under_test.h"

namespace tessel {

inline const QString kDeleteQuestion =
    u"This action will permanently delete all currently masked site.\n"
    u"Are you sure you wish to delete these sites?"_s;
inline const QString kDeleted = u"All masked sites have been deleted."_s;
inline const QString kRestoreQuestion =
    u"This action will restore (i.e., unmask) all currently masked site.\n"
    u"Are you sure you wish to restore these sites?"_s;
inline const QString kRecovered = u"All masked sites have been recovered."_s;
inline const QString kExitQuestion =
    u"Warning! You have not deleted all of the currently masked sites.\n"
    u"Are you sure you wish to exit (and hence avoid deleting these sites)?"_s;

// What can be used in each state.
inline const QString kNotShown = u"mnuV cmdClipOn"_s;
inline const QString kBrowsing = u"mnuV mnuZ cmdClipOn frameClipC frameHLR frameLoc"_s;
inline const QString kBrowsingMasked = u"mnuV mnuZ mnuR cmdClipOn cmdDelete frameClipC frameHLR frameLoc"_s;
inline const QString kRestored = u"mnuV mnuZ mnuR cmdClipOn frameClipC frameHLR frameLoc"_s;
inline const QString kClipping = u"cmdClipOff frameClipC frameLoc"_s;
inline const QString kRectangleOpen = u"frameClipC frameLoc"_s;

// Three rows of four sites, 10 m apart, at y = 100, 110 and 120.
inline Survey threeRows() {
    std::vector<MadeSite> sites;
    for (int i = 0; i < 12; ++i)
        sites.push_back({10.0 * (i % 4), 100 + 10.0 * (i / 4), 30.0 + i, 60.0 + i, 1.0 + i / 4, 1000.0 + i});
    Survey survey = surveyWithRows(sites);
    survey.SiteData.resize(survey.NumSites);
    survey.SiteID.resize(sites.size());
    survey.SourceLine.resize(sites.size());
    return survey;
}

/// Opens the map on three rows of four sites and drives it as a user does.
class ClipWindow : public testing::Test {
  protected:
    ExpectedBoxes boxes;
    const std::unique_ptr<frmMain> program = createProgram();
    frmMain& main = *program;
    QPointer<frmClip> window;
    std::vector<MadeSite> expected;  ///< the sites as they should be
    std::unique_ptr<QSignalSpy> changes;

    ClipWindow() {
        surveyUnderTest() = threeRows();
        main.menusFollow(MenuEvent::kSitesImported);
        // Not shown: without a window system the pointer would find the window that was shown first.
    }
    ~ClipWindow() override { delete window; }

    void open() {
        expected = sitesIn(theSurvey());
        main.mnuIDEW->trigger();
        window = main.findChildren<frmClip*>().last();
        changes = std::make_unique<QSignalSpy>(window.data(), &frmClip::surveyChanged);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }

    void openOnFullMap() {
        open();
        choose(u"mnuFullMapMax"_s);
    }

    void choose(const QString& name) { chooseItem(*window, name); }

    void click(QPushButton* button) {
        ASSERT_TRUE(button->isVisible() && button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
    }

    QStringList usable() {
        QStringList names;
        for (QMenu* menu : {window->mnuV, window->mnuZ, window->mnuR})
            if (menu->menuAction()->isEnabled()) names << menu->objectName();
        for (QPushButton* button : {window->cmdClipOn, window->cmdClipOff})
            if (button->isEnabled()) names << button->objectName();
        for (QWidget* widget :
             {static_cast<QWidget*>(window->cmdDelete), static_cast<QWidget*>(window->frameClipC),
              static_cast<QWidget*>(window->frameHLR), static_cast<QWidget*>(window->frameLoc)})
            if (!widget->isHidden()) names << widget->objectName();
        return names;
    }

    // The whole survey, the three counts and what can be used.
    void expectState(const QString& state, int masked, int deleted) {
        EXPECT_EQ(usable().join(u' ').toStdString(), state.toStdString());
        EXPECT_EQ(window->lblMS->text(), QString::number(masked));
        EXPECT_EQ(window->lblVS->text(), QString::number(std::ssize(expected) - masked));
        EXPECT_EQ(window->lblDS->text(), QString::number(deleted));
        expectSurvey();
    }

    void expectSurvey() {
        EXPECT_EQ(sitesIn(theSurvey()), expected);
        EXPECT_EQ(theSurvey().SiteData.capacity(), std::ssize(expected));
        EXPECT_EQ(theSurvey().SiteID.size(), expected.size());
        const auto distances = theSurvey().TrueDist;
        Calculate_Distance(surveyUnderTest());
        EXPECT_EQ(distances, theSurvey().TrueDist);
    }

    void expectOneRow() {
        for (MadeSite& site : expected)
            site.row = 1;
        expectSurvey();
        EXPECT_EQ(theSurvey().NumRows, 1);
        EXPECT_EQ(theSurvey().RowIndex, 1);
        EXPECT_EQ(theSurvey().NumPoints[1], std::ssize(expected));
        EXPECT_EQ(theSurvey().NumPoints[2], 0);
        EXPECT_EQ(theSurvey().NumPoints[3], 0);
    }

    QPoint pixel(double mapX, double mapY) { return window->picMapZoom->toPixel(mapX, mapY).toPoint(); }
    QPoint pixelOfSite(double x, double y) {
        const auto [left, right, bottom, top] = SetMapScale(threeRows(), mapIsTrue);
        return pixel((x - left) / (right - left), (top - y) / (top - bottom));
    }
    bool mapIsTrue = false;

    void moveTo(const QPoint& place) { QTest::mouseMove(window->picMapZoom, place); }
    void press(const QPoint& place) {
        QTest::mouseClick(window->picMapZoom, Qt::LeftButton, Qt::NoModifier, place);
    }
    void drawRectangle(const QPoint& from, const QPoint& to) {
        moveTo(from);
        press(from);
        moveTo(to);
        press(to);
    }
    // With opposite corners in survey units, kept within the margin of the full map.
    void mask(double x1, double y1, double x2, double y2) {
        const auto place = [this](double x, double y) {
            return pixelOfSite(std::clamp(x, -1.2, 31.2), std::clamp(y, 99.2, 120.8));
        };
        drawRectangle(place(x1, y1), place(x2, y2));
    }
    void maskAndFinish(double x1, double y1, double x2, double y2) {
        click(window->cmdClipOn);
        mask(x1, y1, x2, y2);
        click(window->cmdClipOff);
    }
    void deleteMasked() {
        boxes.ask(true, kDeleteQuestion);
        boxes.tell(kDeleted);
        click(window->cmdDelete);
    }
    void maskAndDelete(double x1, double y1, double x2, double y2) {
        maskAndFinish(x1, y1, x2, y2);
        deleteMasked();
        std::erase_if(expected, [=](const MadeSite& site) {
            return site.x > std::min(x1, x2) && site.x < std::max(x1, x2) && site.y > std::min(y1, y2) &&
                   site.y < std::max(y1, y2);
        });
    }

    void restore() {
        boxes.ask(true, kRestoreQuestion);
        boxes.tell(kRecovered);
        choose(u"mnuRecover"_s);
    }

    QImage picture() { return window->picMapZoom->grab().toImage(); }
    // The colour of a site's dot, white where there is none.
    QRgb dotAt(double x, double y) { return picture().pixel(pixelOfSite(x, y)) & 0xFFFFFFU; }
    void expectBlueDots() {
        for (const MadeSite& site : expected)
            EXPECT_EQ(dotAt(site.x, site.y), colour(kBlue));
    }
    bool shows(int colour) {
        const QImage image = picture();
        return countColour(image.copy(image.rect().adjusted(2, 2, -2, -2)), paletteColour(colour)) > 0;
    }
    static QRgb colour(int number) { return kBasicPalette[static_cast<std::size_t>(number)]; }

    void closeWindow() {
        window->mnuDone->trigger();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

/// The same on the full map in max resolution.
class ClipWindowOnFullMap : public ClipWindow {
  protected:
    ClipWindowOnFullMap() { openOnFullMap(); }
};

}  // namespace tessel

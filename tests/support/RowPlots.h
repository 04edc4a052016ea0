// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/frmMain.h"
#include "desktop/Guarded.h"
#include "journal/journal.h"
#include "plots/RowPlotEditor.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/PlotWindow.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/plain_survey.h"

namespace tessel {

// Three rows along X: five sites, one site, four sites driven back.
inline Survey threeRowSurvey() {
    return madeSurvey({{100, 10, 20, 40, 1},
                       {110, 11, 30, 45, 1},
                       {120, 10, 25, 50, 1},
                       {130, 12, 28, 55, 1},
                       {140, 10, 22, 48, 1},
                       {140, 60, 33, 66, 2},
                       {160, 110, 12, 60, 3},
                       {150, 111, 18, 62, 3},
                       {140, 112, 15, 64, 3},
                       {130, 113, 11, 61, 3}});
}

inline Survey longRowSurvey(int sites) {
    std::vector<MadeSite> row;
    for (int i = 0; i < sites; ++i)
        row.push_back({double(i), 5, double(i % 7), double(10 + i % 5), 1});
    return madeSurvey(row);
}

/// The program's row plots and what a user does with them.
class RowPlots : public testing::Test {
  protected:
    RowPlots() {
        QObject::connect(&editor, &RowPlotEditor::surveyChanged, &main, [this] { ++changes; });
        main.resize(1024, 768);
        main.show();
        main.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&main));
    }

    void openByX(const Survey& survey) {
        openSurvey(main, survey);
        main.mnuX->trigger();
    }
    void openByY(const Survey& survey) {
        openSurvey(main, survey);
        main.mnuY->trigger();
    }

    void click(const char* button) { clickOn(main, QString::fromLatin1(button)); }
    void typeRow(const QString& number) {
        editor.Text1->setFocus();
        editor.Text1->selectAll();
        QTest::keyClick(editor.Text1, Qt::Key_Backspace);
        QTest::keyClicks(editor.Text1, number);
    }
    // Selects points of the current row one after another on the profile, then deletes them.
    void deletePoints(const std::vector<qsizetype>& points) {
        for (const qsizetype point : points)
            clickPoint(profile, 1, point);
        click("Command5");
    }

    std::vector<SiteIndex> selected() const {
        const RowSelection& selection = editor.selection();
        return {selection.SelPoints.begin(), selection.SelPoints.begin() + selection.SelCount};
    }

    void expectSteps(bool back, bool forward) {
        EXPECT_EQ(editor.Command1->isEnabled(), back);
        EXPECT_EQ(editor.Command2->isEnabled(), forward);
    }
    // The charts hold exactly this row of the survey as it is now.
    void expectRowShown(int row) {
        const Survey& survey = theSurvey();
        EXPECT_EQ(editor.CurrentRow, row);
        std::vector<Chart2D::Point> em1, em2, plan;
        for (SiteIndex i = 0; i < survey.NumSites; ++i) {
            if (survey.SiteData(kRow, i) != row) continue;
            const double along = survey.SiteData(editor.PlotByX ? kX : kY, i);
            em1.push_back({along, survey.SiteData(kEM1, i)});
            em2.push_back({along, survey.SiteData(kEM2, i)});
            plan.push_back({along, survey.SiteData(editor.PlotByX ? kY : kX, i)});
        }
        EXPECT_TRUE(pointsOf(profile, Chart2D::kData, 1) == em1);
        EXPECT_TRUE(pointsOf(profile, Chart2D::kData, 2) == em2);
        EXPECT_TRUE(pointsOf(map, Chart2D::kData, 1) == plan);
        const QString count = QString::number(em1.size()) +
                              (em1.size() == 1 ? QStringLiteral(" point)") : QStringLiteral(" points)"));
        EXPECT_EQ(map.headerText(), QStringLiteral("Sample Row Plot:  Row #%1 (").arg(row) + count);
        EXPECT_TRUE(profile.isVisible());
        EXPECT_TRUE(map.isVisible());
    }
    void expectNothingSelected() {
        EXPECT_EQ(editor.selection().SelCount, 0);
        EXPECT_EQ(profile.pointCount(Chart2D::kHighlight, 1), 0);
        EXPECT_EQ(map.pointCount(Chart2D::kHighlight, 1), 0);
        EXPECT_FALSE(editor.Command5->isEnabled());
    }
    // Neither read out nor selected.
    void expectNothingAt(Chart2D& chart, QPoint pixel) {
        pointAt(chart, pixel);
        EXPECT_EQ(chart.footerText(), u"No Point Selected"_s);
        clickAt(chart, pixel);
        expectNothingSelected();
    }
    void expectEmptied(int row) {
        EXPECT_EQ(map.headerText(), QStringLiteral("Sample Row Plot:  Row #%1 (0 point)").arg(row));
        EXPECT_EQ(profile.pointCount(Chart2D::kData, 1), 0);
        EXPECT_EQ(map.pointCount(Chart2D::kData, 1), 0);
        EXPECT_TRUE(profile.isVisible());
        EXPECT_TRUE(map.isVisible());
        EXPECT_TRUE(editor.Command6->isEnabled());
        expectNothingSelected();
    }

    const std::unique_ptr<frmMain> program = createProgram();
    frmMain& main = *program;
    RowPlotEditor& editor = *main.findChild<RowPlotEditor*>();
    Chart2D& profile = *editor.Chart2D3;
    Chart2D& map = *editor.Chart2D4;
    int changes = 0;
    ExpectedBoxes boxes;
};

/// The same, open on the three rows by X.
class OpenRowPlots : public RowPlots {
  protected:
    OpenRowPlots() { openByX(threeRowSurvey()); }
};

}  // namespace tessel

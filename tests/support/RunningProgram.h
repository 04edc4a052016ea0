// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/frmMain.h"
#include "base/session.h"
#include "desktop/FileNames.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"

namespace tessel {

/// Three sites 1 m apart, in one row.
Survey shortSurvey();
/// Rows along Y, 10 m apart, of three sites each: two or three of them.
Survey rowsAlongY(int rows);

/// The whole program while it runs: its main window is shown, and what it reads and writes lies in a folder
/// of the test's own. Whatever a test puts at the desktop's seams is gone afterwards, and every window is
/// hidden.
class RunningProgram {
  protected:
    /// With this survey as after an import, beside its error log; or as it starts, without one.
    explicit RunningProgram(const Survey& survey = {});
    ~RunningProgram();

    /// The survey and the error log of the beginning are still there.
    void expectSurveyAndLogAsBefore() const;

    /// The report of either import is to come.
    void expectTrimbleReport(int valid, int rejected);
    void expectGenericReport(int valid, int rejected);
    /// Exports, and expects the box that says so.
    void exportTo(const std::string& path, const QString& firstRow = QStringLiteral("1"),
                  const BeforeAccepting& look = {});
    /// Imports a file of a layout, 0 to 7; the boxes have been announced. What stays open
    /// after that is closed.
    void importGeneric(const std::string& path, int layout);
    /// Six sites, 5 or 4 m apart but for 10 m in their middle, and in two rows of three.
    void importTwoRows();
    /// Fills in the row dialog, one box for each text, and presses its button.
    void inRowDialog(const QString& option, const QStringList& inputs, const QStringList& texts);
    /// The same for one row or a true distance, which closes it.
    void deleteRow(int row);
    void findRows(const QString& distance);
    /// Saves a table of what is ticked after these clicks.
    void saveTable(const std::string& path, const QStringList& clicks = {});
    /// Drops files on the main window. False when it does not take them.
    bool drop(const QList<QUrl>& addresses);
    bool drop(const std::string& path) { return drop(QList{QUrl::fromLocalFile(fromPath(path))}); }
    /// From now on this file is chosen in every file dialog.
    static void chooseFile(const std::string& path);
    void expectTooManyRows();
    void expectNoSitesLeft();

    /// Whether a part of the main window is visible.
    bool isVisible(const QString& name) const;

    TemporaryFolder folder;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
    Survey before;
};

}  // namespace tessel

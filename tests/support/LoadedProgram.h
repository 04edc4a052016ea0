// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/frmMain.h"
#include "app/survey.h"
#include "base/session.h"
#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"
#include "desktop/TextEditor.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/Journeys.h"
#include "support/made_survey.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <memory>

namespace tessel {

/// The program as it is after an import: its main window is shown, three sites are in memory, and the error
/// log lies in a folder of its own. Whatever a test puts at the desktop's seams is gone afterwards.
class LoadedProgram {
  protected:
    LoadedProgram() {
        theSurvey() = madeSurvey({{1, 2, 30, 40, 1}, {2, 2, 31, 41, 1}, {3, 2, 32, 42, 1}});
        theSession() = Session{};
        theSession().AppDir = theSession().DataDir = folder.path();
        main = createProgram();
        main->menusFollow(MenuEvent::SitesImported);
        main->show();
        before = theSurvey();
        writeFile(folder / "error_log.dat", "the last import's log");
    }
    ~LoadedProgram() {
        setFileResponder({});
        setProgramStarter({});
        setDefaultPrinterName({});
    }

    void expectSurveyAndLogAsBefore() const {
        expectSameSurvey(theSurvey(), before);
        EXPECT_EQ(readFile(folder / "error_log.dat"), "the last import's log");
    }

    TemporaryFolder folder;
    ExpectedBoxes boxes;
    std::unique_ptr<frmMain> main;
    Survey before;
};

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/frmMain.h"
#include "desktop/FileDialogs.h"
#include "import/SurveyImport.h"
#include "program/Program.h"
#include "support/ExpectedBoxes.h"
#include "support/temporary_folder.h"

namespace tessel {

/// For tests of the import windows: the program, a survey in memory that an import replaces or leaves
/// alone, a folder for sensor files and error log, and no file dialog.
class ImportTest : public testing::Test {
  protected:
    ImportTest();

    /// The survey of the beginning is still there, but for a minimum distance that was typed, and exported.
    void expectSurveyUntouched() const;
    /// Whether the items that need a survey are enabled, and mnuSave.
    void expectMenus(bool surveyItems, bool save) const;

    /// Writes a sensor file and gives its path.
    std::string sensorFile(std::string_view bytes) const;
    std::string errorLog() const { return readFile(folder / "error_log.dat"); }

    /// Types into a box as a user does who first empties it.
    static void type(QLineEdit& box, const QString& text);
    static void click(QWidget& button);
    static QColor colourOf(const QWidget& widget) { return widget.palette().color(QPalette::WindowText); }

    /// A file dialog gives this path; empty is Cancel.
    void chooseFile(const std::string& path);
    int fileDialogs() const { return fileDialogs_; }
    const FileQuestion& lastQuestion() const { return lastQuestion_; }

    const TemporaryFolder folder;
    ExpectedBoxes boxes;
    const std::unique_ptr<frmMain> program = createProgram();
    frmMain& main = *program;
    SurveyImport& import = *main.findChild<SurveyImport*>();
    QSignalSpy imported{&import, &SurveyImport::imported};

  private:
    int fileDialogs_ = 0;
    FileQuestion lastQuestion_;
};

}  // namespace tessel

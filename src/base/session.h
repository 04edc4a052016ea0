// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace tessel {

/// What the program remembers while it runs, beside the survey.
struct Session {
    std::string InputFileName;  ///< full path of the sensor file chosen for import
    bool DataSaved = false;     ///< a transect file holds the survey as it is
    std::string AppDir;         ///< the program's directory: help documents and editor settings are read here
    std::string DataDir;        ///< where the error log and helpdoc.rtf are written; AppDir unless read-only
    std::string TextEditor;     ///< command that opens text files: the editor's path and one blank
    double PrintScale = 1.0;    ///< 1.0 for 300 dpi, 2.0 for 600 dpi, 4.0 for 1200 dpi
};

/// The one session of the process. Windows use it; what computes takes what it works on as an argument.
Session& theSession();

/// How often the survey of the process has been changed. Whoever has just changed it says so before anything
/// else is done, so that a failure that comes afterwards can be told from one that has left it as it was.
std::uint64_t surveyChanges();
void noteSurveyChange();

}  // namespace tessel

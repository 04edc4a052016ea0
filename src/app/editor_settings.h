#pragma once

#include "app/survey.h"

#include <string>

/// The editor that is in force when the settings file names none.
inline constexpr const char* kFallbackEditor = "c:\\Windows\\write.exe ";

/// Reads the suite's editor settings, VARN_te_fio_info.dat in the session's AppDir, into TextEditor (the
/// path and one blank) and PrintScale. Six items stand in it, separated by commas or line ends, quotes around
/// an item taken off: item 2 is the editor's path, item 6 the printer resolution factor, the others are
/// ignored. When the file cannot be read, has fewer than six items, item 2 is empty or item 6 is no positive
/// number, TextEditor is the fallback editor and PrintScale 1.0.
void ReadTEinfo(Session& session);

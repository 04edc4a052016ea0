// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <string>

namespace tessel {

/// Opens a text file in the text editor in force (the session's TextEditor). The editor's path may hold
/// blanks and may be followed by arguments; it is started without a shell, with the file's path as last
/// argument, and runs on by itself. When the editor in force is the fallback and this system has no such
/// program, the desktop's own application opens the file. Throws RunTimeError with editor, path and reason
/// when nothing could be started.
void startTextEditor(const std::string& path);

/// An editor command taken apart.
struct EditorCommand {
    QString program;
    QStringList arguments;
};

/// The longest leading part of the command that names an executable file is the program, what follows are
/// its arguments; quotes around the program or an argument are taken off. An empty program when there is
/// none.
EditorCommand splitEditorCommand(const QString& command);

/// True when the command is the fallback editor, whichever way its path is spelled.
bool isFallbackEditor(const QString& command);

/// Takes the place of starting a program, for tests: gives whether it "started".
using ProgramStarter = std::function<bool(const EditorCommand&)>;
void setProgramStarter(ProgramStarter starter);
/// The same for the desktop's own way to open a file.
using DesktopOpener = std::function<bool(const QString& path)>;
void setDesktopOpener(DesktopOpener opener);

}  // namespace tessel

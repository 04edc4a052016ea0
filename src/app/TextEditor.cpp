#include "app/TextEditor.h"

#include "app/FileDialogs.h"
#include "app/editor_settings.h"
#include "app/run_time_error.h"
#include "app/survey.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <utility>

namespace {

bool startProgram(const EditorCommand& command) {
    return QProcess::startDetached(command.program, command.arguments);
}

bool openOnDesktop(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

ProgramStarter& currentStarter() {
    static ProgramStarter starter = startProgram;
    return starter;
}

DesktopOpener& currentOpener() {
    static DesktopOpener opener = openOnDesktop;
    return opener;
}

QString executable(const QString& name) {
    const QFileInfo file(name);
    if (file.isAbsolute()) return file.isFile() && file.isExecutable() ? name : QString();
    return QStandardPaths::findExecutable(name);
}

}  // namespace

EditorCommand splitEditorCommand(const QString& command) {
    const QString text = command.trimmed();
    if (text.startsWith(u'"')) {
        QStringList parts = QProcess::splitCommand(text);
        if (parts.isEmpty()) return {};
        const QString program = executable(parts.takeFirst());
        return program.isEmpty() ? EditorCommand{} : EditorCommand{program, parts};
    }
    for (qsizetype end = text.size(); end > 0; end = text.lastIndexOf(u' ', end - 1)) {
        const QString program = executable(text.left(end).trimmed());
        if (!program.isEmpty()) return {program, QProcess::splitCommand(text.mid(end))};
    }
    return {};
}

bool isFallbackEditor(const QString& command) {
    return command.trimmed().compare(QString::fromUtf8(kFallbackEditor).trimmed(), Qt::CaseInsensitive) == 0;
}

void startTextEditor(const std::string& path) {
    const QString editor = QString::fromStdString(theSession().TextEditor);
    EditorCommand command = splitEditorCommand(editor);
    if (command.program.isEmpty() && isFallbackEditor(editor)) {
        if (currentOpener()(fromPath(path))) return;
        throw RunTimeError::file(path, "cannot be opened",
                                 "no text editor has been set and the desktop has no application for it");
    }
    const std::string name = editor.trimmed().toStdString();
    if (command.program.isEmpty())
        throw RunTimeError::file(path, "cannot be opened", "there is no program " + name);
    command.arguments << fromPath(path);
    if (!currentStarter()(command))
        throw RunTimeError::file(path, "cannot be opened", name + " cannot be started");
}

void setProgramStarter(ProgramStarter starter) {
    currentStarter() = starter ? std::move(starter) : ProgramStarter(startProgram);
}

void setDesktopOpener(DesktopOpener opener) {
    currentOpener() = opener ? std::move(opener) : DesktopOpener(openOnDesktop);
}

#include "app/TextEditor.h"

#include "app/FileDialogs.h"
#include "app/MessageBox.h"
#include "app/editor_settings.h"
#include "app/run_time_error.h"
#include "app/survey.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// What the desktop's opener ends with when nothing has been opened.
enum OpenerResult { kNoSuchFile = 2, kNoTool = 3, kActionFailed = 4 };

bool startProgram(const EditorCommand& command) {
    return QProcess::startDetached(command.program, command.arguments);
}

RunTimeError noApplication(const std::string& path) {
    return RunTimeError::file(path, "cannot be opened",
                              "no text editor has been set and the desktop has no application for it");
}

// The desktop's opener says only at its end that it has found no application. It may be the application by
// then, and is not to end with this program: nobody owns the process.
bool startDesktopOpener(const QString& opener, const QString& path) {
    auto* const process = new QProcess;
    QObject::connect(process, &QProcess::finished, process, [process, path](int code) {
        process->deleteLater();
        if (code >= kNoSuchFile && code <= kActionFailed)
            tell(nullptr, QString::fromStdString(noApplication(toPath(path)).description()));
    });
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { ::setsid(); });
    process->start(opener, {path});
    if (process->waitForStarted()) return true;
    delete process;
    return false;
}

bool openOnDesktop(const QString& path) {
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_s);
    return opener.isEmpty() ? QDesktopServices::openUrl(QUrl::fromLocalFile(path))
                            : startDesktopOpener(opener, path);
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
        throw noApplication(path);
    }
    const std::string name = editor.trimmed().toStdString();
    if (command.program.isEmpty())
        throw RunTimeError::file(path, "cannot be opened",
                                 QFileInfo(QString::fromStdString(name)).isFile()
                                     ? name + " may not be executed"
                                     : "there is no program " + name);
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

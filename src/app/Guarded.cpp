#include "app/Guarded.h"

#include "app/FileNames.h"
#include "app/MessageBox.h"
#include "app/run_time_error.h"

#include <csignal>
#include <new>

namespace {

QString descriptionOfCurrentException() {
    try {
        throw;
    } catch (const RunTimeError& error) {
        return fromPath(error.description());
    } catch (const std::bad_alloc&) {
        return QString::fromStdString(RunTimeError::outOfMemory().description());
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return QStringLiteral("Unexpected error");
    }
}

}  // namespace

void reportRunTimeError(QWidget* parent) {
    tell(parent, descriptionOfCurrentException());
}

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    // Handled rather than ignored: what is ignored would be inherited by the editors that we start.
    std::signal(SIGXFSZ, [](int) {});
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        reportRunTimeError(activeWindow());
        return true;
    }
}

#include "app/Guarded.h"

#include "app/MessageBox.h"
#include "app/run_time_error.h"

#include <new>

namespace {

QString descriptionOfCurrentException() {
    try {
        throw;
    } catch (const RunTimeError& error) {
        return QString::fromStdString(error.description());
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

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        reportRunTimeError(activeWindow());
        return true;
    }
}

#include "app/Windows.h"

#include <QWidget>

void showModal(QWidget* window) {
    window->setWindowModality(Qt::WindowModal);
    showBeside(window);
}

void showBeside(QWidget* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    window->raise();
    window->activateWindow();
}

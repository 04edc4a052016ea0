#include "app/ProgramIcon.h"

#include <initializer_list>

using namespace Qt::StringLiterals;

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256, 512})
        icon.addFile(u":/icon/%1.png"_s.arg(size), QSize(size, size));
    return icon;
}

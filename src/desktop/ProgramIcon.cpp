// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/ProgramIcon.h"

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace tessel {

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256, 512})
        icon.addFile(u":/icon/%1.png"_s.arg(size), QSize(size, size));
    return icon;
}

}  // namespace tessel

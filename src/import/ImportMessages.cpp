// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/ImportMessages.h"

#include "desktop/FileDialogs.h"
#include "desktop/MessageBox.h"

using namespace Qt::StringLiterals;

namespace tessel {

void tellLogProblem(QWidget* parent, const std::string& problem) {
    if (problem.empty()) return;
    tell(parent, u"The error log could not be written:\n"_s + fromPath(problem) +
                     u"\n\nThe file has been read without it."_s);
}

}  // namespace tessel

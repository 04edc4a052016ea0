#include "import/ImportMessages.h"

#include "app/FileDialogs.h"
#include "app/MessageBox.h"

using namespace Qt::StringLiterals;

void tellLogProblem(QWidget* parent, const std::string& problem) {
    if (problem.empty()) return;
    tell(parent, u"The error log could not be written:\n"_s + fromPath(problem) +
                     u"\n\nThe file has been read without it."_s);
}

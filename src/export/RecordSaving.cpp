// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/RecordSaving.h"

#include "base/file_replacement.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"

using namespace Qt::StringLiterals;

namespace tessel {

std::string saveRecord(QWidget* parent, const QString& proposed,
                       const std::function<ProcessingRecord()>& record) {
    const QString chosen =
        askSaveFile(parent, u"Save the processing record"_s,
                    u"YAML Files (*.yaml)|*.yaml|All Files (*.*)|*"_s, u"yaml"_s, proposed);
    if (chosen.isEmpty()) return {};
    const Hourglass hourglass(parent);
    std::string path = toPath(chosen);
    FileReplacement file(path);
    file.write(recordText(record()));
    file.commit();
    return path;
}

}  // namespace tessel

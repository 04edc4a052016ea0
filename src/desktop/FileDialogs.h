// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "desktop/FileNames.h"

#include <QString>

#include <functional>

class QWidget;

namespace tessel {

// The one way in which the program asks for a file, and the one seam at which a test answers.

/// A file dialog as the program asks for it. The filter holds pairs of description and pattern separated by
/// bars: "Text Files (*.txt)|*.TXT|All Files (*.*)|*". Patterns match upper and lower case alike.
struct FileQuestion {
    QString caption;
    QString filter;
    bool toSave = false;
    QString suffix;
    QString proposed;     ///< the path that stands there at first, to be taken or replaced by typing
    int firstFilter = 0;  ///< the pair of the filter that is in force when the dialog comes up
};

/// What a file dialog offers where a file may have any name.
inline const QString kAllFiles = QStringLiteral("All Files (*.*)|*");

/// Asks for an existing file that holds its bytes (input_file.h), and opens none; empty when cancelled.
/// Symbolic links count as what they point to. `firstFilter`
/// is the pair of the filter with which the dialog comes up.
QString askOpenFile(QWidget* parent, const QString& caption, const QString& filter, int firstFilter = 0);

/// Asks for a file to write, and whether an existing one may be replaced; empty when cancelled. The name is
/// what was typed; a suffix ("pdf") is only added to a name without one, and only if one is given. A path
/// that is proposed stands there at first.
QString askSaveFile(QWidget* parent, const QString& caption, const QString& filter,
                    const QString& suffix = {}, const QString& proposed = {});

/// Takes the place of the dialog on the screen: gives the path, or nothing for Cancel.
using FileResponder = std::function<QString(const FileQuestion&)>;
void setFileResponder(FileResponder responder);

/// The filter as Qt's dialogs take it, one text for each pair; the description is shown as it stands.
QStringList nameFilters(const QString& filter);

}  // namespace tessel

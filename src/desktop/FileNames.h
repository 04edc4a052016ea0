// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <string>

class QMimeData;
class QUrl;

namespace tessel {

// File names are bytes, and windows show texts. A name whose bytes are UTF-8 is that text; of any other name
// (written by another system, in Latin-1 say) each foreign byte becomes a code of its own that no text has,
// so that no name is lost on the way into a box and back.

/// Between the texts of windows and dialogs and the paths of the standard library, without loss in both
/// directions. Not for showing: see legible().
std::string toPath(const QString& path);
QString fromPath(const std::string& path);

/// A text with names in it as it is shown: a foreign byte reads "\xFC". Message boxes do this by themselves.
QString legible(const QString& text);

/// The path of a local file's address, byte for byte; empty for an address of another kind.
QString localPath(const QUrl& address);

/// The first file of what was dropped; empty when it holds none.
QString droppedFile(const QMimeData& data);

/// The file that was meant by what a user has typed or pasted: a path, with blanks around it or not; a file's
/// address ("file:///home/..."); or a name with foreign bytes as legible() shows them. A name that exists as
/// it stands is taken as it stands. What is relative is in `folder`, or in the current one.
std::string pathMeantBy(const QString& text, const std::string& folder = {});

}  // namespace tessel

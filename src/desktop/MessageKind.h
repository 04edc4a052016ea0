// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;

namespace tessel {

/// What a message is to its reader; each has an icon of its own.
enum class MessageKind {
    kInformation,  ///< something has been done, or how something is
    kQuestion,     ///< Yes or No, and nothing is lost by either
    kWarning,      ///< an entry to correct, something that is not possible now, or Yes would lose something
    kError         ///< an action was abandoned
};

/// The kind of a message, by the words with which it begins. The messages that inform and warn are known;
/// what is none of them is the description of a failure.
MessageKind messageKind(const QString& text, bool question);

}  // namespace tessel

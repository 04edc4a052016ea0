// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace tessel {

/// Counts, while a document is read, what it will take to lay it out, so that one that would hold up the
/// program is given up before it is built. A document within the limits is shown within a second, or a second
/// for each megabyte of its file.
///
/// The unit is a paragraph or a run of one format, some 6 microseconds. Long words cost by the square of
/// their length, since each of their lines is looked for to the word's end; tabs of one paragraph likewise.
class RichTextMeasure {
  public:
    static constexpr qint64 kMostParts = 100'000;
    static constexpr qint64 kMostCharacters = 4'000'000;
    static constexpr qint64 kPartsOfCell = 10;
    static constexpr qint64 kPartsOfFont = 100;  ///< for the first run in a family of fonts

    /// A run of the paragraph under way.
    void addRun(const QString& text, const QStringList& families);
    /// The paragraph under way is whole.
    void endParagraph();
    void addCell() { parts_ += kPartsOfCell; }

    bool isTooLarge() const { return parts_ > kMostParts || characters_ > kMostCharacters; }
    qint64 parts() const { return parts_; }

  private:
    qint64 partsOfWords() const;

    qint64 parts_ = 0;
    qint64 characters_ = 0;
    QSet<QStringList> families_;
    QString paragraph_;      // under way
    QList<qsizetype> runs_;  // where they begin in it
};

}  // namespace tessel

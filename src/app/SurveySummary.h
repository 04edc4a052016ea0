// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey_description.h"

#include <QWidget>

#include <optional>

class QGridLayout;
class QLabel;

namespace tessel {

/// The lines of a survey's description as a small table on white paper: captions at the left, ranges with
/// their numbers one below the other, what a user must know in dark red. Every part is a label that can be
/// selected, named lblSummary and the line's name ("lblSummarySites"; a second one of that name
/// "lblSummaryWarning2"; of a range "lblSummaryX" and "lblSummaryXTo"). Whatever a file or a path holds is
/// shown as text.
class SurveySummary : public QWidget {
    Q_OBJECT

  public:
    explicit SurveySummary(QWidget* parent = nullptr);

    void setLines(const std::vector<DescriptionLine>& lines);
    /// The whole table as text, a line for each of its lines, for those who cannot see it.
    const QString& text() const { return text_; }

  Q_SIGNALS:
    /// The link to the error log was followed, with mouse or keyboard.
    void logRequested();

  private:
    void clear();
    bool beginsGroup(DescriptionKind kind) const;
    void addLine(const DescriptionLine& line);
    void addCaption(const DescriptionLine& line, int row);
    void addRange(const DescriptionLine& line, int row);
    QLabel* part(QLabel* label, const QString& name);
    QLabel* valueOf(const DescriptionLine& line);
    QString freeName(const std::string& name) const;

    QGridLayout* grid_ = nullptr;
    QString text_;
    std::optional<DescriptionKind> before_;  // of the line added last
};

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SurveySummary.h"

#include "base/palette16.h"
#include "desktop/CaptionColour.h"
#include "desktop/ElidedLabel.h"
#include "desktop/ShownText.h"

#include <QFocusEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

enum Column { kCaption, kFrom, kTo, kUpTo, kUnit, kRest };

// As many characters as the eye follows in a line.
constexpr int kWidth = 90;
constexpr QRgb kCaptionGrey = 0x6A6A6A;

void colour(QLabel& label, QRgb rgb) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, QColor(rgb));
    label.setPalette(palette);
}

// A link that Tab marks and Enter follows at once: a label's own wants a second Tab for that.
class LinkLabel : public QLabel {
  public:
    explicit LinkLabel(const QString& text) {
        setTextFormat(Qt::RichText);
        // Links take their colour from the theme, which may be meant for a dark ground, unless they say it.
        setText(u"<a href=\"log\"><span style=\"color:%1\">%2</span></a>"_s.arg(
            QColor(QRgb{kBasicPalette[kBlue]}).name(), text.toHtmlEscaped()));
    }

  protected:
    void focusInEvent(QFocusEvent* event) override {
        QLabel::focusInEvent(event);
        const auto reason = event->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) focusNextPrevChild(true);
    }

    void keyPressEvent(QKeyEvent* event) override {
        const int key = event->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Space)
            return QLabel::keyPressEvent(event);
        Q_EMIT linkActivated(u"log"_s);
    }
};

QLabel* plainLabel(const QString& text) {
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

QLabel* logLine(const QString& text) {
    auto* const label = new ElidedLabel(text, Qt::ElideRight);
    label->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return label;
}

QLabel* warning(const QString& text) {
    QLabel* const label = plainLabel(text);
    label->setWordWrap(true);
    colour(*label, kBasicPalette[kWarningColour]);
    return label;
}

}  // namespace

SurveySummary::SurveySummary(QWidget* parent) : QWidget(parent) {
    setMaximumWidth(fontMetrics().averageCharWidth() * kWidth);
}

void SurveySummary::setLines(const std::vector<DescriptionLine>& lines) {
    clear();
    grid_ = new QGridLayout(this);
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setHorizontalSpacing(fontMetrics().averageCharWidth());
    grid_->setVerticalSpacing(fontMetrics().height() / 4);
    grid_->setColumnStretch(kRest, 1);
    for (const DescriptionLine& line : lines)
        addLine(line);
    // Not only when events are handled next: what is on the screen is up to date when this returns.
    for (QLabel* label : findChildren<QLabel*>(Qt::FindDirectChildrenOnly))
        label->show();
}

// A gap stands behind the warnings and before the error log.
bool SurveySummary::beginsGroup(DescriptionKind kind) const {
    if (before_ == DescriptionKind::kWarning) return kind != DescriptionKind::kWarning;
    const bool figures = before_ == DescriptionKind::kFact || before_ == DescriptionKind::kRange;
    return figures && kind != DescriptionKind::kFact && kind != DescriptionKind::kRange;
}

void SurveySummary::clear() {
    qDeleteAll(findChildren<QLabel*>(Qt::FindDirectChildrenOnly));
    delete grid_;
    before_.reset();
    text_.clear();
}

void SurveySummary::addLine(const DescriptionLine& line) {
    if (beginsGroup(line.kind)) grid_->setRowMinimumHeight(grid_->rowCount(), fontMetrics().height() / 2);
    before_ = line.kind;
    const int row = grid_->rowCount();
    addCaption(line, row);
    if (line.kind == DescriptionKind::kRange)
        addRange(line, row);
    else
        grid_->addWidget(part(valueOf(line), freeName(line.name)), row, kFrom, 1, -1);
}

void SurveySummary::addCaption(const DescriptionLine& line, int row) {
    if (!text_.isEmpty()) text_ += u'\n';
    if (line.caption.empty()) return;
    const QString caption = shownText(line.caption);
    text_ += caption + u": "_s;
    QLabel* const label = plainLabel(caption);
    label->setObjectName(u"cap"_s + freeName(line.name).mid(3));
    colour(*label, line.kind == DescriptionKind::kWarning ? kBasicPalette[kWarningColour] : kCaptionGrey);
    grid_->addWidget(label, row, kCaption, Qt::AlignRight | Qt::AlignTop);
}

void SurveySummary::addRange(const DescriptionLine& line, int row) {
    const QString from = shownText(line.text), upTo = shownText(line.upTo), unit = shownText(line.unit);
    const QString name = freeName(line.name);
    text_ += u"%1 to %2 %3"_s.arg(from, upTo, unit);
    grid_->addWidget(part(plainLabel(from), name), row, kFrom, Qt::AlignRight);
    grid_->addWidget(part(plainLabel(u"to"_s), name + u"Word"_s), row, kTo);
    grid_->addWidget(part(plainLabel(upTo), name + u"To"_s), row, kUpTo, Qt::AlignRight);
    grid_->addWidget(part(plainLabel(unit), name + u"Unit"_s), row, kUnit);
}

QLabel* SurveySummary::valueOf(const DescriptionLine& line) {
    const QString text = shownText(line.text);
    text_ += text;
    switch (line.kind) {
        case DescriptionKind::kWarning:
            return warning(text);
        case DescriptionKind::kPath:
            return new ElidedLabel(text, Qt::ElideMiddle);
        case DescriptionKind::kLogLine:
            return logLine(text);
        case DescriptionKind::kLink: {
            auto* const link = new LinkLabel(text);
            connect(link, &QLabel::linkActivated, this, &SurveySummary::logRequested);
            return link;
        }
        case DescriptionKind::kFact:
        case DescriptionKind::kRange:
            break;
    }
    QLabel* const fact = plainLabel(text);
    fact->setWordWrap(true);
    return fact;
}

QLabel* SurveySummary::part(QLabel* label, const QString& name) {
    label->setObjectName(name);
    label->setTextInteractionFlags(label->textFormat() == Qt::PlainText ? Qt::TextSelectableByMouse
                                                                        : Qt::TextBrowserInteraction);
    return label;
}

QString SurveySummary::freeName(const std::string& name) const {
    const QString first = u"lblSummary"_s + QString::fromStdString(name);
    QString free = first;
    for (int i = 2; findChild<QLabel*>(free, Qt::FindDirectChildrenOnly) != nullptr; ++i)
        free = first + QString::number(i);
    return free;
}

}  // namespace tessel

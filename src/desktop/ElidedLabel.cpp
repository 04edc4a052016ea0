// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/ElidedLabel.h"

#include <QEvent>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kFewestCharacters = 12;

}  // namespace

ElidedLabel::ElidedLabel(const QString& text, Qt::TextElideMode mode, QWidget* parent)
    : QLabel(parent), whole_(text), mode_(mode) {
    setTextFormat(Qt::PlainText);
    setAccessibleName(whole_);
    shorten();
}

QSize ElidedLabel::sizeOf(const QString& text) const {
    const QSize room(fontMetrics().horizontalAdvance(text) + 1, fontMetrics().height());
    return room.grownBy(contentsMargins());
}

QSize ElidedLabel::sizeHint() const {
    return sizeOf(whole_);
}

QSize ElidedLabel::minimumSizeHint() const {
    return sizeOf(whole_.left(kFewestCharacters));
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    shorten();
}

void ElidedLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    updateGeometry();
    shorten();
}

void ElidedLabel::shorten() {
    const QString shown = fontMetrics().elidedText(whole_, mode_, contentsRect().width());
    setText(shown);
    // A tool tip takes what looks like markup for markup.
    setToolTip(shown == whole_ ? QString() : u"<span>%1</span>"_s.arg(whole_.toHtmlEscaped()));
}

}  // namespace tessel

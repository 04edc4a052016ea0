// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/session.h"
#include "base/whole_numbers.h"
#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"
#include "plots/RowPlotEditor.h"

#include <QDate>
#include <QPainter>

#include <algorithm>

namespace tessel {

namespace {

// The page in 1/300 inch, made to fit both A4 and Letter between usual margins.
constexpr double kWidth = 2200;
constexpr double kTitleHeight = 60;
constexpr double kTitleSize = 42;  // 10 points
constexpr double kMapTop = 110;
constexpr double kChartHeight = 1350;
constexpr double kProfileTop = kMapTop + kChartHeight + 60;
constexpr double kHeight = kProfileTop + kChartHeight;

void drawTitle(QPainter& painter, const QRectF& line, int row) {
    QFont font = painter.font();
    font.setPixelSize(clampedInt(line.height() * kTitleSize / kTitleHeight));
    painter.setFont(font);
    const QString file = legible(fromPath(theSession().InputFileName).section(u'/', -1));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, RowPlotEditor::tr("Row #%1").arg(row));
    painter.drawText(line, Qt::AlignHCenter | Qt::AlignVCenter, file);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, QDate::currentDate().toString(Qt::ISODate));
}

// Paper has no pointer: the read-out stays away from it.
void printWithoutReadout(Chart2D& chart, QPainter& painter, const QRectF& place) {
    const QString readout = chart.footerText();
    chart.setFooterText({});
    chart.print(painter, place);
    chart.setFooterText(readout);
}

}  // namespace

void RowPlotEditor::drawPage(QPainter& painter, const QSizeF& page, double unit) const {
    // Smaller paper gets a smaller picture, never a cut one.
    const double scale = std::min({unit, page.width() / kWidth, page.height() / kHeight});
    const double left = (page.width() - kWidth * scale) / 2;
    const auto place = [&](double top, double height) {
        return QRectF(left, top * scale, kWidth * scale, height * scale);
    };
    drawTitle(painter, place(0, kTitleHeight), CurrentRow);
    printWithoutReadout(*Chart2D4, painter, place(kMapTop, kChartHeight));
    printWithoutReadout(*Chart2D3, painter, place(kProfileTop, kChartHeight));
}

void RowPlotEditor::Command6_Click() {
    printPage(window(), Chart2D4->headerText(), [this](QPainter& painter, const QPrinter&) {
        drawPage(painter, QRectF(painter.viewport()).size(), theSession().PrintScale);
    });
}

}  // namespace tessel

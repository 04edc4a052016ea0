// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/journal.h"
#include "plots/frmClip.h"
#include "plots/site_texts.h"

#include <QFontMetrics>

// The site under the pointer.

namespace tessel {

namespace {

constexpr double kReach = 3;  // pixels
constexpr int kLines = 3;

std::span<const double> column(SiteColumn which) {
    const Survey& survey = theSurvey();
    return {survey.SiteData.column(which), static_cast<std::size_t>(survey.NumSites)};
}

}  // namespace

void frmClip::reserveSiteLines() {
    lblSite->setMinimumHeight(kLines * lblSite->fontMetrics().lineSpacing());
    lblSite->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    connect(picMapZoom, &PictureBox::pointerLeft, lblSite, &QLabel::clear);
}

void frmClip::showSite(double px, double py) {
    if (finder_.isEmpty()) finder_.index(column(kX), column(kY));
    const QPointF pixel = picMapZoom->toPixel(px, py);
    const PixelMap map = picMapZoom->pixelsShown(extent_.area());
    const SiteIndex site = finder_.nearest(map, pixel.x(), pixel.y(), kReach, SiteMask.data()).site;
    if (site < 0) return lblSite->clear();
    lblSite->setText(QString::fromStdString(rowAndSite(theSurvey(), site) + "\n" +
                                            siteReadings(theSurvey(), site, " mS/m\n") + " mS/m"));
}

}  // namespace tessel

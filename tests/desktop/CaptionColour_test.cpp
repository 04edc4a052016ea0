// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/CaptionColour.h"

namespace tessel {

namespace {

double luminance(const QColor& colour) {
    const auto part = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

}  // namespace

TEST(TheCaptionColour, CanBeReadOnLightAndOnDarkGround) {
    const QPalette before = QApplication::palette();
    for (const QColor& ground : {QColor(0xEF, 0xEF, 0xEF), QColor(0x2B, 0x2B, 0x2B)}) {
        QApplication::setPalette(QPalette(ground));
        const QWidget widget;
        for (const int colour : {kBlack, kBlue, kLightBlue, kWarningColour})
            EXPECT_GT(contrast(captionColour(colour, widget), ground), 4.5)
                << colour << ground.name().toStdString();
    }
    QApplication::setPalette(before);
}

TEST(TheCaptionColour, TellsANoticeThatWarnsFromOneThatOnlyTells) {
    QWidget notice;
    colourNotice(notice, true);
    EXPECT_EQ(notice.palette().color(QPalette::WindowText), captionColour(kWarningColour, notice));
    colourNotice(notice, false);
    EXPECT_EQ(notice.palette().color(QPalette::WindowText), captionColour(kBlack, notice));
}

TEST(TheCaptionColour, FollowsWhetherAButtonIsChecked) {
    QRadioButton button;
    colourWhileChecked(button);
    EXPECT_EQ(button.palette().color(QPalette::WindowText), captionColour(kBlack, button));
    button.setChecked(true);
    EXPECT_EQ(button.palette().color(QPalette::WindowText), captionColour(kLightBlue, button));
    EXPECT_NE(captionColour(kLightBlue, button), captionColour(kBlack, button));
}

}  // namespace tessel

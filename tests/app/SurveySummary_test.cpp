// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SurveySummary.h"

#include "desktop/ElidedLabel.h"
#include "support/Pixels.h"

namespace tessel {

namespace {

using Kind = DescriptionKind;

const std::string kLongPath = "/home/surveyor/" + std::string(300, 'a') + " & <b>fields</b>/north.dat";

class Summary : public testing::Test {
  protected:
    Summary() {
        summary.resize(500, 300);
        summary.show();
    }

    void show(const std::vector<DescriptionLine>& lines) {
        summary.setLines(lines);
        summary.layout()->activate();
    }
    QLabel& label(const QString& name) const {
        auto* const found = summary.findChild<QLabel*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return *found;
    }
    QString textOf(const QString& name) const { return label(name).text(); }

    SurveySummary summary;
};

}  // namespace

TEST_F(Summary, ShowsALabelForEachPartNamedForItsLine) {
    show({{Kind::kFact, "Sites", "Sites", "12", {}, {}},
          {Kind::kFact, "Rejected", "Rejected", "3", {}, {}},
          {Kind::kFact, "Rejected", "", "2 × x", {}, {}},
          {Kind::kRange, "X", "X", "1.00", "20.00", "m"}});
    EXPECT_EQ(textOf(u"capSummarySites"_s), u"Sites"_s);
    EXPECT_EQ(textOf(u"lblSummarySites"_s), u"12"_s);
    EXPECT_EQ(textOf(u"lblSummaryRejected"_s), u"3"_s);
    EXPECT_EQ(textOf(u"lblSummaryRejected2"_s), u"2 × x"_s);
    EXPECT_EQ(textOf(u"lblSummaryX"_s), u"1.00"_s);
    EXPECT_EQ(textOf(u"lblSummaryXTo"_s), u"20.00"_s);
    EXPECT_EQ(textOf(u"lblSummaryXUnit"_s), u"m"_s);
    EXPECT_EQ(summary.text(), u"Sites: 12\nRejected: 3\n2 × x\nX: 1.00 to 20.00 m"_s);
}

TEST_F(Summary, AlignsTheNumbersOfItsRangesAtTheRight) {
    show({{Kind::kRange, "X", "X", "468095.92", "468750.00", "m"},
          {Kind::kRange, "EM1", "EM1", "5.10", "60.00", "mS/m"}});
    EXPECT_EQ(label(u"lblSummaryX"_s).geometry().right(), label(u"lblSummaryEM1"_s).geometry().right());
    EXPECT_EQ(label(u"lblSummaryXTo"_s).geometry().right(), label(u"lblSummaryEM1To"_s).geometry().right());
    EXPECT_EQ(label(u"lblSummaryXUnit"_s).x(), label(u"lblSummaryEM1Unit"_s).x());
}

TEST_F(Summary, ForgetsTheLinesBefore) {
    show({{Kind::kFact, "Sites", "Sites", "12", {}, {}},
          {Kind::kWarning, "Warning", "Attention", "Look!", {}, {}}});
    show({{Kind::kFact, "Sites", "Sites", "11", {}, {}}});
    EXPECT_EQ(textOf(u"lblSummarySites"_s), u"11"_s);
    EXPECT_EQ(summary.findChildren<QLabel*>().size(), 2);
    EXPECT_EQ(summary.text(), u"Sites: 11"_s);
}

TEST_F(Summary, ShowsWhatMustBeKnownInTheWarningColour) {
    show({{Kind::kWarning, "Warning", "Attention", "Look!", {}, {}},
          {Kind::kFact, "Sites", "Sites", "1", {}, {}}});
    const QColor red = paletteColour(kRed);
    EXPECT_EQ(label(u"lblSummaryWarning"_s).palette().color(QPalette::WindowText), red);
    EXPECT_EQ(label(u"capSummaryWarning"_s).palette().color(QPalette::WindowText), red);
    EXPECT_NE(label(u"lblSummarySites"_s).palette().color(QPalette::WindowText), red);
}

TEST_F(Summary, ShortensALongPathInTheMiddleAndKeepsTheWholeAsToolTip) {
    show({{Kind::kPath, "File", "File", kLongPath, {}, {}}});
    const QString shown = textOf(u"lblSummaryFile"_s);
    EXPECT_LT(shown.size(), 200);
    EXPECT_TRUE(shown.startsWith("/home/surveyor/a"_L1)) << shown.toStdString();
    EXPECT_TRUE(shown.endsWith("/north.dat"_L1)) << shown.toStdString();
    EXPECT_TRUE(
        label(u"lblSummaryFile"_s).toolTip().contains("a &amp; &lt;b&gt;fields&lt;/b&gt;/north.dat"_L1));
    EXPECT_LE(label(u"lblSummaryFile"_s).geometry().right(), summary.width());
    EXPECT_TRUE(summary.text().contains(QString::fromStdString(kLongPath)));
    summary.setMaximumWidth(QWIDGETSIZE_MAX);
    summary.resize(9000, 300);
    summary.layout()->activate();
    EXPECT_EQ(textOf(u"lblSummaryFile"_s), QString::fromStdString(kLongPath));
    EXPECT_EQ(label(u"lblSummaryFile"_s).toolTip(), QString());
}

TEST_F(Summary, ShowsBytesOfFilesAsTextAndNeverAsMarkup) {
    const std::string odd = "<b>1</b> &amp; <a href='x'>y</a>\x1b";
    show({{Kind::kLogLine, "LogLine", "First", odd, {}, {}},
          {Kind::kPath, "File", "File", odd, {}, {}},
          {Kind::kWarning, "Warning", "Attention", odd, {}, {}},
          {Kind::kFact, "Rejected", "Rejected", odd, {}, {}}});
    for (const QString& name : {u"LogLine"_s, u"File"_s, u"Warning"_s, u"Rejected"_s}) {
        const QLabel& part = label(u"lblSummary"_s + name);
        EXPECT_EQ(part.textFormat(), Qt::PlainText) << name.toStdString();
        EXPECT_EQ(part.text(), u"<b>1</b> &amp; <a href='x'>y</a>\ufffd"_s) << name.toStdString();
    }
}

TEST_F(Summary, LetsEveryTextBeSelected) {
    show({{Kind::kFact, "Sites", "Sites", "12", {}, {}},
          {Kind::kPath, "File", "File", "/a/b.dat", {}, {}},
          {Kind::kRange, "X", "X", "1.00", "20.00", "m"},
          {Kind::kLogLine, "LogLine", "First", "Line # 1", {}, {}}});
    for (const QString& name : {u"Sites"_s, u"File"_s, u"X"_s, u"XTo"_s, u"LogLine"_s})
        EXPECT_TRUE(label(u"lblSummary"_s + name).textInteractionFlags() & Qt::TextSelectableByMouse)
            << name.toStdString();
}

TEST_F(Summary, SaysThatTheLinkWasFollowedWithTheKeyboardOrTheMouse) {
    show({{Kind::kFact, "Sites", "Sites", "12", {}, {}}, {Kind::kLink, "LogLink", "", "Open it", {}, {}}});
    QSignalSpy requested(&summary, &SurveySummary::logRequested);
    summary.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&summary));
    QLabel& link = label(u"lblSummaryLogLink"_s);
    QTest::keyClick(&summary, Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &link);
    QTest::keyClick(&link, Qt::Key_Return);
    EXPECT_EQ(requested.count(), 1);
    QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(10, link.height() / 2));
    EXPECT_EQ(requested.count(), 2);
}

TEST_F(Summary, ShowsTheLinkInAColourForWhitePaperInADarkThemeToo) {
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Link, QColor(0xA0, 0xC0, 0xFF));
    QApplication::setPalette(dark);
    show({{Kind::kLink, "LogLink", "Error log", "Open the error log", {}, {}}});
    const QImage picture = label(u"lblSummaryLogLink"_s).grab().toImage();
    QApplication::setPalette(light);
    int darkest = 255;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            darkest = std::min(darkest, qGray(picture.pixel(x, y)));
    EXPECT_LT(darkest, 100);
}

}  // namespace tessel

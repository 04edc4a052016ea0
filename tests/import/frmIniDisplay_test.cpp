// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmIniDisplay.h"

#include "desktop/CaptionColour.h"
#include "support/ImportTest.h"
#include "support/utf16.h"

namespace tessel {

namespace {

class ImportFormat : public ImportTest {
  protected:
    void open(std::string_view bytes = "1 2 3\n", const std::optional<TrimbleOptions>& last = {}) {
        TrimbleOptions options;
        options.path = sensorFile(bytes);
        options.EMCutoff = -4;
        window = std::make_unique<frmIniDisplay>(&main, options, last);
        QObject::connect(window.get(), &frmIniDisplay::formatChosen, window.get(),
                         [this](const TrimbleOptions& complete) {
                             chosen = complete;
                             ++timesChosen;
                         });
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    void typePositions(QLineEdit& start, QLineEdit& end, const QString& first, const QString& last) {
        type(start, first);
        type(end, last);
    }
    void typeGoodPositions() {
        typePositions(*window->Text2_0, *window->Text2_1, u"10"_s, u"20"_s);
        typePositions(*window->Text3_0, *window->Text3_1, u"22"_s, u"32"_s);
        typePositions(*window->Text4_0, *window->Text4_1, u"5"_s, u"5"_s);
    }
    void expectInvalid() {
        boxes.tell(u"Invalid Input"_s);
        click(*window->Command1);
        EXPECT_EQ(boxes.pending(), 0);
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(timesChosen, 0);
    }
    void expectBoxes(const QLineEdit& start, const QLineEdit& end, const QString& first,
                     const QString& last) {
        EXPECT_EQ(start.text(), first);
        EXPECT_EQ(end.text(), last);
    }
    // Drags over the lines shown, from the left edge of one column (from 0) to that of another.
    void drag(int fromLine, int fromColumn, int toLine, int toColumn) {
        const auto pixel = [this](int line, int column) {
            const QTextBlock block = window->picPreview->document()->findBlockByNumber(line);
            QTextCursor cursor(block);
            cursor.setPosition(block.position() + column);
            return window->picPreview->cursorRect(cursor).center();
        };
        QWidget* const page = window->picPreview->viewport();
        QTest::mousePress(page, Qt::LeftButton, {}, pixel(fromLine, fromColumn));
        if (fromLine != toLine || fromColumn != toColumn) {
            QTest::mouseMove(page, (pixel(fromLine, fromColumn) + pixel(toLine, toColumn)) / 2);
            QTest::mouseMove(page, pixel(toLine, toColumn));
        }
        QTest::mouseRelease(page, Qt::LeftButton, {}, pixel(toLine, toColumn));
    }
    QStringList preview() const { return window->picPreview->toPlainText().split(u'\n'); }

    std::unique_ptr<frmIniDisplay> window;
    TrimbleOptions chosen;
    int timesChosen = 0;
};

}  // namespace

TEST_F(ImportFormat, OpensWithTheBoxesOfTheFieldsThatEveryFileHas) {
    open();
    EXPECT_FALSE(window->Check1->isChecked() || window->Check2->isChecked());
    EXPECT_FALSE(window->Text1_0->isVisible() || window->Text1_1->isVisible());
    EXPECT_FALSE(window->Text5_0->isVisible() || window->Text5_1->isVisible());
    EXPECT_TRUE(window->Text2_0->isVisible() && window->Text4_1->isVisible());
    EXPECT_TRUE(window->Text2_0->hasFocus());
    EXPECT_FALSE(window->cmdLast->isEnabled());
}

TEST_F(ImportFormat, ShowsTheFirstLinesBelowTheRuler) {
    open("\n\n  1  2\r\n\nx\n22\n33\n44\n55\n66\n");
    EXPECT_EQ(
        preview(),
        (QStringList{
            u"000000000111111111122222222223333333333444444444455555555556666666666777777777788888888889999999999"_s,
            u"123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123456789"_s,
            u"  1  2"_s, u"22"_s, u"33"_s, u"44"_s, u"55"_s}));
}

TEST_F(ImportFormat, ShowsOneCharacterForEachByte) {
    open("");
    EXPECT_EQ(preview().size(), 2) << "the ruler only";
    open(std::string_view("a\0\tb\x1B\x7F\x85\xC3\xBC\xADz\n", 12));
    EXPECT_EQ(preview()[2], u"a·→b···Ã¼·z"_s);
}

TEST_F(ImportFormat, ShowsThePreviewInAFixedPitchBlackOnWhiteInADarkThemeToo) {
    const QPalette usual = QApplication::palette();
    QPalette dark = usual;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    for (const QPalette& theme : {dark, usual}) {
        QApplication::setPalette(theme);
        open();
        EXPECT_EQ(window->picPreview->palette().color(QPalette::Base), QColor(Qt::white));
        EXPECT_EQ(window->picPreview->palette().color(QPalette::Text), QColor(Qt::black));
    }
    EXPECT_EQ(window->picPreview->font().family(), u"Courier New"_s);
    EXPECT_TRUE(QFontInfo(window->picPreview->font()).fixedPitch());
    const QFontMetrics metrics(window->picPreview->font());
    for (const QChar c : u"1iWÃ·→ü"_s)
        EXPECT_EQ(metrics.horizontalAdvance(c), metrics.horizontalAdvance(u'0'))
            << static_cast<int>(c.unicode());
}

TEST_F(ImportFormat, ShowsAllSevenLinesAndScrollsToTheEndsOfLongOnes) {
    open(std::string(5000, 'x').append("\n22\n33\n44\n55\n"));
    window->resize(window->minimumSizeHint());
    EXPECT_FALSE(window->picPreview->verticalScrollBar()->isVisible());
    EXPECT_TRUE(window->picPreview->horizontalScrollBar()->isVisible());
    EXPECT_EQ(preview()[2].size(), 5000);
}

TEST_F(ImportFormat, ShowsBoxesOfAFieldWhileItIsChecked) {
    open();
    const QColor blue = captionColour(kLightBlue, *window);
    const QColor black = captionColour(kBlack, *window);
    for (const auto& [check, start, end] : {std::tuple{window->Check1, window->Text1_0, window->Text1_1},
                                            std::tuple{window->Check2, window->Text5_0, window->Text5_1}}) {
        EXPECT_EQ(colourOf(*check), black);
        click(*check);
        EXPECT_TRUE(start->isVisible() && end->isVisible());
        EXPECT_TRUE(start->hasFocus());
        EXPECT_EQ(colourOf(*check), blue);
        click(*check);
        EXPECT_FALSE(start->isVisible() || end->isVisible());
        EXPECT_EQ(colourOf(*check), black);
    }
    for (const QLabel* label : {window->Label3, window->Label4, window->Label5})
        EXPECT_EQ(colourOf(*label), blue);
}

TEST_F(ImportFormat, EmptiesABoxWithABeepWhenALetterIsTyped) {
    open();
    click(*window->Check1);
    click(*window->Check2);
    for (QLineEdit* box : window->fraPositions->findChildren<QLineEdit*>()) {
        const int beeps = beepCount();
        type(*box, u"12"_s);
        EXPECT_EQ(beepCount(), beeps);
        QTest::keyClicks(box, u"x"_s);
        EXPECT_EQ(beepCount(), beeps + 1) << box->objectName().toStdString();
        EXPECT_EQ(box->text(), QString());
        EXPECT_TRUE(box->hasFocus());
    }
}

TEST_F(ImportFormat, KeepsNothingInABoxButANumber) {
    open();
    const auto beepsAt = [this](const QString& text) {
        const int before = beepCount();
        window->Text3_1->setFocus();
        window->Text2_0->setText(text);
        return beepCount() - before;
    };
    for (const QString& text : {u"-"_s, u"+"_s, u"."_s, u" "_s, u"1e"_s, u"1,5"_s, u"1 2"_s, u"1e999"_s}) {
        EXPECT_EQ(beepsAt(text), 1) << text.toStdString();
        EXPECT_EQ(window->Text2_0->text(), QString()) << text.toStdString();
        EXPECT_TRUE(window->Text2_0->hasFocus()) << text.toStdString();
    }
    for (const QString& text : {u"-3"_s, u"+3"_s, u" 7 "_s, u"1.5"_s, u"1e2"_s, u""_s}) {
        EXPECT_EQ(beepsAt(text), 0) << text.toStdString();
        EXPECT_EQ(window->Text2_0->text(), text);
    }
}

TEST_F(ImportFormat, HandsOnTheColumnsOfEachField) {
    open();
    click(*window->Check1);
    click(*window->Check2);
    typePositions(*window->Text1_0, *window->Text1_1, u"1"_s, u"8"_s);
    typeGoodPositions();
    typePositions(*window->Text5_0, *window->Text5_1, u"40"_s, u"48"_s);
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_EQ(timesChosen, 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(chosen.SiteIDPresent && chosen.TwoEMColumns);
    EXPECT_EQ(chosen.SiteIDField, (FieldColumns{1, 8, 8}));
    EXPECT_EQ(chosen.XField, (FieldColumns{10, 20, 11}));
    EXPECT_EQ(chosen.YField, (FieldColumns{22, 32, 11}));
    EXPECT_EQ(chosen.EM1Field, (FieldColumns{5, 5, 1}));
    EXPECT_EQ(chosen.EM2Field, (FieldColumns{40, 48, 9}));
    EXPECT_EQ(chosen.EMCutoff, -4);
    expectSurveyUntouched();
}

TEST_F(ImportFormat, LeavesFieldsThatAreNotInUseAlone) {
    open();
    click(*window->Check2);
    typePositions(*window->Text5_0, *window->Text5_1, u"9"_s, u"3"_s);
    click(*window->Check2);
    typeGoodPositions();
    click(*window->Command1);
    ASSERT_EQ(timesChosen, 1);
    EXPECT_FALSE(chosen.SiteIDPresent || chosen.TwoEMColumns);
    EXPECT_EQ(chosen.SiteIDField, (FieldColumns{0, 0, 0}));
    EXPECT_EQ(chosen.EM2Field, (FieldColumns{0, 0, 0}));
}

TEST_F(ImportFormat, RefusesPositionsThatAreNoField) {
    open();
    expectInvalid();  // all empty
    EXPECT_TRUE(window->Text2_0->hasFocus());
    typeGoodPositions();
    const auto refuse = [this](QLineEdit& start, QLineEdit& end, const QString& first, const QString& last) {
        const QString oldFirst = start.text();
        const QString oldLast = end.text();
        typePositions(start, end, first, last);
        expectInvalid();
        EXPECT_TRUE(start.hasFocus());
        start.setText(oldFirst);
        end.setText(oldLast);
    };
    refuse(*window->Text2_0, *window->Text2_1, u"6"_s, u"5"_s);
    refuse(*window->Text3_0, *window->Text3_1, u"0"_s, u"5"_s);
    refuse(*window->Text4_0, *window->Text4_1, u""_s, u"5"_s);
    refuse(*window->Text4_0, *window->Text4_1, u"5"_s, u""_s);
    refuse(*window->Text4_0, *window->Text4_1, u"0.5"_s, u"5"_s);  // rounded to 0
    click(*window->Check1);
    expectInvalid();
    typePositions(*window->Text1_0, *window->Text1_1, u"1"_s, u"2"_s);
    click(*window->Check2);
    expectInvalid();
}

TEST_F(ImportFormat, RoundsFractionsAndClampsWhatIsTooLarge) {
    open();
    typeGoodPositions();
    window->Text2_0->setText(u"-3"_s);
    expectInvalid();
    typePositions(*window->Text2_0, *window->Text2_1, u"2.5"_s, u"3.5"_s);
    typePositions(*window->Text4_0, *window->Text4_1, u"1"_s, u"99999999999"_s);
    click(*window->Command1);
    ASSERT_EQ(timesChosen, 1);
    EXPECT_EQ(chosen.XField, (FieldColumns{2, 4, 3}));
    EXPECT_EQ(chosen.EM1Field, (FieldColumns{1, 2147483647, 2147483647}));
}

TEST_F(ImportFormat, ShadesTheColumnsTyped) {
    open("0123456789\n0123\n");
    typePositions(*window->Text2_0, *window->Text2_1, u"3"_s, u"6"_s);
    const auto shades = window->picPreview->extraSelections();
    ASSERT_EQ(shades.size(), 2);
    EXPECT_EQ(shades[0].cursor.selectedText(), u"2345"_s);
    EXPECT_EQ(shades[1].cursor.selectedText(), u"23"_s);
    type(*window->Text2_1, u"2"_s);
    EXPECT_TRUE(window->picPreview->extraSelections().isEmpty());
}

TEST_F(ImportFormat, FillsBothBoxesOfTheFieldInWhichTheCursorIsWhileItIsDraggedOver) {
    open("   1 435999.91 5512\n   2 436000.02 5513\n");
    window->Text2_1->setFocus();
    drag(2, 5, 2, 14);
    expectBoxes(*window->Text2_0, *window->Text2_1, u"6"_s, u"14"_s);
    EXPECT_TRUE(window->Text2_1->hasFocus());
    EXPECT_EQ(window->picPreview->extraSelections().size(), 2);
    // From right to left, and straying to another line.
    window->Text3_0->setFocus();
    drag(3, 19, 2, 15);
    expectBoxes(*window->Text3_0, *window->Text3_1, u"16"_s, u"19"_s);
    EXPECT_EQ(window->Text2_0->text(), u"6"_s);
    click(*window->Check1);
    drag(0, 0, 0, 4);  // on the ruler
    expectBoxes(*window->Text1_0, *window->Text1_1, u"1"_s, u"4"_s);
}

TEST_F(ImportFormat, FillsNoBoxByAClickOrWhileTheCursorIsInNone) {
    open("   1 435999.91 5512\n");
    typePositions(*window->Text2_0, *window->Text2_1, u"6"_s, u"14"_s);
    drag(2, 3, 2, 3);
    expectBoxes(*window->Text2_0, *window->Text2_1, u"6"_s, u"14"_s);
    window->Check1->setFocus();
    drag(2, 0, 2, 4);
    for (const QLineEdit* box : {window->Text1_0, window->Text3_0, window->Text4_0, window->Text5_0})
        EXPECT_EQ(box->text(), QString());
    EXPECT_EQ(window->Text2_0->text(), u"6"_s);
}

TEST_F(ImportFormat, TakesOverTheLastPositions) {
    open();
    click(*window->Check1);
    typePositions(*window->Text1_0, *window->Text1_1, u"1"_s, u"4"_s);
    typeGoodPositions();
    click(*window->Command1);
    ASSERT_EQ(timesChosen, 1);
    const TrimbleOptions last = chosen;

    open("1 2 3\n", last);
    EXPECT_TRUE(window->cmdLast->isEnabled());
    EXPECT_EQ(window->Text2_0->text(), QString());
    click(*window->Check2);
    typePositions(*window->Text5_0, *window->Text5_1, u"7"_s, u"9"_s);
    click(*window->cmdLast);
    EXPECT_TRUE(window->Check1->isChecked());
    EXPECT_FALSE(window->Check2->isChecked());
    EXPECT_EQ(window->Text5_0->text(), QString());
    EXPECT_TRUE(window->Command1->hasFocus());
    click(*window->Command1);
    ASSERT_EQ(timesChosen, 2);
    EXPECT_TRUE(chosen.SiteIDPresent);
    EXPECT_FALSE(chosen.TwoEMColumns);
    EXPECT_EQ(static_cast<const SurveyParameters&>(chosen), static_cast<const SurveyParameters&>(last));
}

TEST_F(ImportFormat, SaysWhatKindOfFileItIs) {
    open("   1    2    3\n   4    5    6\n");
    EXPECT_FALSE(window->lblKind->isVisible());
    open("1\t2\t3\n4\t5\t6\n");
    EXPECT_TRUE(window->lblKind->isVisible());
    EXPECT_EQ(
        window->lblKind->text(),
        u"Tabs stand between the values: columns of characters will not line up; the generic import fits."_s);
    EXPECT_EQ(colourOf(*window->lblKind), captionColour(kWarningColour, *window));
    open("PK\x03\x04" + std::string(1000, '\0') + "\x01\x02\x03");
    EXPECT_EQ(window->lblKind->text(), u"This is not a text file."_s);
    open("id x y\n   1    2    3\n   4    5    6\n");
    EXPECT_EQ(window->lblKind->text(), u"The first line is a header; it will be in the error log."_s);
    EXPECT_EQ(colourOf(*window->lblKind), colourOf(*window->Label1));
}

TEST_F(ImportFormat, ShowsUtf16AsWhatItSays) {
    open(utf16(u"\uFEFF   1    2    3\n   4    5    6\n"));
    EXPECT_EQ(preview().value(2), u"   1    2    3"_s);
    EXPECT_EQ(window->lblKind->text(), u"The text is UTF-16; it is read as what it says."_s);
}

}  // namespace tessel

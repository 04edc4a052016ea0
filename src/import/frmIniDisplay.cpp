// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmIniDisplay.h"

#include "app/HelpOpener.h"
#include "base/numbers.h"
#include "base/palette16.h"
#include "base/whole_numbers.h"
#include "desktop/CaptionColour.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "import/sensor_file_preview.h"

#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 105;
constexpr int kRulerLines = 2;
const QString kTens =
    u"000000000111111111122222222223333333333444444444455555555556666666666777777777788888888889999999999"_s;
const QString kUnits =
    u"123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123456789"_s;

const QColor kFieldGround(0xd6, 0xe6, 0xfa);

QFont fixedPitchFont() {
    QFont font(u"Courier New"_s, 10);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

// One character a byte, so that the ruler holds: what has no shape of its own gets one.
QChar shown(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    constexpr unsigned char kSoftHyphen = 0xAD;
    if (code == '\t') return u'→';
    const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0) || code == kSoftHyphen;
    return control ? QChar(u'·') : QChar(char16_t{code});
}

QString shownLine(const std::string& bytes) {
    QString line(static_cast<qsizetype>(bytes.size()), u' ');
    std::transform(bytes.begin(), bytes.end(), line.begin(), shown);
    return line;
}

int position(const QLineEdit& box) {
    return roundToInt(numericValue(box.text().toStdString()).value_or(0));
}

bool isValid(const FieldColumns& field) {
    return field.Start >= 1 && field.End >= 1 && field.End >= field.Start;
}

}  // namespace

frmIniDisplay::frmIniDisplay(QWidget* parent, const TrimbleOptions& options,
                             const std::optional<TrimbleOptions>& last)
    : QDialog(parent), options_(options), last_(last) {
    setupUi(this);
    rows_ = {{{Text1_0, Text1_1, Check1, &TrimbleOptions::SiteIDField, &TrimbleOptions::SiteIDPresent},
              {Text2_0, Text2_1, nullptr, &TrimbleOptions::XField},
              {Text3_0, Text3_1, nullptr, &TrimbleOptions::YField},
              {Text4_0, Text4_1, nullptr, &TrimbleOptions::EM1Field},
              {Text5_0, Text5_1, Check2, &TrimbleOptions::EM2Field, &TrimbleOptions::TwoEMColumns}}};
    showKind();
    showFirstLines();
    watchPositions();
    for (QLabel* label : {Label3, Label4, Label5})
        colourCaption(*label, kLightBlue);
    connect(Command1, &QPushButton::clicked, this, guarded(this, [this] { Command1_Click(); }));
    connect(Command2, &QPushButton::clicked, this, guarded(this, [this] { reject(); }));
    offerHelp(*this, kHelpDocument, cmdHelp);
    cmdLast->setEnabled(last_.has_value());
    connect(cmdLast, &QPushButton::clicked, this, guarded(this, [this] { showLayout(*last_); }));
    connect(picPreview, &QPlainTextEdit::selectionChanged, this,
            guarded(this, [this] { picPreview_Select(); }));
    Text2_0->setFocus();
}

void frmIniDisplay::showFirstLines() {
    QPalette paper = picPreview->palette();
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, Qt::black);
    picPreview->setPalette(paper);
    picPreview->setFont(fixedPitchFont());

    QStringList lines{kTens, kUnits};
    for (const std::string& line : previewSensorFile(options_.path, options_.MinLineLength))
        lines << shownLine(line);
    picPreview->setPlainText(lines.join(u'\n'));

    // Room for the ruler's width and for seven lines, and some, above a scroll bar.
    const QFontMetrics metrics(picPreview->font());
    const int edges = 2 * (picPreview->frameWidth() + intAbove(picPreview->document()->documentMargin()));
    const int allLines = kRulerLines + static_cast<int>(kPreviewLines);
    picPreview->setMinimumHeight((allLines + 1) * metrics.lineSpacing() + edges +
                                 picPreview->horizontalScrollBar()->sizeHint().height());
    const int rulerWidth = metrics.horizontalAdvance(kTens) + edges;
    const QMargins margins = layout()->contentsMargins();
    const QSize wanted(rulerWidth + metrics.averageCharWidth() + margins.left() + margins.right(),
                       sizeHint().height());
    resize(wanted.boundedTo(screen()->availableSize() * 0.95));
}

void frmIniDisplay::showKind() {
    const FixedColumnNotice notice = fixedColumnNotice(recogniseFileKind(options_.path));
    lblKind->setText(QString::fromStdString(notice.text));
    lblKind->setVisible(!notice.text.empty());
    colourNotice(*lblKind, notice.isWarning);
}

void frmIniDisplay::watchPositions() {
    for (const Row& row : rows_) {
        for (QLineEdit* box : {row.start, row.end})
            connect(box, &QLineEdit::textChanged, this,
                    guarded(this, [this, box] { Position_Change(*box); }));
        if (row.use == nullptr) continue;
        for (QLineEdit* box : {row.start, row.end}) {
            QSizePolicy keepsItsPlace = box->sizePolicy();
            keepsItsPlace.setRetainSizeWhenHidden(true);
            box->setSizePolicy(keepsItsPlace);
        }
        colourWhileChecked(*row.use);
        connect(row.use, &QCheckBox::toggled, this, guarded(this, [this, row] { Check_Click(row); }));
        Check_Click(row);
    }
}

void frmIniDisplay::Check_Click(const Row& row) {
    const bool inUse = row.isInUse(entries());
    row.start->setVisible(inUse);
    row.end->setVisible(inUse);
    if (inUse) row.start->setFocus();
    shadeFields();
}

// A box holds a number or nothing.
void frmIniDisplay::Position_Change(QLineEdit& box) {
    if (!box.text().isEmpty() && !isNumeric(box.text().toStdString())) {
        beep();
        box.clear();
        box.setFocus();
    }
    shadeFields();
}

// A field that is not in use stands nowhere.
TrimbleOptions frmIniDisplay::entries() const {
    TrimbleOptions options = options_;
    for (const Row& row : rows_) {
        if (row.use != nullptr) options.*row.inUse = row.use->isChecked();
        FieldColumns& field = options.*row.field = {};
        if (!row.isInUse(options)) continue;
        field = {position(*row.start), position(*row.end), 0};
        if (isValid(field)) field.Len = field.End - field.Start + 1;
    }
    return options;
}

// What is selected while the cursor is in one of a field's boxes is that field, wherever the hand has strayed
// to other lines.
void frmIniDisplay::picPreview_Select() {
    const auto hasFocus = [](const Row& row) { return row.start->hasFocus() || row.end->hasFocus(); };
    const auto row = std::find_if(rows_.begin(), rows_.end(), hasFocus);
    if (row == rows_.end()) return;
    const auto column = [this](int place) {
        return place - picPreview->document()->findBlock(place).position();
    };
    const QTextCursor selection = picPreview->textCursor();
    const auto [before, last] = std::minmax({column(selection.anchor()), column(selection.position())});
    if (before == last) return;
    row->start->setText(QString::number(before + 1));
    row->end->setText(QString::number(last));
}

void frmIniDisplay::showLayout(const TrimbleOptions& options) {
    const auto text = [](int place) { return place > 0 ? QString::number(place) : QString(); };
    for (const Row& row : rows_) {
        if (row.use != nullptr) row.use->setChecked(options.*row.inUse);
        const FieldColumns& field = options.*row.field;
        row.start->setText(text(field.Start));
        row.end->setText(text(field.End));
    }
    Command1->setFocus();
}

void frmIniDisplay::Command1_Click() {
    const TrimbleOptions options = entries();
    for (const Row& row : rows_) {
        if (!row.isInUse(options) || isValid(options.*row.field)) continue;
        tell(this, u"Invalid Input"_s);
        row.start->setFocus();
        row.start->selectAll();
        return;
    }
    accept();
    Q_EMIT formatChosen(options);
}

// Shows which columns of the lines the positions typed so far mean.
void frmIniDisplay::shadeFields() {
    const TrimbleOptions options = entries();
    QList<QTextEdit::ExtraSelection> shades;
    QTextBlock block = picPreview->document()->findBlockByNumber(kRulerLines);
    for (; block.isValid(); block = block.next()) {
        const int length = block.length() - 1;  // without the line end
        for (const Row& row : rows_) {
            const FieldColumns& field = options.*row.field;
            if (!isValid(field) || field.Start > length) continue;
            QTextEdit::ExtraSelection shade;
            shade.format.setBackground(kFieldGround);
            shade.cursor = QTextCursor(block);
            shade.cursor.setPosition(block.position() + field.Start - 1);
            shade.cursor.setPosition(block.position() + std::min(field.End, length), QTextCursor::KeepAnchor);
            shades << shade;
        }
    }
    picPreview->setExtraSelections(shades);
}

}  // namespace tessel

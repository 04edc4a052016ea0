// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmHelpTesl.h"

#include "app/help_documents.h"
#include "base/file_replacement.h"
#include "base/session.h"
#include "desktop/Guarded.h"
#include "desktop/SpokenNames.h"
#include "desktop/TextEditor.h"
#include "desktop/Windows.h"
#include "richtext/RichTextReader.h"

#include <QAction>
#include <QResizeEvent>
#include <QScreen>
#include <QTextBlock>
#include <QTextFrame>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kWidestText = 680;  // pixels; longer lines are hard to read
constexpr int kLeastMargin = 28;
constexpr int kNarrowest = 480;    // of a window that is placed beside another
constexpr int kRoomForList = 640;  // a narrower window shows the text alone
constexpr int kListWidth = 210;

const QWidget* mainWindow() {
    for (const QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == u"frmMain" && widget->isVisible()) return widget;
    return nullptr;
}

// Documents bring the colours of paper, whatever the desktop's are.
void layPaper(QTextBrowser& page) {
    QPalette paper = page.palette();
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, QColor(0x1c, 0x1c, 0x1c));
    page.setPalette(paper);
}

// The first line of the document, unless it is a whole paragraph.
QString titleOf(const QTextDocument& document, const QString& name) {
    constexpr qsizetype kLongestTitle = 60;
    QTextBlock block = document.begin();
    while (block.isValid() && block.text().trimmed().isEmpty())
        block = block.next();
    const QString title = block.text().simplified();
    return title.isEmpty() || title.size() > kLongestTitle ? name : title;
}

QString tooLarge(const QString& name, const QString& wayOut) {
    return u"%1\nThis document is too large to show. \"%2\" opens it."_s.arg(name, wayOut);
}

}  // namespace

frmHelpTesl::frmHelpTesl(QWidget* parent) : QWidget(parent, Qt::Window) {
    setupUi(this);
    nameClearButton(*txtFind);
    setAttribute(Qt::WA_QuitOnClose, false);
    layPaper(*RTB1);
    RTB1->viewport()->installEventFilter(this);
    listDocuments();
    connect(Command1, &QPushButton::clicked, this, guarded(this, [this] { Command1_Click(); }));
    connect(Command2, &QPushButton::clicked, this, guarded(this, [this] { close(); }));
    connect(txtFind, &QLineEdit::textChanged, this, guarded(this, [this] { txtFind_Change(); }));
    connect(txtFind, &QLineEdit::returnPressed, this, guarded(this, [this] { findNext(); }));

    auto* const closing = new QAction(this);
    closing->setShortcuts({QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)});
    connect(closing, &QAction::triggered, this, guarded(this, [this] { close(); }));
    auto* const finding = new QAction(this);
    finding->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F));
    connect(finding, &QAction::triggered, this, guarded(this, [this] {
                txtFind->setFocus(Qt::ShortcutFocusReason);
                txtFind->selectAll();
            }));
    addActions({closing, finding});
}

void frmHelpTesl::showDocument(const QByteArray& rtf, const QString& name, int number, const QWidget* from) {
    document_ = rtf;
    number_ = number;
    const QWidget* const window = from != nullptr ? from->window() : nullptr;
    const bool chosenHere = window == this;
    from_ = chosenHere || window == mainWindow() ? nullptr : window;
    // Shown before it is filled, so that the page has its width when it is laid out.
    RTB1->clear();
    if (isVisible() && from_ && frameGeometry().intersects(from_->frameGeometry())) placeBeside(*from_);
    show();
    fill(name);
    selectShownDocument();
    if (chosenHere) return;
    raise();
    activateWindow();
    RTB1->setFocus();
}

void frmHelpTesl::fill(const QString& name) {
    setPageMargins();
    if (readRichText(document_, *RTB1->document()) == RichTextResult::kTooLarge)
        QTextCursor(RTB1->document()).insertText(tooLarge(name, Command1->text().remove(u'&')));
    setWindowTitle(u"%1 - Help"_s.arg(titleOf(*RTB1->document(), name)));
    RTB1->moveCursor(QTextCursor::Start);
    txtFind->clear();
}

void frmHelpTesl::selectShownDocument() {
    const QSignalBlocker quiet(lstDocuments);
    const auto shown = std::ranges::find(kHelpDocuments, number_, &HelpDocumentTitle::number);
    const bool isListed = shown != kHelpDocuments.end();
    lstDocuments->setCurrentRow(isListed ? static_cast<int>(shown - kHelpDocuments.begin()) : -1);
}

void frmHelpTesl::listDocuments() {
    for (const auto& document : kHelpDocuments)
        lstDocuments->addItem(
            QString::fromUtf8(document.title.data(), static_cast<qsizetype>(document.title.size())));
    splDocuments->setStretchFactor(0, 0);
    splDocuments->setStretchFactor(1, 1);
    splDocuments->setCollapsible(1, false);
    splDocuments->setSizes({kListWidth, width() - kListWidth});
    connect(lstDocuments, &QListWidget::currentRowChanged, this,
            // (The analyzer loses whose slot it is.) NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage)
            [this](int line) { runGuarded(this, [&] { lstDocuments_Click(line); }); });
    connect(lstDocuments, &QListWidget::itemActivated, this, guarded(this, [this] { RTB1->setFocus(); }));
}

void frmHelpTesl::lstDocuments_Click(int line) {
    if (line >= 0) Q_EMIT documentChosen(kHelpDocuments.at(static_cast<std::size_t>(line)).number);
}

void frmHelpTesl::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) Form_Load();
    QWidget::showEvent(event);
}

void frmHelpTesl::resizeEvent(QResizeEvent* event) {
    lstDocuments->setVisible(width() >= kRoomForList);
    splDocuments->refresh();  // at once, so that the text is laid out in its final width
    QWidget::resizeEvent(event);
}

// The size that a user has given it, or had given it before it was made narrower.
QSize frmHelpTesl::usualSize() const {
    return size() == narrowed_ ? before_ : size();
}

void frmHelpTesl::place(const QRect& where) {
    const QSize usual = usualSize();
    setGeometry(where);
    before_ = usual;
    narrowed_ = where.size();
}

void frmHelpTesl::placeBeside(const QWidget& other) {
    const auto beside =
        placedBeside(other.frameGeometry(), usualSize(), kNarrowest, other.screen()->availableGeometry());
    if (beside) place(*beside);
}

void frmHelpTesl::Form_Load() {
    if (const QWidget* const main = mainWindow())
        place(placedOver(main->geometry(), usualSize(), main->screen()->availableGeometry()));
    if (from_) placeBeside(*from_);
}

bool frmHelpTesl::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) setPageMargins();
    return QWidget::eventFilter(watched, event);
}

// The text stands in the middle of the page and its lines stay readable however wide the window is.
void frmHelpTesl::setPageMargins() {
    const double side = std::max(kLeastMargin, (RTB1->viewport()->width() - kWidestText) / 2);
    QTextFrame* const page = RTB1->document()->rootFrame();
    auto format = page->frameFormat();
    if (format.leftMargin() == side && format.topMargin() == kLeastMargin) return;
    format.setTopMargin(kLeastMargin);
    format.setBottomMargin(kLeastMargin);
    format.setLeftMargin(side);
    format.setRightMargin(side);
    page->setFrameFormat(format);
}

void frmHelpTesl::Command1_Click() {
    const std::string path = theSession().DataDir + "/helpdoc.rtf";
    FileReplacement file(path);
    file.write({document_.constData(), static_cast<std::size_t>(document_.size())});
    file.commit();
    startTextEditor(path);
}

void frmHelpTesl::txtFind_Change() {
    find(RTB1->textCursor().selectionStart());
}

void frmHelpTesl::findNext() {
    find(RTB1->textCursor().selectionEnd());
}

// Selects the next place that holds what was typed, from the beginning again when there is none below.
void frmHelpTesl::find(int from) {
    const QString wanted = txtFind->text();
    QTextCursor found = RTB1->document()->find(wanted, from);
    if (found.isNull()) found = RTB1->document()->find(wanted, 0);
    lblFound->setText(found.isNull() && !wanted.isEmpty() ? u"Not found"_s : QString());
    if (found.isNull()) {
        found = RTB1->textCursor();
        found.setPosition(found.selectionStart());
    }
    RTB1->setTextCursor(found);
}

}  // namespace tessel

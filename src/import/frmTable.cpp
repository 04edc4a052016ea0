// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmTable.h"

#include "app/HelpOpener.h"
#include "base/input_file.h"
#include "base/numbers.h"
#include "base/run_time_error.h"
#include "desktop/CaptionColour.h"
#include "desktop/FileDialogs.h"
#include "desktop/Guarded.h"
#include "desktop/MessageBox.h"
#include "geodesy/coordinate_systems.h"
#include "import/TablePreviewModel.h"
#include "import/file_kind.h"

#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QSignalBlocker>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

constexpr int kHelpDocument = 120;
constexpr int kTypingPause = 150;  // milliseconds without a change after which a file's name counts as typed
constexpr int kLeastLines = 8;     // of the table, its header among them
constexpr std::array kSeparators = {',', ';', '\t', ' '};  // as the box lists them

QString shownRole(TableRole role) {
    const std::string_view name = nameOf(role);
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace

frmTable::frmTable(QWidget* parent, KnownTables& known, const LayerReader* layers)
    : QDialog(parent), known_(known), layerReader_(layers) {
    setupUi(this);
    txtFile->setAcceptDrops(false);
    for (QCheckBox* const box : {chkMinutes, chkNegate, chkDivide})
        colourWhileChecked(*box);
    for (int role = 0; role < kTableRoles; ++role)
        cmbRole->addItem(shownRole(static_cast<TableRole>(role)));
    prepareTable();
    connectControls();
    offerHelp(*this, kHelpDocument, cmdHelp);
    showParameters([] {
        TableOptions options;
        options.EMCutoff = -10;
        return options;
    }());
    txtDistance->clear();
    readBeginning();
}

void frmTable::connectControls() {
    typing_.setSingleShot(true);
    typing_.setInterval(kTypingPause);
    connect(&typing_, &QTimer::timeout, this, guarded(this, [this] { readBeginning(); }));
    connect(txtFile, &QLineEdit::textChanged, this, guarded(this, [this] { typing_.start(); }));
    const auto changed = guarded(this, [this] { shapeChanged(); });
    connect(cmbSeparator, &QComboBox::currentIndexChanged, this, changed);
    connect(cmbDecimal, &QComboBox::currentIndexChanged, this, changed);
    connect(spinSkip, &QSpinBox::valueChanged, this, changed);
    connect(cmbLayer, &QComboBox::activated, this, guarded(this, [this] { layerPicked(); }));
    connect(chkMinutes, &QCheckBox::toggled, this, guarded(this, [this] { showNotices(); }));
    connect(txtSystem, &QLineEdit::textChanged, this, guarded(this, [this] { showNotices(); }));
    connect(cmbColumn, &QComboBox::currentIndexChanged, this, guarded(this, [this] { columnPicked(); }));
    connect(cmbRole, &QComboBox::activated, this, guarded(this, [this] { rolePicked(); }));
    connect(cmdBrowse, &QPushButton::clicked, this, guarded(this, [this] { cmdBrowse_Click(); }));
    connect(cmdImport, &QPushButton::clicked, this, guarded(this, [this] { cmdImport_Click(); }));
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmTable::prepareTable() {
    model_ = new TablePreviewModel(this);
    tblPreview->setModel(model_);
    const int line = tblPreview->fontMetrics().lineSpacing() * 5 / 4;
    tblPreview->verticalHeader()->setMinimumSectionSize(line);
    tblPreview->verticalHeader()->setDefaultSectionSize(line);
    tblPreview->verticalHeader()->hide();
    tblPreview->setMinimumHeight(kLeastLines * line);
    tblPreview->horizontalHeader()->setSectionsClickable(true);
    connect(tblPreview->horizontalHeader(), &QHeaderView::sectionClicked, this, &frmTable::headClicked);
}

void frmTable::headClicked(int column) {
    runGuarded(this, [&] { columnClicked(column); });
}

void frmTable::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedFile(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void frmTable::dropEvent(QDropEvent* event) {
    txtFile->setText(droppedFile(*event->mimeData()));
    event->acceptProposedAction();
}

void frmTable::cmdBrowse_Click() {
    const QString path = askOpenFile(this, windowTitle(), kAllFiles);
    if (!path.isEmpty()) txtFile->setText(path);
}

TableShape frmTable::shape() const {
    return {kSeparators.at(static_cast<std::size_t>(cmbSeparator->currentIndex())),
            cmbDecimal->currentIndex() == 0 ? '.' : ',', spinSkip->value(), chkMinutes->isChecked()};
}

TableOptions frmTable::entries() const {
    TableOptions options;
    options.path = pathMeantBy(txtFile->text());
    options.EMCutoff = leadingNumber(txtCutoff->text().toStdString());
    options.MinDistance = leadingNumber(txtDistance->text().toStdString());
    options.chooseDistance(cmbMeasure->currentIndex() + 1);
    options.NegateEM = chkNegate->isChecked();
    options.DivideEMBy10 = chkDivide->isChecked();
    if (hasLayers()) options.layer = layers_[static_cast<std::size_t>(cmbLayer->currentIndex())].name;
    options.shape = shape();
    options.roles = roles_;
    options.system = roundToInt(leadingNumber(txtSystem->text().toStdString()));
    return options;
}

void frmTable::showShape(const TableShape& shape) {
    const QSignalBlocker quiet[] = {QSignalBlocker(cmbSeparator), QSignalBlocker(cmbDecimal),
                                    QSignalBlocker(spinSkip), QSignalBlocker(chkMinutes)};
    cmbSeparator->setCurrentIndex(
        static_cast<int>(std::ranges::find(kSeparators, shape.separator) - kSeparators.begin()));
    cmbDecimal->setCurrentIndex(shape.decimalSign == '.' ? 0 : 1);
    spinSkip->setValue(shape.linesToSkip);
    chkMinutes->setChecked(shape.minutes);
}

void frmTable::showParameters(const TableOptions& options) {
    txtCutoff->setText(QString::fromStdString(shortestText(options.EMCutoff)));
    txtDistance->setText(QString::fromStdString(shortestText(options.MinDistance)));
    cmbMeasure->setCurrentIndex(options.DistanceMode - 1);
    chkNegate->setChecked(options.NegateEM);
    chkDivide->setChecked(options.DivideEMBy10);
    txtSystem->setText(options.system == 0 ? QString() : QString::number(options.system));
}

// A file with layers begins with what the first of them holds.
void frmTable::readFile(const std::string& path) {
    const auto layers = layerReader_ != nullptr ? layerReader_->layersIn(path) : std::nullopt;
    if (!layers) {
        const std::string bytes = readFirstBytes(path, kFirstBytes);
        cutOff_ = bytes.size() >= kFirstBytes;
        text_ = decodedText(bytes, recogniseTextEncoding(bytes));
        return;
    }
    if (layers->empty()) problem_ = u"There is no layer of points in this file."_s;
    for (const PointLayer& layer : *layers)
        cmbLayer->addItem(legible(fromPath(layer.name)));
    layers_ = *layers;
    if (hasLayers()) readLayer();
}

void frmTable::readLayer() {
    const auto chosen = static_cast<std::size_t>(cmbLayer->currentIndex());
    text_ = beginningOf(*layerReader_, pathMeantBy(txtFile->text()), layers_.at(chosen));
}

// What is wrong with one layer need not be with another.
void frmTable::layerPicked() {
    text_.clear();
    problem_.clear();
    try {
        readLayer();
    } catch (const RunTimeError& error) {
        problem_ = legible(fromPath(error.description()));
    }
    showShape(shapeOfText());
    shapeChanged();
}

// Between the values of a layer there are tabs.
TableShape frmTable::shapeOfText() const {
    return hasLayers() ? TableShape{'\t', '.', 1, false} : recogniseTable(text_, cutOff_);
}

void frmTable::readBeginning() {
    typing_.stop();
    text_.clear();
    layers_.clear();
    cmbLayer->clear();
    cutOff_ = false;
    problem_.clear();
    const std::string path = pathMeantBy(txtFile->text());
    if (path.empty())
        problem_ = u"Choose a file: its first lines are shown here."_s;
    else if (!isInputFile(path))
        problem_ = u"There is no such file, or it is none that can be read."_s;
    else
        try {
            readFile(path);
        } catch (const RunTimeError& error) {
            problem_ = legible(fromPath(error.description()));
        }
    showShape(shapeOfText());
    for (QWidget* const control : std::initializer_list<QWidget*>{lblSeparator, cmbSeparator, lblDecimal,
                                                                  cmbDecimal, lblSkip, spinSkip})
        control->setVisible(!hasLayers());
    for (QWidget* const control : std::initializer_list<QWidget*>{lblLayer, cmbLayer})
        control->setVisible(hasLayers());
    shapeChanged();
}

void frmTable::shapeChanged() {
    preview_ = previewTable(text_, cutOff_, shape());
    const auto known = known_.find(preview_.header);
    const bool isKnown = !preview_.header.empty() && known != known_.end();
    roles_ = isKnown       ? known->second.roles
             : hasLayers() ? guessRolesBesidePosition(preview_)
                           : guessRoles(preview_);
    roles_.resize(preview_.columns, TableRole::kNothing);
    if (isKnown) showParameters(known->second);
    {
        const QSignalBlocker quiet(chkMinutes);
        chkMinutes->setChecked(!hasLayers() && (isKnown ? known->second.shape.minutes
                                                        : looksLikeMinutes(preview_, shape(), roles_)));
    }
    showPreview();
    tblPreview->resizeColumnsToContents();
    showColumns();
}

void frmTable::showColumns() {
    {
        const QSignalBlocker quiet(cmbColumn);
        cmbColumn->clear();
        for (int column = 0; column < model_->columnCount(); ++column)
            cmbColumn->addItem(model_->columnName(column));
    }
    columnPicked();
}

void frmTable::columnPicked() {
    const int column = cmbColumn->currentIndex();
    cmbRole->setEnabled(column >= 0);
    if (column >= 0) cmbRole->setCurrentIndex(static_cast<int>(roles_[static_cast<std::size_t>(column)]));
    rolesBefore_ = roles_;
}

// Arrow keys and letters pass through roles of other columns, which keep them when the way goes on.
void frmTable::rolePicked() {
    const int column = cmbColumn->currentIndex();
    if (column < 0) return;
    roles_ = rolesBefore_;
    showRole(column, static_cast<TableRole>(cmbRole->currentIndex()));
}

// The menu stands below the column's head.
void frmTable::columnClicked(int column) {
    auto* const menu = new QMenu(this);
    menu->setObjectName(u"mnuRole"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int i = 0; i < kTableRoles; ++i) {
        const auto role = static_cast<TableRole>(i);
        QAction* const item = menu->addAction(shownRole(role));
        item->setCheckable(true);
        item->setChecked(roles_[static_cast<std::size_t>(column)] == role);
        connect(item, &QAction::triggered, this,
                guarded(this, [this, column, role] { setRole(column, role); }));
    }
    const QHeaderView* const heads = tblPreview->horizontalHeader();
    menu->popup(heads->mapToGlobal(QPoint(heads->sectionViewportPosition(column), heads->height())));
}

void frmTable::setRole(int column, TableRole role) {
    showRole(column, role);
    cmbColumn->setCurrentIndex(column);
    columnPicked();
}

// The head of a narrow column makes room for the name of what the column holds.
void frmTable::showRole(int column, TableRole role) {
    giveRole(roles_, static_cast<std::size_t>(column), role);
    showPreview();
    const int needed = tblPreview->horizontalHeader()->sectionSizeHint(column);
    if (tblPreview->columnWidth(column) < needed) tblPreview->setColumnWidth(column, needed);
}

void frmTable::showPreview() {
    model_->show(preview_, shape(), roles_, captionColour(kWarningColour, *tblPreview));
    showNotices();
}

QString frmTable::whatIsWrong() const {
    if (!problem_.isEmpty()) return problem_;
    if (preview_.lines.empty()) return u"The file holds no values below these lines."_s;
    if (const std::string missing = whatIsMissing(roles_); !missing.empty())
        return QString::fromStdString(missing);
    const TableOptions options = entries();
    if (!options.has(TableRole::kLongitude) || txtSystem->text().trimmed().isEmpty()) return {};
    return QString::fromStdString(whyNotInMetres(options.system));
}

void frmTable::showNotices() {
    const QString wrong = whatIsWrong();
    const TableOptions options = entries();
    const bool degrees = options.has(TableRole::kLongitude) || options.has(TableRole::kLatitude);
    for (QWidget* const control :
         std::initializer_list<QWidget*>{chkMinutes, lblSystem, txtSystem, lblSystemName})
        control->setEnabled(degrees);
    lblSystemName->setText(options.system == 0 ? u"the UTM zone that fits"_s
                                               : QString::fromStdString(shownName(options.system)));
    lblNotice->setText(wrong);
    colourNotice(*lblNotice, problem_.isEmpty());
    for (QWidget* const control : std::initializer_list<QWidget*>{txtDistance, cmbMeasure})
        control->setEnabled(!options.has(TableRole::kRow));
    cmdImport->setEnabled(wrong.isEmpty());
}

bool frmTable::refuse(QWidget& box, const QString& message) {
    tell(this, message);
    box.setFocus();
    return false;
}

// In the words of the other import that asks for them.
bool frmTable::entriesAreValid() {
    const bool distanceCounts = txtDistance->isEnabled();
    for (QLineEdit* const box : {txtCutoff, txtDistance})
        if ((box == txtCutoff || distanceCounts) && !isNumeric(box->text().toStdString()))
            return refuse(*box, u"Non-numeric EM-cutoff or Minimum distance Input"_s);
    if (distanceCounts && entries().MinDistance < 0)
        return refuse(*txtDistance, u"Error: Minimum distance must be > 0"_s);
    return true;
}

void frmTable::cmdImport_Click() {
    if (typing_.isActive()) readBeginning();
    if (!whatIsWrong().isEmpty() || !entriesAreValid()) return;
    const TableOptions options = entries();
    if (!preview_.header.empty()) known_[preview_.header] = options;
    Q_EMIT inputChosen(options);
}

}  // namespace tessel

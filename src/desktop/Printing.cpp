// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Printing.h"

#include "base/file_replacement.h"
#include "base/run_time_error.h"
#include "base/session.h"
#include "base/whole_numbers.h"
#include "desktop/FileDialogs.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTemporaryDir>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace tessel {

namespace {

using PrinterName = std::function<QString()>;

PrinterName& defaultPrinterName() {
    static PrinterName name = [] { return QPrinterInfo::defaultPrinterName(); };
    return name;
}

void drawPage(QPrinter& printer, const std::string& target, const PageDrawing& draw) {
    QPainter painter;
    if (!painter.begin(&printer))
        throw RunTimeError::file(target, "cannot be printed on", "the print job could not be started");
    draw(painter, printer);
    if (!painter.end() || printer.printerState() == QPrinter::Error)
        throw RunTimeError::file(target, "cannot be printed on", "the print job failed");
}

// The PDF engine keeps silent about what it could not write: only a whole file ends like this.
bool isWholePdf(const QByteArray& pdf) {
    return pdf.trimmed().endsWith("%%EOF");
}

// Drawn in the folder for temporary files first, so that a failure leaves an existing file as it was.
void drawPdf(QPrinter& printer, const std::string& path, const PageDrawing& draw) {
    FileReplacement target(path);
    const QTemporaryDir folder;
    if (!folder.isValid())
        throw RunTimeError::file(path, "cannot be written",
                                 "no folder for the page can be made in " + toPath(QDir::tempPath()));
    QFile page(folder.filePath(u"page.pdf"_s));
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(page.fileName());
    drawPage(printer, path, draw);
    const QByteArray pdf = page.open(QIODevice::ReadOnly) ? page.readAll() : QByteArray();
    if (!isWholePdf(pdf))
        throw RunTimeError::file(path, "cannot be written",
                                 "there is no room for the page in " + toPath(folder.path()));
    target.write({pdf.constData(), static_cast<std::size_t>(pdf.size())});
    target.commit();
}

}  // namespace

bool printPage(QWidget* parent, const QString& documentName, const PageDrawing& draw) {
    const QString name = defaultPrinterName()();
    QString path;
    if (name.isEmpty()) {
        path =
            askSaveFile(parent, QStringLiteral("No printer is installed: print to a PDF file"),
                        QStringLiteral("PDF Files (*.pdf)|*.pdf|All Files (*.*)|*"), QStringLiteral("pdf"));
        if (path.isEmpty()) return false;
    }
    QPrinter printer(QPrinter::HighResolution);
    if (!name.isEmpty()) printer.setPrinterName(name);
    printer.setResolution(nearestInt(300 * theSession().PrintScale));
    printer.setDocName(documentName);
    printer.setCreator(QStringLiteral("VARN-Tessel"));
    if (path.isEmpty())
        drawPage(printer, name.toStdString(), draw);
    else
        drawPdf(printer, toPath(path), draw);
    return true;
}

double unitsPerTwip(const QPrinter& printer) {
    return printer.resolution() / 1440.0;
}

void setDefaultPrinterName(PrinterName name) {
    defaultPrinterName() = name ? std::move(name) : [] { return QPrinterInfo::defaultPrinterName(); };
}

}  // namespace tessel

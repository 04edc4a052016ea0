#include "app/Printing.h"

#include "app/FileDialogs.h"
#include "app/run_time_error.h"
#include "app/survey.h"

#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTemporaryDir>

#include <cmath>
#include <utility>

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

// Written beside its name first, so that a failure leaves an existing file as it was.
void drawPdf(QPrinter& printer, const QString& path, const PageDrawing& draw) {
    const QString beside = path + QStringLiteral(".tessel-part");
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(beside);
    try {
        drawPage(printer, toPath(path), draw);
    } catch (...) {
        QFile::remove(beside);
        throw;
    }
    if (::rename(toPath(beside).c_str(), toPath(path).c_str()) != 0) {
        const int reason = errno;
        QFile::remove(beside);
        throw RunTimeError::file(toPath(path), "cannot be written", reason);
    }
}

}  // namespace

bool printPage(QWidget* parent, const QString& documentName, const PageDrawing& draw) {
    const QString name = defaultPrinterName()();
    QString path;
    if (name.isEmpty()) {
        path = askSaveFile(parent, QStringLiteral("No printer is installed: print to a PDF file"),
                           QStringLiteral("PDF Files (*.pdf)|*.pdf|All Files (*.*)|*"));
        if (path.isEmpty()) return false;
    }
    QPrinter printer(QPrinter::HighResolution);
    if (!name.isEmpty()) printer.setPrinterName(name);
    printer.setResolution(static_cast<int>(std::lround(300 * theSession().PrintScale)));
    printer.setDocName(documentName);
    printer.setCreator(QStringLiteral("VARN-Tessel"));
    if (path.isEmpty())
        drawPage(printer, name.toStdString(), draw);
    else
        drawPdf(printer, path, draw);
    return true;
}

double unitsPerTwip(const QPrinter& printer) {
    return printer.resolution() / 1440.0;
}

void setDefaultPrinterName(PrinterName name) {
    defaultPrinterName() = name ? std::move(name) : [] { return QPrinterInfo::defaultPrinterName(); };
}

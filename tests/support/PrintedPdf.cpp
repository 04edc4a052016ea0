// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PrintedPdf.h"

#include "desktop/FileDialogs.h"
#include "desktop/Printing.h"

namespace tessel {

PrintedPdf::PrintedPdf() {
    setDefaultPrinterName([] { return QString(); });
    setFileResponder([this](const FileQuestion& question) {
        ++questions_;
        EXPECT_TRUE(question.toSave);
        return cancels_ ? QString() : fromPath(folder_ / "page.pdf");
    });
}

PrintedPdf::~PrintedPdf() {
    setFileResponder({});
    setDefaultPrinterName({});
}

bool PrintedPdf::exists() const {
    return QFileInfo::exists(fromPath(folder_ / "page.pdf"));
}

QByteArray PrintedPdf::run(const QString& program, const QStringList& arguments) const {
    QProcess process;
    process.start(program, arguments);
    const bool done = process.waitForFinished() && process.exitCode() == 0;
    EXPECT_TRUE(done) << program.toStdString() << ": " << process.errorString().toStdString() << " "
                      << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

QList<PrintedPdf::Word> PrintedPdf::words() const {
    static const QRegularExpression kWord(
        u"<word xMin=\"([-.0-9]+)\" yMin=\"([-.0-9]+)\" xMax=\"([-.0-9]+)\" yMax=\"([-.0-9]+)\">(.*?)</word>"_s);
    const QString page =
        QString::fromUtf8(run(u"pdftotext"_s, {u"-bbox"_s, fromPath(folder_ / "page.pdf"), u"-"_s}));
    QList<Word> words;
    for (const QRegularExpressionMatch& match : kWord.globalMatch(page)) {
        const QPointF from(match.captured(1).toDouble(), match.captured(2).toDouble());
        const QPointF to(match.captured(3).toDouble(), match.captured(4).toDouble());
        words << Word{match.captured(5), QRectF(from, to).translated(-printableArea().topLeft())};
    }
    return words;
}

QRectF PrintedPdf::find(const QString& word, double top) const {
    for (const Word& candidate : words())
        if (candidate.text == word && candidate.box.top() >= top) return candidate.box;
    return {};
}

QString PrintedPdf::fonts() const {
    const QString table = QString::fromUtf8(run(u"pdffonts"_s, {fromPath(folder_ / "page.pdf")}));
    QStringList names;
    for (const QString& line : table.split(u'\n', Qt::SkipEmptyParts).mid(2))  // below the table's head
        names << line.section(u' ', 0, 0);
    return names.join(u'\n');
}

QImage PrintedPdf::picture() const {
    const QString base = fromPath(folder_ / "page");
    const QString resolution = QString::number(72 * kPixelsPerPoint);
    run(u"pdftoppm"_s, {u"-r"_s, resolution, u"-png"_s, u"-singlefile"_s, base + u".pdf"_s, base});
    const QRectF area = printableArea();
    return QImage(base + u".png"_s)
        .copy(QRectF(area.topLeft() * kPixelsPerPoint, area.size() * kPixelsPerPoint).toRect());
}

QRectF PrintedPdf::printableArea() {
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    return printer.pageLayout().paintRect(QPageLayout::Point);
}

}  // namespace tessel

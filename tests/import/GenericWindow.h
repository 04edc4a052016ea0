// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/palette16.h"
#include "desktop/CaptionColour.h"
#include "import/frmGeneric.h"
#include "import/import_report.h"
#include "support/ImportTest.h"

namespace tessel {

inline const QString kReportTitle = u"VARN-Tessel File Import Message"_s;

/// The window of the generic import, open, and what a user does with it.
class GenericImport : public ImportTest {
  protected:
    GenericImport() {
        import.serve(window);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QRadioButton& option(int i) { return *window.findChild<QRadioButton*>(u"optCF_%1"_s.arg(i)); }

    // Imports a file of one of the layouts, 0 to 7, by its typed name.
    void importFile(int layout, std::string_view bytes) {
        type(*window.txtGFile, fromPath(sensorFile(bytes)));
        click(option(layout));
        click(*window.cmdImport);
    }
    void expectReport(int valid, int dropped = 0) {
        boxes.tell(QString::fromStdString(genericImportReport(valid, dropped)), kReportTitle);
    }
    void refuse(const QString& message) {
        boxes.tell(message);
        click(*window.cmdImport);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(imported.count(), 0);
        expectSurveyUntouched();
    }
    // Types the name of a file and waits until its beginning is shown.
    void look(std::string_view bytes) {
        const QString path = fromPath(sensorFile(bytes));
        QSignalSpy shown(window.tblPreview->model(), &QAbstractItemModel::modelReset);
        type(*window.txtGFile, window.txtGFile->text() == path ? path + u' ' : path);
        EXPECT_TRUE(shown.wait());
    }
    // A line of the table: the number of the file's line, then the values, marked ones in brackets.
    QString previewLine(int line) {
        const QAbstractItemModel& table = *window.tblPreview->model();
        QString text = table.headerData(line, Qt::Vertical).toString() + u':';
        for (int column = 0; column < table.columnCount(); ++column) {
            const QModelIndex cell = table.index(line, column);
            const bool marked = cell.data(Qt::ForegroundRole).value<QColor>() == captionColour(kRed, window);
            EXPECT_EQ(marked, !cell.data(Qt::ToolTipRole).toString().isEmpty());
            text += marked ? u" ["_s + cell.data().toString() + u']' : u' ' + cell.data().toString();
        }
        return text;
    }
    QString previewColumns() {
        QStringList names;
        for (int column = 0; column < window.tblPreview->model()->columnCount(); ++column)
            names << window.tblPreview->model()->headerData(column, Qt::Horizontal).toString();
        return names.join(u' ');
    }
    QColor fitColour() { return window.lblFit->palette().color(QPalette::WindowText); }

    frmGeneric window{&main};
};

}  // namespace tessel

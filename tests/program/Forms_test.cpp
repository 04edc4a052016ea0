// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for the forms and menus as they are written.
#include "analysis/frmHistForm.h"
#include "analysis/frmSigCorrStruct.h"
#include "app/frmMain.h"
#include "program/Program.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

const QString kForms = QStringLiteral(TESSEL_SOURCE_DIR "/src");

QStringList namesIn(const QString& form) {
    const std::string content = readFile(form.toStdString());
    QXmlStreamReader xml(QByteArray::fromStdString(content));
    QStringList names;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        if (xml.name() == "widget"_L1 || xml.name() == "action"_L1)
            names << xml.attributes().value("name"_L1).toString();
    }
    EXPECT_FALSE(xml.hasError()) << form.toStdString();
    return names;
}

TEST(Forms, NameEverythingOnceAndAsCppCanSayIt) {
    static const QRegularExpression kName(u"^[A-Za-z][A-Za-z0-9_]*$"_s);
    static const QSet<QString> kKeywords = {u"delete"_s, u"new"_s, u"default"_s, u"switch"_s, u"this"_s};
    QDirIterator forms(kForms, {u"*.ui"_s}, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    for (; forms.hasNext(); ++count) {
        const QString form = forms.next();
        QSet<QString> seen;
        for (const QString& name : namesIn(form)) {
            EXPECT_TRUE(kName.match(name).hasMatch() && !kKeywords.contains(name))
                << form.toStdString() << ": " << name.toStdString();
            EXPECT_FALSE(seen.contains(name)) << form.toStdString() << ": " << name.toStdString();
            seen << name;
        }
        EXPECT_TRUE(form.endsWith(u'/' + namesIn(form).constFirst() + u".ui"_s)) << form.toStdString();
    }
    EXPECT_EQ(count, 21);
}

TEST(Menus, ShowTheStandardShortcuts) {
    const auto main = createProgram();
    EXPECT_EQ(main->mnuOpen->shortcut(), QKeySequence(u"Ctrl+I"_s));
    EXPECT_EQ(main->mnuOpen2->shortcut(), QKeySequence(u"Ctrl+Shift+O"_s));
    EXPECT_EQ(main->mnuSave->shortcut(), QKeySequence(u"Ctrl+E"_s));
    EXPECT_EQ(main->mnuOpenSurvey->shortcut(), QKeySequence(u"Ctrl+O"_s));
    EXPECT_EQ(main->mnuSaveSurvey->shortcut(), QKeySequence(u"Ctrl+S"_s));
    EXPECT_EQ(main->mnuRecord->shortcut(), QKeySequence(u"Ctrl+Shift+S"_s));
    EXPECT_EQ(main->mnuExit->shortcut(), QKeySequence(u"Ctrl+Q"_s));
    EXPECT_EQ(frmHistForm().mnuPrint->shortcut(), QKeySequence(u"Ctrl+P"_s));
    EXPECT_EQ(frmSigCorrStruct().mnuPrint->shortcut(), QKeySequence(u"Ctrl+P"_s));
}

}  // namespace

}  // namespace tessel

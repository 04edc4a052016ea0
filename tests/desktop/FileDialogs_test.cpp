// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/FileDialogs.h"

#include "support/ExpectedBoxes.h"
#include "support/temporary_folder.h"

namespace tessel {

namespace {

void clickAccept(QFileDialog* dialog) {
    auto* const buttons = dialog->findChild<QDialogButtonBox*>();
    for (auto* const button : buttons->buttons())
        if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole) button->click();
}

// Types a name into the real dialog and accepts it. A box that comes up is answered with `answer`; a dialog
// that is still there at the next look did not take the name and is cancelled.
class DialogTypist : public QObject {
  public:
    explicit DialogTypist(const QString& name, QMessageBox::StandardButton answer = QMessageBox::Ok)
        : name_(name), answer_(answer) {
        QObject::connect(&timer_, &QTimer::timeout, this, [this] { look(); });
        timer_.start(10);
    }

  private:
    void look() {
        QWidget* const active = QApplication::activeModalWidget();
        if (auto* const box = qobject_cast<QMessageBox*>(active)) {
            box->button(answer_)->click();
        } else if (auto* const dialog = qobject_cast<QFileDialog*>(active); dialog && dialog->isVisible()) {
            if (std::exchange(typed_, true)) return dialog->reject();
            dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(name_);
            // Not from within the timer's own event: a timer stands still while it is delivered.
            QTimer::singleShot(0, dialog, [dialog] { clickAccept(dialog); });
        }
    }

    QString name_;
    QMessageBox::StandardButton answer_;
    QTimer timer_;
    bool typed_ = false;
};

// What the dialogs give when this is typed: bytes of a path, and nothing where the name is not taken.
std::string opened(const QString& typed) {
    const DialogTypist typist(typed);
    return toPath(askOpenFile(nullptr, u"Open"_s, kAllFiles));
}
std::string saved(const QString& typed, QMessageBox::StandardButton answer = QMessageBox::Ok,
                  const QString& suffix = {}) {
    const DialogTypist typist(typed, answer);
    return toPath(askSaveFile(nullptr, u"Save"_s, kAllFiles, suffix));
}

using FileDialogs = FolderTest;

}  // namespace

TEST_F(FileDialogs, ShowTheDescriptionsAsTheyStand) {
    EXPECT_EQ(nameFilters(u"Text Files (*.txt)|*.TXT|All Files (*.*)|*"_s),
              (QStringList{u"Text Files (*.txt) (*.TXT)"_s, u"All Files (*.*) (*)"_s}));
}

TEST_F(FileDialogs, GiveTheFileThatWasNamedIfItExists) {
    writeFile(folder / "SURVEY.DAT", "x");
    EXPECT_EQ(opened(fromPath(folder / "SURVEY.DAT")), folder / "SURVEY.DAT");
    EXPECT_EQ(opened(fromPath(folder / "nothing.dat")), "");
}

TEST_F(FileDialogs, ShowSizesAndTimesWhole) {
    writeFile(folder / "SURVEY.DAT", std::string(123456, 'x'));
    const QString before = QDir::currentPath();
    QDir::setCurrent(fromPath(folder / ""));
    int looked = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&looked] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible()) return;
        const auto* const list = dialog->findChild<QTreeView*>(u"treeView"_s);
        if (list->model()->rowCount(list->rootIndex()) == 0) return;
        const auto* const columns = static_cast<const QAbstractItemView*>(list);
        for (int column = 1; column < list->model()->columnCount(); ++column) {
            const QModelIndex cell = list->model()->index(0, column, list->rootIndex());
            EXPECT_GE(list->columnWidth(column), columns->sizeHintForIndex(cell).width()) << column;
            ++looked;
        }
        dialog->reject();
    });
    timer.start(10);
    EXPECT_EQ(askOpenFile(nullptr, u"Open"_s, kAllFiles), QString());
    EXPECT_EQ(looked, 3);
    QDir::setCurrent(before);
}

TEST_F(FileDialogs, RefuseADeviceAPipeAndAFileOfTheSystemsOwn) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const QString& file : {fromPath(folder / "pipe"), u"/dev/null"_s, u"/proc/self/status"_s}) {
        ExpectedBoxes boxes;
        boxes.tellBeginning(file + u" cannot be read: it is a device, a pipe"_s);
        EXPECT_EQ(opened(file), "");
    }
}

// They close before the program hears of the choice, and have no widgets of Qt's.
TEST_F(FileDialogs, OfTheDesktopEndWithAChoiceThatIsRefused) {
    ExpectedBoxes boxes;
    boxes.tellBeginning(u"/dev/null cannot be read: it is a device, a pipe"_s);
    QTimer::singleShot(50, qApp, [] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        auto* const name = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
        name->setText(u"/dev/null"_s);
        name->setObjectName(QString());
        static_cast<QDialog*>(dialog)->accept();
        EXPECT_FALSE(dialog->isVisible());
        dialog->reject();
    });
    EXPECT_EQ(askOpenFile(nullptr, u"Open"_s, kAllFiles), QString());
}

TEST_F(FileDialogs, DoNotLookIntoTheFilesOfAFolder) {
    writeFile(folder / "a_file_without_a_known_kind", "x");
    const auto lastRead = [&] {
        struct stat status {};
        ::stat((folder / "a_file_without_a_known_kind").c_str(), &status);
        return status.st_atim.tv_sec;
    };
    // Long ago, which the next reading changes wherever times of reading are kept.
    const timespec longAgo[2] = {{1000000, 0}, {2000000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, (folder / "a_file_without_a_known_kind").c_str(), longAgo, 0), 0);
    QTimer::singleShot(300, qApp, [&] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->setDirectory(fromPath(folder.path()));
        QTest::qWait(300);
        EXPECT_FALSE(dialog->grab().isNull());
        EXPECT_FALSE(dialog->isSizeGripEnabled());
        dialog->reject();
    });
    EXPECT_EQ(askOpenFile(nullptr, u"Open"_s, kAllFiles), QString());
    EXPECT_EQ(lastRead(), 1000000);
}

TEST_F(FileDialogs, AddASuffixThatIsGivenToANameWithoutOne) {
    EXPECT_EQ(saved(fromPath(folder / "out")), folder / "out");
    for (const auto& [typed, name] :
         {std::pair("page", "page.pdf"), {"page.pdf", "page.pdf"}, {"page.other", "page.other"}})
        EXPECT_EQ(saved(fromPath(folder / typed), QMessageBox::Ok, u"pdf"_s), folder / name);
    const DialogTypist typist(fromPath(folder / "out"));
    EXPECT_EQ(askSaveFile(nullptr, u"Save"_s, u"Text Files (*.txt)|*.TXT"_s).toStdString(), folder / "out");
}

TEST_F(FileDialogs, ProposeANameThatIsTakenOrTypedOver) {
    const QString proposed = fromPath(folder / "field.gpkg");
    const auto savedBy = [&](const std::function<void(QFileDialog*)>& act) {
        QTimer::singleShot(50, qApp, [&act] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(dialog);
            clickAccept(dialog);
        });
        return toPath(askSaveFile(nullptr, u"Save"_s, kAllFiles, u"gpkg"_s, proposed));
    };
    EXPECT_EQ(savedBy([](QFileDialog* dialog) {
                  EXPECT_EQ(dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->selectedText(),
                            u"field.gpkg"_s);
              }),
              folder / "field.gpkg");
    EXPECT_EQ(savedBy([](QFileDialog* dialog) {
                  QTest::keyClicks(dialog->findChild<QLineEdit*>(u"fileNameEdit"_s), u"other"_s);
              }),
              folder / "other.gpkg");
}

// They are no Unicode, look like such a name as it is shown, or hold what stands between several names.
TEST_F(FileDialogs, ProposeNoNameThatQtsOwnTakesForAnother) {
    for (const char* const name : {"fr\xFCh.gpkg", "fr\\xFCh.gpkg", "5\" probe.gpkg"}) {
        QTimer::singleShot(50, qApp, [] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->text(), u""_s);
            dialog->reject();
        });
        EXPECT_EQ(askSaveFile(nullptr, u"Save"_s, kAllFiles, {}, fromPath(folder / name)), QString());
    }
}

TEST_F(FileDialogs, AskBeforeAnExistingFileIsReplaced) {
    for (const std::string& file : {folder / "out.txt", folder / "fr\xFCh.txt"}) {
        const QString typed = legible(fromPath(file));
        EXPECT_EQ(saved(typed, QMessageBox::No), file) << "there is none yet";
        writeFile(file, "x");
        EXPECT_EQ(saved(typed, QMessageBox::No), "");
        EXPECT_EQ(saved(typed, QMessageBox::Yes), file);
    }
}

TEST_F(FileDialogs, TakeTypedNamesThatAreNotUnicode) {
    std::filesystem::create_directory(folder / "Gel\xE4nde");
    const std::string file = folder / "Gel\xE4nde/fr\xFCh.dat";
    writeFile(file, "x");
    const QString address = QString::fromLatin1(QByteArray::fromStdString(file).toPercentEncoding("/"));
    for (const QString& typed : {legible(fromPath(file)), fromPath(file), u"file://"_s + address})
        EXPECT_EQ(opened(typed), file);
    for (const char* none : {"Gel\xE4nde/none\xFC.dat", "Gel\xE4nde", "none\xE4/out.dat"})
        EXPECT_EQ(opened(legible(fromPath(folder / none))), "");
    writeFile(folder / "früh.dat", "x");
    EXPECT_EQ(opened(u"file://"_s + fromPath(folder / "früh.dat")), folder / "früh.dat");
}

}  // namespace tessel

// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/WrittenFiles.h"

#include "desktop/FileNames.h"
#include "desktop/MessageBox.h"
#include "desktop/Printing.h"
#include "export/RecordSaving.h"
#include "export/table_file.h"
#include "export/transect_file.h"
#include "import/error_log.h"
#include "plots/Chart2D.h"
#include "plots/frmPicture.h"
#include "storage/recovery_file.h"
#include "storage/survey_file.h"
#include "storage/work_stream.h"
#include "support/Journeys.h"
#include "support/UserDriver.h"
#include "support/made_survey.h"
#include "support/run_time_errors.h"

namespace tessel {

namespace {

constexpr const char* kOld = "what was there before";

// What is told by throwing; "" for nothing.
template <typename Action>
std::string toldBy(Action action) {
    const std::string told = descriptionOf(action);
    return told == "no error" ? "" : told;
}

// Enough of them that they are written in more than one piece.
constexpr SiteIndex kManySites = 6000;

Survey manySites(SiteIndex sites) {
    return surveyOfReadings(
        sites, [](SiteIndex i) { return static_cast<double>(i) / 3; }, [](SiteIndex) { return 2.0 / 3; });
}

// One of so many sites, the same each time: it knows when it was made.
template <SiteIndex kSites>
const Journal& journalOf() {
    static const Journal made = [] {
        Journal journal(std::size_t{1} << 30);
        journal.replaceSurvey({ActKind::kImport, "import", "Imported", {}}, manySites(kSites));
        return journal;
    }();
    return made;
}

// All of the work in one number: two that are the same have the same bits.
std::string digestOf(const Journal& journal) {
    std::uint64_t digest = 0;
    ByteWriter out([&](std::string_view piece) { digest = digest * 31 + checksumOf(piece); });
    writeWork(out, journal, {});
    out.finish();
    return std::to_string(digest);
}

class Transect : public FileToWrite {
    std::string name() const override { return "field.txt"; }
    std::string write(const std::string& path) override {
        return toldBy([&] { writeTransectFile(survey_, path, {}); });
    }
    const Survey survey_ = manySites(kManySites);
};

class Table : public FileToWrite {
    std::string name() const override { return "field.csv"; }
    std::string write(const std::string& path) override {
        using Column = TableColumn;
        const TableFormat format{{Column::kX, Column::kY, Column::kEM1, Column::kEM2}, ',', false, "m"};
        return toldBy([&] { writeTable(journalOf<kManySites>(), path, format); });
    }
};

class Log : public FileToWrite {
    std::string name() const override { return "error_log.dat"; }
    std::string write(const std::string& path) override {
        ErrorLog log(path);
        for (std::int64_t line = 1; line <= kManySites; ++line)
            log.reject(line, "a line that cannot be read as any position", reject_reason::kX);
        log.commit();
        ImportSummary summary;
        log.describe(summary);
        return summary.logProblem;
    }
};

class Record : public FileToWrite {
  public:
    Record() {
        RecordedAct deletion;
        deletion.removed.emplace();
        for (double line = 1; line < 2 * kManySites; line += 2)
            deletion.removed->lines.push_back({line, line});
        record_.acts.assign(2, deletion);
    }

  private:
    std::string name() const override { return "field.record.yaml"; }
    std::string write(const std::string& path) override {
        const ChosenFile chosen(path);
        return toldBy([this] { saveRecord(&window_, {}, [this] { return record_; }); });
    }
    ProcessingRecord record_;
    QWidget window_;
};

class Picture : public FileToWrite {
  public:
    Picture(std::string name, const QString& option) : name_(std::move(name)) {
        chart_.resize(200, 150);
        chart_.show();
        window_ = std::make_unique<frmPicture>(&chart_, PlotPicture({&chart_}));
        window_->show();
        clickOn(*window_, option);
    }

  private:
    std::string name() const override { return name_; }
    std::string write(const std::string& path) override {
        std::string told;
        const ChosenFile chosen(path);
        setMessageResponder([&told](const MessageBox& box) { return told = toPath(box.text), true; });
        window_->show();
        clickOn(*window_, u"cmdSave"_s);
        setMessageResponder({});
        EXPECT_EQ(window_->isVisible(), !told.empty()) << "another name can be chosen";
        return told;
    }

    Chart2D chart_;
    std::unique_ptr<frmPicture> window_;
    std::string name_;
};

// Of a PDF that is whole, which tells the time at which it was made, how long it is.
std::string lengthOfPdf(const std::string& path) {
    std::string bytes = readFile(path);
    const bool isWhole =
        bytes.starts_with("%PDF") && QByteArray::fromStdString(bytes).trimmed().endsWith("%%EOF");
    return isWhole ? std::to_string(bytes.size()) : bytes;
}

class PdfPicture : public Picture {
  public:
    PdfPicture() : Picture("plot.pdf", u"optPDF"_s) {}

  private:
    std::string contents(const std::string& path) const override { return lengthOfPdf(path); }
};

class Page : public FileToWrite {
    std::string name() const override { return "page.pdf"; }
    std::string write(const std::string& path) override {
        const ChosenFile chosen(path);
        setDefaultPrinterName([] { return QString(); });
        const std::string told = toldBy([this] {
            printPage(&window_, u"Plot"_s,
                      [](QPainter& painter, const QPrinter&) { painter.drawLine(0, 0, 100, 100); });
        });
        setDefaultPrinterName({});
        return told;
    }
    std::string contents(const std::string& path) const override { return lengthOfPdf(path); }
    QWidget window_;
};

class SurveyInItsFile : public FileToWrite {
    std::string name() const override { return "field.gpkg"; }
    void makeOld(const std::string& path) override { saveSurvey(path, journalOf<2>(), {}); }
    std::string write(const std::string& path) override {
        return toldBy([&] { saveSurvey(path, journalOf<300>(), {}); });
    }
    std::string contents(const std::string& path) const override {
        std::string digest;
        toldBy([&] { digest = digestOf(openSurvey(path).journal); });
        return digest;
    }
};

// It is read as the next program finds it: where nobody holds it.
class KeptWork : public FileToWrite {
    std::string name() const override { return "recovery-" + std::to_string(::getpid()) + "-0"; }
    void makeOld(const std::string& path) override {
        file_.reset();
        std::filesystem::remove(path);
        file_ = std::make_unique<RecoveryFile>(std::filesystem::path(path).parent_path(), journalOf<300>(),
                                               SavedRecords());
    }
    std::string write(const std::string& /*path*/) override {
        return toldBy([&] { file_->append(JournalEvent::kActed, journalOf<kManySites>(), {}); });
    }
    std::string contents(const std::string& path) const override {
        const TemporaryFolder folder;
        std::filesystem::copy(path, folder / "recovery-1-0");
        const auto left = findLeftWork(folder.path());
        return left.empty() ? "" : digestOf(left.front().read().journal);
    }
    std::unique_ptr<RecoveryFile> file_;
};

template <typename Kind>
std::unique_ptr<FileToWrite> make() {
    return std::make_unique<Kind>();
}

}  // namespace

void FileToWrite::makeOld(const std::string& path) {
    writeFile(path, kOld);
}

std::string FileToWrite::contents(const std::string& path) const {
    return readFile(path);
}

std::vector<KindOfFile> filesOfTheUser() {
    return {{"TransectFile", make<Transect>},
            {"ErrorLog", make<Log>},
            {"ProcessingRecord", make<Record>},
            {"Table", make<Table>},
            {"SurveyFile", make<SurveyInItsFile>},
            {"PictureOfDots", [] { return std::make_unique<Picture>("plot.png", u"optPNG"_s); }},
            {"PictureOfStrokes", [] { return std::make_unique<Picture>("plot.svg", u"optSVG"_s); }},
            {"PictureAsPdf", make<PdfPicture>},
            {"PrintedPage", make<Page>}};
}

std::vector<KindOfFile> allWrittenFiles() {
    std::vector<KindOfFile> kinds = filesOfTheUser();
    kinds.push_back({"RecoveryFile", make<KeptWork>});
    return kinds;
}

WrittenFileTest::WrittenFileTest() {
    const TemporaryFolder elsewhere;
    const std::string another = elsewhere / file->name();
    file->makeOld(another);
    EXPECT_EQ(file->write(another), "");
    new_ = file->contents(another);
    file->makeOld(path);
    old_ = file->contents(path);
    EXPECT_NE(old_, new_);
}

std::string WrittenFileTest::stateOf(const std::string& where) const {
    if (!std::filesystem::exists(where)) return "none";
    const std::string now = file->contents(where);
    return now == old_ ? "old" : now == new_ ? "new" : "torn";
}

bool isInPlace(const std::string& told) {
    return told.empty() || told.find("has been written") != std::string::npos;
}

}  // namespace tessel

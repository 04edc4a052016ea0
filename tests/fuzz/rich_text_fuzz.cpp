// SPDX-License-Identifier: GPL-3.0-or-later
// The reader of help documents: no bytes make it fail, what it shows is in proportion to their number, and so
// is the time that it takes to lay that out.
#include "fuzz/memory_file.h"
#include "richtext/RichTextReader.h"

#include <QGuiApplication>
#include <QTextDocument>

namespace tessel {

namespace {

constexpr double kPageWidth = 740;  // pixels

void startGui() {
    static int argc = 1;
    static char name[] = "rich_text_fuzz";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication gui(argc, argv);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    startGui();
    const std::string input = fuzzInput(data, size);
    const TimeBudget budget(input.size());
    QTextDocument document;
    document.setTextWidth(kPageWidth);
    readRichText(QByteArrayView(input.data(), static_cast<qsizetype>(input.size())), document);
    require(document.characterCount() <= static_cast<int>(16 * input.size() + 64));
    require(document.size().height() >= 0);
    return 0;
}

}  // namespace tessel

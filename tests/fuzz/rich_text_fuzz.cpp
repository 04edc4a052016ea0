// The reader of help documents: no bytes make it fail, and what it shows is in proportion to their number.
#include "app/RichTextReader.h"
#include "fuzz/memory_file.h"

#include <QGuiApplication>
#include <QTextDocument>

namespace {

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
    QTextDocument document;
    readRichText(QByteArrayView(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)), document);
    require(document.characterCount() <= static_cast<int>(16 * size + 64));
    return 0;
}

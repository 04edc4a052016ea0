// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/fitting_import.h"

#include "import/generic_preview.h"
#include "import/table_shape.h"

namespace tessel {

namespace {

// A file with a value for each of the least that a site needs.
constexpr std::size_t kLeastColumns = 3;

bool isTable(std::string_view text, bool cutOff) {
    const TableShape shape = recogniseTable(text, cutOff);
    return previewTable(text, cutOff, shape).columns >= kLeastColumns;
}

}  // namespace

FittingImport fittingImport(std::string_view firstBytes) {
    const FileKind kind = recogniseFileKind(firstBytes);
    if (!kind.isText) return FittingImport::kGeneric;
    const GenericPreview preview =
        previewGenericFile(firstBytes, kind, kGenericLayouts.front(), kind.decimalCommas);
    const bool most = preview.linesOfMost * 2 > preview.lines;
    const bool numbers = preview.lines > 0 && !preview.records.empty();
    if (numbers && most && !fittingLayouts(preview).empty()) return FittingImport::kGeneric;
    const std::string text = decodedText(firstBytes, kind.encoding);
    return isTable(text, firstBytes.size() >= kFirstBytes) ? FittingImport::kTable : FittingImport::kTrimble;
}

}  // namespace tessel

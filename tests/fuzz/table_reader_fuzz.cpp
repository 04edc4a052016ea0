// SPDX-License-Identifier: GPL-3.0-or-later
// The table reader, its preview and what is recognised. The first byte is the shape, or says that it is to be
// recognised; the second one chooses the columns, the others are the file.
#include "fuzz/import_checks.h"
#include "import/table_reader.h"

#include <array>

namespace tessel {

namespace {

using Role = TableRole;

const std::array<std::vector<TableRole>, 4> kColumns = {
    {{Role::kX, Role::kY, Role::kEM1},
     {Role::kSite, Role::kX, Role::kY, Role::kEM1, Role::kEM2, Role::kRow},
     {Role::kLatitude, Role::kLongitude, Role::kEM1},
     {Role::kNothing, Role::kEM2, Role::kLongitude, Role::kEM1, Role::kNothing, Role::kLatitude}}};

TableShape shapeOf(std::size_t choice, std::string_view text) {
    TableShape shape = recogniseTable(text, choice % 2 == 1);
    if (choice < 128) return shape;
    constexpr std::array kSeparators = {',', ';', '\t', ' '};
    return {kSeparators[choice % 4], choice / 4 % 2 == 0 ? '.' : ',', static_cast<int>(choice / 8 % 4),
            choice / 32 % 2 == 1};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input = fuzzInput(data, size);
    const TimeBudget budget(input.size());
    FuzzBytes bytes(input);
    TableOptions options;
    const std::size_t choice = bytes.byte(), columns = bytes.byte();
    options.shape = shapeOf(choice, bytes.rest());
    const TablePreview preview = previewTable(bytes.rest(), false, options.shape);
    options.roles = guessRoles(preview);
    require(options.roles.size() == preview.columns);
    options.shape.minutes = options.shape.minutes || looksLikeMinutes(preview, options.shape, options.roles);
    if (!whatIsMissing(options.roles).empty()) options.roles = kColumns[columns % kColumns.size()];
    options.EMCutoff = -10;
    options.MinDistance = 3;
    options.system = columns < 128 ? 0 : 32630;
    options.errorLogPath = kNoSuchFolder;
    const MemoryFile file(bytes.rest());
    options.path = file.path();
    requireSites(importTable(options), options.EMCutoff, input.size());
    return 0;
}

}  // namespace tessel

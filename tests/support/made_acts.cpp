// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/made_acts.h"

#include "rows/row_acts.h"
#include "rows/row_editing.h"
#include "rows/row_selection.h"

namespace tessel {

Journal journalOf(Survey survey, std::size_t mostBytes) {
    Journal journal(mostBytes);
    importSurvey(journal, std::move(survey));
    return journal;
}

void importSurvey(Journal& journal, Survey survey) {
    journal.replaceSurvey({ActKind::kImport, "import a.dat", "Imported a.dat", {{"file", "a.dat"}}},
                          std::move(survey));
}

void deleteRow(Journal& journal, int row) {
    journal.perform(deletionOfRow(journal.survey(), row),
                    [row](Survey& survey) { return Delete_Row(survey, row); });
}

void joinRows(Journal& journal, int row) {
    journal.perform(joinOf(row, row + 1), [row](Survey& survey) { return Joint_Row(survey, row, row + 1); });
}

RowDetection findRows(Journal& journal, int measure, double distance) {
    return journal
        .perform(searchForRows(measure, distance),
                 [=](Survey& survey) { return Recalculate_Rows(survey, measure, distance); })
        .outcome;
}

void adjust(Journal& journal, const AdjustmentRequest& request) {
    Adjustment done = adjustment(journal.survey(), request);
    journal.perform(describe(done), [&](Survey& survey) { return adjustReadings(survey, std::move(done)); });
}

void deletePicked(Journal& journal, int row, const std::vector<SiteIndex>& points) {
    RowSelection selection;
    for (const SiteIndex point : points)
        selection.append(point);
    journal.perform(deletionOfPicked(row, selection),
                    [&](Survey& survey) { return deleteSelectedSites(survey, row, selection); });
}

void deleteMasked(Journal& journal, SiteMaskArray mask) {
    journal.perform(deletionOfMasked(static_cast<SiteIndex>(mask.size())),
                    [&](Survey& survey) { return deleteMaskedSites(survey, mask); });
}

void convert(Journal& journal, const PositionRequest& request) {
    ConvertedPositions positions = convertedPositions(journal.survey(), request);
    journal.perform(describe(positions),
                    [&](Survey& survey) { return replacePositions(survey, std::move(positions)); });
}

}  // namespace tessel

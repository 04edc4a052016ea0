#include "app/survey_changes.h"

namespace {

std::uint64_t changes = 0;

}  // namespace

std::uint64_t surveyChanges() {
    return changes;
}

void noteSurveyChange() {
    ++changes;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/survey.h"
#include "app/survey_description.h"
#include "app/survey_facts.h"
#include "import/import_summary.h"

namespace tessel {

/// Says in words what an import found in its file and what the survey is like now: first what a user must
/// know, then file, lines, rejected lines, sites, rows, ranges and steps, at last the error log. Of a survey
/// that comes from no import (an empty path) only the survey is told. `facts` are those of `survey`.
///
/// Where no menu item opens the error log (`logIsInMenu` false), its path and its first lines are told too.
SurveyDescription describeSurvey(const Survey& survey, const SurveyFacts& facts, const ImportSummary& import,
                                 bool logIsInMenu);

}  // namespace tessel

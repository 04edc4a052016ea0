// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessel {

class LagDistancePlot;
class SurveyGridPlot;
class frmDataEdit;

/// While the dialog is open: a distance that is typed in it stands in the lag distance plots, and one that is
/// chosen there stands in the dialog; the survey grid shows the rows that would come out. Enter and Escape on
/// a plot on which a distance has been chosen are those of the dialog. Requires plots that outlive it.
void joinDistanceChoice(frmDataEdit& dialog, LagDistancePlot& lag, SurveyGridPlot& grid);

}  // namespace tessel

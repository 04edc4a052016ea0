#pragma once

class QWidget;

/// Opens the help document of this number (101 to 116) in the help viewer, or says that it is missing.
void openHelp(QWidget* from, int document);

#include "app/HelpOpener.h"

void openHelp(QWidget*, int) {}

#pragma once

class QWidget;

// What the menu items about editor and printer do.

/// Opens the error log of the last import in the text editor. Throws RunTimeError when there is none or the
/// editor cannot be started.
void mnuEL_Click();

/// Asks for another text editor, in force until the program ends; the settings file is not written.
void mnusetDTE_Click(QWidget* parent);

/// Sets the session's PrintScale to 1.0, 2.0 or 4.0 and says so.
void mnuDPI300_Click(QWidget* parent);
void mnuDPI600_Click(QWidget* parent);
void mnuDPI1200_Click(QWidget* parent);

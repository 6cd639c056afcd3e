#pragma once
// Ctrl+Q in the main window: closes the program by the same road as its close button,
// through all the closing questions. On the pictures area the key belongs to the picture
// (it steps through the size of the shown picture), so there it does not quit.

class FrmInput;
class QShortcut;

QShortcut* InstallQuitKey(FrmInput* window);

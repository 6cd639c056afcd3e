#pragma once
// Where a tool window opens: centred over the window it belongs to, and on its screen.

class QWidget;

// Moves `w` so that its centre lies on the centre of `over` (or of the active window),
// inside the screen's available area.
void CenterOver(QWidget* w, const QWidget* over = nullptr);

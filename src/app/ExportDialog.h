#pragma once
// The save dialogue of every list export: the five formats as filters, "txt" chosen
// first. A name typed without an ending takes the ending of the filter chosen, also in
// the overwrite question of the dialogue.

#include <QString>

class QFileDialog;
class QWidget;

// A new dialogue (the caller owns it) opening in `startFolder`.
QFileDialog* MakeExportDialog(QWidget* parent, const QString& startFolder);
// Runs the dialogue; the chosen path, or empty when cancelled.
QString RunExportDialog(QWidget* parent, const QString& startFolder);

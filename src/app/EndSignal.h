#pragma once
// The end of a desktop session (or a `kill`) sends SIGTERM; SIGHUP and SIGINT come from a
// closed terminal and Ctrl+C. Each of them closes the program's windows the way a close
// by the system does (no questions; the main window knows such a close by its close event
// coming from code), so the program ends through its event loop instead of vanishing in
// the middle of a write.

class QObject;

// Installs the handlers; `parent` owns the notifier that carries the signal into the
// event loop. Call once, after the application object exists.
void CloseWindowsOnEndSignals(QObject* parent);

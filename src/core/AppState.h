#pragma once
// The program-wide state every part reads: flags of the one user-interface thread and
// the table of file type names. One instance, reached through State().

#include <QString>
#include <array>

struct AppState {
    bool SuppressEvents = false; // code is filling controls: change handlers do nothing
    bool AbortRequested = false; // set by btnTab1_Abort, polled by long loops
    bool ScanRunning = false;    // a folder scan is in progress
    bool UpdateRun = false;      // the next scan takes every file, without checks
    bool ListBusy = false;       // a list is being loaded or rewritten
};

AppState& State();

// The texts of the Type column, indexed by the TagEngine's file type number.
constexpr int kFileTypeCount = 10;
const std::array<QString, kFileTypeCount>& FileTypeNames();
QString FileTypeName(int type); // "Datei" for anything out of range

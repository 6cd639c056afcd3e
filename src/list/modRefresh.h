#pragma once
// Refreshing the data list from the files that changed since their rows were read.
//
// Every row read from a file remembers the file's size and modification time of that
// moment, in its row key behind a "|" (the user never sees keys, and saved lists keep
// them): "12k|4711:1700000000.123456789". The refresh compares them with the files as
// they are now and reads again only the files that differ; a row without the record (a
// list saved by an older version, or a row made by hand) counts as changed.

#include "list/RowKeys.h"
#include "list/modScan.h"

#include <QString>
#include <QStringView>

class DataGrid;
class Prompt;
class TagEngine;

// "size:seconds.nanoseconds" of the file's modification time; empty when it can't be
// read. The record behind "|" in the key of a row read from a file (list/RowKeys.h).
QString FileStampText(const QString& path);
// The same record from the look the engine took when it opened its current file, which
// saves a second stat when the file is read anyway.
QString OpenedFileStampText(const TagEngine& engine);

struct RefreshResult {
    int rows = 0;      // rows looked at
    int unchanged = 0; // rows whose files are as they were read
    int reread = 0;    // rows read again
    int missing = 0;   // rows whose files are gone (they get the failure mark)
    int failures = 0;  // of the rows read again, files that are no longer readable audio
    bool aborted = false;
    QStringList ratings; // the rebuilt value lists of Rating and Mood
    QStringList moods;
};

// The refresh of the data list: every row's file is looked at; a missing file marks its
// row "_#-/-> " in front of the old mark (once), a changed file has its row read again in
// place (number, mark and place in the list stay), an unchanged one is left as it is.
// Adds no rows and changes no order. The progress bar runs over the files read again,
// and an abort leaves the rows not yet read as they were (the next refresh takes them).
// threads: readers; 0 = as the preferences say (ScanReadThreads).
RefreshResult RefreshChanged(DataGrid& list, TagEngine& engine, Prompt& prompt, const ScanHooks& hooks = {},
                             int threads = 0);

// The closing message of the refresh: the counts, unless `noMsg`; missing files are
// always told.
void TellRefreshResult(const RefreshResult& result, bool noMsg, Prompt& prompt);

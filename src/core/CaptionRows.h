#pragma once
// Named rows of the caption table (see core/Captions.h), in ascending order. A row is
// named by what the text means where the program shows it.

#include "core/Captions.h"

constexpr CaptionRow CapListLoading = 91;       // footer while a saved list loads
constexpr CaptionRow CapListSaving = 93;        // footer while a saved list is written
constexpr CaptionRow CapListEmpty = 96;         // the list holds no rows
constexpr CaptionRow CapListSaved = 128;        // a list file was written
constexpr CaptionRow CapDeleteFailed = 148;     // a file could not be deleted
constexpr CaptionRow CapExportDone = 209;       // the export has been written
constexpr CaptionRow CapListSaveFailed = 221;   // a list file could not be written
constexpr CaptionRow CapListLoadFailed = 222;   // a list file could not be read
constexpr CaptionRow CapSavedListFilter = 224;  // file type of saved data lists; picker title
constexpr CaptionRow CapExportFilter = 835;     // file type text of the export filters
constexpr CaptionRow CapListLoaded = 940;       // a saved list was loaded, every file found
constexpr CaptionRow CapListFilesMissing = 941; // files of a loaded list are missing (+ count)

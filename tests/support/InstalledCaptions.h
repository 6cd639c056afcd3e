#pragma once
// Loads the caption table the build installs beside the program, for tests whose
// messages are checked by their words.

#include "TestPaths.h"
#include "core/Captions.h"
#include "core/DataGrid.h"

inline bool LoadInstalledCaptions(int languageColumn = kLanguageEnglish) {
    SetLanguageColumn(languageColumn);
    return CaptionTable().LoadFile(ProgramDir() + QStringLiteral("/Caption.qlt"));
}

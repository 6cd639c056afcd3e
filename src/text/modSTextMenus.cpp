#include "text/modSTextMenus.h"

namespace {

constexpr int kRefrainCaptionChars = 40; // words of a refrain shown in its entry

QString Key(const char* key) {
    return QLatin1String(key);
}

// The group of the file commands; every command needs a file row.
void AddFileGroup(ContextMenuEntries& m, bool haveRow, bool killRow, MenuCaptionFn cap) {
    m.Add(cap(Key("File")), Key("File"));
    for (const char* k : {"RenameFile", "CopyFile", "MoveFile"})
        m.Add(cap(Key(k)), Key(k), Key("File"), false, haveRow);
    m.Add(cap(Key("KillFile")), Key("KillFile"), Key("File"), false, killRow);
}

} // namespace

ContextMenuEntries BuildSTextMenu(const STextMenuState& s, MenuCaptionFn cap) {
    ContextMenuEntries m;
    if (s.rows <= 0)
        return m;
    const bool row = s.curRow >= 1 && s.curRow <= s.rows;
    const bool refrains = !s.refrainRows.isEmpty();
    m.Add(cap(Key("AddRowBefore")), Key("AddRowBefore"), QString(), false, row);
    m.Add(cap(Key("AddRowAfter")), Key("AddRowAfter"), QString(), false, row);
    m.Add(cap(Key("LinkToSong")), Key("LinkToSong"));
    m.Add(cap(Key("InsertText")), Key("InsertText"), QString(), false, refrains && row);
    for (int i = 0; i < s.refrainRows.size(); ++i) {
        const int r = s.refrainRows[i];
        const QString words = s.refrainTexts.value(i).left(kRefrainCaptionChars);
        m.Add(QStringLiteral("%1  %2").arg(r).arg(words), QStringLiteral("InsertText%1").arg(r),
              Key("InsertText"), false, row);
    }
    m.Add(cap(Key("InsertAll")), Key("InsertAll"), QString(), false, refrains && row);
    m.Add(QStringLiteral("-"), Key("Line"));
    m.Add(cap(Key("InsertLine")), Key("InsertLine"), QString(), false, row);
    m.Add(cap(Key("DeleteRfAll")), Key("DeleteRfAll"), QString(), false, refrains);
    return m;
}

ContextMenuEntries BuildTxtLrcMenu(const TxtLrcMenuState& s, MenuCaptionFn cap) {
    ContextMenuEntries m;
    if (s.rows <= 0)
        return m;
    const bool row = s.curRow >= 1 && s.curRow <= s.rows;
    m.Add(cap(Key("TextToList")), Key("TextToList"), QString(), false, row);
    AddFileGroup(m, row, row, cap);
    m.Add(cap(Key("txtlrc")), Key("txtlrc"), QString(), s.kindShown, s.anyKind || s.kindShown);
    return m;
}

ContextMenuEntries BuildSongLrcMenu(const SongLrcMenuState& s, MenuCaptionFn cap) {
    ContextMenuEntries m;
    if (s.rows <= 0)
        return m;
    const bool row = s.curRow >= 1 && s.curRow <= s.rows;
    m.Add(cap(Key("PlayInList")), Key("PlayInList"), QString(), false, row);
    m.Add(cap(Key("PlayInWindow")), Key("PlayInWindow"), QString(), false, row && s.windowReady);
    m.Add(cap(Key("MarkAllSync")), Key("MarkAllSync"));
    m.Add(cap(Key("EraseAllMarksSync")), Key("EraseAllMarksSync"), QString(), false, s.anyMark);
    AddFileGroup(m, row, s.fileListRow, cap);
    m.Add(cap(Key("lrcInSong")), Key("lrcInSong"), QString(), false, row);
    return m;
}

int RefrainEntryRow(const QString& key) {
    return MenuKeyNumber(key, QStringLiteral("InsertText"));
}

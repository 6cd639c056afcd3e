#include "list/modContextMenu.h"

#include "core/DataGrid.h"

void ContextMenuEntries::Add(const QString& caption, const QString& key, const QString& parent, bool checked,
                             bool enabled) {
    m_entries.push_back({caption, key, parent, checked, enabled});
}

const MenuEntry* ContextMenuEntries::Find(const QString& key) const {
    for (const MenuEntry& e : m_entries)
        if (e.key == key)
            return &e;
    return nullptr;
}

QStringList ContextMenuEntries::Keys() const {
    QStringList keys;
    for (const MenuEntry& e : m_entries)
        keys << e.key;
    return keys;
}

void ContextMenuEntries::DisableKeys(const QSet<QString>& keys) {
    for (MenuEntry& e : m_entries)
        if (keys.contains(e.key))
            e.enabled = false;
}

int MenuKeyNumber(const QString& key, const QString& prefix) {
    if (!key.startsWith(prefix) || key.size() == prefix.size())
        return -1;
    bool ok = false;
    const QString digits = key.mid(prefix.size());
    for (QChar c : digits)
        if (!c.isDigit())
            return -1;
    const int n = digits.toInt(&ok);
    return ok ? n : -1;
}

namespace {

QString Num2(int n) {
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

void AddPlayGroup(ContextMenuEntries& m, int highlighted, MenuCaptionFn cap) {
    if (highlighted == 1) {
        // One row: the group's key stands for the single play entry (it plays as play1).
        m.Add(cap(QStringLiteral("play")), QStringLiteral("play"));
    } else if (highlighted > 1) {
        m.Add(cap(QStringLiteral("play")), QStringLiteral("play"));
        for (const char* k : {"play1", "play2", "play3"})
            m.Add(cap(QLatin1String(k)), QLatin1String(k), QStringLiteral("play"));
    }
}

void AddDirectEdit(ContextMenuEntries& m, bool on, MenuCaptionFn cap) {
    if (on)
        m.Add(cap(QStringLiteral("dEditOff")), QStringLiteral("dEditOff"), QString(), true);
    else
        m.Add(cap(QStringLiteral("dEditOn")), QStringLiteral("dEditOn"));
}

void AddPrint(ContextMenuEntries& m, int highlighted, MenuCaptionFn cap) {
    m.Add(cap(QStringLiteral("Print")), QStringLiteral("Print"));
    m.Add(cap(QStringLiteral("PrintAll")), QStringLiteral("PrintAll"), QStringLiteral("Print"));
    if (highlighted > 0)
        m.Add(cap(QStringLiteral("PrintHighlighted")), QStringLiteral("PrintHighlighted"),
              QStringLiteral("Print"));
    m.Add(cap(QStringLiteral("PrintFTag")), QStringLiteral("PrintFTag"), QStringLiteral("Print"));
}

void AddPlay(ContextMenuEntries& m, const InputMenuState& s, MenuCaptionFn cap) {
    AddPlayGroup(m, s.highlighted, cap);
    m.Add(cap(QStringLiteral("album")), QStringLiteral("album"), QString(), false, s.currentHasAlbum);
    if (s.hasSyncText) {
        m.Add(cap(QStringLiteral("sText")), QStringLiteral("sText"));
        for (const char* k : {"sTextPlay", "sTextShow", "sTextRemove"})
            m.Add(cap(QLatin1String(k)), QLatin1String(k), QStringLiteral("sText"));
    }
    m.Add(cap(QStringLiteral("sTextPlayAll")), QStringLiteral("sTextPlayAll"), QString(), false,
          s.highlighted > 0);
}

void AddMarks(ContextMenuEntries& m, int highlighted, const QStringList& marks,
              const QStringList& presentMarks, MenuCaptionFn cap) {
    if (highlighted == 0)
        return;
    m.Add(cap(QStringLiteral("Mark")), QStringLiteral("Mark"));
    m.Add(cap(QStringLiteral("SetMark")), QStringLiteral("SetMark"), QStringLiteral("Mark"));
    m.Add(cap(QStringLiteral("RemMark")), QStringLiteral("RemMark"), QStringLiteral("Mark"));
    m.Add(cap(QStringLiteral("RemMarkAll")), QStringLiteral("RemMarkAll"), QStringLiteral("RemMark"));
    for (int i = 0; i < kMenuMarks && i < marks.size(); ++i)
        if (!marks[i].isEmpty())
            m.Add(marks[i], QStringLiteral("Mark") + Num2(i), QStringLiteral("SetMark"));
    m.Add(QStringLiteral("-"), QStringLiteral("Line1"), QStringLiteral("RemMark"));
    for (int i = 0; i < kMenuRemoveMarks && i < presentMarks.size(); ++i)
        m.Add(presentMarks[i], QStringLiteral("RemMark") + Num2(i), QStringLiteral("RemMark"));
}

void AddList(ContextMenuEntries& m, const QString& group, const QString& sub, const QString& remove,
             const QStringList& items, int most, bool anyToRemove, MenuCaptionFn cap) {
    m.Add(cap(group), group);
    m.Add(cap(sub), sub, group);
    for (int i = 0; i < most && i < items.size(); ++i)
        if (!items[i].isEmpty())
            m.Add(items[i], sub + Num2(i), sub);
    m.Add(cap(remove), remove, group, false, anyToRemove);
}

} // namespace

ContextMenuEntries BuildInputMenu(const InputMenuState& s, MenuCaptionFn cap) {
    ContextMenuEntries m;
    if (s.rows <= 0)
        return m;
    AddPlay(m, s, cap);
    AddDirectEdit(m, s.directEdit, cap);
    m.Add(cap(QStringLiteral("HighlightAll")), QStringLiteral("HighlightAll"));
    if (!s.audioTypes.isEmpty()) {
        m.Add(cap(QStringLiteral("HighlightAudio")), QStringLiteral("HighlightAudio"));
        for (int i = 0; i < kMenuAudioTypes && i < s.audioTypes.size(); ++i)
            m.Add(s.audioTypes[i], QStringLiteral("AudioType%1").arg(i + 1),
                  QStringLiteral("HighlightAudio"));
    }
    m.Add(cap(QStringLiteral("Print")), QStringLiteral("Print"));
    m.Add(cap(QStringLiteral("PrintAll")), QStringLiteral("PrintAll"), QStringLiteral("Print"));
    if (s.highlighted > 0)
        m.Add(cap(QStringLiteral("PrintHighlighted")), QStringLiteral("PrintHighlighted"),
              QStringLiteral("Print"));
    m.Add(cap(QStringLiteral("PrintFTag")), QStringLiteral("PrintFTag"), QStringLiteral("Print"));
    AddMarks(m, s.highlighted, s.marks, s.presentMarks, cap);
    if (s.highlighted > 0) {
        AddList(m, QStringLiteral("Quality"), QStringLiteral("QIn"), QStringLiteral("RemQ"), s.ratings,
                kMenuRatings, s.anyRating, cap);
        AddList(m, QStringLiteral("Mood"), QStringLiteral("MIn"), QStringLiteral("RemM"), s.moods, kMenuMoods,
                s.anyMood, cap);
    }
    m.Add(cap(QStringLiteral("RandomChoice")), QStringLiteral("RandomChoice"));
    m.Add(QStringLiteral("-"), QStringLiteral("Line2"));
    m.Add(cap(QStringLiteral("optCol")), QStringLiteral("optCol"));
    m.Add(cap(QStringLiteral("Columns")), QStringLiteral("Columns"));
    // The columns of the pattern in use, as the column window set them.
    const bool patternInUse = s.activePattern >= 0 && s.activePattern < s.patternCaptions.size() &&
                              !s.patternCaptions[s.activePattern].isEmpty();
    m.Add(cap(QStringLiteral("ColsFrm")), QStringLiteral("ColsFrm"), QStringLiteral("Columns"), false,
          patternInUse);
    m.Add(cap(QStringLiteral("ColsAll")), QStringLiteral("ColsAll"), QStringLiteral("Columns"));
    m.Add(QStringLiteral("-"), QStringLiteral("Line3"), QStringLiteral("Columns"));
    for (int i = 0; i < kMenuPatterns && i < s.patternCaptions.size(); ++i)
        if (!s.patternCaptions[i].isEmpty())
            m.Add(s.patternCaptions[i], QStringLiteral("Cols") + Num2(i), QStringLiteral("Columns"),
                  i == s.activePattern);
    if (s.highlighted > 0 && !s.programs.empty()) {
        m.Add(cap(QStringLiteral("extPrg")), QStringLiteral("extPrg"));
        int n = 0;
        for (const ExternalProgram& p : s.programs)
            if (n++ < kMaxExternalPrograms)
                m.Add(p.name.isEmpty() ? p.path : p.name, p.Key(), QStringLiteral("extPrg"));
    }
    if (s.highlighted > 0) {
        m.Add(cap(QStringLiteral("NameToTag")), QStringLiteral("NameToTag"));
        m.Add(cap(QStringLiteral("TextToTags")), QStringLiteral("TextToTags"));
        m.Add(cap(QStringLiteral("LinkToTag")), QStringLiteral("LinkToTag"), QString(), false,
              s.hasCurrentRow);
        m.Add(cap(QStringLiteral("SetAlbum")), QStringLiteral("SetAlbum"));
        m.Add(cap(QStringLiteral("SingleFile")), QStringLiteral("SingleFile"));
        for (const char* k : {"SingleFile01", "SingleFile02", "SingleFile03"})
            m.Add(cap(QLatin1String(k)), QLatin1String(k), QStringLiteral("SingleFile"));
    }
    return m;
}

ContextMenuEntries BuildRefMenu(const RefMenuState& s, MenuCaptionFn cap) {
    ContextMenuEntries m;
    if (s.rows <= 0)
        return m;
    const QString line = QStringLiteral("-");
    AddPlayGroup(m, s.highlighted, cap);
    if (s.highlighted > 0)
        m.Add(line, QString());
    AddDirectEdit(m, s.directEdit, cap);
    m.Add(line, QString());
    m.Add(cap(QStringLiteral("HighlightAll")), QStringLiteral("HighlightAll"));
    m.Add(line, QString());
    AddPrint(m, s.highlighted, cap);
    if (s.highlighted > 0) {
        m.Add(line, QString());
        AddMarks(m, s.highlighted, s.marks, s.presentMarks, cap);
    }
    m.Add(line, QString());
    m.Add(cap(QStringLiteral("Columns")), QStringLiteral("Columns"));
    for (const char* k : {"optCol", "ColsAll", "ColsPreset", "ColsFrm"})
        m.Add(cap(QLatin1String(k)), QLatin1String(k), QStringLiteral("Columns"), false,
              s.hasPreset || qstrcmp(k, "ColsPreset") != 0);
    m.Add(line, QString());
    m.Add(cap(QStringLiteral("Rem_F")), QStringLiteral("Rem_F"), QString(), false, s.anyFound);
    if (s.highlighted > 0) {
        m.Add(cap(QStringLiteral("CMD")), QStringLiteral("CMD"), QString(), false, s.hasCurrentRow);
        for (const char* k : {"Copy", "Move", "Delete"})
            m.Add(cap(QLatin1String(k)), QLatin1String(k));
    }
    return m;
}

ContextMenuEntries BuildFolderMenu(const FolderMenuState& s, MenuCaptionFn cap) {
    ContextMenuEntries m;
    const bool node = !s.folder.isEmpty();
    m.Add(cap(QStringLiteral("UpdateDrivelist")), QStringLiteral("UpdateDrivelist"));
    m.Add(cap(QStringLiteral("UpdateFolders")), QStringLiteral("UpdateFolders"));
    m.Add(QStringLiteral("-"), QStringLiteral("Line"));
    m.Add(cap(QStringLiteral("AddToFavorite")), QStringLiteral("AddToFavorite"), QString(), false,
          node && !s.favorite && !s.favoritesFull);
    m.Add(cap(QStringLiteral("RemFromFavorite")), QStringLiteral("RemFromFavorite"), QString(), false,
          node && s.favorite);
    m.Add(QStringLiteral("-"), QStringLiteral("Line1"));
    m.Add(cap(QStringLiteral("DirUpdate")), QStringLiteral("DirUpdate"), QString(), false, node);
    m.Add(cap(QStringLiteral("DirRem")), QStringLiteral("DirRem"), QString(), false, s.rowsOfFolder > 0);
    m.Add(cap(QStringLiteral("DirUpd")), QStringLiteral("DirUpd"), QString(), false, s.rowsOfFolder > 0);
    return m;
}

void WriteMarkToSelected(DataGrid& list, int col, const QString& mark) {
    for (int r : list.SelectedRows())
        list.SetCellText(r, col, mark);
}

void RemoveMarkOfSelected(DataGrid& list, int col, const QString& mark, bool all) {
    for (int r : list.SelectedRows())
        if (all || list.CellText(r, col) == mark)
            list.SetCellText(r, col, QString());
}

#pragma once
// modContextMenu: the entries of the right-click menus of the lists. A menu is built
// fresh on each right click from the state the window reads (highlighted rows, marks,
// ratings, moods, column patterns, external programs); every entry carries a key, the key
// of its parent entry, a checked and an enabled flag. The window turns the entries into a
// popup and hands the chosen key back; an empty key means the menu closed without a choice.

#include "prefs/modExtPrg.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

class DataGrid;

struct MenuEntry {
    QString caption; // "-" makes a divider
    QString key;
    QString parent; // empty: top level
    bool checked = false;
    bool enabled = true;
};

// The menu object: entries in the order they were added.
class ContextMenuEntries {
public:
    void Add(const QString& caption, const QString& key, const QString& parent = QString(),
             bool checked = false, bool enabled = true);
    const std::vector<MenuEntry>& Entries() const { return m_entries; }
    const MenuEntry* Find(const QString& key) const;
    QStringList Keys() const;
    // Keys whose commands the window cannot run yet are built disabled.
    void DisableKeys(const QSet<QString>& keys);

private:
    std::vector<MenuEntry> m_entries;
};

inline constexpr int kMenuMarks = 11;       // Mark00 to Mark10
inline constexpr int kMenuRemoveMarks = 16; // RemMark00 to RemMark15
inline constexpr int kMenuRatings = 10;     // QIn00 to QIn09
inline constexpr int kMenuMoods = 10;       // MIn00 to MIn09
inline constexpr int kMenuPatterns = 10;    // Cols00 to Cols09
inline constexpr int kMenuAudioTypes = 9;   // AudioType1 to AudioType9

// What the menu of LbxInput is built from. Captions come in already translated so that
// the module stays free of the caption table.
struct InputMenuState {
    int rows = 0;
    int highlighted = 0;
    bool directEdit = false;     // in-cell editing is on
    bool hasSyncText = false;    // the current row's song has a synchronised text
    QStringList marks;           // Mark00..Mark10: the mark box, then the signs of lbxSign
    QStringList presentMarks;    // the distinct marks of the highlighted rows
    QStringList audioTypes;      // the distinct file types of the list, in order
    QStringList ratings;         // rows of lbxRating
    QStringList moods;           // rows of the mood list
    QStringList patternCaptions; // Cols00..Cols09; empty = no pattern stored there
    int activePattern = -1;
    std::vector<ExternalProgram> programs;
    // What the commands need to run; an entry whose command cannot run is disabled.
    bool hasCurrentRow = false; // LinkToTag works on the current row
    bool currentHasAlbum = false;
    bool anyRating = false; // a highlighted row has a rating, one has a mood
    bool anyMood = false;
};

// The caption of an entry by its key (the window's lookup in the caption table).
using MenuCaptionFn = QString (*)(const QString& key);

// The entries of the menu of LbxInput; none when the list is empty.
ContextMenuEntries BuildInputMenu(const InputMenuState& state, MenuCaptionFn caption);

// What the menu of LbxRef is built from.
struct RefMenuState {
    int rows = 0;
    int highlighted = 0;
    bool directEdit = false;
    QStringList marks;        // Mark00..Mark10: the mark box, then the signs of lbxSign
    QStringList presentMarks; // the distinct marks of the highlighted rows
    bool anyFound = false;    // a row holds a found remark (TF)
    bool hasPreset = false;   // a saved column choice exists
    bool hasCurrentRow = false;
};

// The entries of the menu of LbxRef; none when the list is empty. Dividers without a
// name of their own have an empty key.
ContextMenuEntries BuildRefMenu(const RefMenuState& state, MenuCaptionFn caption);

// The mark commands of the menus and keys: `mark` into column `col` of every highlighted
// row; removing one mark (or, with `all`, every mark) from the highlighted rows.
void WriteMarkToSelected(DataGrid& list, int col, const QString& mark);
void RemoveMarkOfSelected(DataGrid& list, int col, const QString& mark, bool all);

// A number key suffix: "Mark07" with prefix "Mark" gives 7; -1 when `key` is not
// prefix + digits.
int MenuKeyNumber(const QString& key, const QString& prefix);

// What the menu of the folder view is built from.
struct FolderMenuState {
    QString folder;        // the node under the mouse (or the current one); empty: none
    bool favorite = false; // the folder stands in the favourites
    bool favoritesFull = false;
    int rowsOfFolder = 0; // rows of the data list whose files lie in the folder
};

// The entries of the menu of the folder view.
ContextMenuEntries BuildFolderMenu(const FolderMenuState& state, MenuCaptionFn caption);

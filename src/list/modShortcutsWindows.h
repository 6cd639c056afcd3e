#pragma once
// The key tables of the tool areas: the main-tab keys F1 to F7 that every list shares,
// the tag list ("Tagging"), the playlist ("Playlisten"), the pictures ("Pictures") and
// the preferences ("Preferences"). HandleShortcut hands these lists' keys here; the
// commands run through the interfaces the windows register.

#include "list/modShortcuts.h"

#include <QString>
#include <QStringList>

// The main areas: F1 data list, F2 tags, F3 texts, F4 playlists, F5 pictures, F6
// time-stamped text, F7 preferences.
class MainTabShortcutCommands {
public:
    virtual ~MainTabShortcutCommands() = default;
    virtual void SelectMainTab(int index) = 0; // 0 for F1
};

// The commands the keys of the tag list LbxTag reach.
// The mark box is txtTab2_FTag, RemoveMarks btnTab2_RemoveFTag.
class TagShortcutCommands : public MarkListShortcutCommands {
public:
    virtual QStringList Ratings() const = 0; // lbxRating rows 1 to 6
    virtual QStringList Moods() const = 0;   // lbxMood rows 1 to 10
    virtual int FieldTab() const = 0;        // SSTabFields
    virtual void SelectFieldTab(int index) = 0;
    virtual void FilterOnOff() = 0;    // btnTab2_FilterOnOff
    virtual void Filter() = 0;         // btnTab2_Filter
    virtual void CopyToPlaylist() = 0; // btnTab2_CopyToPlaylist
    // The rating (13) and mood (14) boxes: of V2, or of the typical set.
    virtual QString FieldBox(int index, bool typical) const = 0;
    virtual void SetFieldBox(int index, bool typical, const QString& text) = 0;
};

// The commands the keys of the playlist LbxPlaylist reach.
// The mark box is txtPlaylist_FTag; HighlightAll, InvertHighlight, HighlightByMark and
// RemoveMarks are btnPlaylist_HighlightAll, _InvertHighlight, _FTagBlue and _RemoveFTag;
// OpenCurrentFile opens the current song.
class PlaylistShortcutCommands : public MarkListShortcutCommands {
public:
    virtual void MarkHighlighted() = 0; // btnPlaylist_SetFTagActRow
    virtual void MoveDown() = 0;        // btnPlaylist_Down
    virtual void MoveUp() = 0;          // btnPlaylist_Up
};

// The commands the keys of the picture area reach.
class PictureShortcutCommands {
public:
    virtual ~PictureShortcutCommands() = default;
    virtual void SelectFilesTab(int index) = 0;    // SSTabPic_Files
    virtual void SelectPicturesTab(int index) = 0; // SSTabPic_Pictures
    virtual void ZoomOriginal() = 0;               // btnPic_Zoom_0
    virtual void ToggleTextbox() = 0;              // btnPic_HideTextbox
    virtual void Fit() = 0;                        // btnPic_Adjust
    virtual void LeftCorner() = 0;                 // mnuZoom_LeftCorner
    virtual void NextPicture() = 0;                // btnPic_NextPic
    virtual void PreviousPicture() = 0;            // btnPic_PreviousPic
    virtual void OpenLink() = 0;                   // btnPic_OpenLink
    virtual void NextSizeStep() = 0;               // the next of the shown picture's sizes
    virtual void StretchTextbox() = 0;             // btnPic_StretchTextbox
    virtual bool ShownAtFullSize() const = 0;
    virtual void FullSize() = 0; // the picture at its own size
    virtual void ZoomIn() = 0;   // btnPic_ZoomIncrease
    virtual void ZoomOut() = 0;  // btnPic_ZoomDecrease
};

// The windows register their interfaces; null unregisters.
void SetMainTabShortcuts(MainTabShortcutCommands* commands);
void SetTagShortcuts(TagShortcutCommands* commands);
void SetPlaylistShortcuts(PlaylistShortcutCommands* commands);
void SetPictureShortcuts(PictureShortcutCommands* commands);

// Whether `list` takes F1 + index to its main tab; a list's own area is never among them.
bool HasMainTabKey(const QString& list, int index);
// F1 to F7 without a modifier: the main tab of the list's table, or nothing for the
// list's own key. Returns whether the key was one of F1 to F7 (it is then spent).
bool MainTabShortcut(const QString& list, int keyCode, int shift);
// The tables of "Tagging", "Playlisten", "Pictures" and "Preferences"; false for
// another list or a key outside its table.
bool WindowShortcut(const QString& list, int keyCode, int shift);

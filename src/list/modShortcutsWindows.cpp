#include "list/modShortcutsWindows.h"

#include "list/modMarks.h"
#include "list/modShortcuts.h"

#include <array>
#include <utility>

namespace {

MainTabShortcutCommands* g_mainTab = nullptr;
TagShortcutCommands* g_tag = nullptr;
PlaylistShortcutCommands* g_playlist = nullptr;
PictureShortcutCommands* g_picture = nullptr;

constexpr int kMainTabs = 7;
constexpr int kTypicalTab = 4; // SSTabFields: the typical set
constexpr int kRatingBox = 13, kMoodBox = 14;
constexpr int kRatings = 6;

// The main areas of the lists: the one a list belongs to has no key, since it is shown.
// The three lists of the time-stamped text live in the area of "STextAll".
int OwnArea(const QString& list) {
    static const std::array<std::pair<const char*, int>, 11> areas{{{"Input", 0},
                                                                    {"Ref", 0},
                                                                    {"Tagging", 1},
                                                                    {"Texte", 2},
                                                                    {"Playlisten", 3},
                                                                    {"Pictures", 4},
                                                                    {"STextAll", 5},
                                                                    {"SText", 5},
                                                                    {"STextLbxSongWithLrc", 5},
                                                                    {"STextLbxLrcTxt", 5},
                                                                    {"Preferences", 6}}};
    for (const auto& [name, area] : areas)
        if (list == QLatin1String(name))
            return area;
    return -1;
}

bool IsDigit(int key) {
    return key >= Vk::D0 && key <= Vk::D9;
}

bool TagKey(TagShortcutCommands& c, int key, int shift) {
    if (MarkListKey(c, key, shift))
        return true;
    if (shift == KeyMask::Shift) {
        if (key < Vk::F1 || key > Vk::F1 + 4)
            return false;
        c.SelectFieldTab(key - Vk::F1);
        return true;
    }
    if (shift == KeyMask::CtrlShift || shift == KeyMask::CtrlAlt) {
        if (IsDigit(key)) {
            const bool rating = shift == KeyMask::CtrlShift;
            const int row = DigitRow(key);
            if (rating && row > kRatings)
                return false;
            const QString value = (rating ? c.Ratings() : c.Moods()).value(row - 1);
            const int box = rating ? kRatingBox : kMoodBox;
            const bool typical = c.FieldTab() == kTypicalTab;
            c.SetFieldBox(box, typical, ToggledMark(c.FieldBox(box, typical), value));
            return true;
        }
        return false;
    }
    if (shift != KeyMask::Ctrl)
        return false;
    switch (key) {
    case 'F':
        c.FilterOnOff();
        return true;
    case 'L':
        c.Filter();
        return true;
    case 'M':
        c.WriteMarkToHighlighted(MarkText(c.MarkBox()));
        return true;
    case 'P':
        c.CopyToPlaylist();
        return true;
    default:
        return false;
    }
}

bool PlaylistKey(PlaylistShortcutCommands& c, int key, int shift) {
    if (MarkListKey(c, key, shift))
        return true;
    if (shift == KeyMask::CtrlShift) {
        switch (key) {
        case 'D':
            c.MoveDown();
            return true;
        case 'U':
            c.MoveUp();
            return true;
        default:
            return false;
        }
    }
    if (shift != KeyMask::Ctrl)
        return false;
    switch (key) {
    case 'M':
        c.MarkHighlighted();
        return true;
    default:
        return false;
    }
}

bool PictureKey(PictureShortcutCommands& c, int key, int shift) {
    if (shift == KeyMask::Shift) {
        if (key >= Vk::F1 && key <= Vk::F1 + 2)
            c.SelectFilesTab(key - Vk::F1);
        else if (key == Vk::F1 + 3 || key == Vk::F1 + 4)
            c.SelectPicturesTab(key - Vk::F1 - 3);
        else
            return false;
        return true;
    }
    if (shift != KeyMask::Ctrl)
        return false;
    switch (key) {
    case Vk::D0:
    case 'M':
        c.ZoomOriginal();
        return true;
    case 'C':
        c.ToggleTextbox();
        return true;
    case 'F':
        c.Fit();
        return true;
    case 'L':
        c.LeftCorner();
        return true;
    case 'N':
        c.NextPicture();
        return true;
    case 'R':
        c.PreviousPicture();
        return true;
    case 'P':
        c.OpenLink();
        return true;
    case 'Q':
        c.NextSizeStep();
        return true;
    case 'T':
        c.StretchTextbox();
        return true;
    case 'Z':
        if (c.ShownAtFullSize())
            c.Fit();
        else
            c.FullSize();
        return true;
    case Vk::NumPlus:
        c.ZoomIn();
        return true;
    case Vk::NumMinus:
        c.ZoomOut();
        return true;
    default:
        return false;
    }
}

} // namespace

void SetMainTabShortcuts(MainTabShortcutCommands* commands) {
    g_mainTab = commands;
}

void SetTagShortcuts(TagShortcutCommands* commands) {
    g_tag = commands;
}

void SetPlaylistShortcuts(PlaylistShortcutCommands* commands) {
    g_playlist = commands;
}

void SetPictureShortcuts(PictureShortcutCommands* commands) {
    g_picture = commands;
}

bool HasMainTabKey(const QString& list, int index) {
    const int own = OwnArea(list);
    return own >= 0 && index >= 0 && index < kMainTabs && index != own;
}

bool MainTabShortcut(const QString& list, int keyCode, int shift) {
    if (shift != KeyMask::None || keyCode < Vk::F1 || keyCode >= Vk::F1 + kMainTabs)
        return false;
    const int index = keyCode - Vk::F1;
    if (g_mainTab && HasMainTabKey(list, index))
        g_mainTab->SelectMainTab(index);
    return true;
}

bool WindowShortcut(const QString& list, int keyCode, int shift) {
    if (list == QLatin1String("Tagging"))
        return g_tag && TagKey(*g_tag, keyCode, shift);
    if (list == QLatin1String("Playlisten"))
        return g_playlist && PlaylistKey(*g_playlist, keyCode, shift);
    if (list == QLatin1String("Pictures"))
        return g_picture && PictureKey(*g_picture, keyCode, shift);
    // "Preferences" has the main-tab keys only.
    return false;
}

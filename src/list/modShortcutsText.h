#pragma once
// The key commands of the synchronising editor and its lists: "STextAll" for the whole
// editor (and, for its keys, the scrolling window), "SText" for the text LbxSText,
// "STextLbxSongWithLrc" and "STextLbxLrcTxt" for the two search lists. The editor registers
// its commands; HandleShortcut (modShortcuts.h) hands these list names on to here.

#include <QString>

// The buttons of the editor's player bar MMCSText.
enum class STextPlayerKey { Eject, Play, Pause, Stop };

class STextShortcutCommands {
public:
    virtual ~STextShortcutCommands() = default;
    virtual void CloseSongtext() = 0;               // Esc: the scrolling window, when shown
    virtual void VolumeStep(bool up) = 0;           // sliderSText_Volume up or down
    virtual void SelectSubTab(int index) = 0;       // TabSText_Sub
    virtual void ShiftTimes(int deltaMs) = 0;       // the shift of the current row (and below)
    virtual int ShiftBoxValue(bool plus) const = 0; // txtSText_TimeShiftP or txtSText_TimeShiftM
    virtual void Player(STextPlayerKey key) = 0;
    virtual void InsertRow(bool before) = 0; // a blank row before or after the current one
    virtual void LoadSelected() = 0;         // btnSText_LrcToList
    virtual void FocusList() = 0;            // the focus back to LbxSText
};

// The editor registers its commands; null unregisters.
void SetSTextShortcuts(STextShortcutCommands* commands);
STextShortcutCommands* RegisteredSTextShortcuts();

// Whether `list` names one of the tables of this file.
bool IsSTextShortcutList(const QString& list);
// The key of one of those tables; whether it ran a command.
bool HandleSTextShortcut(const QString& list, int keyCode, int shift);

// The fixed shift amounts of Ctrl (+) and Ctrl+Shift (-) with the digits 1, 2 and 3.
inline constexpr int kSTextShiftSteps[3] = {200, 500, 1000};

#include "list/modShortcutsText.h"

#include "list/modShortcuts.h"

namespace {

STextShortcutCommands* g_stext = nullptr;

// Ctrl (+) or Ctrl+Shift (-) with 1 to 4: the shift of the times.
bool ShiftKey(STextShortcutCommands& c, int key, bool plus) {
    const int d = key - Vk::D0;
    if (d < 1 || d > 4)
        return false;
    const int amount = d <= 3 ? kSTextShiftSteps[d - 1] : c.ShiftBoxValue(plus);
    c.ShiftTimes(plus ? amount : -amount);
    return true;
}

bool AllKey(STextShortcutCommands& c, int key, int shift) {
    if (shift == KeyMask::None) {
        if (key == Vk::Esc) {
            c.CloseSongtext();
            return true;
        }
        if (key == Vk::NumPlus || key == Vk::NumMinus) {
            c.VolumeStep(key == Vk::NumPlus);
            return true;
        }
        return false;
    }
    if (shift == KeyMask::Shift && (key == Vk::F1 || key == Vk::F1 + 1)) {
        c.SelectSubTab(key - Vk::F1);
        return true;
    }
    if (shift == KeyMask::CtrlShift)
        return ShiftKey(c, key, false);
    if (shift != KeyMask::Ctrl)
        return false;
    if (ShiftKey(c, key, true))
        return true;
    switch (key) {
    case 'E':
        c.Player(STextPlayerKey::Eject);
        return true;
    case 'P':
        c.Player(STextPlayerKey::Play);
        return true;
    case 'U':
        c.Player(STextPlayerKey::Pause);
        return true;
    case 'X':
        c.Player(STextPlayerKey::Stop);
        return true;
    default:
        return false;
    }
}

} // namespace

void SetSTextShortcuts(STextShortcutCommands* commands) {
    g_stext = commands;
}

STextShortcutCommands* RegisteredSTextShortcuts() {
    return g_stext;
}

bool IsSTextShortcutList(const QString& list) {
    return list == QLatin1String("STextAll") || list == QLatin1String("SText") ||
           list == QLatin1String("STextLbxSongWithLrc") || list == QLatin1String("STextLbxLrcTxt");
}

bool HandleSTextShortcut(const QString& list, int keyCode, int shift) {
    if (!g_stext || keyCode == 0)
        return false;
    STextShortcutCommands& c = *g_stext;
    if (list == QLatin1String("STextAll"))
        return AllKey(c, keyCode, shift);
    bool ran = false;
    if (list == QLatin1String("SText")) {
        if (keyCode == Vk::Insert && (shift == KeyMask::None || shift == KeyMask::Ctrl)) {
            c.InsertRow(shift == KeyMask::Ctrl);
            ran = true;
        }
    } else if (keyCode == Vk::Enter && shift == KeyMask::None) {
        c.LoadSelected();
        ran = true;
    }
    if (ran)
        c.FocusList();
    return ran;
}

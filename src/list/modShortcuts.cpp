#include "list/modShortcuts.h"

#include "core/CaptionRows.h"
#include "list/modMarks.h"
#include "list/modShortcutsText.h"
#include "list/modShortcutsWindows.h"

#include <Qt>

namespace {

InputShortcutCommands* g_input = nullptr;
RefShortcutCommands* g_ref = nullptr;

constexpr int kPlayerTab = 4; // TabInput1_Sub2: the player
constexpr int kRenameTab = 2; // TabInput1_Sub2: the rename commands
constexpr int kRatings = 6;   // lbxRating has six rows

bool IsDigit(int key) {
    return key >= Vk::D0 && key <= Vk::D9;
}

// Ctrl without other modifiers: the table of the player tab or of the other sub-tabs.
bool InputCtrl(InputShortcutCommands& c, int key) {
    const bool player = c.Sub2() == kPlayerTab;
    if (IsDigit(key)) {
        const int row = DigitRow(key);
        const QString sign = c.Signs().value(row - 1);
        c.SetMarkBox(player, ToggledMark(c.MarkBox(player), sign));
        return true;
    }
    if (player) {
        if (key == 'M') {
            c.SetMarkActRow();
            return true;
        }
        return false; // the player's own keys (N, P, U, V, X, plus, minus) stay with the player tab
    }
    switch (key) {
    case Vk::Enter:
        c.OpenCurrentFile();
        return true;
    case Vk::Delete:
        c.RunListCommand(ListCommand::Remove);
        return true;
    case 'C':
        c.ChooseFileCommand(FileCommand::Copy);
        if (!c.ListEmpty())
            c.RunFileCommand();
        return true;
    case 'E':
        c.RunListCommand(ListCommand::Export);
        return true;
    case 'P':
        c.RunListCommand(ListCommand::ToPlaylist);
        return true;
    case 'R':
        c.RunListCommand(ListCommand::ToReflist);
        return true;
    case 'T':
        c.RunListCommand(ListCommand::ToTaglist);
        return true;
    case 'A':
        c.HighlightAll();
        return true;
    case 'I':
        c.InvertHighlight();
        return true;
    case 'M':
        c.WriteMarkToHighlighted(MarkText(c.MarkBox(false)));
        return true;
    case 'Z':
        c.TakeMarkOfCurrentRow();
        return true;
    case 'O':
        c.FitColumns();
        return true;
    default:
        return false;
    }
}

bool InputKey(InputShortcutCommands& c, int key, int shift) {
    if (c.DirectEdit() && key != Vk::Esc) {
        c.Inform(CapDirectEditKeysOff);
        return true;
    }
    if (shift == KeyMask::None) {
        if (key == Vk::Esc) {
            c.CloseSongtext();
            return true;
        }
        if (IsDigit(key)) {
            const QString sign = c.Signs().value(DigitRow(key) - 1);
            if (!sign.isEmpty())
                c.WriteMarkToHighlighted(sign);
            return true;
        }
        if ((key == Vk::NumPlus || key == Vk::NumMinus) && c.Sub2() == kPlayerTab) {
            c.VolumeStep(key == Vk::NumPlus);
            return true;
        }
        return false;
    }
    if (shift == KeyMask::Shift) {
        if (IsDigit(key)) {
            const QString program = c.ProgramPath(DigitRow(key));
            if (program.isEmpty())
                c.Inform(CapNoExternalProgram);
            else
                c.OpenCurrentWith(program);
            return true;
        }
        if (key >= Vk::F1 && key <= Vk::F1 + 2) {
            c.SelectSub1(key - Vk::F1);
            return true;
        }
        if (key >= Vk::F1 + 3 && key <= Vk::F8) {
            c.SelectSub2(key - Vk::F1 - 3);
            return true;
        }
        return false;
    }
    if (shift == KeyMask::CtrlShift) {
        if (IsDigit(key) && DigitRow(key) <= kRatings) {
            c.SetRatingMood(false, DigitRow(key));
            return true;
        }
        if (key == 'C') {
            c.SelectSub2(kRenameTab);
            if (c.ChooseCut())
                c.RunRename();
            return true;
        }
        if (key == 'M') {
            c.HighlightByMark();
            return true;
        }
        if (key == 'R') {
            c.RemoveMarks();
            return true;
        }
        if (key == Vk::NumPlus && c.Sub2() == kPlayerTab) {
            c.PlayerGoForward();
            return true;
        }
        return false;
    }
    if (shift == KeyMask::All) {
        if (key == Vk::Delete)
            c.ChooseFileCommand(FileCommand::Delete);
        else if (key == 'C')
            c.ChooseFileCommand(FileCommand::Copy);
        else if (key == 'M')
            c.ChooseFileCommand(FileCommand::Move);
        else
            return false;
        c.RunFileCommand();
        return true;
    }
    if (shift == KeyMask::CtrlAlt && IsDigit(key)) {
        c.SetRatingMood(true, DigitRow(key));
        return true;
    }
    if (shift == KeyMask::Ctrl)
        return InputCtrl(c, key);
    return false;
}

bool RefKey(RefShortcutCommands& c, int key, int shift) {
    // In direct edit only Delete is refused: the other keys do not touch the cell.
    if (c.DirectEdit() && key == Vk::Delete) {
        c.Inform(CapDirectEditKeysOff);
        return true;
    }
    if (key == Vk::Delete && (shift == KeyMask::None || shift == KeyMask::CtrlShift)) {
        c.RemoveEntries();
        return true;
    }
    if (MarkListKey(c, key, shift))
        return true;
    if (shift != KeyMask::Ctrl)
        return false;
    switch (key) {
    case 'D':
        c.DeleteRows();
        return true;
    case 'E':
        c.ExportList();
        return true;
    case 'O':
        c.FitColumns();
        return true;
    case 'F':
        c.EraseMarks();
        return true;
    case 'M':
        c.WriteMarkToHighlighted(MarkText(c.MarkBox()));
        return true;
    default:
        return false;
    }
}

} // namespace

bool MarkListKey(MarkListShortcutCommands& c, int key, int shift) {
    const bool digit = IsDigit(key);
    if (shift == KeyMask::None) {
        if (!digit)
            return false;
        const QString sign = c.Signs().value(DigitRow(key) - 1);
        if (!sign.isEmpty())
            c.WriteMarkToHighlighted(sign);
        return true;
    }
    if (shift == KeyMask::CtrlShift) {
        if (key == 'M')
            c.HighlightByMark();
        else if (key == 'R')
            c.RemoveMarks();
        else
            return false;
        return true;
    }
    if (shift != KeyMask::Ctrl)
        return false;
    if (digit) {
        c.SetMarkBox(ToggledMark(c.MarkBox(), c.Signs().value(DigitRow(key) - 1)));
        return true;
    }
    switch (key) {
    case Vk::Enter:
        c.OpenCurrentFile();
        return true;
    case 'A':
        c.HighlightAll();
        return true;
    case 'I':
        c.InvertHighlight();
        return true;
    default:
        return false;
    }
}

int ShortcutKeyCode(int qtKey, bool keypad, bool shifted) {
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return Vk::D0 + (qtKey - Qt::Key_0);
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return Vk::A + (qtKey - Qt::Key_A);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F8)
        return Vk::F1 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Vk::Enter;
    case Qt::Key_Escape:
        return Vk::Esc;
    case Qt::Key_Insert:
        return Vk::Insert;
    case Qt::Key_Delete:
        return Vk::Delete;
    case Qt::Key_Plus:
        return keypad ? Vk::NumPlus : 0;
    case Qt::Key_Minus:
        return keypad ? Vk::NumMinus : 0;
    default:
        break;
    }
    if (!shifted)
        return 0;
    switch (qtKey) {
    // Shift with a digit of the main keys gives the shifted character on most layouts;
    // the tables mean the digit.
    case Qt::Key_Exclam:
        return Vk::D0 + 1;
    case Qt::Key_QuoteDbl:
    case Qt::Key_At:
        return Vk::D0 + 2;
    case Qt::Key_section:
    case Qt::Key_NumberSign:
        return Vk::D0 + 3;
    case Qt::Key_Dollar:
        return Vk::D0 + 4;
    case Qt::Key_Percent:
        return Vk::D0 + 5;
    case Qt::Key_Ampersand:
        return Vk::D0 + 6;
    case Qt::Key_Slash:
        return Vk::D0 + 7;
    case Qt::Key_ParenLeft:
        return Vk::D0 + 8;
    case Qt::Key_ParenRight:
        return Vk::D0 + 9;
    case Qt::Key_Equal:
        return Vk::D0;
    default:
        return 0;
    }
}

int ShortcutMask(int qtModifiers) {
    int mask = 0;
    if (qtModifiers & Qt::ShiftModifier)
        mask |= KeyMask::Shift;
    if (qtModifiers & Qt::ControlModifier)
        mask |= KeyMask::Ctrl;
    if (qtModifiers & Qt::AltModifier)
        mask |= KeyMask::Alt;
    return mask;
}

int DigitRow(int keyCode) {
    if (!IsDigit(keyCode))
        return 0;
    return keyCode == Vk::D0 ? 10 : keyCode - Vk::D0;
}

QString ToggledMark(const QString& box, const QString& mark) {
    return box == mark ? QString() : mark;
}

void SetInputShortcuts(InputShortcutCommands* commands) {
    g_input = commands;
}

void SetRefShortcuts(RefShortcutCommands* commands) {
    g_ref = commands;
}

bool HandleShortcut(const QString& list, int keyCode, int shift) {
    if (keyCode == 0)
        return false;
    // F1 to F7 go to the main areas from every list; then the tables of the tool areas.
    // In direct edit the keys of the data list belong to the cell: its refusal comes first.
    const bool inputEditing = list == QLatin1String("Input") && g_input && g_input->DirectEdit();
    if ((!inputEditing && MainTabShortcut(list, keyCode, shift)) || WindowShortcut(list, keyCode, shift))
        return true;
    if (list == QLatin1String("Input") && g_input) {
        const bool ran = InputKey(*g_input, keyCode, shift);
        if (ran)
            g_input->FocusList();
        return ran;
    }
    if (list == QLatin1String("Ref") && g_ref) {
        const bool ran = RefKey(*g_ref, keyCode, shift);
        if (ran)
            g_ref->FocusList();
        return ran;
    }
    if (IsSTextShortcutList(list))
        return HandleSTextShortcut(list, keyCode, shift);
    return false;
}

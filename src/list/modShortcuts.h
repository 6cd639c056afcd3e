#pragma once
// modShortcuts: the key commands of the lists. The lists call HandleShortcut with their
// own list name, the key number and the modifier mask; the commands run through the
// interface the window registers for that list. A key outside the tables does nothing.

#include <QString>
#include <QStringList>

// Key numbers of the command tables.
namespace Vk {
constexpr int Enter = 13, Esc = 27, Insert = 45, Delete = 46;
constexpr int D0 = 48, D9 = 57; // digits
constexpr int A = 65, Z = 90;   // letters
constexpr int NumPlus = 107, NumMinus = 109;
constexpr int F1 = 112, F8 = 119;
} // namespace Vk

// Modifier mask: 1 Shift, 2 Ctrl, 4 Alt.
namespace KeyMask {
constexpr int None = 0, Shift = 1, Ctrl = 2, Alt = 4, CtrlShift = 3, CtrlAlt = 6, All = 7;
} // namespace KeyMask

// The key number of a Qt key (Qt::Key values); `keypad` tells the number-pad plus and
// minus from the main keys; `shifted`: Shift is held, so that the character a digit key
// gives with Shift (German and US layouts) counts as that digit. 0 for a key the tables
// do not know.
int ShortcutKeyCode(int qtKey, bool keypad, bool shifted);
// The mask of Qt keyboard modifiers (Qt::KeyboardModifiers as int).
int ShortcutMask(int qtModifiers);

// The digit rule: digit key d gives row d of a ten-row list, digit 0 row 10; 0 for any
// other key.
int DigitRow(int keyCode);
// Toggle of a mark box: `mark` when the box holds something else, empty when it holds it.
QString ToggledMark(const QString& box, const QString& mark);

// The options of btnTab1_Sub2_1_OK (the lists tab) and of btnTab1_Sub2_2_OK (the files tab).
enum class ListCommand { Export, ToPlaylist, ToReflist, ToTaglist, Remove };
enum class FileCommand { Copy, Move, Delete };

// The commands the keys of the data list ("Input") reach.
class InputShortcutCommands {
public:
    virtual ~InputShortcutCommands() = default;
    virtual bool DirectEdit() const = 0;
    virtual void Inform(int captionRow) = 0;
    virtual void CloseSongtext() = 0;
    virtual QStringList Signs() const = 0;          // lbxSign rows 1 to 10
    virtual QString ProgramPath(int row) const = 0; // lbxPrg_Extern row 1 to 10; empty when none
    virtual void OpenCurrentWith(const QString& program) = 0;
    virtual void OpenCurrentFile() = 0; // the desktop's default handler
    virtual int Sub2() const = 0;       // the current tab of TabInput1_Sub2
    virtual void SelectSub1(int index) = 0;
    virtual void SelectSub2(int index) = 0;
    virtual void WriteMarkToHighlighted(const QString& mark) = 0; // then the sums
    virtual QString MarkBox(bool player) const = 0;               // txtTab1_FTag4 or txtTab1_FTag
    virtual void SetMarkBox(bool player, const QString& text) = 0;
    virtual void HighlightByMark() = 0; // btnTab1_FTagBlue
    virtual void RemoveMarks() = 0;     // btnTab1_RemoveFtag
    virtual void HighlightAll() = 0;
    virtual void InvertHighlight() = 0;
    virtual void SetMarkActRow() = 0;                        // btnTab1_SetFTagActRow
    virtual void TakeMarkOfCurrentRow() = 0;                 // Ctrl+Z
    virtual void VolumeStep(bool up) = 0;                    // player tab, number pad plus and minus
    virtual void PlayerGoForward() = 0;                      // btnTab1_GoFwd
    virtual void RunListCommand(ListCommand command) = 0;    // choose the option, run the dispatch
    virtual void ChooseFileCommand(FileCommand command) = 0; // the option of the files tab
    virtual void RunFileCommand() = 0;                       // btnTab1_Sub2_2_OK
    virtual bool ListEmpty() const = 0;
    virtual bool ChooseCut() = 0; // optTab1_FileCut; whether a position stands in its boxes
    virtual void RunRename() = 0; // btnTab1_Sub2_3_OK
    // Rating (lbxRating row 1 to 6) or, with `mood`, mood (lbxMood row 1 to 10) into the
    // files of the highlighted rows.
    virtual void SetRatingMood(bool mood, int row) = 0;
    virtual void FitColumns() = 0; // mnuSetOptimalColumn
    virtual void FocusList() = 0;
};

// The mark keys that the reference list, the tag list and the playlist share: a digit
// writes the mark of that row of the mark list (lbxSign) to the highlighted rows,
// Ctrl+digit puts it into the list's mark box or takes it out, Ctrl+Shift+M highlights the
// rows with the box's mark, Ctrl+Shift+R removes the marks, Ctrl+Enter opens the current
// file, Ctrl+A highlights all rows and Ctrl+I inverts the highlight.
class MarkListShortcutCommands {
public:
    virtual ~MarkListShortcutCommands() = default;
    virtual QStringList Signs() const = 0;                        // lbxSign rows 1 to 10
    virtual void WriteMarkToHighlighted(const QString& mark) = 0; // then the sums
    virtual QString MarkBox() const = 0;                          // the list's own mark box
    virtual void SetMarkBox(const QString& text) = 0;
    virtual void OpenCurrentFile() = 0; // the desktop's default handler
    virtual void HighlightAll() = 0;
    virtual void InvertHighlight() = 0;
    virtual void HighlightByMark() = 0; // the rows whose mark equals the box
    virtual void RemoveMarks() = 0;
};
// Runs the shared mark key; false when `keyCode` with `shift` is none of them.
bool MarkListKey(MarkListShortcutCommands& c, int keyCode, int shift);

// The commands the keys of the reference list ("Ref") reach. Its mark box is
// txtTab1_FTagRef, HighlightByMark btnTab1_RefFTagBlue, RemoveMarks btnTab1_RemoveRefFtag.
class RefShortcutCommands : public MarkListShortcutCommands {
public:
    virtual bool DirectEdit() const = 0;
    virtual void Inform(int captionRow) = 0;
    virtual void DeleteRows() = 0;    // btnTab1_DeleteRefRows
    virtual void EraseMarks() = 0;    // every mark of the list
    virtual void RemoveEntries() = 0; // the highlighted rows leave the list; no file is touched
    virtual void ExportList() = 0;    // btnTab1_RefExport
    virtual void FitColumns() = 0;    // mnuSetOptimalColumn
    virtual void FocusList() = 0;
};

// The window registers its interfaces; null unregisters.
void SetInputShortcuts(InputShortcutCommands* commands);
void SetRefShortcuts(RefShortcutCommands* commands);

// `list`: "Input", "Ref", ... Returns whether the key ran a command (or was refused).
bool HandleShortcut(const QString& list, int keyCode, int shift);

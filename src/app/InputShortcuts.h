#pragma once
// The key commands of the data list: LbxInput hands its keys to HandleShortcut("Input"),
// whose commands run here on the controls of the data area.

#include "list/modShortcuts.h"

#include <QObject>

class FrmInput;

class InputShortcuts : public QObject, public InputShortcutCommands {
    Q_OBJECT
public:
    explicit InputShortcuts(FrmInput* window);
    ~InputShortcuts() override;

    bool DirectEdit() const override;
    void Inform(int captionRow) override;
    void CloseSongtext() override;
    QStringList Signs() const override;
    QString ProgramPath(int row) const override;
    void OpenCurrentWith(const QString& program) override;
    void OpenCurrentFile() override;
    int Sub2() const override;
    void SelectSub1(int index) override;
    void SelectSub2(int index) override;
    void WriteMarkToHighlighted(const QString& mark) override;
    QString MarkBox(bool player) const override;
    void SetMarkBox(bool player, const QString& text) override;
    void HighlightByMark() override;
    void RemoveMarks() override;
    void HighlightAll() override;
    void InvertHighlight() override;
    void SetMarkActRow() override;
    void TakeMarkOfCurrentRow() override;
    void VolumeStep(bool up) override;
    void PlayerGoForward() override;
    void RunListCommand(ListCommand command) override;
    void ChooseFileCommand(FileCommand command) override;
    void RunFileCommand() override;
    bool ListEmpty() const override;
    bool ChooseCut() override;
    void RunRename() override;
    void SetRatingMood(bool mood, int row) override;
    void FitColumns() override;
    void FocusList() override;

private:
    QString CurrentFile() const;
    FrmInput* m_window;
};

// The key commands of the reference list: LbxRef hands its keys to HandleShortcut("Ref").
class RefShortcuts : public QObject, public RefShortcutCommands {
    Q_OBJECT
public:
    explicit RefShortcuts(FrmInput* window);
    ~RefShortcuts() override;

    bool DirectEdit() const override;
    void Inform(int captionRow) override;
    QStringList Signs() const override;
    void WriteMarkToHighlighted(const QString& mark) override;
    QString MarkBox() const override;
    void SetMarkBox(const QString& text) override;
    void HighlightAll() override;
    void InvertHighlight() override;
    void HighlightByMark() override;
    void RemoveMarks() override;
    void DeleteRows() override;
    void EraseMarks() override;
    void RemoveEntries() override;
    void OpenCurrentFile() override;
    void ExportList() override;
    void FitColumns() override;
    void FocusList() override;

private:
    FrmInput* m_window;
};

#pragma once
// The keys of the synchronising editor: LbxSText hands its keys to HandleShortcut("SText"),
// the two search lists to "STextLbxSongWithLrc" and "STextLbxLrcTxt", the whole editor (and
// for its keys the scrolling window) to "STextAll"; the commands run here on the editor's
// controls.

#include "list/modShortcutsText.h"

#include <QObject>
#include <QPointer>

class FrmSText;
class FrmSongtext;
class QKeyEvent;

class STextShortcuts : public QObject, public STextShortcutCommands {
    Q_OBJECT
public:
    explicit STextShortcuts(FrmSText* editor);
    ~STextShortcuts() override;

    QPointer<FrmSongtext> songtext; // the scrolling window, once there is one

    void CloseSongtext() override;
    void VolumeStep(bool up) override;
    void SelectSubTab(int index) override;
    void ShiftTimes(int deltaMs) override;
    int ShiftBoxValue(bool plus) const override;
    void Player(STextPlayerKey key) override;
    void InsertRow(bool before) override;
    void LoadSelected() override;
    void FocusList() override;

private:
    bool SongtextShown() const;
    FrmSText* m_editor;
};

// A key event of a window to HandleShortcut under `list`; whether it ran a command.
bool HandleKeyEvent(const QString& list, const QKeyEvent* event);
// The same for a key of a list (DataGridView::keyPressed: Qt key and modifiers).
bool HandleListKey(const QString& list, int qtKey, int qtModifiers);

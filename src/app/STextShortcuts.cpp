#include "app/STextShortcuts.h"

#include "app/DataGridView.h"
#include "app/FrmSText.h"
#include "app/FrmSongtext.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "list/modShortcuts.h"
#include "text/modSText.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

#include <algorithm>

namespace {
constexpr int kVolumeKeyStep = 5;
} // namespace

bool HandleListKey(const QString& list, int qtKey, int qtModifiers) {
    const int mask = ShortcutMask(qtModifiers);
    const bool keypad = qtModifiers & Qt::KeypadModifier;
    return HandleShortcut(list, ShortcutKeyCode(qtKey, keypad, mask & KeyMask::Shift), mask);
}

bool HandleKeyEvent(const QString& list, const QKeyEvent* event) {
    return HandleListKey(list, event->key(), event->modifiers().toInt());
}

STextShortcuts::STextShortcuts(FrmSText* editor) : QObject(editor), m_editor(editor) {
    SetSTextShortcuts(this);
    // each list runs its own table; what it leaves goes up to the editor ("STextAll")
    const std::pair<DataGridView*, const char*> lists[] = {{editor->LbxSText, "SText"},
                                                           {editor->LbxSongWithLrc, "STextLbxSongWithLrc"},
                                                           {editor->LbxTxtLrc, "STextLbxLrcTxt"}};
    for (const auto& [view, name] : lists) {
        const QString list = QLatin1String(name);
        connect(view, &DataGridView::keyPressed, this,
                [list](int key, int modifiers) { HandleListKey(list, key, modifiers); });
    }
}

STextShortcuts::~STextShortcuts() {
    if (RegisteredSTextShortcuts() == this)
        SetSTextShortcuts(nullptr);
}

bool STextShortcuts::SongtextShown() const {
    return songtext && songtext->isVisible();
}

void STextShortcuts::CloseSongtext() {
    if (SongtextShown())
        songtext->close();
}

void STextShortcuts::VolumeStep(bool up) {
    QSlider* s = m_editor->sliderSText_Volume;
    s->setValue(std::clamp(s->value() + (up ? kVolumeKeyStep : -kVolumeKeyStep), s->minimum(), s->maximum()));
}

void STextShortcuts::SelectSubTab(int index) {
    m_editor->TabSText_Sub->setCurrentIndex(index);
}

void STextShortcuts::ShiftTimes(int deltaMs) {
    m_editor->cmdShift(deltaMs);
}

int STextShortcuts::ShiftBoxValue(bool plus) const {
    const QLineEdit* box = plus ? m_editor->txtSText_TimeShiftP : m_editor->txtSText_TimeShiftM;
    return int(DataGrid::NumericPrefix(box->text()));
}

void STextShortcuts::Player(STextPlayerKey key) {
    switch (key) {
    case STextPlayerKey::Pause:
        // while the scrolling window runs the song, the pause is the window's
        if (SongtextShown())
            songtext->TogglePause();
        else
            m_editor->MMCSText_Pause->click();
        return;
    case STextPlayerKey::Play:
        m_editor->MMCSText_Play->click();
        return;
    case STextPlayerKey::Stop:
    case STextPlayerKey::Eject:
        CloseSongtext();
        (key == STextPlayerKey::Stop ? m_editor->MMCSText_Stop : m_editor->MMCSText_Eject)->click();
        return;
    }
}

void STextShortcuts::InsertRow(bool before) {
    InsertSTextRow(Grids::LbxSText(), before);
}

void STextShortcuts::LoadSelected() {
    m_editor->cmdLoadSelected(false);
}

void STextShortcuts::FocusList() {
    m_editor->LbxSText->table()->setFocus();
}

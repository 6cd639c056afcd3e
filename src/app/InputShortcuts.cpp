#include "app/InputShortcuts.h"

#include "app/DataGridView.h"
#include "app/FilesPanel.h"
#include "app/FrmInput.h"
#include "app/FrmSongtext.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/InputListMenu.h"
#include "app/ListProgressBar.h"
#include "app/ListsPanel.h"
#include "app/MarksPanel.h"
#include "app/MessageBoxPrompt.h"
#include "app/PlayerPanel.h"
#include "app/RefPanel.h"
#include "app/RenamePanel.h"
#include "app/UiCaptions.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/modContextMenu.h"
#include "list/modListColumns.h"
#include "list/modListRemove.h"
#include "list/modMarks.h"
#include "platform/Shell.h"
#include "prefs/modExtPrg.h"
#include "ref/RefColumns.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>

namespace {

// A list's keys go to the one handler under the list's name.
void RouteKeys(DataGridView* view, QObject* owner, const QString& list) {
    QObject::connect(view, &DataGridView::keyPressed, owner, [list](int key, int modifiers) {
        const bool keypad = modifiers & Qt::KeypadModifier;
        const int mask = ShortcutMask(modifiers);
        HandleShortcut(list, ShortcutKeyCode(key, keypad, mask & KeyMask::Shift), mask);
    });
}

} // namespace

InputShortcuts::InputShortcuts(FrmInput* window) : QObject(window), m_window(window) {
    SetInputShortcuts(this);
    RouteKeys(window->pageData->LbxInput, this, QStringLiteral("Input"));
}

InputShortcuts::~InputShortcuts() {
    SetInputShortcuts(nullptr);
}

bool InputShortcuts::DirectEdit() const {
    return m_window->renamePanel->chbTab1_DirectEdit->isChecked();
}

void InputShortcuts::Inform(int captionRow) {
    AppPrompt().Tell(Caption(CaptionRow(captionRow)), Prompt::Icon::Information);
}

void InputShortcuts::CloseSongtext() {
    if (m_window->frmSongtext && m_window->frmSongtext->isVisible())
        m_window->frmSongtext->close();
}

QStringList InputShortcuts::Signs() const {
    return m_window->marksPanel->Signs();
}

QString InputShortcuts::ProgramPath(int row) const {
    return Settings().CellText(Ini::PrgExternFirst + row - 1, Ini::PrgExternPathCol);
}

QString InputShortcuts::CurrentFile() const {
    const DataGrid& list = Grids::LbxInput();
    const int r = list.CurRow();
    if (r < 1 || r > list.Rows())
        return QString();
    return InputRowPath(list, r);
}

void InputShortcuts::OpenCurrentWith(const QString& program) {
    const QString file = CurrentFile();
    if (!file.isEmpty())
        StartExternalProgram(program, {file}, AppPrompt());
}

void InputShortcuts::OpenCurrentFile() {
    const QString file = CurrentFile();
    if (!file.isEmpty())
        TheShell().Open(file);
}

int InputShortcuts::Sub2() const {
    // The fixed place of the tab in its strip, as Shift+F4 to F8 address it.
    const QTabWidget* strip = m_window->pageData->TabInput1_Sub2;
    return strip->currentIndex() < 0 ? -1 : FixedTabIndex(strip, strip->currentIndex());
}

void InputShortcuts::SelectSub1(int index) {
    InputDataPage::SelectSubTab(m_window->pageData->TabInput1_Sub1, index);
}

void InputShortcuts::SelectSub2(int index) {
    InputDataPage::SelectSubTab(m_window->pageData->TabInput1_Sub2, index);
}

void InputShortcuts::WriteMarkToHighlighted(const QString& mark) {
    WriteMarkToSelected(Grids::LbxInput(), InCol::FTag, mark);
    InputListEnv(m_window->pageData, m_window->listProgress).ShowTotals();
}

QString InputShortcuts::MarkBox(bool player) const {
    return (player ? m_window->playerPanel->txtTab1_FTag4 : m_window->pageData->txtTab1_FTag)->text();
}

void InputShortcuts::SetMarkBox(bool player, const QString& text) {
    (player ? m_window->playerPanel->txtTab1_FTag4 : m_window->pageData->txtTab1_FTag)->setText(text);
}

void InputShortcuts::HighlightByMark() {
    m_window->marksPanel->btnTab1_FTagBlue->click();
}

void InputShortcuts::RemoveMarks() {
    m_window->marksPanel->btnTab1_RemoveFtag->click();
}

void InputShortcuts::HighlightAll() {
    m_window->marksPanel->btnTab1_HighlightAll->click();
}

void InputShortcuts::InvertHighlight() {
    m_window->marksPanel->btnTab1_InvertHighlight->click();
}

void InputShortcuts::SetMarkActRow() {
    m_window->marksPanel->btnTab1_SetFTagActRow->click();
}

void InputShortcuts::TakeMarkOfCurrentRow() {
    const DataGrid& list = Grids::LbxInput();
    const int r = list.CurRow();
    if (r >= 1 && r <= list.Rows())
        m_window->pageData->txtTab1_FTag->setText(list.CellText(r, InCol::FTag));
}

void InputShortcuts::VolumeStep(bool up) {
    QSlider* slider = m_window->playerPanel->sliderTab1_WinampVolume;
    if (slider->isEnabled())
        slider->setValue(slider->value() + (up ? 5 : -5));
}

void InputShortcuts::PlayerGoForward() {
    m_window->playerPanel->btnTab1_GoFwd->click();
}

void InputShortcuts::RunListCommand(ListCommand command) {
    ListsPanel* lists = m_window->listsPanel;
    QRadioButton* option = lists->optTab1_RemoveEntry;
    switch (command) {
    case ListCommand::Export:
        option = lists->optTab1_FileExport;
        break;
    case ListCommand::ToPlaylist:
        option = lists->optTab1_CopyToPlaylist;
        break;
    case ListCommand::ToReflist:
        option = lists->optTab1_CopyToReflist;
        break;
    case ListCommand::ToTaglist:
        option = lists->optTab1_CopyToTaglist;
        break;
    case ListCommand::Remove:
        break;
    }
    option->setChecked(true);
    lists->btnTab1_Sub2_1_OK_Click();
}

void InputShortcuts::ChooseFileCommand(FileCommand command) {
    FilesPanel* files = m_window->filesPanel;
    QRadioButton* option = command == FileCommand::Copy   ? files->optTab1_FileCopy
                           : command == FileCommand::Move ? files->optTab1_FileMove
                                                          : files->optTab1_FileDelete;
    option->setChecked(true);
}

void InputShortcuts::RunFileCommand() {
    m_window->filesPanel->btnTab1_Sub2_2_OK_Click();
}

bool InputShortcuts::ListEmpty() const {
    return Grids::LbxInput().Rows() == 0;
}

bool InputShortcuts::ChooseCut() {
    RenamePanel* rename = m_window->renamePanel;
    rename->optTab1_FileCut->setChecked(true);
    for (const QLineEdit* box : rename->txtTab1_FileCut) {
        bool number = false;
        if (box->text().trimmed().toInt(&number) > 0 && number)
            return true;
    }
    return false;
}

void InputShortcuts::RunRename() {
    m_window->renamePanel->btnTab1_Sub2_3_OK_Click();
}

void InputShortcuts::SetRatingMood(bool mood, int row) {
    const int first = mood ? Ini::MoodFirst : Ini::RatingFirst;
    const int last = mood ? Ini::MoodLast : Ini::RatingLast;
    if (first + row - 1 > last)
        return;
    const QString value = Settings().CellText(first + row - 1, mood ? Ini::MoodCol : Ini::RatingCol);
    // An empty row of the list sets nothing: removing is the menu's "Remove".
    if (!value.isEmpty())
        SetRatingMoodOfHighlighted(m_window, mood, value);
}

void InputShortcuts::FitColumns() {
    FitAllColumns(Grids::LbxInput());
}

void InputShortcuts::FocusList() {
    m_window->pageData->LbxInput->table()->setFocus();
}

// ---- the reference list --------------------------------------------------------------

RefShortcuts::RefShortcuts(FrmInput* window) : QObject(window), m_window(window) {
    SetRefShortcuts(this);
    RouteKeys(window->refPanel->LbxRef, this, QStringLiteral("Ref"));
}

RefShortcuts::~RefShortcuts() {
    SetRefShortcuts(nullptr);
}

bool RefShortcuts::DirectEdit() const {
    return m_window->renamePanel->chbTab1_DirectEdit->isChecked();
}

void RefShortcuts::Inform(int captionRow) {
    AppPrompt().Tell(Caption(CaptionRow(captionRow)), Prompt::Icon::Information);
}

QStringList RefShortcuts::Signs() const {
    return m_window->marksPanel->Signs();
}

void RefShortcuts::WriteMarkToHighlighted(const QString& mark) {
    WriteMarkToSelected(Grids::LbxRef(), RefCol::FTag, mark);
    m_window->refPanel->ShowSums();
}

QString RefShortcuts::MarkBox() const {
    return m_window->refPanel->txtTab1_FTagRef->text();
}

void RefShortcuts::SetMarkBox(const QString& text) {
    m_window->refPanel->txtTab1_FTagRef->setText(text);
}

void RefShortcuts::HighlightAll() {
    Grids::LbxRef().SelectAll();
    m_window->refPanel->ShowSums();
}

void RefShortcuts::InvertHighlight() {
    btnTab1_InvertHilightRef(Grids::LbxRef(), InputListEnv(m_window->pageData, m_window->listProgress));
}

void RefShortcuts::HighlightByMark() {
    m_window->refPanel->btnTab1_RefFTagBlue->click();
}

void RefShortcuts::RemoveMarks() {
    m_window->refPanel->btnTab1_RemoveRefFtag->click();
}

void RefShortcuts::DeleteRows() {
    m_window->refPanel->btnTab1_DeleteRefRows->click();
}

void RefShortcuts::EraseMarks() {
    DataGrid& ref = Grids::LbxRef();
    for (int r = 1; r <= ref.Rows(); ++r)
        ref.SetCellText(r, RefCol::FTag, QString());
    m_window->refPanel->ShowSums();
}

void RefShortcuts::RemoveEntries() {
    m_window->listsPanel->optTab1_RemoveEntry->setChecked(true);
    ::optTab1_RemoveEntry(Grids::LbxRef(), InputListEnv(m_window->pageData, m_window->listProgress));
    m_window->refPanel->ShowSums();
}

void RefShortcuts::OpenCurrentFile() {
    const DataGrid& ref = Grids::LbxRef();
    const int r = ref.CurRow();
    if (r >= 1 && r <= ref.Rows())
        TheShell().Open(ref.CellText(r, RefCol::Path) + u'/' + ref.CellText(r, RefCol::FileName));
}

void RefShortcuts::ExportList() {
    m_window->refPanel->ExportClick();
}

void RefShortcuts::FitColumns() {
    FitAllColumns(Grids::LbxRef());
}

void RefShortcuts::FocusList() {
    m_window->refPanel->LbxRef->table()->setFocus();
}

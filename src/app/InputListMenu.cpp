#include "app/InputListMenu.h"

#include "app/ContextMenuView.h"
#include "app/DataGridView.h"
#include "app/FilesPanel.h"
#include "app/FindFilterPanel.h"
#include "app/FrmInput.h"
#include "app/FrmShowColumn.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/InputSyncTextMenu.h"
#include "app/ListProgressBar.h"
#include "app/MarksPanel.h"
#include "app/MessageBoxPrompt.h"
#include "app/PlayerPanel.h"
#include "app/PrintUi.h"
#include "app/RefPanel.h"
#include "app/RenamePanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "file/modFileCommands.h"
#include "list/InputColumns.h"
#include "list/modColumnPatterns.h"
#include "list/modMarks.h"
#include "playlist/modPlaylistPlay.h"
#include "ref/RefColumns.h"
#include "tag/TagEngine.h"
#include "tag/modDirectEdit.h"
#include "tag/modInputTagCommands.h"
#include "tag/modTagJournal.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

namespace {

// The album of the current row: the first album column that holds one.
QString CurrentAlbum(const DataGrid& list) {
    const int r = list.CurRow();
    if (r < 1 || r > list.Rows())
        return QString();
    for (int col :
         {InCol::Tg1Album, InCol::TagAlbum, InCol::TagApeAlbum, InCol::TagLyricsAlbum, InCol::TagTypAlbum})
        if (!list.CellView(r, col).isEmpty())
            return list.CellText(r, col);
    return QString();
}

QStringList SettingsColumn(int first, int last, int col) {
    QStringList out;
    for (int r = first; r <= last; ++r)
        out << Settings().CellText(r, col);
    return out;
}

} // namespace

InputListMenu::InputListMenu(FrmInput* window) : QObject(window), m_window(window) {
    QTableView* table = window->pageData->LbxInput->table();
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(table, &QWidget::customContextMenuRequested, this, &InputListMenu::Show);
    // The reference list's menu shares the direct edit switch and the file commands.
    RefPanel* ref = window->refPanel;
    ref->SetDirectEditBox(window->renamePanel->chbTab1_DirectEdit);
    ref->windowMenuKey = [this](const QString& key) { return RunRefFileKey(key); };
}

bool InputListMenu::RunRefFileKey(const QString& key) {
    const bool copy = key == QLatin1String("Copy"), move = key == QLatin1String("Move"),
               del = key == QLatin1String("Delete");
    if (!copy && !move && !del)
        return false;
    RefPanel* ref = m_window->refPanel;
    ListEnv env = InputListEnv(m_window->pageData, m_window->listProgress);
    env.showTotals = [ref] { ref->ShowSums(); };
    FileCommandOptions o;
    o.markFilter = ref->txtTab1_FTagRef->text();
    o.noMsg = m_window->pageData->chbTab1_NoMsg->isChecked();
    o.paperbin = PaperbinSetting(Settings());
    o.chooseFolder = m_window->filesPanel->chooseFolder;
    o.nameCol = RefCol::FileName;
    o.pathCol = RefCol::Path;
    DataGrid& list = Grids::LbxRef();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    if (copy)
        CopyRows(list, o, env, nullptr);
    else if (move)
        MoveRows(list, o, env);
    else
        DeleteRows(list, o, env);
    QApplication::restoreOverrideCursor();
    ref->ShowSums();
    return true;
}

InputMenuState InputListMenu::State() const {
    const DataGrid& list = Grids::LbxInput();
    InputMenuState s;
    s.rows = list.Rows();
    const std::vector<int> sel = list.SelectedRows();
    s.highlighted = int(sel.size());
    s.directEdit = m_window->renamePanel->chbTab1_DirectEdit->isChecked();
    s.hasSyncText = SongHasSyncText(SyncTextSong(list));
    s.marks << MarkText(m_window->pageData->txtTab1_FTag->text());
    s.marks << m_window->marksPanel->Signs();
    for (int r : sel) {
        const QString mark = list.CellText(r, InCol::FTag);
        if (!mark.isEmpty() && !s.presentMarks.contains(mark))
            s.presentMarks << mark;
        s.anyRating = s.anyRating || !list.CellView(r, InCol::Rating).isEmpty();
        s.anyMood = s.anyMood || !list.CellView(r, InCol::Mood).isEmpty();
    }
    s.hasCurrentRow = list.CurRow() >= 1 && list.CurRow() <= s.rows;
    s.currentHasAlbum = !CurrentAlbum(list).isEmpty();
    for (int r = 1; r <= s.rows && s.audioTypes.size() < kMenuAudioTypes; ++r) {
        const QString type = list.CellText(r, InCol::Type);
        if (!type.isEmpty() && !s.audioTypes.contains(type))
            s.audioTypes << type;
    }
    s.ratings = SettingsColumn(Ini::RatingFirst, Ini::RatingLast, Ini::RatingCol);
    s.moods = SettingsColumn(Ini::MoodFirst, Ini::MoodLast, Ini::MoodCol);
    for (int p = 0; p < kMenuPatterns; ++p)
        s.patternCaptions << (PatternText(Settings(), p).isEmpty() ? QString()
                                                                   : PatternCaption(Settings(), p));
    s.activePattern = ActivePattern(Settings());
    s.programs = ExternalPrograms(Settings());
    return s;
}

ContextMenuEntries InputListMenu::Build() const {
    ContextMenuEntries m = BuildInputMenu(m_shown, &InputMenuCaption);
    return m;
}

void InputListMenu::Show(const QPoint& at) {
    m_shown = State();
    const ContextMenuEntries entries = Build();
    QTableView* table = m_window->pageData->LbxInput->table();
    const QString key =
        ExecContextMenu(table, entries, table->viewport()->mapToGlobal(at), QStringLiteral("mnuInput"));
    RunKey(key);
}

void InputListMenu::SetMarkOfHighlighted(const QString& mark) {
    WriteMarkToSelected(Grids::LbxInput(), InCol::FTag, mark);
    InputListEnv(m_window->pageData, m_window->listProgress).ShowTotals();
}

void InputListMenu::RemoveMarkOfHighlighted(const QString& mark, bool all) {
    RemoveMarkOfSelected(Grids::LbxInput(), InCol::FTag, mark, all);
    InputListEnv(m_window->pageData, m_window->listProgress).ShowTotals();
}

void InputListMenu::HighlightType(const QString& type) {
    DataGrid& list = Grids::LbxInput();
    for (int r = 1; r <= list.Rows(); ++r)
        list.SetSelected(r, list.CellText(r, InCol::Type) == type);
    InputListEnv(m_window->pageData, m_window->listProgress).ShowTotals();
}

void InputListMenu::RunKey(const QString& key) {
    if (key.isEmpty())
        return;
    DataGrid& list = Grids::LbxInput();
    const ListEnv env = InputListEnv(m_window->pageData, m_window->listProgress);
    int n = -1;
    if (RunSyncTextKey(m_window, key)) {
        // the synchronised text of the song
    } else if (key == QLatin1String("play") || key == QLatin1String("play1") ||
               key == QLatin1String("play2") || key == QLatin1String("play3")) {
        PlayEnv play(AppPrompt());
        play.noMsg = m_window->pageData->chbTab1_NoMsg->isChecked();
        const bool save = key == QLatin1String("play2") || key == QLatin1String("play3");
        const bool open = key != QLatin1String("play2");
        PlayHighlightedRows(list, false, save, open, play);
    } else if (key == QLatin1String("dEditOn") || key == QLatin1String("dEditOff")) {
        m_window->renamePanel->chbTab1_DirectEdit->setChecked(key == QLatin1String("dEditOn"));
    } else if (key == QLatin1String("HighlightAll")) {
        btnTab1_HighlightAll(list, env);
    } else if ((n = MenuKeyNumber(key, QStringLiteral("AudioType"))) >= 1) {
        if (n <= m_shown.audioTypes.size())
            HighlightType(m_shown.audioTypes[n - 1]);
    } else if (PrintMenuKey(m_window, key, list, m_window->pageData->txtTab1_FTag->text())) {
        // printed
    } else if (key == QLatin1String("RemMarkAll")) {
        RemoveMarkOfHighlighted(QString(), true);
    } else if ((n = MenuKeyNumber(key, QStringLiteral("RemMark"))) >= 0) {
        if (n < m_shown.presentMarks.size())
            RemoveMarkOfHighlighted(m_shown.presentMarks[n], false);
    } else if ((n = MenuKeyNumber(key, QStringLiteral("Mark"))) >= 0) {
        if (n < m_shown.marks.size() && !m_shown.marks[n].isEmpty())
            SetMarkOfHighlighted(m_shown.marks[n]);
    } else if (key == QLatin1String("album")) {
        PlayEnv play(AppPrompt());
        play.noMsg = m_window->pageData->chbTab1_NoMsg->isChecked();
        PlayAlbumOfCurrentRow(list, QString(), play);
    } else if ((n = MenuKeyNumber(key, QStringLiteral("QIn"))) >= 0) {
        SetRatingMoodOfHighlighted(m_window, false, m_shown.ratings.value(n));
    } else if ((n = MenuKeyNumber(key, QStringLiteral("MIn"))) >= 0) {
        SetRatingMoodOfHighlighted(m_window, true, m_shown.moods.value(n));
    } else if (key == QLatin1String("RemQ") || key == QLatin1String("RemM")) {
        SetRatingMoodOfHighlighted(m_window, key == QLatin1String("RemM"), QString());
    } else if (key == QLatin1String("RandomChoice")) {
        m_window->playerPanel->btnTab1_Random->click();
    } else if (key == QLatin1String("optCol")) {
        m_window->findFilterPanel->ShowColumnWindow()->Open();
    } else if (key == QLatin1String("ColsFrm")) {
        optShowCol_Pattern(Settings(), list, ActivePattern(Settings()));
    } else if (key == QLatin1String("NameToTag")) {
        m_window->renamePanel->FilenameToTag();
    } else if (key == QLatin1String("TextToTags")) {
        m_window->renamePanel->SetTextInTag();
    } else if (key == QLatin1String("LinkToTag")) {
        LinkCurrentRow();
    } else if (key == QLatin1String("SetAlbum")) {
        RenamePanel* rename = m_window->renamePanel;
        const int column = AlbumColumnOfSet(rename->TagSet());
        const int r = list.CurRow();
        rename->SetTextInColumn(column, Caption(CapSetAlbumPrompt),
                                r >= 1 && r <= list.Rows() ? list.CellText(r, column) : QString());
    } else if ((n = MenuKeyNumber(key, QStringLiteral("SingleFile"))) >= 1 && n <= 3) {
        FilesPanel* files = m_window->filesPanel;
        (n == 1   ? files->optTab1_FileCopy
         : n == 2 ? files->optTab1_FileDelete
                  : files->optTab1_FileMove)
            ->setChecked(true);
        files->btnTab1_Sub2_2_OK_Click();
    } else if (key == QLatin1String("ColsAll")) {
        btnShowCol_ActivateAll(list);
    } else if ((n = MenuKeyNumber(key, QStringLiteral("Cols"))) >= 0) {
        optShowCol_Pattern(Settings(), list, n);
    } else if ((n = ExternalProgramNumber(key)) > 0) {
        for (const ExternalProgram& p : m_shown.programs)
            if (p.number == n) {
                QStringList files;
                for (int r : list.SelectedRows())
                    files << InputRowPath(list, r);
                StartExternalProgram(p.path, files, AppPrompt());
            }
    }
}

void InputListMenu::LinkCurrentRow() {
    DataGrid& list = Grids::LbxInput();
    const int r = list.CurRow();
    if (r < 1 || r > list.Rows())
        return;
    const std::optional<QString> typed = AppPrompt().InputBox(Caption(CapLinkToTagPrompt));
    if (!typed)
        return;
    QString link = typed->trimmed();
    if (link.isEmpty()) {
        const QString start = Setting(Ini::PathRename1, Ini::Col2);
        link = chooseLinkFile
                   ? chooseLinkFile(start)
                   : QFileDialog::getOpenFileName(m_window, QString(), start,
                                                  Caption(CapAllFilesFilter) + QStringLiteral(" (*)"));
        if (link.isEmpty())
            return;
        SetSetting(Ini::PathRename1, Ini::Col2, link.left(link.lastIndexOf(u'/')));
    }
    LinkToTag(list, r, link, TagEngine::Shared(), AppPrompt());
}

void SetRatingMoodOfHighlighted(FrmInput* window, bool mood, const QString& value) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    SetRatingMoodRows(Grids::LbxInput(), mood, value, window->pageData->txtTab1_FTag->text(),
                      window->pageData->chbTab1_NoMsg->isChecked(), TagEngine::Shared(),
                      InputListEnv(window->pageData, window->listProgress), TagJournalPath());
    QApplication::restoreOverrideCursor();
}

#include "app/InputListMenu.h"

#include "app/ContextMenuView.h"
#include "app/DataGridView.h"
#include "app/FindFilterPanel.h"
#include "app/FrmInput.h"
#include "app/FrmShowColumn.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/InputSyncTextMenu.h"
#include "app/ListProgressBar.h"
#include "app/MarksPanel.h"
#include "app/MessageBoxPrompt.h"
#include "app/PrintUi.h"
#include "app/RenamePanel.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/modColumnPatterns.h"
#include "list/modMarks.h"
#include "playlist/modPlaylistPlay.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTableView>

namespace {

// Commands the menu of the data list does not run yet: their entries stay disabled.
const QSet<QString>& NotYetWired() {
    static const QSet<QString> keys = [] {
        QSet<QString> k{
            QStringLiteral("album"),        QStringLiteral("RemQ"),         QStringLiteral("RemM"),
            QStringLiteral("RandomChoice"), QStringLiteral("ColsFrm"),      QStringLiteral("NameToTag"),
            QStringLiteral("TextToTags"),   QStringLiteral("LinkToTag"),    QStringLiteral("SetAlbum"),
            QStringLiteral("SingleFile01"), QStringLiteral("SingleFile02"), QStringLiteral("SingleFile03")};
        for (int i = 0; i < kMenuRatings; ++i)
            k.insert(QStringLiteral("QIn%1").arg(i, 2, 10, QLatin1Char('0')));
        for (int i = 0; i < kMenuMoods; ++i)
            k.insert(QStringLiteral("MIn%1").arg(i, 2, 10, QLatin1Char('0')));
        return k;
    }();
    return keys;
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
    }
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
    m.DisableKeys(NotYetWired());
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
    if (key.isEmpty() || NotYetWired().contains(key))
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
    } else if (key == QLatin1String("optCol")) {
        m_window->findFilterPanel->ShowColumnWindow()->Open();
    } else if (key == QLatin1String("ColsAll")) {
        btnShowCol_ActivateAll(list);
    } else if ((n = MenuKeyNumber(key, QStringLiteral("Cols"))) >= 0) {
        optShowCol_Pattern(Settings(), list, n);
    } else if ((n = ExternalProgramNumber(key)) > 0) {
        for (const ExternalProgram& p : m_shown.programs)
            if (p.number == n) {
                QStringList files;
                for (int r : list.SelectedRows())
                    files << list.CellText(r, InCol::Path) + u'/' + list.CellText(r, InCol::FileName);
                StartExternalProgram(p.path, files, AppPrompt());
            }
    }
}

// FrmTexte: the buttons, boxes and list events, each read into a TexteEnv and handed to
// src/text.
#include "app/DataGridView.h"
#include "app/FrmTexte.h"
#include "app/PrintUi.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "platform/Shell.h"
#include "text/TexteColumns.h"
#include "text/modTexte.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTimer>

namespace {

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

} // namespace

void FrmTexte::connectCommands() {
    auto on = [this](const char* name, auto fn) {
        if (auto* b = findChild<QPushButton*>(QString::fromLatin1(name)))
            connect(b, &QPushButton::clicked, this, fn);
    };
    // a command on the boxes: read them, run, show the result
    auto onBoxes = [this, on](const char* name, auto fn) {
        on(name, [this, fn] {
            TexteEnv env = makeEnv();
            TextPair boxes = readBoxes();
            if (fn(env, boxes))
                writeBoxes(boxes);
        });
    };
    on("btnTexte_FindTxt", [this] { cmdFindTxt(); });
    on("btnTexte_FindLyrics", [this] { cmdFindLyrics(); });
    on("btnTexte_CancelFindLyrics", [this] { m_cancel = true; });
    on("btnTexte_OpenTxt", [this] { cmdOpenTxt(false); });
    on("btnTexte_OpenLyrics", [this] { cmdOpenLyric(false); });
    onBoxes("btnTexte_SaveLyric", [](TexteEnv& env, TextPair& b) {
        SaveLyric(env, b);
        return false;
    });
    onBoxes("btnTexte_SaveAsTxt", [](TexteEnv& env, TextPair& b) {
        SaveAsText(env, b);
        return false;
    });
    on("btnTexte_DeleteTxt", [this] {
        TexteEnv env = makeEnv();
        DeleteTextFile(env, !PaperbinSetting(Settings()));
    });
    on("btnTexte_DeleteLyrics", [this] {
        TexteEnv env = makeEnv();
        WaitCursor wait;
        DeleteLyrics(env);
    });
    on("btnTexte_LinkToTxt", [this] {
        TexteEnv env = makeEnv();
        LinkTextToSong(env);
    });
    on("btnTexte_FillCmbWithLinks", [this] { refillLinks(); });
    on("btnTexte_OpenLink", [this] {
        if (m_links->currentIndex() >= 0)
            ShellOpen(m_links->currentText());
    });
    on("btnTexte_LinksOK", [this] { cmdLinksOk(); });
    on("BtnTexte_PlaySong", [this] { cmdPlaySong(); });
    onBoxes("btnTexte_TxtToSync", [this](TexteEnv& env, TextPair& b) {
        HandTextToEditor(env, b, openSyncEditor);
        return false;
    });
    onBoxes("btnTexte_PrintTextbox", [](TexteEnv& env, TextPair& b) {
        if (b.Active().isEmpty())
            env.prompt.Tell(Caption(CapTextBoxEmpty), Prompt::Icon::Information);
        else
            PrintTextCommand(env.prompt, QString(), b.Active());
        return false;
    });
    on("btnTexte_ClearLbxTxt", [this] {
        m_txt->Clear();
        m_txt->ClearFooters();
    });
    on("btnTexte_ClearLbxLyrics", [this] {
        m_lyrics->Clear();
        m_lyrics->ClearFooters();
    });
    on("btnTexte_ClearTxt1", [this] { cmdClearBox(1); });
    on("btnTexte_ClearTxt2", [this] { cmdClearBox(2); });
    on("btnTexte_SwitchTextbox", [this] {
        const bool shown = !m_box2Pane->isHidden();
        m_box2Pane->setHidden(shown);
        m_splitter->setHidden(shown);
        setActiveBox(shown ? 1 : m_active);
    });

    // boxes kept in the settings
    auto keep = [this](const char* name, int row) {
        connect(findChild<QCheckBox*>(QString::fromLatin1(name)), &QCheckBox::toggled, this,
                [this, row](bool v) { saveBox(row, Ini::Col1, v); });
    };
    keep("chbTexte_NoMsg", Ini::TexteNoMsg);
    keep("chbTexte_OpenTxtWithClick", Ini::TexteOpenTxtWithClick);
    keep("chbTexte_OpenLyricWithClick", Ini::TexteOpenLyricWithClick);
    keep("chbTexte_Txt1Only", Ini::TexteTxt1Only);
    keep("chbTexte_WithLyricsOnly", Ini::TexteWithLyricsOnly);
    connect(findChild<QCheckBox*>(QStringLiteral("chbTexte_Txt1Only")), &QCheckBox::toggled, this,
            [this] { showBoxes(); });
    connect(findChild<QCheckBox*>(QStringLiteral("chbTexte_DirectEditLyrics")), &QCheckBox::toggled, this,
            [this](bool v) { setDirectEditLyrics(v); });
    connect(findChild<QCheckBox*>(QStringLiteral("chbTexte_DirectEditTxt")), &QCheckBox::toggled, this,
            [this](bool v) { setDirectEditTxt(v); });

    // the lists
    connect(m_txtView->table(), &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (index.isValid() && checked("chbTexte_OpenTxtWithClick") && !checked("chbTexte_DirectEditTxt"))
            cmdOpenTxt(true);
    });
    connect(m_lyricsView->table(), &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (index.isValid() && checked("chbTexte_OpenLyricWithClick") &&
            !checked("chbTexte_DirectEditLyrics"))
            cmdOpenLyric(true);
    });
    connect(m_txtView, &DataGridView::rowDoubleClicked, this, [this](int) {
        if (!checked("chbTexte_DirectEditTxt") && !checked("chbTexte_OpenTxtWithClick"))
            cmdOpenTxt(false);
    });
    connect(m_lyricsView, &DataGridView::rowDoubleClicked, this, [this](int) {
        if (!checked("chbTexte_DirectEditLyrics") && !checked("chbTexte_OpenLyricWithClick"))
            cmdOpenLyric(false);
    });
    connect(
        m_lyricsView->table()->horizontalHeader(), &QHeaderView::sectionClicked, this,
        [this](int section) { QTimer::singleShot(0, this, [this, section] { sortLyrics(section + 1); }); });
}

void FrmTexte::sortLyrics(int col) {
    m_sortOrder = col == m_sortCol && m_sortOrder == 1 ? 2 : 1;
    m_sortCol = col;
    m_lyrics->DoSort(col == LyrCol::Index ? QStringLiteral("1,2") : QString::number(col), m_sortOrder);
}

void FrmTexte::setDirectEditLyrics(bool on) {
    for (int col : {int(LyrCol::Language), int(LyrCol::Description)})
        m_lyrics->Column(col).headerColor = on ? 255 : kNoColor;
    m_lyrics->ColumnsChanged();
    if (!on) {
        m_lyricsView->SetCellEditing({}, {});
        return;
    }
    m_lyricsView->SetCellEditing(
        [](int, int col) { return col == LyrCol::Language || col == LyrCol::Description; },
        [this](int row, int col, QString& text) {
            TexteEnv env = makeEnv();
            WaitCursor wait;
            return EditLyricCell(env, row, col, text);
        });
}

void FrmTexte::setDirectEditTxt(bool on) {
    m_txt->Column(TxtCol::FileName).headerColor = on ? 255 : kNoColor;
    m_txt->ColumnsChanged();
    if (!on) {
        m_txtView->SetCellEditing({}, {});
        return;
    }
    m_txtView->SetCellEditing([](int, int col) { return col == TxtCol::FileName; },
                              [this](int row, int, QString& text) {
                                  TexteEnv env = makeEnv();
                                  if (!RenameTextFile(env, row, text))
                                      return false;
                                  text = m_txt->CellText(row, TxtCol::FileName);
                                  return true;
                              });
}

// ---- commands ------------------------------------------------------------------------------------

void FrmTexte::cmdFindTxt() {
    TexteEnv env = makeEnv();
    m_txtView->setEnabled(false);
    WaitCursor wait;
    FindTextFiles(env);
    m_txtView->setEnabled(true);
}

void FrmTexte::cmdFindLyrics() {
    if (m_searching)
        return;
    TexteEnv env = makeEnv();
    m_searching = true;
    m_cancel = false;
    m_cancelFind->setEnabled(true);
    auto* direct = findChild<QCheckBox*>(QStringLiteral("chbTexte_DirectEditLyrics"));
    direct->setChecked(false);
    direct->setEnabled(false);
    {
        WaitCursor wait;
        FindLyrics(env);
    }
    m_cancelFind->setEnabled(false);
    m_searching = false;
    direct->setEnabled(m_lyrics->Rows() > 0);
}

void FrmTexte::cmdOpenTxt(bool byClick) {
    TexteEnv env = makeEnv();
    TextPair boxes = readBoxes();
    WaitCursor wait;
    const bool loaded = OpenTextFile(env, boxes, byClick);
    if (loaded || boxes.text[boxes.active - 1].isEmpty())
        writeBoxes(boxes); // a file that can't be read leaves its box empty
    refillLinks();
}

void FrmTexte::cmdOpenLyric(bool byClick) {
    TexteEnv env = makeEnv();
    TextPair boxes = readBoxes();
    WaitCursor wait;
    if (OpenLyric(env, boxes, byClick)) {
        writeBoxes(boxes);
        refillLinks();
    }
}

void FrmTexte::cmdClearBox(int box) {
    if (m_box[box - 1]->toPlainText().isEmpty())
        return;
    if (!prompt().AskYesNo(Caption(CapClearTextBoxQuestion), false))
        return;
    m_box[box - 1]->clear();
    refillLinks();
}

void FrmTexte::cmdLinksOk() {
    TexteEnv env = makeEnv();
    if (m_optInsert->isChecked()) {
        TextPair boxes = readBoxes();
        if (InsertLinkIntoText(env, boxes)) {
            writeBoxes(boxes);
            refillLinks();
        }
        return;
    }
    QStringList links;
    for (int i = 0; i < m_links->count(); ++i)
        links << m_links->itemText(i);
    WaitCursor wait;
    CopyOrMoveLinks(env, links, m_optMove->isChecked());
    refillLinks();
}

void FrmTexte::cmdPlaySong() {
    DataGrid& g = *m_lyrics;
    const int row = g.CurRow() > 0 ? g.CurRow() : (g.SelCount() > 0 ? g.SelRow(1) : 0);
    if (g.Rows() == 0) {
        prompt().Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return;
    }
    if (row == 0) {
        prompt().Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return;
    }
    if (playSong)
        playSong(LyricsRowPath(g, row));
}

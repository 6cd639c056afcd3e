// FrmTag: the commands. Each reads the controls into plain values, runs the logic of
// src/tag and shows the result.

#include "app/DataGridView.h"
#include "app/FrmInput.h"
#include "app/FrmTag.h"
#include "app/FrmTagSetPanel.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/Marks.h"
#include "list/modList.h"
#include "tag/TagEngine.h"
#include "tag/modTagJournal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QUrl>

namespace {

QPushButton* Find(QWidget* w, const char* name) {
    return w->findChild<QPushButton*>(QString::fromLatin1(name));
}

QStringList SettingList(int first, int last, int col) {
    QStringList l;
    for (int r = first; r <= last; ++r) {
        const QString v = Setting(r, col);
        if (!v.isEmpty())
            l << v;
    }
    return l;
}

} // namespace

void FrmTag::connectCommands() {
    auto on = [this](const char* name, auto fn) {
        if (QPushButton* b = Find(this, name))
            connect(b, &QPushButton::clicked, this, fn);
    };
    on("btnTab2_UpdateTag", [this] { cmdUpdateTag(); });
    on("btnTab2_DeleteTag", [this] { cmdDeleteTag(); });
    on("btnTab2_UpdateComment", [this] { cmdUpdateComment(); });
    on("btnTab2_DeleteComment", [this] { cmdDeleteComment(false); });
    on("btnTab2_DeleteAllComments", [this] { cmdDeleteComment(true); });
    on("btnTab2_TagToTag", [this] { cmdTagToTag(); });
    on("btnTab2_FilenameToTag", [this] { cmdFilenameToTag(); });
    on("btnTab2_TagToFilename", [this] { cmdTagToFilename(); });
    on("btnTab2_TransferGenreV2", [this] { cmdTransferGenreV2(); });
    on("btnTab2_FilterOnOff", [this] { cmdFilterOnOff(); });
    on("btnTab2_Filter", [this] { cmdFilter(); });
    on("btnTab2_TransferToDatalist", [this] { cmdTransferToDatalist(); });
    on("btnTab2_V1V2", [this] { cmdV1V2(true); });
    on("btnTab2_TakeFromDataList", [this] { LoadFromDataList(); });
    on("btnTab2_V2V1", [this] { cmdV1V2(false); });
    for (const char* n :
         {"btnTab2_SetFTagActRow", "btnTab2_ClearFtag", "btnTab2_SetFtagBlue", "btnTab2_RemoveFTag",
          "btnTag_HighlightAll", "btnTab2_InvertHighlight", "btnTab2_DeleteEntries"}) {
        const QString name = QString::fromLatin1(n);
        on(n, [this, name] { cmdMark(name); });
    }
    if (QPushButton* b = Find(this, "btnTab2_CopyToPlaylist")) {
        connect(b, &QPushButton::clicked, this, [this] {
            if (copyToPlaylist)
                copyToPlaylist();
        });
    }
    // the link of the V2 URL boxes
    connect(m_showLink, &QPushButton::clicked, this, [this] {
        const QString url = m_panels[1]->text(12).isEmpty() ? m_panels[1]->text(11) : m_panels[1]->text(12);
        if (!url.isEmpty())
            QDesktopServices::openUrl(QUrl::fromUserInput(url));
    });
    connect(m_attachLink, &QPushButton::clicked, this, [this] {
        QLineEdit* box = m_panels[1]->box(12);
        const QStringList links = SettingList(Ini::LinkFirst, Ini::LinkLast, Ini::LinkCol2);
        showValueMenu(box, links, m_attachLink->mapToGlobal(QPoint(0, m_attachLink->height())), m_mnuTextbox);
    });

    // the list's menu: play the current song with the desktop's player, update the tags
    auto play = [this] {
        const int row = m_tag->CurRow();
        if (row >= 1 && row <= m_tag->Rows())
            QDesktopServices::openUrl(QUrl::fromLocalFile(TagRowPath(*m_tag, row)));
    };
    QTableView* table = m_view->table();
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(table, &QWidget::customContextMenuRequested, this, [this, table, play](const QPoint& p) {
        QMenu menu(this);
        QAction* playAction = menu.addAction(UiText(QStringLiteral("mnuTag_PlaySong")));
        playAction->setObjectName(QStringLiteral("mnuTag_PlaySong"));
        QAction* update = menu.addAction(UiText(QStringLiteral("mnuTag_UpdateTags")));
        update->setObjectName(QStringLiteral("mnuTag_UpdateTags"));
        QAction* chosen = menu.exec(table->viewport()->mapToGlobal(p));
        if (chosen == playAction)
            play();
        else if (chosen == update)
            cmdUpdateTag();
    });
    connect(m_view, &DataGridView::rowDoubleClicked, this, [play](int) { play(); });

    // current row: read the file
    connect(m_view, &DataGridView::currentRowChanged, this, [this](int row) { ReadTagRow(row); });
    connect(m_tag, &DataGrid::currentRowChanged, this, [this](int row) {
        if (!m_tag->IsLocked())
            ReadTagRow(row);
    });
    connect(m_lfdNr, &QComboBox::currentIndexChanged, this, [this](int item) { showComment(item); });

    // update options: the chosen one is kept in the settings
    for (int i = 0; i < 5; ++i) {
        connect(m_options[size_t(i)], &QRadioButton::toggled, this, [this, i](bool checked) {
            if (!checked)
                return;
            for (int k = 0; k < 5; ++k)
                if (k != i) {
                    m_options[size_t(k)]->blockSignals(true);
                    m_options[size_t(k)]->setChecked(false);
                    m_options[size_t(k)]->blockSignals(false);
                }
            saveOption(UpdateSet(i + 1));
        });
    }
    m_noMsg->setChecked(SettingOn(Ini::TagNoMsg, Ini::Col1));
    connect(m_noMsg, &QCheckBox::toggled, this, [](bool on) { SetSettingOn(Ini::TagNoMsg, Ini::Col1, on); });

    // value menus: rating and mood, and the links for the text boxes of V2
    for (int i : {13, 14}) {
        QLineEdit* box = m_panels[1]->box(i);
        box->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(box, &QLineEdit::customContextMenuRequested, this, [this, box, i](const QPoint& p) {
            const QStringList values = i == 13
                                           ? SettingList(Ini::RatingFirst, Ini::RatingLast, Ini::RatingCol)
                                           : SettingList(Ini::MoodFirst, Ini::MoodLast, Ini::MoodCol);
            showValueMenu(box, values, box->mapToGlobal(p), m_mnuRateMood);
        });
    }
    for (int i = 0; i <= 12; ++i) {
        QLineEdit* box = m_panels[1]->box(i);
        box->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(box, &QLineEdit::customContextMenuRequested, this, [this, box](const QPoint& p) {
            showValueMenu(box, SettingList(Ini::LinkFirst, Ini::LinkLast, Ini::LinkCol2), box->mapToGlobal(p),
                          m_mnuTextbox);
        });
    }
    // the mark box takes the digit keys as the ten marks of the sign list
    m_fTag->installEventFilter(this);
}

void FrmTag::showValueMenu(QLineEdit* box, const QStringList& values, const QPoint& at, QMenu* menu) {
    menu->clear();
    for (const QString& v : values) {
        QAction* a = menu->addAction(v);
        connect(a, &QAction::triggered, box, [box, v] { box->setText(v); });
    }
    if (!values.isEmpty())
        menu->popup(at);
}

bool FrmTag::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_fTag && event->type() == QEvent::KeyPress) {
        const auto* k = static_cast<QKeyEvent*>(event);
        if (k->key() >= Qt::Key_0 && k->key() <= Qt::Key_9 && k->modifiers() == Qt::NoModifier) {
            const int n = k->key() == Qt::Key_0 ? 10 : k->key() - Qt::Key_0;
            m_fTag->setText(Setting(Ini::SignFirst + n - 1, Ini::SignCol));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FrmTag::saveOption(UpdateSet set) {
    SetSetting(Ini::TagUpdateOption, Ini::Col1, UpdateOptionToSetting(set));
}

// ---- batches ------------------------------------------------------------------------------

TagProgress FrmTag::progressPump() {
    auto timer = std::make_shared<QElapsedTimer>();
    timer->start();
    return [this, timer](int done, int total) {
        m_progress->setMaximum(total);
        m_progress->setValue(done);
        // keep the window alive without paying for a repaint after every small file
        if (timer->elapsed() >= 30 || done == total) {
            QCoreApplication::processEvents();
            timer->restart();
        }
    };
}

TagBatch FrmTag::makeBatch() {
    TagBatch b;
    b.lbxTag = m_tag;
    b.lbxInput = m_input;
    b.engine = &engine();
    b.prompt = &prompt();
    b.markFilter = m_fTag->text();
    b.noMsg = m_noMsg->isChecked();
    b.progress = progressPump();
    b.busy = &m_busy;
    b.journalPath = TagJournalPath();
    for (QPushButton* btn : m_batchButtons)
        btn->setEnabled(false);
    m_progress->setValue(0);
    m_progress->show();
    return b;
}

void FrmTag::afterBatch(bool ran) {
    m_progress->hide();
    for (QPushButton* btn : m_batchButtons)
        btn->setEnabled(true);
    // A command that a guard, a warning or a No ended wrote nothing: the boxes keep what
    // the user typed. After a batch they show the current file as it is now.
    if (ran && m_tag->Rows() > 0)
        ReadTagRow(m_tag->CurRow() > 0 ? m_tag->CurRow() : 1);
}

void FrmTag::cmdUpdateTag() {
    if (m_busy)
        return;
    const TagBoxes boxes = ReadBoxes();
    TagBatch b = makeBatch();
    afterBatch(UpdateTags(b, ChosenSet(), boxes).ran);
}

void FrmTag::cmdDeleteTag() {
    if (m_busy)
        return;
    TagBatch b = makeBatch();
    afterBatch(DeleteTags(b, ChosenSet()).ran);
}

void FrmTag::cmdTagToTag() {
    if (m_busy)
        return;
    const TagBoxes boxes = ReadBoxes();
    TagBatch b = makeBatch();
    afterBatch(TagToTag(b, m_tagToTag->currentIndex(), boxes, m_tagToTagStrip->isChecked()).ran);
}

void FrmTag::cmdFilenameToTag() {
    if (m_busy)
        return;
    const UpdateSet set = ChosenSet();
    TagBatch b = makeBatch();
    NameToTagShown shown;
    afterBatch(FilenameToTag(b, set, m_nameToTagWithTrack->isChecked(), &shown).ran);
    if (!shown.any)
        return;
    // the boxes of the set show what was written last
    struct Places {
        int panel, track, artist, title;
    };
    const Places places[] = {{0, 2, 3, 4}, {1, 1, 2, 3}, {2, 1, 2, 3}, {3, -1, 0, 1}, {4, 1, 2, 3}};
    const Places& p = places[int(set) - 1];
    FrmTagSetPanel* panel = m_panels[size_t(p.panel)];
    if (p.track >= 0 && !shown.track.isEmpty())
        panel->setText(p.track, shown.track);
    panel->setText(p.artist, shown.artist);
    panel->setText(p.title, shown.title);
}

void FrmTag::cmdTagToFilename() {
    if (m_busy)
        return;
    const UpdateSet set = ChosenSet();
    QString artist, title;
    switch (set) {
    case UpdateSet::V1:
        artist = m_panels[0]->text(3), title = m_panels[0]->text(4);
        break;
    case UpdateSet::Lyrics:
        artist = m_panels[3]->text(0), title = m_panels[3]->text(1);
        break;
    case UpdateSet::None:
        break;
    default: {
        FrmTagSetPanel* p = m_panels[size_t(int(set) - 1)];
        artist = p->text(2), title = p->text(3);
        break;
    }
    }
    TagBatch b = makeBatch();
    afterBatch(TagToFilename(b, set, artist, title, m_tagToNameWithTrack->isChecked(), NumberDigits()).ran);
}

// ---- single row ---------------------------------------------------------------------------

void FrmTag::cmdUpdateComment() {
    const int row = m_tag->CurRow();
    if (!ListNotEmpty(*m_tag, prompt()) || row < 1)
        return;
    const QString path = TagRowPath(*m_tag, row);
    TagJournalRecorder journal(TagJournalPath());
    if (engine().OpenFile(path) != 0)
        journal.Before(engine(), path);
    const bool ok = UpdateComment(engine(), path, m_lfdNr->currentIndex(), m_language->text(),
                                  m_description->text(), m_comment->toPlainText(), prompt());
    journal.After(path);
    if (!ok) {
        if (m_language->text().isEmpty())
            m_language->setFocus();
        return;
    }
    ReadTagRow(row);
}

void FrmTag::cmdDeleteComment(bool all) {
    if (!ListNotEmpty(*m_tag, prompt()) || !AtLeastRowsSelected(*m_tag, 1, prompt()))
        return;
    const int row = m_tag->CurRow();
    if (row < 1)
        return;
    const QString path = TagRowPath(*m_tag, row);
    TagJournalRecorder journal(TagJournalPath());
    if (engine().OpenFile(path) != 0)
        journal.Before(engine(), path);
    if (all)
        DeleteAllComments(engine(), path, prompt());
    else
        DeleteComment(engine(), path, m_lfdNr->currentIndex(), prompt());
    journal.After(path);
    ReadTagRow(row);
}

void FrmTag::cmdV1V2(bool toV2) {
    std::array<QString, 7> v1;
    std::array<QString, 15> v2;
    for (int i = 1; i <= 6; ++i)
        v1[size_t(i)] = m_panels[0]->text(i);
    for (int i = 0; i < 15; ++i)
        v2[size_t(i)] = m_panels[1]->text(i);
    if (toV2) {
        CopyV1ToV2(v1, v2);
        for (int i = 0; i < 5; ++i)
            m_panels[1]->setText(i, v2[size_t(i)]);
    } else {
        CopyV2ToV1(v2, v1);
        for (int i = 1; i <= 5; ++i)
            m_panels[0]->setText(i, v1[size_t(i)]);
    }
}

void FrmTag::cmdTransferGenreV2() {
    QStringList texts;
    for (int t = 1; t < 5; ++t)
        if (m_tabs->isTabEnabled(t))
            texts << m_panels[size_t(t)]->genre()->currentText();
    if (TransferGenres(texts, *m_genres, prompt()) > 0)
        fillGenreLists();
}

// ---- filter -------------------------------------------------------------------------------

void FrmTag::setFilterMode(bool on) {
    m_filterOn = on;
    FrmTagSetPanel* v2 = m_panels[1];
    for (int i = 0; i < 15; ++i) {
        v2->box(i)->setVisible(!on);
        m_filterCombos[size_t(i)]->setVisible(on);
    }
    v2->genre()->setVisible(!on);
    m_filterGenre->setVisible(on);
    v2->checkAll()->setVisible(!on);
    v2->checkNone()->setVisible(!on);
    v2->genreCheck()->setVisible(!on);
    m_attachLink->setVisible(!on);
    m_showLink->setVisible(!on);
    m_matchComplete->setVisible(on);
    m_keepMark->setVisible(on);
    m_filterBtn->setVisible(on);
    m_transferToDatalist->setVisible(on);
    m_filterOnOff->setText(Caption(on ? CapFilterTurnOff : CapFilterTurnOn));
}

void FrmTag::cmdFilterOnOff() {
    if (m_filterOn) {
        setFilterMode(false);
        return;
    }
    m_progress->show();
    TagProgress pump = progressPump();
    const FilterOnResult r = FilterOn(*m_tag, engine(), prompt(), [this, pump](int done, int total) {
        m_progress->setFormat(FilterProgressText(done, total));
        pump(done, total);
    });
    m_progress->setFormat(QStringLiteral("%p%"));
    m_progress->hide();
    if (!r.turnedOn)
        return;
    setFilterMode(true);
    for (int i = 0; i < 15; ++i) {
        m_filterCombos[size_t(i)]->clear();
        m_filterCombos[size_t(i)]->addItems(r.values[size_t(i)]);
    }
    m_filterGenre->clear();
    m_filterGenre->addItems(r.values[15]);
    if (m_tag->Rows() == 0)
        clearBoxes(false);
}

void FrmTag::cmdFilter() {
    FilterTexts f;
    for (int i = 0; i < 15; ++i)
        f[size_t(i)] = m_filterCombos[size_t(i)]->currentText();
    f[15] = m_filterGenre->currentText();
    m_progress->show();
    ApplyTagFilter(*m_tag, engine(), prompt(), f, m_matchComplete->isChecked(), m_keepMark->isChecked(),
                   progressPump());
    m_progress->hide();
    ReadTagRow(1);
}

void FrmTag::cmdTransferToDatalist() {
    if (!m_input)
        return;
    if (!TransferFilterToDatalist(*m_tag, *m_input, prompt(), m_noMsg->isChecked()))
        return;
    if (showDataList)
        showDataList();
    else if (FrmInput* main = FrmInput::Instance())
        main->TabInput->setCurrentIndex(0);
}

// ---- marks of the list ----------------------------------------------------------------------

void FrmTag::cmdMark(const QString& which) {
    DataGrid& g = *m_tag;
    if (!ListNotEmpty(g, prompt()))
        return;
    const int cur = g.CurRow();
    if (which == QLatin1String("btnTab2_SetFTagActRow")) {
        if (cur >= 1)
            g.SetCellText(cur, TagCol::FTag, m_fTag->text());
    } else if (which == QLatin1String("btnTab2_ClearFtag")) {
        if (cur >= 1)
            g.SetCellText(cur, TagCol::FTag, QString());
    } else if (which == QLatin1String("btnTab2_SetFtagBlue")) {
        if (!AtLeastRowsSelected(g, 1, prompt()))
            return;
        g.LockUpdate(true);
        for (int row : g.SelectedRows())
            g.SetCellText(row, TagCol::FTag, Mark::Default);
        g.LockUpdate(false);
    } else if (which == QLatin1String("btnTab2_RemoveFTag")) {
        if (!AtLeastRowsSelected(g, 1, prompt()))
            return;
        g.LockUpdate(true);
        for (int row : g.SelectedRows())
            g.SetCellText(row, TagCol::FTag, QString());
        g.LockUpdate(false);
    } else if (which == QLatin1String("btnTag_HighlightAll")) {
        g.SelectAll();
    } else if (which == QLatin1String("btnTab2_InvertHighlight")) {
        g.InvertSelection();
    } else if (which == QLatin1String("btnTab2_DeleteEntries")) {
        // rows marked with the mark box (or, with an empty box, the selected rows) leave
        // the list; the files stay as they are
        const QString mark = m_fTag->text();
        g.LockUpdate(true);
        for (int row = g.Rows(); row >= 1; --row) {
            const bool drop = mark.isEmpty() ? g.IsSelected(row) : g.CellView(row, TagCol::FTag) == mark;
            if (drop)
                g.DeleteRow(row);
        }
        g.LockUpdate(false);
        g.Refresh();
        g.SetFooterText(TagCol::FileName, QString::number(g.Rows()));
        if (g.Rows() > 0)
            g.SetCurRow(1);
        else
            clearBoxes(false);
    }
}

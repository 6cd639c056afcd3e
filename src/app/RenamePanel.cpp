#include "app/RenamePanel.h"

#include "app/DataGridView.h"
#include "app/FrmPreview.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/MessageBoxPrompt.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/modRenameJournal.h"
#include "list/InputColumns.h"
#include "list/ftcNames.h"
#include "tag/TagEngine.h"
#include "tag/modDirectEdit.h"
#include "tag/modInputTagCommands.h"
#include "tag/modTagJournal.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTableView>
#include <QVBoxLayout>

QScrollArea* ScrollingPage(QWidget* panel) {
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(panel);
    return area;
}

RenamePanel* RenamePanel::Install(InputDataPage* page, ListProgress* progress) {
    auto* panel = new RenamePanel(page, progress);
    // A narrow window scrolls the tab rather than grow beyond the screen.
    page->AddSubTab(page->TabInput1_Sub2, ScrollingPage(panel), QStringLiteral("pagTab1_Rename"),
                    SubTab::Rename);
    return panel;
}

RenamePanel::RenamePanel(InputDataPage* page, ListProgress* progress, QWidget* parent)
    : QWidget(parent), m_page(page), m_progress(progress) {
    auto named = [this](auto* w, const char* name) {
        w->setObjectName(QString::fromLatin1(name));
        return w;
    };
    auto option = [&](const char* name) { return named(new QRadioButton(this), name); };
    auto check = [&](const char* name) { return named(new QCheckBox(this), name); };
    optTab1_FileChangeArtTit = option("optTab1_FileChangeArtTit");
    optTab1_Num_Ext = option("optTab1_Num_Ext");
    optTab1_Num_Int = option("optTab1_Num_Int");
    optTab1_NumFromTrack = option("optTab1_NumFromTrack");
    chbTab1_Num_Int = check("chbTab1_Num_Int");
    optTab1_RemoveNumInt = option("optTab1_RemoveNumInt");
    optTab1_FileRenameSpecial = option("optTab1_FileRenameSpecial");
    chbTab1_SetSpecialMark = check("chbTab1_SetSpecialMark");
    chbTab1_RemoveSpecialMark = check("chbTab1_RemoveSpecialMark");
    optTab1_FileCut = option("optTab1_FileCut");
    chbTab1_CutFromRight = check("chbTab1_CutFromRight");
    for (int i = 0; i < 2; ++i) {
        txtTab1_FileCut[std::size_t(i)] = new QLineEdit(this);
        txtTab1_FileCut[std::size_t(i)]->setObjectName(QStringLiteral("txtTab1_FileCut(%1)").arg(i));
        txtTab1_FileCut[std::size_t(i)]->setValidator(new QIntValidator(0, 999, this));
        txtTab1_FileCut[std::size_t(i)]->setMaximumWidth(44);
        txtTab1_FileCut[std::size_t(i)]->setText(QStringLiteral("0"));
    }
    btnTab1_FileCut = named(new QPushButton(this), "btnTab1_FileCut");
    optTab1_TagToFilename = option("optTab1_TagToFilename");
    optTab1_FilenameToTag = option("optTab1_FilenameToTag");
    chbTab1_TrackToNum = check("chbTab1_TrackToNum");
    chbTab1_NumToTrack = check("chbTab1_NumToTrack");
    optTab1_SetTextInTag = option("optTab1_SetTextInTag");
    cmbTab1_TextInTag = named(new QComboBox(this), "cmbTab1_TextInTag");
    optTab1_RemoveInvalidLinks = option("optTab1_RemoveInvalidLinks");
    btnTab1_Sub2_3_OK = named(new QPushButton(this), "btnTab1_Sub2_3_OK");
    chbTab1_RenamePreview = check("chbTab1_RenamePreview");
    btnTab1_Undo = named(new QPushButton(this), "btnTab1_Undo");
    chbTab1_DirectEdit = check("chbTab1_DirectEdit");

    auto* group = new QButtonGroup(this);
    for (QRadioButton* o :
         {optTab1_FileChangeArtTit, optTab1_Num_Ext, optTab1_Num_Int, optTab1_NumFromTrack,
          optTab1_RemoveNumInt, optTab1_FileRenameSpecial, optTab1_FileCut, optTab1_TagToFilename,
          optTab1_FilenameToTag, optTab1_SetTextInTag, optTab1_RemoveInvalidLinks})
        group->addButton(o);
    chbTab1_SetSpecialMark->setChecked(true);
    // Setting and removing the special prefix exclude each other.
    connect(chbTab1_SetSpecialMark, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            chbTab1_RemoveSpecialMark->setChecked(false);
    });
    connect(chbTab1_RemoveSpecialMark, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            chbTab1_SetSpecialMark->setChecked(false);
    });

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(8, 2, 8, 2);
    layout->setHorizontalSpacing(14);
    layout->setVerticalSpacing(0);
    // The buttons come first, so that they stay in sight when the tab scrolls. Switches and
    // boxes that belong to an option stand indented under it.
    auto under = [this](QWidget* a, QWidget* b = nullptr, QWidget* c = nullptr) {
        auto* w = new QWidget(this);
        auto* h = new QHBoxLayout(w);
        h->setContentsMargins(20, 0, 0, 0);
        h->setSpacing(6);
        for (QWidget* x : {a, b, c})
            if (x)
                h->addWidget(x);
        h->addStretch(1);
        return w;
    };
    layout->addWidget(optTab1_FileChangeArtTit, 0, 1);
    layout->addWidget(optTab1_Num_Ext, 1, 1);
    layout->addWidget(optTab1_Num_Int, 2, 1);
    layout->addWidget(optTab1_NumFromTrack, 3, 1);
    layout->addWidget(under(chbTab1_Num_Int), 4, 1);
    layout->addWidget(optTab1_RemoveNumInt, 5, 1);
    layout->addWidget(optTab1_RemoveInvalidLinks, 6, 1);
    layout->addWidget(optTab1_FileRenameSpecial, 0, 2);
    layout->addWidget(under(chbTab1_SetSpecialMark, chbTab1_RemoveSpecialMark), 1, 2);
    layout->addWidget(optTab1_FileCut, 2, 2);
    layout->addWidget(under(chbTab1_CutFromRight), 3, 2);
    layout->addWidget(under(txtTab1_FileCut[0], txtTab1_FileCut[1], btnTab1_FileCut), 4, 2);
    layout->addWidget(optTab1_TagToFilename, 5, 2);
    layout->addWidget(under(chbTab1_TrackToNum), 6, 2);
    layout->addWidget(optTab1_FilenameToTag, 0, 3);
    layout->addWidget(under(chbTab1_NumToTrack), 1, 3);
    layout->addWidget(optTab1_SetTextInTag, 2, 3);
    layout->addWidget(under(cmbTab1_TextInTag), 3, 3);
    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(2);
    buttons->addWidget(btnTab1_Sub2_3_OK);
    buttons->addWidget(chbTab1_RenamePreview);
    buttons->addWidget(btnTab1_Undo);
    buttons->addWidget(chbTab1_DirectEdit);
    buttons->addStretch(1);
    layout->addLayout(buttons, 0, 0, 7, 1);
    layout->setColumnStretch(3, 1);
    layout->setRowStretch(7, 1);

    connect(chbTab1_RenamePreview, &QCheckBox::toggled, this, [](bool on) {
        if (!State().SuppressEvents)
            SetSettingOn(Ini::RenamePreview, Ini::Col1, on);
    });
    connect(btnTab1_Sub2_3_OK, &QPushButton::clicked, this, &RenamePanel::btnTab1_Sub2_3_OK_Click);
    connect(btnTab1_FileCut, &QPushButton::clicked, this, &RenamePanel::btnTab1_FileCut_Click);
    connect(btnTab1_Undo, &QPushButton::clicked, this, &RenamePanel::btnTab1_Undo_Click);
    connect(chbTab1_DirectEdit, &QCheckBox::toggled, this, &RenamePanel::chbTab1_DirectEdit_Click);
}

void RenamePanel::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    chbTab1_RenamePreview->setChecked(SettingOn(Ini::RenamePreview, Ini::Col1));
    FillTextInTag();
    State().SuppressEvents = quiet;
}

// The tag columns of the data list under their headers in the program's language; the
// chosen column stays chosen.
void RenamePanel::FillTextInTag() {
    const int keep = cmbTab1_TextInTag->currentData().toInt();
    cmbTab1_TextInTag->clear();
    const DataGrid& list = Grids::LbxInput();
    for (int col : TextInTagColumns())
        if (col <= list.Cols())
            cmbTab1_TextInTag->addItem(list.Column(col).caption, col);
    const int at = cmbTab1_TextInTag->findData(keep);
    cmbTab1_TextInTag->setCurrentIndex(at >= 0 ? at : 0);
}

RenameRequest RenamePanel::Request() const {
    RenameRequest r;
    r.digits = NumberDigits();
    r.markFilter = m_page->txtTab1_FTag->text();
    r.numberInternal = chbTab1_Num_Int->isChecked();
    r.cutA = txtTab1_FileCut[0]->text().toInt();
    r.cutB = txtTab1_FileCut[1]->text().toInt();
    r.cutFromRight = chbTab1_CutFromRight->isChecked();
    if (optTab1_FileChangeArtTit->isChecked())
        r.command = RenameCommand::SwapArtistTitle;
    else if (optTab1_Num_Ext->isChecked())
        r.command = RenameCommand::NumExt;
    else if (optTab1_Num_Int->isChecked())
        r.command = RenameCommand::NumInt;
    else if (optTab1_NumFromTrack->isChecked())
        r.command = RenameCommand::NumFromTrack;
    else if (optTab1_RemoveNumInt->isChecked())
        r.command = RenameCommand::RemoveNumInt;
    else if (optTab1_FileRenameSpecial->isChecked())
        r.command =
            chbTab1_RemoveSpecialMark->isChecked() ? RenameCommand::SpecialRemove : RenameCommand::SpecialSet;
    else if (optTab1_FileCut->isChecked())
        r.command = RenameCommand::Cut;
    else if (optTab1_TagToFilename->isChecked())
        r.command = RenameCommand::TagToFilename;
    r.withTrack = chbTab1_TrackToNum->isChecked();
    const int set = tagSetOfTagWindow ? tagSetOfTagWindow() : 0;
    r.tagSet = set > 0 ? set : 2;
    return r;
}

FrmPreview* RenamePanel::Preview() {
    if (!m_preview)
        m_preview = new FrmPreview(window());
    return m_preview;
}

void RenamePanel::Run(const RenameRequest& request, bool preview) {
    DataGrid& list = Grids::LbxInput();
    const bool noMsg = m_page->chbTab1_NoMsg->isChecked();
    const ListEnv env = InputListEnv(m_page, m_progress);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const RenameRun run =
        RunRename(list, request, env, noMsg, preview, &TagEngine::Shared(), RenameJournalPath());
    QApplication::restoreOverrideCursor();
    m_page->LbxInput->table()->setFocus();
    if (!run.ran || !preview)
        return;
    const RenameCommand command = request.command;
    QPointer<InputDataPage> page(m_page);
    ListProgress* progress = m_progress;
    Preview()->ShowPlan(&list, run.plan, [command, page, progress](const RenameOutcome& outcome) {
        if (!page)
            return;
        FinishRename(Grids::LbxInput(), command, outcome, InputListEnv(page, progress),
                     page->chbTab1_NoMsg->isChecked());
    });
}

void RenamePanel::btnTab1_Sub2_3_OK_Click() {
    if (optTab1_SetTextInTag->isChecked()) {
        SetTextInTag();
        return;
    }
    if (optTab1_RemoveInvalidLinks->isChecked()) {
        RemoveInvalidLinks();
        return;
    }
    if (optTab1_FilenameToTag->isChecked()) {
        FilenameToTag();
        return;
    }
    const RenameRequest r = Request();
    if (r.command == RenameCommand::None) {
        AppPrompt().Tell(Caption(CapNoActionChosen), Prompt::Icon::Warning);
        return;
    }
    Run(r, chbTab1_RenamePreview->isChecked());
}

void RenamePanel::btnTab1_FileCut_Click() {
    DataGrid& list = Grids::LbxInput();
    const ListEnv env = InputListEnv(m_page, m_progress);
    if (!env.ListNotEmpty(list))
        return;
    const int row = list.CurRow();
    if (row < 1 || row > list.Rows()) {
        env.AtLeastRowsSelected(list, list.Rows() + 1); // tells that no row is chosen
        return;
    }
    const QString name = list.CellText(row, InCol::FileName);
    QString base, ext;
    SplitExtension(name, base, ext);
    if (!name.contains(u'.'))
        base = name;
    const bool right = chbTab1_CutFromRight->isChecked();
    int a = 0, b = 0;
    QString marked = base;
    for (;;) {
        const std::optional<QString> answer =
            AppPrompt().InputBox(Caption(CapCutTitle) + u'\n' + Caption(CapCutPrompt), marked);
        if (!answer || answer->isEmpty())
            return;
        marked = *answer;
        if (CutPositionsFromMarks(marked, right, a, b))
            break;
        if (!AppPrompt().AskOkCancel(Caption(CapNoAtSign), Prompt::Icon::Warning))
            return;
    }
    int message = 0;
    const CutMode mode = CutModeOf(a, b, right, &message);
    if (mode == CutMode::Invalid) {
        AppPrompt().Tell(Caption(message), Prompt::Icon::Warning);
        return;
    }
    txtTab1_FileCut[0]->setText(QString::number(a));
    txtTab1_FileCut[1]->setText(QString::number(b));
    optTab1_FileCut->setChecked(true);
    const QString result = CutBase(base, mode, a, b) + u'.' + ext;
    const int confirm = right ? CapCutRightConfirm : CapCutConfirm;
    if (!AppPrompt().AskYesNo(name + QStringLiteral("\n→ ") + result + QStringLiteral("\n\n") +
                                  Caption(confirm),
                              true, Prompt::Icon::Question))
        return;
    RenameRequest r = Request();
    r.confirmed = true;
    Run(r, chbTab1_RenamePreview->isChecked());
}

namespace {

qint64 JournalTime(const QString& path) {
    qint64 size = 0, mtime = -1;
    return FileStamp(path, size, mtime) ? mtime : -1;
}

} // namespace

void RenamePanel::btnTab1_Undo_Click() {
    // The last batch is the newer of the two journals: names and places, or tags.
    const QString renameJournal = RenameJournalPath();
    const QString tagJournal = TagJournalPath();
    const qint64 renameTime = JournalTime(renameJournal);
    const qint64 tagTime = JournalTime(tagJournal);
    if (renameTime < 0 && tagTime < 0) {
        AppPrompt().Tell(Caption(CapUndoNothing), Prompt::Icon::Information);
        return;
    }
    const bool tags = tagTime > renameTime;
    // Only the last batch can be undone: the older journal is stale.
    if (renameTime >= 0 && tagTime >= 0)
        QFile::remove(tags ? renameJournal : tagJournal);
    const bool noMsg = m_page->chbTab1_NoMsg->isChecked();
    if (!noMsg && !AppPrompt().AskYesNo(Caption(tags ? CapTagUndoQuestion : CapUndoQuestion), true,
                                        Prompt::Icon::Question))
        return;
    DataGrid& list = Grids::LbxInput();
    const ListEnv env = InputListEnv(m_page, m_progress);
    list.LockUpdate(true);
    env.ShowProgress(list.Rows(), 0);
    UndoOutcome u;
    if (tags) {
        u = UndoTagBatch(
            &list, nullptr, tagJournal, TagEngine::Shared(),
            [](const QString& path) {
                return AppPrompt().AskYesNo(path + QStringLiteral("\n\n") + Caption(CapTagUndoChangedAsk),
                                            false, Prompt::Icon::Question);
            },
            &env);
    } else {
        u = UndoLastBatch(&list, renameJournal, &env);
    }
    env.HideProgress();
    list.LockUpdate(false);
    list.Refresh();
    RenameOutcome asRename;
    asRename.done = u.done;
    asRename.failed = u.failed;
    asRename.failures = u.failures;
    if (!u.hadJournal) {
        AppPrompt().Tell(Caption(CapUndoNothing), Prompt::Icon::Information);
        return;
    }
    if (!noMsg) {
        QString text = CountText(tags ? CapTagUndoDone : CapUndoDone, u.done);
        if (u.changedSince && !tags)
            text += u'\n' + CountText(CapUndoChangedSince, u.changedSince);
        AppPrompt().Tell(text, Prompt::Icon::Information);
    }
    FinishRename(list, RenameCommand::None, asRename, env, true);
}

void RenamePanel::chbTab1_DirectEdit_Click(bool on) {
    if (!on) {
        m_page->LbxInput->SetCellEditing({}, {});
        return;
    }
    m_page->LbxInput->SetCellEditing([](int, int col) { return DirectEditColumn(col); },
                                     [](int row, int col, QString& text) {
                                         DataGrid& list = Grids::LbxInput();
                                         bool changed = false;
                                         const bool ok =
                                             DirectEditCell(list, row, col, text, false, TagEngine::Shared(),
                                                            AppPrompt(), &changed, TagJournalPath());
                                         if (changed)
                                             list.Tag = QStringLiteral("edited");
                                         return ok;
                                     });
}

int RenamePanel::TagSet() const {
    const int set = tagSetOfTagWindow ? tagSetOfTagWindow() : 0;
    return set > 0 ? set : 2;
}

void RenamePanel::FilenameToTag() {
    ::FilenameToTagRows(Grids::LbxInput(), TagSet(), chbTab1_NumToTrack->isChecked(),
                        m_page->txtTab1_FTag->text(), m_page->chbTab1_NoMsg->isChecked(), TagEngine::Shared(),
                        InputListEnv(m_page, m_progress), TagJournalPath());
}

void RenamePanel::SetTextInTag() {
    SetTextInColumn(cmbTab1_TextInTag->currentData().toInt(), Caption(CapTextInTagPrompt));
}

void RenamePanel::SetTextInColumn(int column, const QString& question, const QString& initial) {
    DataGrid& list = Grids::LbxInput();
    const ListEnv env = InputListEnv(m_page, m_progress);
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1))
        return;
    if (column <= 0)
        return;
    const std::optional<QString> text = AppPrompt().InputBox(question, initial);
    if (!text)
        return;
    if (text->isEmpty() &&
        !AppPrompt().AskYesNo(Caption(CapClearFieldQuestion), false, Prompt::Icon::Question))
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ::SetTextInTag(list, column, *text, m_page->txtTab1_FTag->text(), m_page->chbTab1_NoMsg->isChecked(),
                   TagEngine::Shared(), env, TagJournalPath());
    QApplication::restoreOverrideCursor();
}

void RenamePanel::RemoveInvalidLinks() {
    // Asks per link: no wait cursor over the questions.
    ::RemoveInvalidLinks(Grids::LbxInput(), m_page->txtTab1_FTag->text(), m_page->chbTab1_NoMsg->isChecked(),
                         TagEngine::Shared(), InputListEnv(m_page, m_progress), TagJournalPath());
}

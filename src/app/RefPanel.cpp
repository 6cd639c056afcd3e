#include "app/RefPanel.h"

#include "app/ContextMenuView.h"
#include "app/DataGridView.h"
#include "app/ExportDialog.h"
#include "app/FrmShowColumnRef.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/MessageBoxPrompt.h"
#include "app/PrintUi.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "list/modColumnPatterns.h"
#include "list/modContextMenu.h"
#include "list/modList.h"
#include "list/modListEnv.h"
#include "list/modMarks.h"
#include "output/modExport.h"
#include "platform/Shell.h"
#include "playlist/modPlaylistPlay.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"
#include "ref/modRefMatch.h"
#include "ref/modRefReplace.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace {
QSettings UserStore() {
    return QSettings(QStringLiteral("Quillotune"), QStringLiteral("Quillotune"));
}
const QString kWidthsKey = QStringLiteral("LbxRef/ColWidths");
} // namespace

RefPanel* RefPanel::Install(InputDataPage* page, ListProgress* progress) {
    auto* panel = new RefPanel(page, progress);
    page->AddSubTab(page->TabInput1_Sub1, panel, QStringLiteral("pagTab1_Compare"), SubTab::Compare);
    return panel;
}

RefPanel::RefPanel(InputDataPage* page, ListProgress* progress, QWidget* parent)
    : QWidget(parent), m_page(page), m_progress(progress) {
    // LbxRef goes beside LbxInput: both share a splitter in the list's place.
    // The list may already sit in a splitter of its own (the folder pane's): the pair
    // then takes the list's place there.
    splTab1_Lists = new QSplitter(Qt::Horizontal);
    splTab1_Lists->setObjectName(QStringLiteral("splTab1_Lists"));
    splTab1_Lists->setChildrenCollapsible(false);
    if (auto* outer = qobject_cast<QSplitter*>(page->LbxInput->parentWidget())) {
        const int at = outer->indexOf(page->LbxInput);
        outer->replaceWidget(at, splTab1_Lists);
        splTab1_Lists->addWidget(page->LbxInput);
    } else {
        QVBoxLayout* body = page->body();
        const int at = std::max(0, body->indexOf(page->LbxInput));
        body->removeWidget(page->LbxInput);
        splTab1_Lists->addWidget(page->LbxInput);
        body->insertWidget(at, splTab1_Lists, 1);
    }

    fraTab1_Ref = new QWidget;
    fraTab1_Ref->setObjectName(QStringLiteral("fraTab1_Ref"));
    auto* refLayout = new QVBoxLayout(fraTab1_Ref);
    refLayout->setContentsMargins(0, 0, 0, 0);
    refLayout->setSpacing(3);
    LbxRef = new DataGridView(&Grids::LbxRef(), fraTab1_Ref);
    LbxRef->setObjectName(QStringLiteral("LbxRef"));
    refLayout->addWidget(LbxRef, 1);
    auto* refStatus = new QHBoxLayout;
    txtTab1_FTagRef = new QLineEdit(fraTab1_Ref);
    txtTab1_FTagRef->setObjectName(QStringLiteral("txtTab1_FTagRef"));
    txtTab1_FTagRef->setMaximumWidth(140);
    txtTab1_FTagRef->setClearButtonEnabled(true);
    lblTab1_TimeSizeMarkedRef = new QLabel(fraTab1_Ref);
    lblTab1_TimeSizeMarkedRef->setObjectName(QStringLiteral("lblTab1_TimeSizeMarkedRef"));
    lblTab1_TimeSizeMarkedRef->setFrameShape(QFrame::StyledPanel);
    refStatus->addWidget(txtTab1_FTagRef);
    refStatus->addWidget(lblTab1_TimeSizeMarkedRef, 1);
    m_refStatus = refStatus;
    refLayout->addLayout(refStatus);
    splTab1_Lists->addWidget(fraTab1_Ref);
    splTab1_Lists->setStretchFactor(0, 3);
    splTab1_Lists->setStretchFactor(1, 2);
    fraTab1_Ref->hide();

    auto button = [this](const char* name) {
        auto* b = new QPushButton(this);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    btnTab1_ToggleRef = button("btnTab1_ToggleRef");
    btnTab1_RefCheckPath = button("btnTab1_RefCheckPath");
    btnTab1_MarkMatches = button("btnTab1_MarkMatches");
    btnTab1_RefRemoveRemark = button("btnTab1_RefRemoveRemark");
    btnTab1_DeleteRefRows = button("btnTab1_DeleteRefRows");
    btnTab1_ClearReflist = button("btnTab1_ClearReflist");
    optTab1_Match_R_D = new QRadioButton(this);
    optTab1_Match_R_D->setObjectName(QStringLiteral("optTab1_Match_R_D"));
    optTab1_Match_D_R = new QRadioButton(this);
    optTab1_Match_D_R->setObjectName(QStringLiteral("optTab1_Match_D_R"));
    optTab1_Match_R_D->setChecked(true);
    auto box = [this](const char* name) {
        auto* b = new QCheckBox(this);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    chbTab1_RefD = box("chbTab1_RefD");
    btnTab1_RefOK = button("btnTab1_RefOK");
    // The two pairs of options are groups of their own.
    auto* replaceFrame = new QWidget(this);
    optTab1_R_D = new QRadioButton(replaceFrame);
    optTab1_R_D->setObjectName(QStringLiteral("optTab1_R_D"));
    optTab1_D_R = new QRadioButton(replaceFrame);
    optTab1_D_R->setObjectName(QStringLiteral("optTab1_D_R"));
    optTab1_D_R->setChecked(true);
    auto* replaceOptions = new QVBoxLayout(replaceFrame);
    replaceOptions->setContentsMargins(0, 0, 0, 0);
    replaceOptions->setSpacing(3);
    replaceOptions->addWidget(optTab1_R_D);
    replaceOptions->addWidget(optTab1_D_R);
    // Options of one parent form one group, the options in its frames included: each
    // pair gets a group of its own, so that neither takes the other's check or Tab stop.
    for (QRadioButton* pair : {optTab1_Match_R_D, optTab1_R_D}) {
        auto* group = new QButtonGroup(this);
        group->addButton(pair);
        group->addButton(pair == optTab1_R_D ? optTab1_D_R : optTab1_Match_D_R);
    }
    chbTab1_KeepFilename = box("chbTab1_KeepFilename");
    chbTab1_KeepTags = box("chbTab1_KeepTags");
    btnTab1_RefFTagBlue = button("btnTab1_RefFTagBlue");
    btnTab1_RemoveRefFtag = button("btnTab1_RemoveRefFtag");
    btnTab1_RefHighlight_T = button("btnTab1_RefHighlight_T");
    chbTab1_RefFTag = box("chbTab1_RefFTag");
    chbTab1_RefFTag->setChecked(true);
    m_refStatus->insertWidget(1, chbTab1_RefFTag);
    btnTab1_RefExport = button("btnTab1_RefExport");

    // Three columns: the list and its rows, matches and marks, replacing and export.
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setVerticalSpacing(3);
    int row = 0;
    for (QWidget* w :
         {static_cast<QWidget*>(btnTab1_ToggleRef), static_cast<QWidget*>(btnTab1_RefCheckPath),
          static_cast<QWidget*>(chbTab1_RefD), static_cast<QWidget*>(btnTab1_RefRemoveRemark),
          static_cast<QWidget*>(btnTab1_DeleteRefRows), static_cast<QWidget*>(btnTab1_ClearReflist)})
        grid->addWidget(w, row++, 0);
    row = 0;
    for (QWidget* w :
         {static_cast<QWidget*>(btnTab1_MarkMatches), static_cast<QWidget*>(optTab1_Match_R_D),
          static_cast<QWidget*>(optTab1_Match_D_R), static_cast<QWidget*>(btnTab1_RefFTagBlue),
          static_cast<QWidget*>(btnTab1_RemoveRefFtag), static_cast<QWidget*>(btnTab1_RefHighlight_T)})
        grid->addWidget(w, row++, 1);
    grid->addWidget(btnTab1_RefOK, 0, 2);
    grid->addWidget(replaceFrame, 1, 2, 2, 1);
    grid->addWidget(chbTab1_KeepFilename, 3, 2);
    grid->addWidget(chbTab1_KeepTags, 4, 2);
    grid->addWidget(btnTab1_RefExport, 5, 2);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(6, 1);

    SumTarget sums = DefaultSumTarget(SumList::Ref);
    sums.grid = &Grids::LbxRef();
    sums.markBox = [this] { return txtTab1_FTagRef->text(); };
    sums.setLabel = [this](const QString& text) { lblTab1_TimeSizeMarkedRef->setText(text); };
    RegisterSumTarget(SumList::Ref, sums);
    connect(&Grids::LbxRef(), &DataGrid::selectionChanged, this, [this] {
        if (!State().SuppressEvents)
            ShowSums();
    });
    connect(txtTab1_FTagRef, &QLineEdit::textChanged, this, [this] { ShowSums(); });
    // Every change of the rows brings the footers up to date.
    connect(&Grids::LbxRef(), &DataGrid::rowsReset, this, [] { ShowRefTotals(Grids::LbxRef()); });

    connect(btnTab1_ToggleRef, &QPushButton::clicked, this, [this] { ShowRefList(!RefListShown()); });
    connect(btnTab1_RefCheckPath, &QPushButton::clicked, this, &RefPanel::RefCheckPathClick);
    connect(btnTab1_MarkMatches, &QPushButton::clicked, this, &RefPanel::MarkMatchesClick);
    connect(btnTab1_RefRemoveRemark, &QPushButton::clicked, this,
            [] { RefRemoveRemarks(Grids::LbxRef(), AppPrompt()); });
    connect(btnTab1_DeleteRefRows, &QPushButton::clicked, this, [this] {
        DeleteRefRows(Grids::LbxRef(), txtTab1_FTagRef->text(), AppPrompt());
        ShowSums();
    });
    connect(btnTab1_ClearReflist, &QPushButton::clicked, this, [this] {
        ClearReflist(Grids::LbxRef(), AppPrompt());
        ShowSums();
    });
    connect(btnTab1_RefOK, &QPushButton::clicked, this, &RefPanel::RefOKClick);
    auto env = [this] { return InputListEnv(m_page, m_progress); };
    connect(btnTab1_RefFTagBlue, &QPushButton::clicked, this, [this, env] {
        ::btnTab1_FTagBlue(Grids::LbxRef(), txtTab1_FTagRef->text(), m_page->chbTab1_NoMsg->isChecked(),
                           env(), SumList::Ref);
    });
    connect(btnTab1_RemoveRefFtag, &QPushButton::clicked, this, [this, env] {
        ::btnTab1_RemoveFtag(Grids::LbxRef(), txtTab1_FTagRef->text(), env(), SumList::Ref);
    });
    connect(btnTab1_RefHighlight_T, &QPushButton::clicked, this, [this] {
        if (!ListNotEmpty(Grids::LbxRef(), AppPrompt()))
            return;
        RefHighlightFound(Grids::LbxRef());
        ShowSums();
    });
    connect(chbTab1_RefFTag, &QCheckBox::toggled, this,
            [](bool on) { ShowRefMarkColumn(Grids::LbxRef(), on); });
    // A column choice made elsewhere (the column window, a pattern) shows in the box.
    connect(&Grids::LbxRef(), &DataGrid::columnsChanged, this, [this] {
        const QSignalBlocker quiet(chbTab1_RefFTag);
        chbTab1_RefFTag->setChecked(RefMarkColumnShown(Grids::LbxRef()));
    });
    connect(btnTab1_RefExport, &QPushButton::clicked, this, &RefPanel::ExportClick);
    LbxRef->table()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(LbxRef->table(), &QWidget::customContextMenuRequested, this, &RefPanel::ShowListMenu);
}

void RefPanel::DefineColumns() {
    DefineRefColumns(Grids::LbxRef());
    const QString widths = UserStore().value(kWidthsKey).toString();
    if (!widths.isEmpty())
        LbxRef->SetColumnWidthsText(widths);
    LbxRef->SetMinWidthsFromCaptions(3);
    ShowRefTotals(Grids::LbxRef());
}

void RefPanel::SaveColumnWidths() const {
    QSettings s = UserStore();
    s.setValue(kWidthsKey, LbxRef->ColumnWidthsText());
}

void RefPanel::SetColumnCaptions() {
    SetRefColumnCaptions(Grids::LbxRef());
}

void RefPanel::ShowRefList(bool shown) {
    fraTab1_Ref->setVisible(shown);
}

bool RefPanel::RefListShown() const {
    return !fraTab1_Ref->isHidden();
}

void RefPanel::ShowSums() {
    if (txtTab1_FTagRef->text().isEmpty())
        ShowSelectionSum(SumList::Ref);
    else
        ShowMarkedSum(SumList::Ref);
}

void RefPanel::CopyToReflist() {
    CopyToRefOptions o;
    o.keepDoubles = chbTab1_RefD->isChecked();
    o.markFilter = m_page->txtTab1_FTag->text();
    o.noMsg = m_page->chbTab1_NoMsg->isChecked();
    if (::CopyToReflist(Grids::LbxInput(), Grids::LbxRef(), o, InputListEnv(m_page, m_progress)) < 0)
        return;
    ShowRefList(true);
    InputDataPage::SelectSubTab(m_page->TabInput1_Sub1, SubTab::Compare);
    ShowSums();
}

QString RefPanel::DefaultChooseFile(int item) {
    EnsureRefListFolder();
    const QString title = Caption(CapRefListFilter);
    const QString filter = Caption(CapRefListFilter) + QStringLiteral(" (*.ref)");
    const QString start = RefListStartFolder();
    if (item == 3) {
        const QString tag = Grids::LbxRef().Tag;
        return QFileDialog::getSaveFileName(this, title, tag.isEmpty() ? start : tag, filter);
    }
    if (item == 4)
        return QFileDialog::getOpenFileName(this, title, start, filter);
    QFileDialog dialog(window(), title, start, filter);
    dialog.setObjectName(QStringLiteral("dlgDeleteRefList"));
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setLabelText(QFileDialog::Accept, Caption(CapDeleteButton));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().constFirst();
}

void RefPanel::HandleFileCommand(int item) {
    DataGrid& ref = Grids::LbxRef();
    Prompt& prompt = AppPrompt();
    const bool noMsg = m_page->chbTab1_NoMsg->isChecked();
    if (item == 3 && !ListNotEmpty(ref, prompt))
        return;
    const QString path = chooseFile ? chooseFile(item) : DefaultChooseFile(item);
    if (path.isEmpty())
        return; // cancelled
    RememberRefListFolder(path);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    if (item == 3) {
        SaveRefList(ref, path, noMsg, prompt);
    } else if (item == 4) {
        if (LoadRefList(ref, path, prompt))
            ShowRefList(true);
    } else if (item == 5) {
        DeleteRefList(path, noMsg, prompt);
    }
    QApplication::restoreOverrideCursor();
    ShowSums();
}

void RefPanel::RefCheckPathClick() {
    DataGrid& ref = Grids::LbxRef();
    if (!ListNotEmpty(ref, AppPrompt()))
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    RefCheckPath(ref);
    QApplication::restoreOverrideCursor();
}

void RefPanel::MarkMatchesClick() {
    DataGrid& ref = Grids::LbxRef();
    DataGrid& input = Grids::LbxInput();
    Prompt& prompt = AppPrompt();
    if (!ListNotEmpty(ref, prompt) || !ListNotEmpty(input, prompt))
        return;
    MatchOptions o;
    o.direction = optTab1_Match_D_R->isChecked() ? MatchDirection::DataToRef : MatchDirection::RefToData;
    o.dataMarkFilter = m_page->txtTab1_FTag->text();
    o.refMarkFilter = txtTab1_FTagRef->text();
    o.noMsg = m_page->chbTab1_NoMsg->isChecked();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    MarkMatches(input, ref, o, prompt);
    QApplication::restoreOverrideCursor();
    m_page->ShowSums();
    ShowSums();
}

void RefPanel::RefOKClick() {
    ReplaceOptions o;
    o.direction = optTab1_R_D->isChecked() ? ReplaceDirection::FromReference : ReplaceDirection::FromData;
    o.keepFilename = chbTab1_KeepFilename->isChecked();
    o.keepTags = chbTab1_KeepTags->isChecked();
    o.noMsg = m_page->chbTab1_NoMsg->isChecked();
    o.paperbin = PaperbinSetting(Settings());
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const ReplaceResult r = RefReplace(Grids::LbxInput(), Grids::LbxRef(), o, AppPrompt());
    QApplication::restoreOverrideCursor();
    if (r.done && o.direction == ReplaceDirection::FromReference)
        m_page->ShowSums();
    ShowSums();
}

void RefPanel::ExportClick() {
    const DataGrid& ref = Grids::LbxRef();
    if (!CheckExportable(ref, AppPrompt()))
        return;
    const QString preset = Setting(Ini::PresetPathExport, Ini::Col1);
    const QString start = ExportStartFolder(Settings(), preset, ExportFolders::RefList);
    const QString path = chooseExportFile ? chooseExportFile(start) : RunExportDialog(window(), start);
    if (path.isEmpty())
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ExportRefList(ref, path, Settings(), m_page->chbTab1_NoMsg->isChecked(), AppPrompt(), preset);
    QApplication::restoreOverrideCursor();
}

FrmShowColumnRef* RefPanel::ShowColumnWindow() {
    if (!m_showColumn)
        m_showColumn = new FrmShowColumnRef(Grids::LbxRef(), window());
    return m_showColumn;
}

void RefPanel::ShowListMenu(const QPoint& at) {
    DataGrid& list = Grids::LbxRef();
    RefMenuState state;
    state.rows = list.Rows();
    const std::vector<int> sel = list.SelectedRows();
    state.highlighted = int(sel.size());
    state.marks << MarkText(txtTab1_FTagRef->text());
    for (int r = Ini::SignFirst; r <= Ini::SignLast; ++r)
        state.marks << Settings().CellText(r, Ini::SignCol);
    for (int r : sel) {
        const QString mark = list.CellText(r, RefCol::FTag);
        if (!mark.isEmpty() && !state.presentMarks.contains(mark))
            state.presentMarks << mark;
    }
    state.directEdit = m_directEdit && m_directEdit->isChecked();
    for (int r = 1; r <= state.rows && !state.anyFound; ++r)
        state.anyFound = !list.CellView(r, RefCol::TF).isEmpty();
    state.hasPreset = !Setting(Ini::ShowColumnRefPattern, Ini::Col1).isEmpty();
    state.hasCurrentRow = list.CurRow() >= 1 && list.CurRow() <= state.rows;
    ContextMenuEntries entries = BuildRefMenu(state, &RefMenuCaption);
    if (!m_directEdit)
        entries.DisableKeys({QStringLiteral("dEditOn"), QStringLiteral("dEditOff")});
    if (!windowMenuKey)
        entries.DisableKeys({QStringLiteral("Copy"), QStringLiteral("Move"), QStringLiteral("Delete")});
    const QString key = ExecContextMenu(
        LbxRef->table(), entries, LbxRef->table()->viewport()->mapToGlobal(at), QStringLiteral("mnuRef"));
    RunMenuKey(key, state);
}

void RefPanel::RunMenuKey(const QString& key, const RefMenuState& state) {
    if (key.isEmpty())
        return;
    DataGrid& list = Grids::LbxRef();
    int n = -1;
    if (key == QLatin1String("play") || key == QLatin1String("play1") || key == QLatin1String("play2") ||
        key == QLatin1String("play3")) {
        PlayEnv play(AppPrompt());
        play.noMsg = m_page->chbTab1_NoMsg->isChecked();
        const bool save = key == QLatin1String("play2") || key == QLatin1String("play3");
        PlayHighlightedRows(list, true, save, key != QLatin1String("play2"), play);
    } else if (key == QLatin1String("HighlightAll")) {
        ::btnTab1_HighlightAll(list, InputListEnv(m_page, m_progress), SumList::Ref);
    } else if (PrintMenuKey(this, key, list, txtTab1_FTagRef->text())) {
        // printed
    } else if (key == QLatin1String("RemMarkAll")) {
        RemoveMarkOfSelected(list, RefCol::FTag, QString(), true);
        ShowSums();
    } else if ((n = MenuKeyNumber(key, QStringLiteral("RemMark"))) >= 0) {
        RemoveMarkOfSelected(list, RefCol::FTag, state.presentMarks.value(n), false);
        ShowSums();
    } else if ((n = MenuKeyNumber(key, QStringLiteral("Mark"))) >= 0) {
        if (!state.marks.value(n).isEmpty())
            WriteMarkToSelected(list, RefCol::FTag, state.marks.value(n));
        ShowSums();
    } else if (key == QLatin1String("optCol") || key == QLatin1String("ColsFrm")) {
        ShowColumnWindow()->Open();
    } else if (key == QLatin1String("ColsAll")) {
        ApplyRefPattern(list, QString(list.Cols(), u'1'));
    } else if (key == QLatin1String("ColsPreset")) {
        ApplyRefPattern(list, Setting(Ini::ShowColumnRefPattern, Ini::Col1));
    } else if (key == QLatin1String("Rem_F")) {
        ClearFoundRemarks(list);
    } else if (key == QLatin1String("CMD")) {
        const int r = list.CurRow();
        if (r >= 1 && r <= list.Rows())
            TheShell().Open(list.CellText(r, RefCol::Path));
    } else if ((key == QLatin1String("dEditOn") || key == QLatin1String("dEditOff")) && m_directEdit) {
        m_directEdit->setChecked(key == QLatin1String("dEditOn"));
    } else if (windowMenuKey) {
        windowMenuKey(key);
    }
}

void RefPanel::SetDirectEditBox(QCheckBox* box) {
    m_directEdit = box;
    connect(box, &QCheckBox::toggled, this, [this](bool on) {
        if (!on) {
            LbxRef->SetCellEditing({}, {});
            return;
        }
        // Remark and mark are the list's own; the other cells describe the file.
        LbxRef->SetCellEditing([](int, int col) { return col == RefCol::Remark || col == RefCol::FTag; },
                               [](int, int, QString&) { return true; });
    });
}

#include "app/ScanPanel.h"

#include "app/ListProgressBar.h"

#include "app/DataGridView.h"
#include "app/FolderPanel.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/modFolderRows.h"
#include "list/modList.h"
#include "list/modRefresh.h"
#include "list/modSavedLists.h"
#include "tag/TagEngine.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <memory>

namespace {

constexpr int kProgressHeight = 22;

// Restores the cursor and the enabled state of the data area however a command ends.
struct BusyGuard {
    QWidget* a;
    QWidget* b;
    QWidget* c;
    BusyGuard(QWidget* x, QWidget* y, QWidget* z) : a(x), b(y), c(z) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        for (QWidget* w : {a, b, c})
            w->setEnabled(false);
    }
    ~BusyGuard() {
        for (QWidget* w : {a, b, c})
            w->setEnabled(true);
        QApplication::restoreOverrideCursor();
    }
};

} // namespace

ScanPanel* ScanPanel::Install(InputDataPage* page, ListProgressBar* progress) {
    auto* panel = new ScanPanel(page, progress);
    page->AddSubTab(page->TabInput1_Sub1, panel, QStringLiteral("pagTab1_Read"), SubTab::Read);
    page->TabInput1_Sub1->setCurrentWidget(panel);
    return panel;
}

ScanPanel::ScanPanel(InputDataPage* page, ListProgressBar* progress, QWidget* parent)
    : QWidget(parent), m_page(page), m_progress(progress) {
    // The folder pane goes left of the list, in a splitter; it starts closed.
    folders = new FolderPanel;
    splitter = new QSplitter(Qt::Horizontal);
    splitter->setObjectName(QStringLiteral("splTab1_Folders"));
    const int at = page->body()->indexOf(page->LbxInput);
    page->body()->removeWidget(page->LbxInput);
    splitter->addWidget(folders);
    splitter->addWidget(page->LbxInput);
    splitter->setStretchFactor(1, 1);
    splitter->setCollapsible(1, false);
    page->body()->insertWidget(at < 0 ? 0 : at, splitter, 1);
    folders->hide();

    btnTab1_GetFiles = new QPushButton(this);
    btnTab1_GetFiles->setObjectName(QStringLiteral("btnTab1_GetFiles"));
    btnTab1_GetFiles->setDefault(true);
    btnTab1_UpdateData = new QPushButton(this);
    btnTab1_UpdateData->setObjectName(QStringLiteral("btnTab1_UpdateData"));
    btnTab1_RefreshData = new QPushButton(this);
    btnTab1_RefreshData->setObjectName(QStringLiteral("btnTab1_RefreshData"));
    chbTab1_SubFolders = new QCheckBox(this);
    chbTab1_SubFolders->setObjectName(QStringLiteral("chbTab1_SubFolders"));
    chbTab1_Attach = new QCheckBox(this);
    chbTab1_Attach->setObjectName(QStringLiteral("chbTab1_Attach"));
    chbTab1_CheckCharacters = new QCheckBox(this);
    chbTab1_CheckCharacters->setObjectName(QStringLiteral("chbTab1_CheckCharacters"));
    chbTab1_UseChecklist = new QCheckBox(this);
    chbTab1_UseChecklist->setObjectName(QStringLiteral("chbTab1_UseChecklist"));
    chbTab1_Act = new QCheckBox(this);
    chbTab1_Act->setObjectName(QStringLiteral("chbTab1_Act"));
    for (int i = 0; i < 2; ++i) {
        txtTab1_Searchstring_ArtistTitle[i] = new QLineEdit(this);
        txtTab1_Searchstring_ArtistTitle[i]->setObjectName(
            QStringLiteral("txtTab1_Searchstring_ArtistTitle(%1)").arg(i));
        txtTab1_Searchstring_ArtistTitle[i]->setClearButtonEnabled(true);
        txtTab1_Searchstring_ArtistTitle[i]->setEnabled(false);
    }
    btnTab1_HandleFileInput = new QComboBox(this);
    btnTab1_HandleFileInput->setObjectName(QStringLiteral("btnTab1_HandleFileInput"));
    for (int i = 0; i < 6; ++i)
        btnTab1_HandleFileInput->addItem(QString());
    btnTab1_HandleFileInput->setCurrentIndex(-1);
    // The closed box names its purpose: its caption arrives as the widget's title.
    connect(btnTab1_HandleFileInput, &QWidget::windowTitleChanged, btnTab1_HandleFileInput,
            &QComboBox::setPlaceholderText);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->addWidget(btnTab1_GetFiles, 0, 0);
    grid->addWidget(chbTab1_SubFolders, 0, 1);
    grid->addWidget(chbTab1_Attach, 0, 2);
    grid->addWidget(btnTab1_HandleFileInput, 0, 4);
    grid->addWidget(btnTab1_UpdateData, 1, 0);
    grid->addWidget(chbTab1_CheckCharacters, 1, 1);
    grid->addWidget(chbTab1_UseChecklist, 1, 2);
    grid->addWidget(chbTab1_Act, 1, 4);
    grid->addWidget(btnTab1_RefreshData, 2, 0);
    grid->addWidget(txtTab1_Searchstring_ArtistTitle[0], 2, 1);
    grid->addWidget(txtTab1_Searchstring_ArtistTitle[1], 2, 2);
    grid->setColumnStretch(3, 1);
    // Tab order follows the reading of a scan: what to read, then which files, then lists.
    const QList<QWidget*> order = {btnTab1_GetFiles,
                                   chbTab1_SubFolders,
                                   chbTab1_Attach,
                                   btnTab1_UpdateData,
                                   btnTab1_RefreshData,
                                   chbTab1_CheckCharacters,
                                   txtTab1_Searchstring_ArtistTitle[0],
                                   txtTab1_Searchstring_ArtistTitle[1],
                                   chbTab1_UseChecklist,
                                   btnTab1_HandleFileInput,
                                   chbTab1_Act};
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);

    // The one progress bar of the data list, with its cancel button, is shared with the
    // other commands of the list.
    prgBar = progress->prgBar;
    btnTab1_Abort = progress->btnTab1_Abort;

    connect(btnTab1_GetFiles, &QPushButton::clicked, this, &ScanPanel::btnTab1_GetFiles_Click);
    connect(btnTab1_Abort, &QPushButton::clicked, this, &ScanPanel::btnTab1_Abort_Click);
    connect(btnTab1_UpdateData, &QPushButton::clicked, this, &ScanPanel::btnTab1_UpdateData_Click);
    connect(btnTab1_RefreshData, &QPushButton::clicked, this, &ScanPanel::btnTab1_RefreshData_Click);
    connect(btnTab1_HandleFileInput, &QComboBox::activated, this, [this](int i) {
        btnTab1_HandleFileInput->setCurrentIndex(-1);
        btnTab1_HandleFileInput_Click(i);
    });
    connect(folders, &FolderPanel::closeRequested, this, &ScanPanel::CloseFolderPane);
    connect(folders, &FolderPanel::readFolderRequested, this, &ScanPanel::btnTab1_GetFiles_Click);
    // The rows of one folder: with the sub-folder switch, those of the folders below it too.
    folders->rowsOfFolder = [this](const QString& folder) {
        return int(RowsOfFolder(Grids::LbxInput(), folder, chbTab1_SubFolders->isChecked()).size());
    };
    connect(folders, &FolderPanel::removeRowsRequested, this, [this](const QString& folder) {
        RemoveRowsOfFolder(Grids::LbxInput(), folder, chbTab1_SubFolders->isChecked(),
                           InputListEnv(m_page, m_progress));
    });
    connect(folders, &FolderPanel::rereadRowsRequested, this, [this](const QString& folder) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        const RereadResult r =
            RereadRowsOfFolder(Grids::LbxInput(), folder, chbTab1_SubFolders->isChecked(),
                               TagEngine::Shared(), NumberDigits(), InputListEnv(m_page, m_progress));
        QApplication::restoreOverrideCursor();
        if (r.failed > 0)
            AppPrompt().Tell(CountText(CapFailedCount, r.failed), Prompt::Icon::Critical);
    });
    connect(chbTab1_CheckCharacters, &QCheckBox::toggled, this, [this](bool on) {
        const bool boxes = on && !chbTab1_UseChecklist->isChecked();
        for (QLineEdit* e : txtTab1_Searchstring_ArtistTitle)
            e->setEnabled(boxes);
        chbTab1_UseChecklist->setEnabled(on);
    });
    connect(chbTab1_UseChecklist, &QCheckBox::toggled, this, [this](bool on) {
        const bool boxes = chbTab1_CheckCharacters->isChecked() && !on;
        for (QLineEdit* e : txtTab1_Searchstring_ArtistTitle)
            e->setEnabled(boxes);
    });
    chbTab1_UseChecklist->setEnabled(false);
    // The sub-folder switch is kept: the next start begins as the user left it.
    connect(chbTab1_SubFolders, &QCheckBox::toggled, this, [](bool on) {
        if (!State().SuppressEvents)
            SetSettingOn(Ini::PresetSubfolder, Ini::Col1, on);
    });
}

// ---- folder pane ----------------------------------------------------------------------

bool ScanPanel::FolderPaneOpen() const {
    return !folders->isHidden() && folders->width() > 0;
}

void ScanPanel::OpenFolderPane() {
    folders->show();
    if (folders->Drive1->count() == 0)
        folders->ApplySettings(AppPrompt());
    const int total = std::max(splitter->width(), 400);
    splitter->setSizes({m_lastSplitterWidth, total - m_lastSplitterWidth});
    folders->ScrollToStart();
    folders->Folderview->setFocus();
}

void ScanPanel::CloseFolderPane() {
    if (folders->width() > 0)
        m_lastSplitterWidth = folders->width();
    folders->hide();
}

// ---- progress --------------------------------------------------------------------------

void ScanPanel::ShowProgress(int max, bool keepButtons) {
    m_progress->ShowProgress(max, keepButtons ? -1 : 0);
    if (!keepButtons) {
        btnTab1_Abort->setEnabled(true);
        folders->btnTab1_CloseFolderview->hide();
    }
}

void ScanPanel::HideProgress() {
    m_progress->HideProgress();
    folders->btnTab1_CloseFolderview->show();
}

ScanHooks ScanPanel::WindowHooks() {
    // The event queue runs between two files, but painting is what costs: the bar and
    // the footer are painted again at most every kPaintMs, so that a window scan of
    // 100,000 small files takes hardly longer than one without a window. The abort flag
    // is still tested after every file.
    constexpr qint64 kPumpMs = 10;
    constexpr qint64 kPaintMs = 50;
    auto clock = std::make_shared<QElapsedTimer>();
    clock->start();
    auto lastPump = std::make_shared<qint64>(-kPumpMs);
    auto lastBar = std::make_shared<qint64>(-kPaintMs);
    auto lastFooter = std::make_shared<qint64>(-kPaintMs);
    ScanHooks h;
    h.pump = [clock, lastPump] {
        const qint64 now = clock->elapsed();
        if (now - *lastPump < kPumpMs)
            return;
        *lastPump = now;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    };
    h.showProgress = [this, lastBar](int max) {
        *lastBar = -kPaintMs;
        ShowProgress(max, false);
    };
    h.setProgress = [this, clock, lastBar](int v) {
        const qint64 now = clock->elapsed();
        if (now - *lastBar < kPaintMs && v + 1 < prgBar->maximum())
            return;
        *lastBar = now;
        prgBar->setValue(v);
    };
    h.hideProgress = [this] { HideProgress(); };
    // The list is locked while it fills: only its footer is painted again.
    h.progressText = [this, clock, lastFooter](const QString&) {
        const qint64 now = clock->elapsed();
        if (now - *lastFooter < kPaintMs)
            return;
        *lastFooter = now;
        m_page->LbxInput->footer()->update();
    };
    h.listCleared = [this] {
        btnTab1_GetFiles->setToolTip(UiText(btnTab1_GetFiles->objectName(), QStringLiteral("tooltip")));
    };
    return h;
}

// ---- options ---------------------------------------------------------------------------

DataGrid& ScanPanel::Checklist() {
    if (!m_checklist)
        m_checklist = new DataGrid(this);
    ChecklistFromSettings(*m_checklist);
    return *m_checklist;
}

ScanOptions ScanPanel::Options() {
    ScanOptions o;
    o.subFolders = chbTab1_SubFolders->isChecked();
    o.attach = chbTab1_Attach->isChecked();
    o.checkCharacters = chbTab1_CheckCharacters->isChecked();
    o.useChecklist = chbTab1_UseChecklist->isChecked();
    o.artistSearch = txtTab1_Searchstring_ArtistTitle[0]->text();
    o.titleSearch = txtTab1_Searchstring_ArtistTitle[1]->text();
    if (o.checkCharacters && o.useChecklist)
        o.checklist = &Checklist();
    return o;
}

void ScanPanel::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    chbTab1_SubFolders->setChecked(SettingOn(Ini::PresetSubfolder, Ini::Col1));
    State().SuppressEvents = quiet;
    // The volume list and the tree are set at the start, with the pane still closed, so
    // that a stored folder that is gone is told at once.
    folders->ApplySettings(AppPrompt());
}

void ScanPanel::SetListCommandsEnabled(bool on) {
    m_page->TabInput1_Sub2->setEnabled(on);
}

void ScanPanel::PublishValueLists(const ScanResult& r) {
    ratingValues = r.ratings;
    moodValues = r.moods;
    emit valueListsChanged(ratingValues, moodValues);
}

// ---- commands --------------------------------------------------------------------------

void ScanPanel::btnTab1_GetFiles_Click() {
    if (State().ScanRunning)
        return;
    if (!FolderPaneOpen()) {
        OpenFolderPane(); // the first press only shows the tree
        return;
    }
    Prompt& prompt = AppPrompt();
    const QString path = folders->SelectedFolder();
    if (path.isEmpty()) {
        prompt.Tell(Caption(CapNoFolderChosen), Prompt::Icon::Information);
        folders->Folderview->setFocus();
        return;
    }
    const bool check = chbTab1_CheckCharacters->isChecked();
    const bool useList = chbTab1_UseChecklist->isChecked();
    if (check && !useList && txtTab1_Searchstring_ArtistTitle[0]->text().trimmed().isEmpty() &&
        txtTab1_Searchstring_ArtistTitle[1]->text().trimmed().isEmpty()) {
        prompt.Tell(Caption(CapNoSearchText), Prompt::Icon::Information);
        txtTab1_Searchstring_ArtistTitle[0]->setFocus();
        return;
    }
    if (useList) {
        DataGrid& chk = Checklist();
        if (chk.Rows() == 0 || chk.CellView(1, 1).isEmpty()) {
            prompt.Tell(Caption(CapCheckListEmpty), Prompt::Icon::Information);
            return;
        }
    }
    DataGrid& list = Grids::LbxInput();
    if (list.Cols() >= InCol::FileName && list.Column(InCol::FileName).width < 3000)
        list.SetColumnWidth(InCol::FileName, 3000);
    {
        BusyGuard busy(m_page->TabInput1_Sub1, m_page->TabInput1_Sub2, folders);
        lastResult = ScanFolder(list, path, Options(), TagEngine::Shared(), WindowHooks());
    }
    PublishValueLists(lastResult);
    if (SettingOn(Ini::CloseFolderView, Ini::Col1) && FolderPaneOpen())
        CloseFolderPane();
    if (m_progress->isVisible())
        HideProgress();
    const bool rows = list.Rows() > 0;
    SetListCommandsEnabled(rows);
    if (rows) {
        m_page->LbxInput->SetMinWidthsFromCaptions(InCol::FileName);
        list.DoColumnAutoSize(InCol::FileName);
    }
    m_page->LbxInput->table()->setFocus();
    emit scanFinished();
}

void ScanPanel::btnTab1_Abort_Click() {
    State().AbortRequested = true;
    btnTab1_Abort->setEnabled(false);
}

void ScanPanel::btnTab1_UpdateData_Click() {
    if (State().ScanRunning)
        return;
    {
        BusyGuard busy(m_page->TabInput1_Sub1, m_page->TabInput1_Sub2, folders);
        lastResult = ::btnTab1_UpdateData(Grids::LbxInput(), TagEngine::Shared(), AppPrompt(), WindowHooks());
    }
    if (m_progress->isVisible())
        HideProgress();
    PublishValueLists(lastResult);
    m_page->LbxInput->table()->setFocus();
    emit scanFinished();
}

void ScanPanel::btnTab1_RefreshData_Click() {
    if (State().ScanRunning)
        return;
    RefreshResult r;
    {
        BusyGuard busy(m_page->TabInput1_Sub1, m_page->TabInput1_Sub2, folders);
        r = RefreshChanged(Grids::LbxInput(), TagEngine::Shared(), AppPrompt(), WindowHooks());
    }
    if (m_progress->isVisible())
        HideProgress();
    ScanResult values;
    values.ratings = r.ratings;
    values.moods = r.moods;
    PublishValueLists(values);
    m_page->LbxInput->table()->setFocus();
    TellRefreshResult(r, m_page->chbTab1_NoMsg->isChecked(), AppPrompt());
    emit scanFinished();
}

QString ScanPanel::PickListFile(int action) {
    if (chooseListFile)
        return chooseListFile(action);
    EnsureSavedListFolder();
    const QString title = Caption(CapDataListFilter);
    if (action == 0)
        return QFileDialog::getSaveFileName(this, title, SavedListFolder(), SavedListFilter());
    if (action == 1)
        return QFileDialog::getOpenFileName(this, title, SavedListFolder(), SavedListFilter());
    // Deleting: the button of the dialogue says what it does.
    QFileDialog dialog(window(), title, SavedListFolder(), SavedListFilter());
    dialog.setObjectName(QStringLiteral("dlgDeleteList"));
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setLabelText(QFileDialog::Accept, Caption(CapDeleteButton));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().constFirst();
}

void ScanPanel::btnTab1_HandleFileInput_Click(int item) {
    if (item >= 3) {
        emit refListCommand(item);
        return;
    }
    if (item < 0)
        return;
    const QString path = PickListFile(item);
    if (path.isEmpty())
        return; // cancelled
    Prompt& prompt = AppPrompt();
    DataGrid& list = Grids::LbxInput();
    SavedListOptions o;
    o.noMsg = m_page->chbTab1_NoMsg->isChecked();
    o.refreshFromFiles = chbTab1_Act->isChecked();
    if (item == 0) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        SaveList(list, path, o, prompt);
        QApplication::restoreOverrideCursor();
    } else if (item == 1) {
        SavedListHooks hooks;
        hooks.updateList = [&] {
            lastResult = UpdateList(list, TagEngine::Shared(), prompt, WindowHooks());
            HideProgress();
        };
        hooks.rebuildValueLists = [&] {
            ScanResult r;
            RebuildValueLists(list, r.ratings, r.moods);
            PublishValueLists(r);
        };
        hooks.showTotals = [] { ShowTotals(); };
        QApplication::setOverrideCursor(Qt::WaitCursor);
        LoadList(list, path, o, hooks, prompt);
        QApplication::restoreOverrideCursor();
        SetListCommandsEnabled(list.Rows() > 0);
        emit scanFinished();
    } else if (item == 2) {
        DeleteList(path, prompt);
    }
}

#include "app/FrmInput.h"

#include "app/DataGridView.h"
#include "app/FilesPanel.h"
#include "app/FindFilterPanel.h"
#include "app/FolderPanel.h"
#include "app/FrmCap.h"
#include "app/FrmPictures.h"
#include "app/FrmPlaylist.h"
#include "app/FrmPreferences.h"
#include "app/FrmSText.h"
#include "app/FrmShowColumn.h"
#include "app/FrmShowColumnRef.h"
#include "app/FrmSongtext.h"
#include "app/FrmTag.h"
#include "app/FrmTexte.h"
#include "app/InputDataPage.h"
#include "app/InputListMenu.h"
#include "app/InputShortcuts.h"
#include "app/ListProgressBar.h"
#include "app/ListsPanel.h"
#include "app/MarksPanel.h"
#include "app/MessageBoxPrompt.h"
#include "app/Mnemonics.h"
#include "app/PlayerPanel.h"
#include "app/QuitKey.h"
#include "app/RefPanel.h"
#include "app/RenamePanel.h"
#include "app/ScanPanel.h"
#include "app/UiCaptions.h"
#include "app/WindowPlace.h"
#include "app/WindowShortcuts.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/Settings.h"
#include "list/modColumnPatterns.h"
#include "list/modList.h"
#include "list/modListColumns.h"
#include "picture/modLinkList.h"
#include "player/MediaDevice.h"
#include "player/modPlayer.h"
#include "tag/TagEngine.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

namespace {
FrmInput* g_instance = nullptr;
} // namespace

FrmInput* FrmInput::Instance() {
    return g_instance;
}

FrmInput::FrmInput(QWidget* parent) : QWidget(parent) {
    g_instance = this;
    setObjectName(QStringLiteral("FrmInput"));
    setWindowTitle(Prompt::Title());
    resize(1400, 860);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    TabInput = new QTabWidget(this);
    TabInput->setObjectName(QStringLiteral("TabInput"));
    TabInput->setDocumentMode(true);
    layout->addWidget(TabInput);

    pageData = new InputDataPage;
    listProgress = new ListProgressBar(pageData);
    pageData->body()->insertWidget(1, listProgress); // right under the list
    findFilterPanel = FindFilterPanel::Install(pageData, listProgress);
    marksPanel = MarksPanel::Install(pageData, listProgress);
    listsPanel = ListsPanel::Install(pageData, listProgress);
    renamePanel = RenamePanel::Install(pageData, listProgress);
    filesPanel = FilesPanel::Install(pageData, listProgress, renamePanel);
    scanPanel = ScanPanel::Install(pageData, listProgress);
    playerPanel = PlayerPanel::Install(pageData);
    refPanel = RefPanel::Install(pageData, listProgress);
    new InputListMenu(this);  // the right-click menu of LbxInput
    new InputShortcuts(this); // the keys of LbxInput
    new RefShortcuts(this);   // the keys of LbxRef
    frmTag = new FrmTag;
    renamePanel->tagSetOfTagWindow = [this] { return int(frmTag->ChosenSet()); };
    frmTexte = new FrmTexte;
    // A song of the texts area plays on the player of the data list.
    frmTexte->playSong = [this](const QString& path) {
        modPlayer& player = playerPanel->Player();
        player.Stop();
        if (!player.MediaOpen(path)) {
            AppPrompt().Tell(Caption(CapOpenFailed) + u'\n' + path, Prompt::Icon::Information);
            return;
        }
        player.MediaPlayFrom(0);
        if (player.view.actSong)
            player.view.actSong(path.mid(path.lastIndexOf(u'/') + 1));
        if (player.view.lamps)
            player.view.lamps(true, false);
    };
    frmPlaylist = new FrmPlaylist;
    frmPictures = new FrmPictures;
    frmSText = new FrmSText;
    frmSongtext = FrmSongtext::Install(this, frmSText, TabInput);
    frmPreferences = new FrmPreferences;
    const QList<QWidget*> areas = {pageData,    frmTag,   frmTexte,      frmPlaylist,
                                   frmPictures, frmSText, frmPreferences};
    for (QWidget* w : areas)
        TabInput->addTab(w, QString());
    // "To the sync editor": the texts area writes synctemp.txt, the editor reads it and
    // comes forward.
    frmTexte->openSyncEditor = [this](const QString&) {
        if (frmSText->OpenSyncTemp())
            TabInput->setCurrentWidget(frmSText);
    };

    // F1 to F7 go to the main areas, from wherever the focus is in this window; the keys
    // of the tag list, the playlist and the pictures.
    InstallWindowShortcuts(this);

    connect(pageData->btn2Tab1_ClosePrg, &QAbstractButton::clicked, this, &FrmInput::ClosePrg);
    InstallQuitKey(this); // Ctrl+Q
    // "Copy to the tag list": the selected rows of the current row's type go to the tag
    // list, and its page comes forward.
    connect(listsPanel, &ListsPanel::copyToTaglistRequested, frmTag, [this](const QString& type) {
        if (frmTag->LoadTagList(type, pageData->txtTab1_FTag->text()))
            TabInput->setCurrentWidget(frmTag);
    });
    // "Copy to the playlist" from the data list and from the tag list.
    connect(listsPanel, &ListsPanel::copyToPlaylistRequested, frmPlaylist, [this] {
        if (frmPlaylist->TakeOverFromDataList(Grids::LbxInput(), pageData->txtTab1_FTag->text(),
                                              pageData->chbTab1_NoMsg->isChecked()) >= 0)
            TabInput->setCurrentWidget(frmPlaylist);
    });
    frmTag->copyToPlaylist = [this] {
        auto* mark = frmTag->findChild<QLineEdit*>(QStringLiteral("txtTab2_FTag"));
        if (frmPlaylist->TakeOverFromTagList(frmTag->lbxTag(), Grids::LbxInput(),
                                             mark ? mark->text() : QString(),
                                             pageData->chbTab1_NoMsg->isChecked()) >= 0)
            TabInput->setCurrentWidget(frmPlaylist);
    };
    // The reference list: filled from the data list, saved and loaded by the file box.
    connect(listsPanel, &ListsPanel::copyToReflistRequested, refPanel, &RefPanel::CopyToReflist);
    connect(scanPanel, &ScanPanel::refListCommand, refPanel, &RefPanel::HandleFileCommand);
    // The scan, the update and the load of a list give the filter its value lists.
    connect(scanPanel, &ScanPanel::valueListsChanged, findFilterPanel, &FindFilterPanel::SetQualityLists);
    connect(scanPanel, &ScanPanel::scanFinished, findFilterPanel, &FindFilterPanel::ListRefilled);
    connect(frmPreferences, &FrmPreferences::languageChanged, this, &FrmInput::LanguageChanged);
    // The column windows of the lists, from the preferences as from the lists' menus.
    connect(frmPreferences, &FrmPreferences::columnsRequested, this, [this](bool referenceList) {
        if (referenceList)
            refPanel->ShowColumnWindow()->Open();
        else
            findFilterPanel->ShowColumnWindow()->Open();
    });
    // The folder pane's switch "close after reading" is the one of the preferences.
    if (auto* pref = frmPreferences->findChild<QCheckBox*>(QStringLiteral("chbPref_CloseFolderView"))) {
        QCheckBox* pane = scanPanel->folders->chbTab1_CloseFolderView;
        connect(pref, &QCheckBox::toggled, pane, &QCheckBox::setChecked);
        connect(pane, &QCheckBox::toggled, pref, &QCheckBox::setChecked);
    }
    connect(frmPreferences, &FrmPreferences::captionToolsRequested, this, [this] {
        FrmCap* cap = Cap();
        if (!cap->isVisible())
            CenterOver(cap, this);
        cap->show();
        cap->raise();
        cap->activateWindow();
    });

    RegisterCaptionRoot(this);
}

FrmInput::~FrmInput() {
    UnregisterCaptionRoot(this);
    UnregisterSumTarget(QStringLiteral("Input"));
    if (g_instance == this)
        g_instance = nullptr;
}

FrmCap* FrmInput::Cap() {
    if (!m_cap) {
        m_cap = new FrmCap(this);
        RegisterCaptionRoot(m_cap);
        SetCaptionsOf(m_cap);
        m_cap->ApplySlotNames();
        connect(m_cap, &FrmCap::languagesChanged, this,
                [this] { frmPreferences->SetCmbLanguages(AvailableLanguages()); });
    }
    return m_cap;
}

StartupSteps FrmInput::Steps() {
    StartupSteps s;
    s.createTagEngine = [] { (void)TagEngine::Shared(); };
    s.fillLanguageChooser = [this](const std::vector<LanguageEntry>& l) {
        frmPreferences->SetCmbLanguages(l);
    };
    s.selectFirstMainTab = [this] { TabInput->setCurrentIndex(0); };
    s.defineGrids = [this] {
        pageData->DefineColumns();
        refPanel->DefineColumns();
    };
    s.setCaptions = [] { SetCaptions(); };
    s.applySettings = [this] { ApplySettings(); };
    s.resetTabsAndRedraw = [this] {
        TabInput->setCurrentIndex(0);
        pageData->TabInput1_Sub1->setCurrentIndex(0);
        pageData->TabInput1_Sub2->setCurrentIndex(0);
        Grids::LbxInput().LockUpdate(false);
        Grids::LbxInput().Refresh();
        ShowTotals();
    };
    s.showWindow = [this] {
        if (QScreen* sc = screen()) {
            const QRect avail = sc->availableGeometry();
            resize(std::min(width(), avail.width() - 40), std::min(height(), avail.height() - 40));
        }
        show();
        pageData->LbxInput->table()->setFocus();
    };
    s.removeFocusRects = [this] {
        // Buttons, check boxes and options take no focus frame from a click, and the Tab
        // key reaches every one of them; not the inner buttons of other controls (tab
        // strip arrows, clear buttons of text boxes) nor a mere indicator.
        for (QAbstractButton* b : findChildren<QAbstractButton*>()) {
            QWidget* p = b->parentWidget();
            if (qobject_cast<QTabBar*>(p) || qobject_cast<QLineEdit*>(p) || qobject_cast<QComboBox*>(p) ||
                b->testAttribute(Qt::WA_TransparentForMouseEvents))
                continue;
            b->setFocusPolicy(Qt::TabFocus);
        }
        OrderTabChain(this);
    };
    return s;
}

void FrmInput::ApplySettings() {
    // The defaults that are pure data (row 27) were taken by the start-up before this.
    pageData->ApplySettings();
    scanPanel->ApplySettings();
    marksPanel->ApplySettings();
    renamePanel->ApplySettings();
    playerPanel->ApplySettings();
    ApplyStartupPatterns(Settings(), Grids::LbxInput(), Grids::LbxRef());
    frmSText->ApplySettings();
    frmPreferences->ApplySettings();
    frmPlaylist->ApplySettings();
    frmTexte->ApplySettings();
    frmPictures->ApplySettings();
}

StartCheck FrmInput::FormLoad(Prompt& prompt) {
    return StartProgram(prompt, Steps());
}

void FrmInput::SetGridHeaders() {
    SetInputColumnCaptions(Grids::LbxInput());
    refPanel->SetColumnCaptions();
    SetCaptionTableHeaders();
    frmPlaylist->SetGridHeaders();
    frmTexte->SetGridHeaders();
    frmSText->SetGridHeaders();
    frmPictures->SetGridHeaders();
}

void FrmInput::LanguageChanged() {
    SetGridHeaders();
    pageData->LbxInput->SetMinWidthsFromCaptions(3);
    renamePanel->FillTextInTag();
    scanPanel->folders->FillFavorites();
    SetCaptions();
    ShowTotals(); // footers and sums in the new language's numbers
    if (m_cap) {
        m_cap->SetCmbLanguages();
        m_cap->ApplySlotNames();
    }
}

QuitSteps FrmInput::QuitStepsOfWindows() {
    QuitSteps s;
    // Closing step 8: with chbPref_PurgeLinklist the links of vanished songs go.
    s.purgeLinkList = [] { PurgeLinkList(Grids::LbxPic_LinkToPic()); };
    s.closeMedia = [this] {
        playerPanel->Player().TimerSequenz.stop();
        frmSText->TimerSText.stop();
        frmSText->TimerSText_SyncTimer.stop();
        CloseMedia();
    };
    s.unloadForms = [this] {
        pageData->SaveColumnWidths();
        refPanel->SaveColumnWidths();
        m_unloading = true;
        if (m_cap)
            m_cap->close();
        close();
        QApplication::quit();
    };
    return s;
}

void FrmInput::ClosePrg() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    int asked = 0;
    if (!QuitProgram(asked, 0, AppPrompt(), QuitStepsOfWindows()))
        State().SuppressEvents = quiet; // the user stays: the controls work again
}

bool FrmInput::FormQueryUnload(int unloadMode) {
    if (unloadMode != 0)
        return true; // closed by code or by the system: no questions
    // Closed by the user at the window's corner.
    if (!AppPrompt().AskYesNo(Caption(CapQuitQuestion), true, Prompt::Icon::Question))
        return false;
    int asked = 0;
    return QuitProgram(asked, -1, AppPrompt(), QuitStepsOfWindows());
}

void FrmInput::closeEvent(QCloseEvent* event) {
    if (m_unloading || FormQueryUnload(event->spontaneous() ? 0 : 1))
        event->accept();
    else
        event->ignore();
}

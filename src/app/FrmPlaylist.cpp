#include "app/FrmPlaylist.h"

#include "app/DataGridView.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "output/modExport.h"
#include "platform/Shell.h"
#include "playlist/PlaylistColumns.h"
#include "playlist/modPlaylist.h"
#include "playlist/modPlaylistFile.h"
#include "playlist/modPlaylistPlay.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDesktopServices>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace {

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

QString PlaylistFilters() {
    const QString pl = Caption(CapPlaylistFilter);
    return pl + QStringLiteral(" (M3U) (*.m3u *.M3U *.m3u8);;") + pl +
           QStringLiteral(" (*.PLS) (*.pls *.PLS)");
}

// The entries of the context menu of LbxPlaylist, by objectName.
const char* const kMenuEntries[] = {
    "mnuPlaylist_PlaySong",     "mnuPlaylist_PlayPlaylist", "mnuPlaylist_DeleteF", "mnuPlaylist_Shuffle",
    "mnuPlaylist_HighlightAll", "mnuPlaylist_MarkFromFTag", "mnuPlaylist_SignID"};

} // namespace

FrmPlaylist::FrmPlaylist(QWidget* parent, Prompt* prompt)
    : AreaPage(QStringLiteral("FrmPlaylist"), parent), m_prompt(prompt), m_playlist(new DataGrid(this)),
      m_playlist2(new DataGrid(this)), m_files(new DataGrid(this)), m_dummy(new DataGrid(this)) {
    DefinePlaylistColumns(*m_playlist);
    DefinePlaylistColumns(*m_playlist2);
    DefineM3uPlsColumns(*m_files);
    buildUi();
    connectCommands();

    chooseSavePath = [this](const QString& start) {
        QFileDialog d(window(), Caption(CapSavePlaylistTitle), start);
        d.setAcceptMode(QFileDialog::AcceptSave);
        d.setNameFilters(PlaylistFilters().split(QStringLiteral(";;")));
        d.setDefaultSuffix(QStringLiteral("m3u"));
        // a name typed without an ending takes the one of the chosen format
        connect(&d, &QFileDialog::filterSelected, &d, [&d](const QString& filter) {
            d.setDefaultSuffix(filter.contains(QLatin1String("*.pls")) ? QStringLiteral("pls")
                                                                       : QStringLiteral("m3u"));
        });
        if (d.exec() != QDialog::Accepted || d.selectedFiles().isEmpty())
            return QString();
        return d.selectedFiles().constFirst();
    };
    chooseFolder = [this](const QString& start) {
        return QFileDialog::getExistingDirectory(window(), Caption(CapChooseFolderTitle), start);
    };
    chooseSongFile = [this](const QString& start, const QString& name) {
        return QFileDialog::getOpenFileName(window(), Caption(CapLocateFileTitle),
                                            start.isEmpty() ? name : start + u'/' + name,
                                            Caption(CapAllFilesFilter) + QStringLiteral(" (*)"));
    };
    chooseExportFile = [this](const QString& start) {
        QFileDialog d(window(), Caption(CapExportTitle), start);
        d.setAcceptMode(QFileDialog::AcceptSave);
        const QStringList filters = ExportFilters();
        d.setNameFilters(filters);
        d.setDefaultSuffix(ExportDefaultSuffix());
        if (d.exec() != QDialog::Accepted || d.selectedFiles().isEmpty())
            return QString();
        return d.selectedFiles().constFirst();
    };
    // The desktop's default program through the toolkit's desktop services.
    if (!TheDesktopShell().launch)
        TheDesktopShell().launch = [](const QString& path) {
            return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
        };
    // Where the desktop has no program for a file: a list of the installed applications.
    if (!TheDesktopShell().chooseApplication)
        TheDesktopShell().chooseApplication = [](const QString& path,
                                                 const std::vector<DesktopApplication>& apps) {
            QStringList names;
            for (const DesktopApplication& a : apps)
                names << a.name;
            if (names.isEmpty())
                return -1;
            bool ok = false;
            const QString chosen =
                QInputDialog::getItem(QApplication::activeWindow(), Caption(CapChooseProgramTitle),
                                      Caption(CapChooseProgramFor) + u'\n' + path, names, 0, false, &ok);
            return ok ? int(names.indexOf(chosen)) : -1;
        };
}

FrmPlaylist::~FrmPlaylist() = default;

Prompt& FrmPlaylist::prompt() const {
    return m_prompt ? *m_prompt : AppPrompt();
}

QPushButton* FrmPlaylist::button(const char* name) {
    auto* b = new QPushButton(this);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QCheckBox* FrmPlaylist::check(const char* name) {
    auto* c = new QCheckBox(this);
    c->setObjectName(QString::fromLatin1(name));
    return c;
}

void FrmPlaylist::buildUi() {
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setObjectName(QStringLiteral("splPlaylist"));
    body()->addWidget(split, 1);

    // ---- left: the playlist files and the second list --------------------------------
    auto* left = new QWidget(split);
    auto* leftLay = new QVBoxLayout(left);
    leftLay->setContentsMargins(0, 0, 4, 0);
    auto* found = new QGroupBox(left);
    found->setObjectName(QStringLiteral("grpPlaylist_Found"));
    auto* foundLay = new QVBoxLayout(found);
    m_filesView = new DataGridView(m_files, found);
    m_filesView->setObjectName(QStringLiteral("lbxM3UPLS"));
    foundLay->addWidget(m_filesView, 1);
    auto* fileBtns = new QGridLayout;
    fileBtns->addWidget(button("btnPlaylist_FindPlaylist"), 0, 0);
    fileBtns->addWidget(button("btnPlaylist_OpenPlaylist"), 0, 1);
    fileBtns->addWidget(button("btnPlaylist_PlayPlaylist"), 1, 0);
    fileBtns->addWidget(button("btnPlaylist_DeletePlaylist"), 1, 1);
    foundLay->addLayout(fileBtns);
    auto* format = new QGroupBox(found);
    format->setObjectName(QStringLiteral("grpPlaylist_Format"));
    auto* formatLay = new QHBoxLayout(format);
    m_optBoth = new QRadioButton(format);
    m_optBoth->setObjectName(QStringLiteral("optPlaylist_M3UPLS"));
    m_optM3u = new QRadioButton(format);
    m_optM3u->setObjectName(QStringLiteral("optPlaylist_M3U"));
    m_optPls = new QRadioButton(format);
    m_optPls->setObjectName(QStringLiteral("optPlaylist_PLS"));
    m_optBoth->setChecked(true);
    for (QRadioButton* o : {m_optBoth, m_optM3u, m_optPls})
        formatLay->addWidget(o);
    formatLay->addStretch(1);
    foundLay->addWidget(format);
    auto* fileChecks = new QGridLayout;
    fileChecks->addWidget(check("chbPlaylist_WithSubFolders"), 0, 0);
    fileChecks->addWidget(check("chbPlaylist_Add"), 0, 1);
    fileChecks->addWidget(check("chbPlaylist_OpenPlaylistWithClick"), 1, 0);
    fileChecks->addWidget(check("chbPlaylist_DirectEdit"), 1, 1);
    foundLay->addLayout(fileChecks);
    leftLay->addWidget(found, 3);

    auto* second = new QGroupBox(left);
    second->setObjectName(QStringLiteral("grpPlaylist_Second"));
    auto* secondLay = new QVBoxLayout(second);
    m_title2Label = new QLabel(second);
    m_title2Label->setObjectName(QStringLiteral("lblPlaylist_Title2"));
    secondLay->addWidget(m_title2Label);
    m_playlist2View = new DataGridView(m_playlist2, second);
    m_playlist2View->setObjectName(QStringLiteral("lbxPlaylist2"));
    secondLay->addWidget(m_playlist2View, 1);
    secondLay->addWidget(button("btnPlaylist_OpenPlaylist2"), 0, Qt::AlignLeft);
    leftLay->addWidget(second, 2);

    // ---- right: the working list --------------------------------------------------------
    auto* right = new QWidget(split);
    auto* rightLay = new QVBoxLayout(right);
    rightLay->setContentsMargins(4, 0, 0, 0);
    m_titleLabel = new QLabel(right);
    m_titleLabel->setObjectName(QStringLiteral("lblPlaylist_Title"));
    QFont bold = m_titleLabel->font();
    bold.setBold(true);
    m_titleLabel->setFont(bold);
    rightLay->addWidget(m_titleLabel);
    m_playlistView = new DataGridView(m_playlist, right);
    m_playlistView->setObjectName(QStringLiteral("LbxPlaylist"));
    rightLay->addWidget(m_playlistView, 1);

    auto* sums = new QHBoxLayout;
    m_timeSize = new QLabel(right);
    m_timeSize->setObjectName(QStringLiteral("lblPlaylist_TimeSize"));
    sums->addWidget(check("chbPlaylist_TimeSize"));
    sums->addWidget(m_timeSize, 1);
    sums->addWidget(check("chbPlaylist_NoMsg"));
    rightLay->addLayout(sums);

    auto* rowSave = new QHBoxLayout;
    rowSave->addWidget(button("btnPlaylist_SavePlaylist"));
    auto* paths = new QGroupBox(right);
    paths->setObjectName(QStringLiteral("grpPlaylist_Paths"));
    auto* pathsLay = new QHBoxLayout(paths);
    pathsLay->setContentsMargins(6, 2, 6, 2);
    m_optAbsolute = new QRadioButton(paths);
    m_optAbsolute->setObjectName(QStringLiteral("optPlaylist_Absolut"));
    m_optRelative = new QRadioButton(paths);
    m_optRelative->setObjectName(QStringLiteral("optPlaylist_Relativ"));
    m_optAbsolute->setChecked(true);
    pathsLay->addWidget(m_optAbsolute);
    pathsLay->addWidget(m_optRelative);
    rowSave->addWidget(paths);
    rowSave->addWidget(button("btnPlaylist_Export"));
    rowSave->addWidget(button("btnPlaylist_Copy"));
    rowSave->addWidget(check("chbPlaylist_CopyWithNum"));
    rowSave->addStretch(1);
    rightLay->addLayout(rowSave);

    auto* rowEntries = new QHBoxLayout;
    for (const char* n : {"btnPlaylist_DeleteEntries", "btnPlaylist_EraseF", "btnPlaylist_CorrectPath",
                          "btnPlaylist_Up", "btnPlaylist_Down", "btnPlaylist_Shuffle"})
        rowEntries->addWidget(button(n));
    rowEntries->addStretch(1);
    rightLay->addLayout(rowEntries);

    auto* rowMarks = new QHBoxLayout;
    auto* markLabel = new QLabel(right);
    markLabel->setObjectName(QStringLiteral("lblPlaylist_FTag"));
    rowMarks->addWidget(markLabel);
    m_fTag = new QLineEdit(right);
    m_fTag->setObjectName(QStringLiteral("txtPlaylist_FTag"));
    m_fTag->setMaximumWidth(160);
    rowMarks->addWidget(m_fTag);
    for (const char* n : {"btnPlaylist_SetFTagActRow", "btnPlaylist_ClearFtag", "btnPlaylist_FTagBlue",
                          "btnPlaylist_RemoveFTag"})
        rowMarks->addWidget(button(n));
    rowMarks->addStretch(1);
    rightLay->addLayout(rowMarks);

    auto* rowHighlight = new QHBoxLayout;
    for (const char* n :
         {"btnPlaylist_HighlightAll", "btnPlaylist_Highlight_T", "btnPlaylist_InvertHighlight"})
        rowHighlight->addWidget(button(n));
    rowHighlight->addStretch(1);
    rightLay->addLayout(rowHighlight);

    split->addWidget(left);
    split->addWidget(right);
    split->setStretchFactor(0, 2);
    split->setStretchFactor(1, 5);
    split->setSizes({380, 860});

    // the context menu of the working list
    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("mnuPlaylist"));
    for (const char* n : kMenuEntries) {
        if (QLatin1String(n) == QLatin1String("mnuPlaylist_SignID")) {
            m_signMenu = m_menu->addMenu(QString());
            m_signMenu->setObjectName(QString::fromLatin1(n));
            connect(m_signMenu, &QMenu::aboutToShow, this, [this] { showSignMenu(m_signMenu); });
            continue;
        }
        QAction* a = m_menu->addAction(QString());
        a->setObjectName(QString::fromLatin1(n));
    }
    m_playlistView->table()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_playlistView->table(), &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        m_menu->popup(m_playlistView->table()->viewport()->mapToGlobal(at));
    });

    // the in-cell rename of lbxM3UPLS
    m_cellEditor = new QLineEdit(m_filesView->table()->viewport());
    m_cellEditor->setObjectName(QStringLiteral("txtPlaylist_CellEdit"));
    m_cellEditor->hide();
    m_cellEditor->installEventFilter(this);
    m_filesView->table()->installEventFilter(this);
    applyCaptions();
}

void FrmPlaylist::applyCaptions() {
    for (QAction* a : m_menu->findChildren<QAction*>())
        if (!a->objectName().isEmpty())
            a->setText(UiText(a->objectName()));
    m_signMenu->setTitle(UiText(QStringLiteral("mnuPlaylist_SignID")));
    SetGridHeaders();
    showTitle();
    refreshSums();
}

void FrmPlaylist::SetGridHeaders() {
    SetPlaylistCaptions(*m_playlist);
    SetPlaylistCaptions(*m_playlist2);
    SetM3uPlsCaptions(*m_files);
    // no header is ever cut off
    for (DataGridView* v : {m_playlistView, m_playlist2View, m_filesView})
        v->SetMinWidthsFromCaptions(1);
}

void FrmPlaylist::changeEvent(QEvent* event) {
    AreaPage::changeEvent(event);
    if (event->type() == QEvent::WindowTitleChange)
        QTimer::singleShot(0, this, [this] { applyCaptions(); });
}

void FrmPlaylist::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    findChild<QCheckBox*>(QStringLiteral("chbPlaylist_NoMsg"))
        ->setChecked(SettingOn(Ini::PlaylistNoMsg, Ini::Col1));
    findChild<QCheckBox*>(QStringLiteral("chbPlaylist_WithSubFolders"))
        ->setChecked(Setting(Ini::PlaylistWithSubFolders, Ini::Col1).toInt() != 0);
    const int fmt = Setting(Ini::PlaylistFormat, Ini::Col1).toInt();
    (fmt == 1 ? m_optM3u : fmt == 2 ? m_optPls : m_optBoth)->setChecked(true);
    findChild<QCheckBox*>(QStringLiteral("chbPlaylist_TimeSize"))
        ->setChecked(SettingOn(Ini::PlaylistTimeSize, Ini::Col2));
    State().SuppressEvents = quiet;
    SetGridHeaders(); // the caption table is loaded by now
    refreshSums();
}

void FrmPlaylist::saveBox(int row, int col, bool on) {
    if (!State().SuppressEvents)
        SetSetting(row, col, on ? QStringLiteral("1") : QStringLiteral("0"));
}

PlaylistEnv FrmPlaylist::makeEnv() {
    PlaylistEnv env(prompt(), *m_playlist, *m_files);
    env.playlist2 = m_playlist2;
    env.title = m_title;
    env.markText = m_fTag->text();
    env.noMsg = findChild<QCheckBox*>(QStringLiteral("chbPlaylist_NoMsg"))->isChecked();
    env.tab1NoMsg = SettingOn(Ini::NoMsg, Ini::Col1);
    env.relative = m_optRelative->isChecked();
    env.add = findChild<QCheckBox*>(QStringLiteral("chbPlaylist_Add"))->isChecked();
    env.openWithClick =
        findChild<QCheckBox*>(QStringLiteral("chbPlaylist_OpenPlaylistWithClick"))->isChecked();
    env.withSubFolders = findChild<QCheckBox*>(QStringLiteral("chbPlaylist_WithSubFolders"))->isChecked();
    env.format = m_optM3u->isChecked() ? 1 : m_optPls->isChecked() ? 2 : 0;
    env.copyWithNum = findChild<QCheckBox*>(QStringLiteral("chbPlaylist_CopyWithNum"))->isChecked();
    env.chooseSavePath = chooseSavePath;
    env.chooseFolder = chooseFolder;
    env.chooseSongFile = chooseSongFile;
    env.sumsChanged = [this] { refreshSums(); };
    return env;
}

void FrmPlaylist::takeBack(const PlaylistEnv& env) {
    m_title = env.title;
    showTitle();
    refreshSums();
}

void FrmPlaylist::showTitle() {
    m_titleLabel->setText(m_title); // the playlist's name; rows from the lists have none
    m_title2Label->setText(m_title2);
}

void FrmPlaylist::refreshSums() {
    const bool on = findChild<QCheckBox*>(QStringLiteral("chbPlaylist_TimeSize"))->isChecked();
    m_timeSize->setText(on ? PlaylistTimeSizeText(*m_playlist, m_fTag->text()) : QString());
}

void FrmPlaylist::showSignMenu(QMenu* menu) {
    menu->clear();
    for (int r = Ini::SignFirst; r <= Ini::SignLast; ++r) {
        const QString sign = Setting(r, Ini::SignCol);
        if (sign.isEmpty())
            continue;
        QAction* a = menu->addAction(sign);
        a->setObjectName(QStringLiteral("mnuPlaylist_SignID(%1)").arg(r - Ini::SignFirst));
        connect(a, &QAction::triggered, this, [this, sign] {
            PlaylistEnv env = makeEnv();
            ToggleSign(env, sign);
            takeBack(env);
        });
    }
}

void FrmPlaylist::connectCommands() {
    auto on = [this](const char* name, auto fn) {
        if (auto* b = findChild<QPushButton*>(QString::fromLatin1(name)))
            connect(b, &QPushButton::clicked, this, fn);
    };
    // a command on the env: run, then take the title and the sums back
    auto run = [this](auto fn) {
        return [this, fn] {
            PlaylistEnv env = makeEnv();
            fn(env);
            takeBack(env);
        };
    };
    on("btnPlaylist_FindPlaylist", run([](PlaylistEnv& env) {
           WaitCursor wait;
           FindPlaylists(env);
       }));
    on("btnPlaylist_OpenPlaylist", run([this](PlaylistEnv& env) {
           WaitCursor wait;
           if (OpenPlaylist(env))
               m_playlistView->table()->setFocus();
       }));
    on("btnPlaylist_OpenPlaylist2", run([this](PlaylistEnv& env) {
           WaitCursor wait;
           if (m_files->SelCount() > 0 && OpenPlaylist(env, 2)) {
               const QString path = m_files->CellText(m_files->SelRow(1), M3uCol::PathFile) + u'/' +
                                    m_files->CellText(m_files->SelRow(1), M3uCol::FName);
               QString folder, name;
               SplitPath(path, folder, name);
               m_title2 = Caption(CapPlaylistTitle) + name;
           } else if (m_files->SelCount() == 0) {
               OpenPlaylist(env, 2); // gives the message
           }
       }));
    on("btnPlaylist_DeletePlaylist", run([](PlaylistEnv& env) { DeletePlaylistFile(env); }));
    on("btnPlaylist_PlayPlaylist", run([this](PlaylistEnv& env) {
           PlayPlaylistFile(env);
           m_filesView->table()->setFocus();
       }));
    on("btnPlaylist_SavePlaylist", run([](PlaylistEnv& env) { SavePlaylist(env); }));
    on("btnPlaylist_DeleteEntries", run([this](PlaylistEnv& env) {
           RemoveHighlightedEntries(env);
           m_playlistView->table()->setFocus();
       }));
    auto eraseF = run([](PlaylistEnv& env) {
        WaitCursor wait;
        RemoveMissingEntries(env);
    });
    on("btnPlaylist_EraseF", eraseF);
    on("btnPlaylist_CorrectPath", run([](PlaylistEnv& env) { RepairMissingEntries(env); }));
    on("btnPlaylist_Up", run([](PlaylistEnv& env) { MoveBlockUp(env); }));
    on("btnPlaylist_Down", run([](PlaylistEnv& env) { MoveBlockDown(env); }));
    auto shuffle = run([this](PlaylistEnv& env) {
        WaitCursor wait;
        if (ShufflePlaylist(env))
            m_playlistView->table()->setFocus();
    });
    on("btnPlaylist_Shuffle", shuffle);
    on("btnPlaylist_Copy", run([](PlaylistEnv& env) { CopyPlaylistSongs(env); }));
    on("btnPlaylist_Export", [this] { cmdExport(); });
    auto highlightAll = [this] {
        m_playlist->SelectAll();
        m_playlist->Refresh();
        m_playlistView->table()->setFocus();
        refreshSums();
    };
    on("btnPlaylist_HighlightAll", highlightAll);
    on("btnPlaylist_Highlight_T", run([](PlaylistEnv& env) { HighlightFound(env); }));
    on("btnPlaylist_InvertHighlight", [this] {
        m_playlist->InvertSelection();
        refreshSums();
    });
    auto markFromFTag = run([](PlaylistEnv& env) { MarkHighlighted(env); });
    on("btnPlaylist_SetFTagActRow", markFromFTag);
    on("btnPlaylist_FTagBlue", run([](PlaylistEnv& env) { UnhighlightOthers(env); }));
    on("btnPlaylist_RemoveFTag", run([](PlaylistEnv& env) { RemoveMarks(env); }));
    on("btnPlaylist_ClearFtag", [this] { m_fTag->clear(); });

    // the menu
    auto action = [this](const char* name) { return m_menu->findChild<QAction*>(QString::fromLatin1(name)); };
    connect(action("mnuPlaylist_PlaySong"), &QAction::triggered, this,
            [this] { PlayPlaylistSong(*m_playlist, m_playlist->CurRow(), prompt()); });
    connect(action("mnuPlaylist_PlayPlaylist"), &QAction::triggered, this, [this] {
        PlayEnv env(prompt());
        PlayRowsOfPlaylist(*m_playlist, env);
    });
    connect(action("mnuPlaylist_DeleteF"), &QAction::triggered, this, eraseF);
    connect(action("mnuPlaylist_Shuffle"), &QAction::triggered, this, shuffle);
    connect(action("mnuPlaylist_HighlightAll"), &QAction::triggered, this, highlightAll);
    connect(action("mnuPlaylist_MarkFromFTag"), &QAction::triggered, this, markFromFTag);

    // boxes kept in the settings
    connect(findChild<QCheckBox*>(QStringLiteral("chbPlaylist_NoMsg")), &QCheckBox::toggled, this,
            [this](bool v) { saveBox(Ini::PlaylistNoMsg, Ini::Col1, v); });
    connect(findChild<QCheckBox*>(QStringLiteral("chbPlaylist_WithSubFolders")), &QCheckBox::toggled, this,
            [this](bool v) { saveBox(Ini::PlaylistWithSubFolders, Ini::Col1, v); });
    connect(findChild<QCheckBox*>(QStringLiteral("chbPlaylist_TimeSize")), &QCheckBox::toggled, this,
            [this](bool v) {
                saveBox(Ini::PlaylistTimeSize, Ini::Col2, v);
                refreshSums();
            });
    auto* formats = new QButtonGroup(this);
    formats->addButton(m_optBoth, 0);
    formats->addButton(m_optM3u, 1);
    formats->addButton(m_optPls, 2);
    connect(formats, &QButtonGroup::idToggled, this, [](int id, bool checked) {
        if (checked && !State().SuppressEvents)
            SetSetting(Ini::PlaylistFormat, Ini::Col1, QString::number(id));
    });
    connect(findChild<QCheckBox*>(QStringLiteral("chbPlaylist_DirectEdit")), &QCheckBox::toggled, this,
            [this](bool v) {
                if (!v)
                    m_cellEditor->hide();
            });
    connect(m_fTag, &QLineEdit::textChanged, this, [this] { refreshSums(); });

    // grid events
    connect(m_playlist, &DataGrid::selectionChanged, this, [this] { refreshSums(); });
    connect(m_playlist, &DataGrid::rowsReset, this, [this] { refreshSums(); });
    connect(m_playlistView, &DataGridView::rowDoubleClicked, this, [this](int row) {
        const int col = m_playlistView->table()->currentIndex().column() + 1; // the cell clicked
        if (col == PlCol::FTag) {
            m_fTag->setText(m_playlist->CellText(row, PlCol::FTag));
            return;
        }
        PlayPlaylistSong(*m_playlist, row, prompt());
    });
    connect(m_filesView->table(), &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (findChild<QCheckBox*>(QStringLiteral("chbPlaylist_OpenPlaylistWithClick"))->isChecked() &&
            index.row() >= 0) {
            PlaylistEnv env = makeEnv();
            WaitCursor wait;
            OpenPlaylist(env);
            takeBack(env);
        }
    });
    connect(m_filesView, &DataGridView::rowDoubleClicked, this, [this](int row) {
        const bool direct = findChild<QCheckBox*>(QStringLiteral("chbPlaylist_DirectEdit"))->isChecked();
        if (direct) {
            if (m_filesView->table()->currentIndex().column() + 1 == M3uCol::FName)
                startRename(row);
            return;
        }
        if (findChild<QCheckBox*>(QStringLiteral("chbPlaylist_OpenPlaylistWithClick"))->isChecked())
            return;
        PlaylistEnv env = makeEnv();
        WaitCursor wait;
        OpenPlaylist(env);
        takeBack(env);
    });
    // header clicks of lbxM3UPLS sort with the other column second
    connect(m_filesView->table()->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) {
                QTimer::singleShot(0, this, [this, section] {
                    m_files->DoSort(section == 0 ? QStringLiteral("1,2") : QStringLiteral("2,1"), 1);
                });
            });
}

void FrmPlaylist::startRename(int row) {
    if (row < 1 || row > m_files->Rows())
        return;
    QTableView* t = m_filesView->table();
    const QRect r = t->visualRect(t->model()->index(row - 1, M3uCol::FName - 1));
    m_editRow = row;
    m_cellEditor->setGeometry(r);
    m_cellEditor->setText(m_files->CellText(row, M3uCol::FName));
    m_cellEditor->selectAll();
    m_cellEditor->show();
    m_cellEditor->setFocus();
}

bool FrmPlaylist::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_cellEditor && event->type() == QEvent::KeyPress) {
        auto* k = static_cast<QKeyEvent*>(event);
        if (k->key() == Qt::Key_Escape) {
            m_cellEditor->hide();
            m_filesView->table()->setFocus();
            return true;
        }
        if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
            const QString text = m_cellEditor->text();
            m_cellEditor->hide();
            PlaylistEnv env = makeEnv();
            RenamePlaylistFile(env, m_editRow, text);
            m_filesView->table()->setFocus();
            return true;
        }
    }
    if (watched == m_cellEditor && event->type() == QEvent::FocusOut && m_cellEditor->isVisible()) {
        m_cellEditor->hide(); // leaving the cell cancels the edit
        return false;
    }
    if (watched == m_filesView->table() && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_F2 &&
        findChild<QCheckBox*>(QStringLiteral("chbPlaylist_DirectEdit"))->isChecked()) {
        startRename(m_files->CurRow());
        return true;
    }
    return AreaPage::eventFilter(watched, event);
}

void FrmPlaylist::WriteMarkToHighlighted(const QString& mark) {
    for (int row : m_playlist->SelectedRows())
        m_playlist->SetCellText(row, PlCol::FTag, mark);
    refreshSums();
}

void FrmPlaylist::cmdExport() {
    PlaylistEnv env = makeEnv();
    if (!CheckExportable(*m_playlist, env.prompt))
        return;
    const QString preset = Setting(Ini::PresetPathExport, Ini::Col1);
    const QString path = chooseExportFile(ExportStartFolder(Settings(), preset, ExportFolders::Playlist));
    if (path.isEmpty())
        return;
    WaitCursor wait;
    ExportPlaylist(env, *m_dummy, path);
}

int FrmPlaylist::TakeOverFromDataList(const DataGrid& input, const QString& inputMark, bool tab1NoMsg) {
    PlaylistEnv env = makeEnv();
    env.tab1NoMsg = tab1NoMsg;
    WaitCursor wait;
    const int n = CopyRowsToPlaylist(env, input, inputMark);
    takeBack(env);
    return n;
}

int FrmPlaylist::TakeOverFromTagList(const DataGrid& tagList, const DataGrid& input, const QString& tagMark,
                                     bool tab1NoMsg) {
    PlaylistEnv env = makeEnv();
    env.tab1NoMsg = tab1NoMsg;
    WaitCursor wait;
    const int n = CopyTagRowsToPlaylist(env, tagList, input, tagMark);
    takeBack(env);
    return n;
}

// FrmPictures: the pictures on disk, their links to texts and songs, the slide show.
#include "app/DataGridView.h"
#include "app/FrmPictures.h"
#include "app/Mnemonics.h"
#include "app/PictureView.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "file/ftcFileOps.h"
#include "list/modScan.h"
#include "output/modExport.h"
#include "picture/PictureColumns.h"
#include "picture/modEmbeddedPictures.h"
#include "picture/modExternPictures.h"
#include "picture/modLinkList.h"
#include "platform/Shell.h"
#include "tag/TagEngine.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

namespace {

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

QString FolderOf(const QString& path) {
    return path.left(path.lastIndexOf(u'/'));
}

} // namespace

QString AudioFileFilter();

// The audio filter of the open dialogues.
QString AudioFileFilter() {
    return Caption(CapAudioFilesFilter) +
           QStringLiteral(
               " (*.mp3 *.MP3 *.wma *.flac *.wav *.ogg *.mpc *.mpp *.aac *.mp4 *.m4a *.ape *.opus)");
}

void FrmPictures::connectExtern() {
    auto on = [this](const char* name, auto fn) {
        connect(findChild<QPushButton*>(QString::fromLatin1(name)), &QPushButton::clicked, this, fn);
    };
    auto act = [this](const char* name, auto fn) {
        connect(m_externMenu->findChild<QAction*>(QString::fromLatin1(name)), &QAction::triggered, this, fn);
    };
    on("btnpic_FindPic", [this] { cmdFindPictures(); });
    on("btnPic_CancelPic", [this] { m_abort = true; });
    on("btnPic_ShowLinkedPic", [this] { cmdShowLinkList(); });
    on("btnPic_WriteLinklist", [this] { cmdWriteLinkList(); });
    on("btnPic_RemoveBrokenLinks", [this] { cmdRemoveBrokenLinks(); });
    on("btnPic_LinkToTxt", [this] { cmdLinkText(); });
    on("btnPic_LinkToAudio", [this] { cmdLinkSong(); });
    on("btnPic_LinkInTxt", [this] { cmdLoadLinkedText(); });
    on("btnPic_SaveTxt", [this] { cmdSaveText(); });
    on("btnPic_DeleteTxt", [this] { cmdDeleteText(); });
    on("btnPic_RemoveLink", [this] {
        cmdRemoveLink(box("chbPic_RemoveLinkTxt")->isChecked(), box("chbPic_RemoveLinkSong")->isChecked());
    });
    on("btnPic_PlayLinkedSong", [this] { cmdPlayLinkedSong(); });
    on("btnPic_OpenLink", [this] { cmdOpenLinkedText(); });
    on("btnPic_DeletePic", [this] { cmdDeletePicture(); });
    on("btnPic_CopyPic", [this] { cmdCopyPicture(); });
    on("btnPic_OpenPicInApp", [this] {
        const DataGrid& list = Grids::LbxPic_Extern();
        if (list.CurRow() >= 1)
            ShellOpen(RowPicturePath(list, list.CurRow()));
    });
    on("btnPic_ExportLbxExtern", [this] { cmdExport(); });
    on("btnPic_NextPic", [this] { cmdStep(1); });
    on("btnPic_PreviousPic", [this] { cmdStep(-1); });
    on("btnPic_AutoPic", [this] { cmdSlideShow(); });
    on("btnPic_SaveExternAsiPic", [this] { cmdEmbedShownExtern(box("chbPic_iPicAsLink")->isChecked()); });
    act("mnuPic_PlayTitel", [this] { cmdPlayLinkedSong(); });
    act("mnuPic_MakeLinkToSong", [this] { cmdLinkSong(); });
    act("mnuPic_MakeLinkToTxt", [this] { cmdLinkText(); });
    act("mnuPic_RemoveLinkToSong", [this] { cmdRemoveLink(false, true); });
    act("mnuPic_RemoveLinkToTxt", [this] { cmdRemoveLink(true, false); });
    act("mnuPic_RemoveLinkToSongAndTxt", [this] { cmdRemoveLink(true, true); });
    act("mnuPic_SaveShownPicInSongAsPic", [this] { cmdEmbedShownExtern(false); });
    act("mnuPic_SaveShownPicInSongAsLink", [this] { cmdEmbedShownExtern(true); });
    act("mnuPic_CopyPictureTo", [this] { cmdCopyPicture(); });

    connect(m_externView, &DataGridView::currentRowChanged, this, [this](int row) { showExternRow(row); });
    connect(&Grids::LbxPic_Extern(), &DataGrid::rowsReset, this, [this] { showTitle(); });
    connect(m_delay, &QScrollBar::valueChanged, this, [this](int v) {
        m_delayLabel->setText(QString::number(v) + u' ' + Caption(CapHeaderSeconds));
        if (!State().SuppressEvents)
            SetSetting(Ini::PicAutoPic, Ini::Col1, QString::number(v));
        if (m_slideTimer->isActive())
            m_slideTimer->setInterval(v * 1000);
    });
    connect(m_slideTimer, &QTimer::timeout, this, [this] { slideNext(); });
    // the free-text column is edited in place
    m_externView->SetCellEditing([](int, int col) { return col == PicCol::Free; },
                                 [](int, int, QString&) { return true; });
}

void FrmPictures::showExternRow(int row) {
    const DataGrid& list = Grids::LbxPic_Extern();
    if (row < 1 || row > list.Rows())
        return;
    showPictureFile(RowPicturePath(list, row));
    if (box("chbPic_UseLinkedSong")->isChecked()) {
        const QString song = RowSongPath(list, row);
        if (!song.isEmpty() && QFileInfo::exists(song))
            ShellOpen(song);
    }
}

void FrmPictures::cmdFindPictures() {
    if (m_busy)
        return;
    PictureEnv e = env();
    if (e.list.Tag == u"changes" && SaveLinkList())
        e.list.Tag.clear();
    const QString folder = chooseFolder(Setting(Ini::PathPictures1, Ini::Col2));
    if (folder.isEmpty()) {
        showTitle();
        return;
    }
    SetSetting(Ini::PathPictures1, Ini::Col2, folder);
    m_showsLinkList = false;
    if (!box("chbPic_AttachPic")->isChecked()) {
        e.list.Clear();
        e.list.SetFooterText(PicCol::Picfile, QString());
    }
    WaitCursor wait;
    m_busy = true;
    PictureSearch how;
    QString types = Setting(Ini::PicFileTypes, Ini::Col1);
    if (types.isEmpty())
        types = QStringLiteral("jpg;jpeg;png;gif;bmp;tif;tiff;ico;webp");
    how.fileTypes = PictureFileTypes(types);
    how.onlyWithLink = box("chbPic_OnlyWithLink")->isChecked();
    QStringList paths;
    int count = 0;
    FindFiles(folder, QStringLiteral("*"), paths, box("chbPic_WithSubFolderPic")->isChecked(), count);
    e.list.SetFooterText(PicCol::HasTextlink, QString());
    e.list.SetFooterText(PicCol::HasAudioLink, QString());
    auto* cancel = findChild<QPushButton*>(QStringLiteral("btnPic_CancelPic"));
    cancel->setEnabled(true);
    m_abort = false;
    how.pump = [] { QApplication::processEvents(); };
    how.aborted = [this] { return m_abort; };
    how.progress = [&e](const QString& t) { e.list.SetFooterText(PicCol::Picfile, t); };
    SearchPictures(e.list, e.links, paths, how);
    m_abort = false;
    cancel->setEnabled(false);
    m_folder = folder;
    e.list.SetFooterText(PicCol::Picfile, QString::number(e.list.Rows()));
    m_busy = false;
    showTitle();
    m_thumbSource = 0;
    m_thumbsDirty = true;
    if (m_filesTabs->currentIndex() == 2)
        refreshThumbnails();
    if (e.list.Rows() > 0)
        showExternRow(1);
    m_externView->table()->setFocus();
}

void FrmPictures::cmdShowLinkList() {
    PictureEnv e = env();
    if (ShowLinkList(e)) {
        m_showsLinkList = true;
        m_thumbSource = 0;
        m_thumbsDirty = true;
    }
    showTitle();
}

void FrmPictures::cmdWriteLinkList() {
    PictureEnv e = env();
    if (RebuildLinkList(e, LinkListFilePath())) {
        m_showsLinkList = false;
        m_folder.clear();
    }
    showTitle();
}

void FrmPictures::cmdRemoveBrokenLinks() {
    PictureEnv e = env();
    RemoveBrokenLinks(e);
    showTitle();
}

void FrmPictures::cmdLinkText() {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    const QString path =
        chooseOpenFile(UiText(QStringLiteral("btnPic_LinkToTxt")), Setting(Ini::LastDialogFolder, Ini::Col1),
                       Caption(CapTextFilesLinkFilter) + QStringLiteral(" (*.txt *.TXT)"));
    if (path.isEmpty())
        return;
    SetSetting(Ini::LastDialogFolder, Ini::Col1, FolderOf(path));
    m_text->setPlainText(ReadLinkedText(path));
    LinkTextToPicture(e, row, path);
}

void FrmPictures::cmdLinkSong() {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    const QString path = chooseOpenFile(UiText(QStringLiteral("btnPic_LinkToAudio")),
                                        Setting(Ini::PicSongFolder, Ini::Col2), AudioFileFilter());
    if (path.isEmpty())
        return;
    SetSetting(Ini::PicSongFolder, Ini::Col2, FolderOf(path));
    LinkSongToPicture(e, row, path);
}

void FrmPictures::cmdLoadLinkedText() {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    m_text->setPlainText(ReadLinkedText(RowTextPath(e.list, row)));
    m_picTabs->setCurrentIndex(1);
}

void FrmPictures::cmdSaveText() {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    if (m_text->toPlainText().isEmpty()) {
        prompt().Tell(Caption(CapNoTextToSave), Prompt::Icon::Information);
        return;
    }
    QString path;
    if (!e.list.CellText(row, PicCol::HasTextlink).isEmpty()) {
        path = RowTextPath(e.list, row);
    } else {
        QString base = e.list.CellText(row, PicCol::Picfile);
        if (const qsizetype dot = base.lastIndexOf(u'.'); dot > 0)
            base.truncate(dot);
        const QString start = Setting(Ini::PicTextFolder, Ini::Col2);
        path = chooseSaveFile(UiText(QStringLiteral("btnPic_SaveTxt")),
                              (start.isEmpty() ? QString() : start + u'/') + base + QStringLiteral(".txt"),
                              Caption(CapTextFilesFilter) + QStringLiteral(" (*.txt)"));
        if (path.isEmpty())
            return;
        SetSetting(Ini::PicTextFolder, Ini::Col2, FolderOf(path));
    }
    QString text = m_text->toPlainText();
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\n', QLatin1String("\r\n"));
    SaveLinkedText(e, row, path, text);
}

void FrmPictures::cmdDeleteText() {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    if (DeleteLinkedText(e, row, PaperbinSetting(Settings())))
        m_text->clear();
}

void FrmPictures::cmdRemoveLink(bool text, bool song) {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    RemovePictureLinks(e, row, text, song);
}

void FrmPictures::cmdPlayLinkedSong() {
    openLinked(RowSongPath);
}

void FrmPictures::cmdOpenLinkedText() {
    openLinked(RowTextPath);
}

void FrmPictures::openLinked(QString (*pathOf)(const DataGrid&, int)) {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    const QString path = pathOf(e.list, row);
    if (!path.isEmpty())
        ShellOpen(path);
}

int FrmPictures::currentPictureRow(PictureEnv& e) {
    const int row = e.list.CurRow();
    return CheckPictureRow(e, row) ? row : 0;
}

void FrmPictures::cmdDeletePicture() {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    const bool shown = m_view->path() == RowPicturePath(e.list, row);
    if (DeletePictureFile(e, row, PaperbinSetting(Settings()))) {
        if (shown)
            m_view->Clear();
        e.list.SetFooterText(PicCol::Picfile, QString::number(e.list.Rows()));
        showTitle();
    }
}

void FrmPictures::cmdCopyPicture() {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    const QString folder = chooseFolder(Setting(Ini::PicExportFolder1, Ini::Col2));
    if (folder.isEmpty())
        return;
    SetSetting(Ini::PicExportFolder1, Ini::Col2, folder);
    const int result = CopyFile(RowPicturePath(e.list, row), folder + u'/', true, &prompt());
    if (result != FileOp::Ok && result != FileOp::Cancelled)
        prompt().Tell(FileOpErrorText(result), Prompt::Icon::Critical);
}

void FrmPictures::cmdExport() {
    DataGrid& list = Grids::LbxPic_Extern();
    if (!CheckExportable(list, prompt()))
        return;
    const QString preset = Setting(Ini::PresetPathExport, Ini::Col1);
    const QString start = ExportStartFolder(Settings(), preset, ExportFolders::PictureList);
    QString name = PictureListExportName(listTitle());
    if (name.contains(u'/')) // a folder in the title: its last part names the file
        name = QStringLiteral("Export ") + name.mid(name.lastIndexOf(u'/') + 1);
    const QString path = chooseSaveFile(
        Caption(CapExportTitle), (start.isEmpty() ? QString() : start + u'/') + name, ExportFilterString());
    if (path.isEmpty())
        return;
    RememberExportFolder(Settings(), preset, path, ExportFolders::PictureList);
    WaitCursor wait;
    ExportByPath(list, path, prompt());
}

void FrmPictures::cmdStep(int delta) {
    DataGrid& list = Grids::LbxPic_Extern();
    if (list.Rows() == 0)
        return;
    const int row = qBound(1, list.CurRow() + delta, list.Rows());
    list.SetCurRow(row); // the view follows and shows the picture
    if (m_view->path() != RowPicturePath(list, row))
        showExternRow(row);
}

void FrmPictures::cmdSlideShow() {
    auto* b = findChild<QPushButton*>(QStringLiteral("btnPic_AutoPic"));
    if (WithoutMnemonic(b->text()) == Caption(CapSlideShowStart)) { // the shown text may carry its Alt key
        DataGrid& list = Grids::LbxPic_Extern();
        if (list.Rows() == 0) {
            prompt().Tell(Caption(CapListEmpty), Prompt::Icon::Information);
            return;
        }
        SetSetting(Ini::PicAutoPic, Ini::Col1, QString::number(m_delay->value()));
        m_filesTabs->setCurrentIndex(0);
        m_picTabs->setCurrentIndex(0);
        b->setText(Caption(CapSlideShowStop));
        if (list.CurRow() < 1)
            list.SetCurRow(1);
        showExternRow(list.CurRow());
        m_slideTimer->start(m_delay->value() * 1000);
    } else {
        m_slideTimer->stop();
        b->setText(Caption(CapSlideShowStart));
    }
}

void FrmPictures::slideNext() {
    DataGrid& list = Grids::LbxPic_Extern();
    if (list.CurRow() >= list.Rows()) {
        // the end of the list ends the show
        findChild<QPushButton*>(QStringLiteral("btnPic_AutoPic"))->setText(Caption(CapSlideShowStart));
        return;
    }
    cmdStep(1);
    m_slideTimer->start(m_delay->value() * 1000);
}

void FrmPictures::linkSongAfterEmbedding(const QString& picture, const QString& song) {
    SetPictureLink(Grids::LbxPic_LinkToPic(), picture, LinkCol::Song, song);
    Grids::LbxPic_Extern().Tag = QStringLiteral("changes");
}

void FrmPictures::cmdEmbedShownExtern(bool asLink) {
    PictureEnv e = env();
    const int row = currentPictureRow(e);
    if (row == 0)
        return;
    const QString song = chooseOpenFile(UiText(QStringLiteral("btnPic_SaveExternAsiPic")),
                                        Setting(Ini::PicSongFolder, Ini::Col2), AudioFileFilter());
    if (song.isEmpty())
        return;
    SetSetting(Ini::PicSongFolder, Ini::Col2, FolderOf(song));
    const QString picture = RowPicturePath(e.list, row);
    TagEngine& engine = TagEngine::Shared();
    QString error;
    WaitCursor wait;
    if (!StorePictureInSong(engine, song, picture, m_description->text(), qMax(0, m_picType->currentIndex()),
                            0, asLink, &error)) {
        prompt().TellUntitled(error, Prompt::Icon::Critical);
        return;
    }
    linkSongAfterEmbedding(picture, song);
    QString folder = FolderOf(song), name = song.mid(song.lastIndexOf(u'/') + 1);
    e.list.SetCellText(row, PicCol::Song, name);
    e.list.SetCellText(row, PicCol::PathSong, folder);
    e.list.SetCellText(row, PicCol::HasAudioLink, LinkStatusText(song));
}

// FrmSText: the side lists: the searches for songs with LRC and for text and LRC files,
// and the commands on their files (copy, move, rename, delete) with their row menu.
#include "app/DataGridView.h"
#include "app/FrmSText.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "text/modSTextFind.h"

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QTabWidget>

namespace {
QString FolderOf(const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash > 0 ? path.left(slash) : QString();
}
} // namespace

// ---- the searches ----------------------------------------------------------------------------

// Asks for the folder and runs one search with the wait cursor; the list gets its count,
// its order and row 1 current.
void FrmSText::runSearch(DataGrid& g, int nameCol, bool subfolders, bool add,
                         const std::function<void(const QString&, const STextFindOptions&)>& search) {
    const QString folder = chooseFolder(Setting(Ini::PathSText1, Ini::Col2), Caption(CapChooseFolderTitle));
    if (folder.isEmpty())
        return;
    SetSetting(Ini::PathSText1, Ini::Col2, folder);
    STextFindOptions o;
    o.subfolders = subfolders;
    o.add = add;
    o.progress = [](int done, const QString&) {
        if (done % 50 == 0)
            QCoreApplication::processEvents();
    };
    QApplication::setOverrideCursor(Qt::WaitCursor);
    search(folder, o);
    QApplication::restoreOverrideCursor();
    FinishFindList(g, nameCol);
}

void FrmSText::findSongsWithLrc() {
    DataGrid& g = *LbxSongWithLrc->grid();
    runSearch(
        g, SongLrcCol::FileName, chbSText_SubfolderSong->isChecked(), chbSText_AddSongLrc->isChecked(),
        [&](const QString& folder, const STextFindOptions& o) { FindSongsWithLrc(g, *m_engine, folder, o); });
}

void FrmSText::findTxtLrc() {
    const TxtLrcKind kind = optSText_Txt->isChecked()   ? TxtLrcKind::Txt
                            : optSText_Lrc->isChecked() ? TxtLrcKind::Lrc
                                                        : TxtLrcKind::Both;
    DataGrid& g = *LbxTxtLrc->grid();
    runSearch(g, TxtLrcCol::FileName, chbSText_SubfolderTxtLrc->isChecked(), chbSText_AddTxTLrc->isChecked(),
              [&](const QString& folder, const STextFindOptions& o) { FindTxtLrcFiles(g, folder, kind, o); });
}

// ---- the files of the search lists -----------------------------------------------------------

void FrmSText::cmdCopyMove(bool move) {
    bool fromSongs = false;
    const QString path = selectedFilePath(&fromSongs);
    if (path.isEmpty()) {
        prompt().Tell(Caption(CapNothingChosen));
        return;
    }
    const QString target = chooseFolder(Setting(Ini::PathCopyTarget, Ini::Col2), Caption(CapMoveTargetTitle));
    if (target.isEmpty())
        return;
    SetSetting(Ini::PathCopyTarget, Ini::Col2, target);
    QString final;
    const int rc =
        move ? MoveFile(path, target + u'/', &final) : CopyFile(path, target + u'/', true, &prompt(), &final);
    if (rc != FileOp::Ok) {
        if (rc != FileOp::Cancelled)
            prompt().Tell(FileOpErrorText(rc), Prompt::Icon::Critical);
        return;
    }
    if (move) {
        DataGrid& g = fromSongs ? *LbxSongWithLrc->grid() : *LbxTxtLrc->grid();
        const int col = fromSongs ? SongLrcCol::Folder : TxtLrcCol::Folder;
        const int nameCol = fromSongs ? SongLrcCol::FileName : TxtLrcCol::FileName;
        g.SetCellText(g.CurRow(), col, FolderOf(final));
        g.SetCellText(g.CurRow(), nameCol, final.mid(final.lastIndexOf(u'/') + 1));
    }
    prompt().Tell(Caption(CapOneFileMoved));
}

void FrmSText::cmdDelete(bool fromMenu) {
    // the menu takes its path from the file list, whichever list it was opened on
    DataGrid& g = *LbxTxtLrc->grid();
    const int r = g.CurRow();
    if (r < 1 || r > g.Rows()) {
        prompt().Tell(Caption(fromMenu ? CapNothingChosen : CapNoRowSelected));
        return;
    }
    const QString path = g.CellText(r, TxtLrcCol::Folder) + u'/' + g.CellText(r, TxtLrcCol::FileName);
    int rc;
    if (fromMenu) {
        // the question names the file: the menu of the song list deletes it too
        if (!prompt().AskYesNo(Caption(CapDeleteFileQuestion) + QStringLiteral("\n") + path))
            return;
        rc = DeleteFile(path, PaperbinSetting(Settings()), false, &prompt());
        prompt().Tell(Caption(rc == FileOp::Ok ? CapOneFileDeleted : CapDeleteFailed));
    } else {
        rc = DeleteFile(path, PaperbinSetting(Settings()), true, &prompt());
        if (rc != FileOp::Ok && rc != FileOp::Cancelled)
            prompt().Tell(Caption(CapDeleteFailed) + QStringLiteral("\n") + FileOpErrorText(rc),
                          Prompt::Icon::Critical);
    }
    if (rc == FileOp::Ok) {
        g.DeleteRow(r);
        g.SetFooterText(TxtLrcCol::FileName, QString::number(g.Rows()));
    }
}

void FrmSText::cmdRename(bool songs) {
    DataGrid& g = songs ? *LbxSongWithLrc->grid() : *LbxTxtLrc->grid();
    const int nameCol = songs ? SongLrcCol::FileName : TxtLrcCol::FileName;
    const int folderCol = songs ? SongLrcCol::Folder : TxtLrcCol::Folder;
    const int r = g.CurRow();
    if (r < 1 || r > g.Rows()) {
        prompt().Tell(Caption(CapNothingChosen));
        return;
    }
    const QString old = g.CellText(r, nameCol);
    const std::optional<QString> name = prompt().InputBox(Caption(CapNewFileNamePrompt), old);
    if (!name || name->trimmed().isEmpty() || *name == old)
        return;
    QString final;
    if (RenameFile(g.CellText(r, folderCol) + u'/' + old, name->trimmed(), &final) != FileOp::Ok) {
        prompt().Tell(Caption(CapRenameFailedPlaylist), Prompt::Icon::Warning);
        return;
    }
    g.SetCellText(r, nameCol, final.mid(final.lastIndexOf(u'/') + 1));
}

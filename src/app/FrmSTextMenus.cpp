// FrmSText: the right-click menus of the text and of the two search lists. Each is built
// fresh from the state of its list (text/modSTextMenus), shown by ContextMenuView, and the
// chosen key runs its command; a menu closed without a choice runs nothing.
#include "app/ContextMenuView.h"
#include "app/DataGridView.h"
#include "app/FrmSText.h"
#include "core/ControlCaptions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "text/modSText.h"
#include "text/modSTextFind.h"
#include "text/modSTextMenus.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QTableView>

using namespace SText;

namespace {

QString STextMenuCaption(const QString& key) {
    return NamedCaption(QStringLiteral("mnuSText_") + key);
}
QString TxtLrcMenuCaption(const QString& key) {
    return NamedCaption(QStringLiteral("mnuTxtLrc_") + key);
}
QString SongLrcMenuCaption(const QString& key) {
    return NamedCaption(QStringLiteral("mnuSongLrc_") + key);
}

bool ValidRow(const DataGrid& g) {
    return g.CurRow() >= 1 && g.CurRow() <= g.Rows();
}

void SetMarks(DataGrid& g, const QString& mark) {
    g.LockUpdate(true);
    for (int r = 1; r <= g.Rows(); ++r)
        g.SetCellText(r, SongLrcCol::Mark, mark);
    g.LockUpdate(false);
}

} // namespace

void FrmSText::showRowMenu(const QPoint& global) {
    DataGrid& g = list();
    STextMenuState s;
    s.rows = g.Rows();
    s.curRow = g.CurRow();
    s.refrainRows = RefrainRows(g);
    for (int r : std::as_const(s.refrainRows))
        s.refrainTexts << g.CellText(r, ColText);
    runRowMenuKey(ExecContextMenu(LbxSText->table(), BuildSTextMenu(s, &STextMenuCaption), global,
                                  QStringLiteral("mnuSText")));
}

void FrmSText::runRowMenuKey(const QString& key) {
    DataGrid& g = list();
    int row = -1;
    if (key.isEmpty())
        return;
    if (key == u"AddRowBefore" || key == u"AddRowAfter")
        InsertSTextRow(g, key == u"AddRowBefore");
    else if (key == u"LinkToSong")
        cmdLinkToSong();
    else if ((row = RefrainEntryRow(key)) >= 1)
        InsertRefrain(g, row);
    else if (key == u"InsertAll")
        InsertAllRefrains(g);
    else if (key == u"InsertLine")
        InsertBlankLine(g);
    else if (key == u"DeleteRfAll")
        RemoveRefrainMarks(g);
    LbxSText->table()->setFocus();
}

void FrmSText::showTxtLrcMenu(bool songs, const QPoint& global) {
    DataGrid& files = *LbxTxtLrc->grid();
    ContextMenuEntries entries;
    if (songs) {
        DataGrid& g = *LbxSongWithLrc->grid();
        SongLrcMenuState s;
        s.rows = g.Rows();
        s.curRow = g.CurRow();
        s.anyMark = g.FindRow(QStringLiteral("p"), SongLrcCol::Mark) > 0;
        s.windowReady = bool(startScrollWindow);
        s.fileListRow = ValidRow(files);
        entries = BuildSongLrcMenu(s, &SongLrcMenuCaption);
    } else {
        TxtLrcMenuState s;
        s.rows = files.Rows();
        s.curRow = files.CurRow();
        s.kindShown = files.Column(TxtLrcCol::Kind).visible;
        for (int r = 1; r <= files.Rows() && !s.anyKind; ++r)
            s.anyKind = !files.CellText(r, TxtLrcCol::Kind).isEmpty();
        entries = BuildTxtLrcMenu(s, &TxtLrcMenuCaption);
    }
    QTableView* table = (songs ? LbxSongWithLrc : LbxTxtLrc)->table();
    runTxtLrcMenuKey(songs,
                     ExecContextMenu(table, entries, global,
                                     songs ? QStringLiteral("mnuSongLrc") : QStringLiteral("mnuTxtLrc")));
}

void FrmSText::runTxtLrcMenuKey(bool songs, const QString& key) {
    DataGrid& g = songs ? *LbxSongWithLrc->grid() : *LbxTxtLrc->grid();
    if (key.isEmpty())
        return;
    if (key == u"TextToList") {
        cmdLoadSelected(true);
    } else if (key == u"PlayInList" || key == u"PlayInWindow") {
        (key == u"PlayInList" ? optSText_PlayInListbox : optSText_PlayInWindow)->setChecked(true);
        chbSText_PlayLrc2->setChecked(true);
        cmdLoadSelected(false);
    } else if (key == u"MarkAllSync") {
        SetMarks(g, QStringLiteral("p"));
    } else if (key == u"EraseAllMarksSync") {
        SetMarks(g, QString());
    } else if (key == u"RenameFile") {
        cmdRename(songs);
    } else if (key == u"CopyFile" || key == u"MoveFile") {
        cmdCopyMove(key == u"MoveFile");
    } else if (key == u"KillFile") {
        cmdDelete(true);
    } else if (key == u"txtlrc") {
        g.SetColumnVisible(TxtLrcCol::Kind, !g.Column(TxtLrcCol::Kind).visible);
    } else if (key == u"lrcInSong") {
        if (ValidRow(g))
            LoadSongText(g.CellText(g.CurRow(), SongLrcCol::Folder) + u'/' +
                         g.CellText(g.CurRow(), SongLrcCol::FileName));
    }
}

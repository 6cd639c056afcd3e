#include "picture/modExternPictures.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/TextCodec.h"
#include "file/ftcFileOps.h"
#include "file/modFileCommands.h"
#include "list/ftcNames.h"
#include "picture/PictureColumns.h"
#include "picture/modLinkList.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"

#include <QFile>
#include <QRegularExpression>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kMaxTextLines = 20000;
constexpr qint64 kMaxTextBytes = 64LL * 1024 * 1024;

QString Join(const QString& folder, const QString& name) {
    if (folder.isEmpty() || name.isEmpty())
        return QString();
    return folder + u'/' + name;
}

void Renumber(DataGrid& list) {
    RenumberRowKeys(list);
}

} // namespace

void DefineExternPictureColumns(DataGrid& list) {
    if (list.Cols() > 0)
        return;
    list.AddColumn(QStringLiteral("HasTextlink"), QString(), 700, Align::Center);
    list.AddColumn(QStringLiteral("HasAudioLink"), QString(), 700, Align::Center);
    list.AddColumn(QStringLiteral("Picfile"), QString(), 3600);
    list.AddColumn(QStringLiteral("Free"), QString(), 1800);
    list.AddColumn(QStringLiteral("Textfile"), QString(), 2400);
    list.AddColumn(QStringLiteral("Song"), QString(), 2400);
    list.AddColumn(QStringLiteral("PathPic"), QString(), 4000);
    list.AddColumn(QStringLiteral("PathTxt"), QString(), 3000);
    list.AddColumn(QStringLiteral("PathSong"), QString(), 3000);
    list.AddColumn(QStringLiteral("PicType"), QString(), 900);
}

void SetExternPictureCaptions(DataGrid& list) {
    const CaptionRow rows[PicCol::Count] = {CapHeaderTextLink,      CapHeaderSongLink,   CapHeaderPictureFile,
                                            CapHeaderFree,          CapHeaderTextFile,   CapHeaderSong,
                                            CapHeaderPictureFolder, CapHeaderTextFolder, CapHeaderSongFolder,
                                            CapHeaderPictureType};
    for (int c = 1; c <= PicCol::Count && c <= list.Cols(); ++c)
        list.SetColumnCaption(c, Caption(rows[c - 1]));
}

void RenumberRowKeys(DataGrid& list) {
    for (int r = 1; r <= list.Rows(); ++r)
        list.SetRowKey(r, QString::number(r));
}

QString RowPicturePath(const DataGrid& list, int row) {
    return Join(list.CellText(row, PicCol::PathPic), list.CellText(row, PicCol::Picfile));
}
QString RowTextPath(const DataGrid& list, int row) {
    return Join(list.CellText(row, PicCol::PathTxt), list.CellText(row, PicCol::Textfile));
}
QString RowSongPath(const DataGrid& list, int row) {
    return Join(list.CellText(row, PicCol::PathSong), list.CellText(row, PicCol::Song));
}

QString LinkStatusText(const QString& path) {
    return Caption(PosixFile::ExistsFollowed(path) ? CapStatusFound : CapStatusMissing);
}

bool PictureSearchProgressDue(int position, int total) {
    return position % (total < 201 ? 10 : 50) == 0;
}

QStringList PictureFileTypes(const QString& settingText) {
    QStringList types;
    for (const QString& t :
         settingText.split(QRegularExpression(QStringLiteral("[;,\\s]+")), Qt::SkipEmptyParts)) {
        QString e = t.trimmed().toLower();
        if (e.startsWith(u'*'))
            e.remove(0, 1);
        if (e.startsWith(u'.'))
            e.remove(0, 1);
        if (!e.isEmpty())
            types << e;
    }
    return types;
}

QStringList PictureRowCells(const QString& picturePath, const DataGrid& links, int linkRow, bool checkText) {
    QStringList cells(PicCol::Count);
    QString folder, name, base, ext;
    SplitPath(picturePath, folder, name);
    SplitExtension(name, base, ext);
    cells[PicCol::Picfile - 1] = name;
    cells[PicCol::PathPic - 1] = folder;
    cells[PicCol::PicType - 1] = ext;
    if (linkRow > 0) {
        const QString text = LinkCellPath(links, linkRow, LinkCol::Text);
        if (!text.isEmpty()) {
            QString f, n;
            SplitPath(text, f, n);
            cells[PicCol::Textfile - 1] = n;
            cells[PicCol::PathTxt - 1] = f;
            cells[PicCol::HasTextlink - 1] = checkText ? LinkStatusText(text) : Caption(CapStatusFound);
        }
        const QString song = LinkCellPath(links, linkRow, LinkCol::Song);
        if (!song.isEmpty()) {
            QString f, n;
            SplitPath(song, f, n);
            cells[PicCol::Song - 1] = n;
            cells[PicCol::PathSong - 1] = f;
            cells[PicCol::HasAudioLink - 1] = LinkStatusText(song);
        }
    }
    return cells;
}

int SearchPictures(DataGrid& list, const DataGrid& links, const QStringList& paths,
                   const PictureSearch& how) {
    const QHash<QString, int> index = LinkListIndex(links);
    const int total = int(paths.size());
    int added = 0;
    list.LockUpdate(true);
    for (int n = 0; n < total; ++n) {
        if (how.pump)
            how.pump();
        if (how.aborted && how.aborted())
            break;
        if (how.progress && PictureSearchProgressDue(n + 1, total))
            how.progress(Caption(CapProgressFile) + QString::number(n + 1) + Caption(CapProgressOf) +
                         QString::number(total));
        const QString& path = paths[n];
        if (path.startsWith(QLatin1String(">>")) || SweepSkips(path))
            continue;
        if (!how.fileTypes.contains(path.right(3).toLower()))
            continue;
        const int linkRow = index.value(path, 0);
        if (how.onlyWithLink && linkRow == 0)
            continue;
        list.AddRow(PictureRowCells(path, links, linkRow, true), QString::number(list.Rows() + 1));
        ++added;
    }
    list.DoSort(QStringLiteral("7,3"), 1);
    Renumber(list);
    if (list.Rows() > 0)
        list.SetCurRow(1);
    list.LockUpdate(false);
    list.Refresh();
    return added;
}

bool ShowLinkList(PictureEnv& env) {
    if (env.links.Rows() == 0 || env.links.Cols() < 1) {
        env.prompt.Tell(Caption(CapLinkListEmpty), Prompt::Icon::Information);
        return false;
    }
    if (!env.prompt.AskYesNo(Caption(CapShowLinkListQuestion), true, Prompt::Icon::Question))
        return false;
    env.list.LockUpdate(true);
    env.list.Clear();
    for (int r = 1; r <= env.links.Rows(); ++r)
        env.list.AddRow(PictureRowCells(env.links.CellText(r, LinkCol::Picture), env.links, r, false),
                        QString::number(r));
    if (env.list.Rows() > 0)
        env.list.SetCurRow(1);
    env.list.LockUpdate(false);
    env.list.Refresh();
    return true;
}

bool RebuildLinkList(PictureEnv& env, const QString& linkListPath) {
    if (!env.prompt.AskYesNo(Caption(CapRebuildLinkListQuestion), false, Prompt::Icon::Question))
        return false;
    env.links.LockUpdate(true);
    env.links.Clear();
    EnsureLinkListColumns(env.links);
    for (int r = 1; r <= env.list.Rows(); ++r) {
        QStringList cells(LinkCol::Count);
        cells[LinkCol::Picture - 1] =
            env.list.CellText(r, PicCol::PathPic) + u'/' + env.list.CellText(r, PicCol::Picfile);
        cells[LinkCol::Text - 1] = RowTextPath(env.list, r);
        cells[LinkCol::Song - 1] = RowSongPath(env.list, r);
        env.links.AddRow(cells);
    }
    env.links.LockUpdate(false);
    if (!env.links.SaveFile(linkListPath)) {
        env.prompt.Tell(Caption(CapFileSaveFailed) + u'\n' + env.links.LastFileError(),
                        Prompt::Icon::Critical);
        return false;
    }
    env.list.Clear();
    env.list.Tag.clear();
    env.prompt.Tell(Caption(CapLinkListRebuilt), Prompt::Icon::Information);
    return true;
}

int RemoveBrokenLinks(PictureEnv& env) {
    if (env.list.Rows() == 0) {
        env.prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return -1;
    }
    if (!env.prompt.AskYesNo(Caption(CapRemoveBrokenLinksQuestion), true, Prompt::Icon::Question))
        return -1;
    const QString missing = Caption(CapStatusMissing);
    int removed = 0;
    env.list.LockUpdate(true);
    for (int r = env.list.Rows(); r >= 1; --r) {
        const QString pic = env.list.CellText(r, PicCol::Picfile);
        if (!pic.isEmpty() && !PosixFile::ExistsFollowed(RowPicturePath(env.list, r))) {
            env.list.DeleteRow(r);
            ++removed;
            continue;
        }
        if (env.list.CellView(r, PicCol::HasTextlink) == missing) {
            for (int c : {int(PicCol::HasTextlink), int(PicCol::Textfile), int(PicCol::PathTxt)})
                env.list.SetCellText(r, c, QString());
        }
        if (env.list.CellView(r, PicCol::HasAudioLink) == missing) {
            for (int c : {int(PicCol::HasAudioLink), int(PicCol::Song), int(PicCol::PathSong)})
                env.list.SetCellText(r, c, QString());
        }
    }
    Renumber(env.list);
    env.list.LockUpdate(false);
    env.list.Refresh();
    env.list.SetFooterText(PicCol::Picfile, QString::number(env.list.Rows()));
    env.list.Tag = QStringLiteral("changes");
    env.prompt.Tell(Caption(CapEntriesRemoved) + QString::number(removed), Prompt::Icon::Information);
    return removed;
}

bool CheckPictureRow(PictureEnv& env, int row) {
    if (env.list.Rows() == 0) {
        env.prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return false;
    }
    if (row < 1 || row > env.list.Rows()) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return false;
    }
    return true;
}

QString ReadLinkedText(const QString& path) {
    const int fd = ::open(PosixFile::Native(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return QString();
    QFile in;
    if (!in.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return QString();
    }
    const QByteArray bytes = in.read(kMaxTextBytes);
    QString text = DecodeTextFile(bytes);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QStringList lines = text.split(u'\n');
    if (lines.size() > kMaxTextLines)
        lines = lines.mid(0, kMaxTextLines);
    return lines.join(QLatin1String("\r\n"));
}

namespace {
// The cells of one link of a row (name, folder, status) and its column in the link list.
void SetRowLink(PictureEnv& env, int row, const QString& path, int nameCol, int folderCol, int statusCol,
                const QString& status, int linkCol) {
    QString folder, name;
    SplitPath(path, folder, name);
    env.list.SetCellText(row, nameCol, name);
    env.list.SetCellText(row, folderCol, folder);
    env.list.SetCellText(row, statusCol, status);
    SetPictureLink(env.links, RowPicturePath(env.list, row), linkCol, path);
    env.list.Tag = QStringLiteral("changes");
}
} // namespace

void LinkTextToPicture(PictureEnv& env, int row, const QString& textPath) {
    SetRowLink(env, row, textPath, PicCol::Textfile, PicCol::PathTxt, PicCol::HasTextlink,
               Caption(CapStatusFound), LinkCol::Text);
}

void LinkSongToPicture(PictureEnv& env, int row, const QString& songPath) {
    SetRowLink(env, row, songPath, PicCol::Song, PicCol::PathSong, PicCol::HasAudioLink,
               LinkStatusText(songPath), LinkCol::Song);
}

void RemovePictureLinks(PictureEnv& env, int row, bool text, bool song) {
    const QString pic = RowPicturePath(env.list, row);
    if (text) {
        SetPictureLink(env.links, pic, LinkCol::Text, QString());
        for (int c : {int(PicCol::HasTextlink), int(PicCol::Textfile), int(PicCol::PathTxt)})
            env.list.SetCellText(row, c, QString());
    }
    if (song) {
        SetPictureLink(env.links, pic, LinkCol::Song, QString());
        for (int c : {int(PicCol::HasAudioLink), int(PicCol::Song), int(PicCol::PathSong)})
            env.list.SetCellText(row, c, QString());
    }
    if (text || song)
        env.list.Tag = QStringLiteral("changes");
}

bool SaveLinkedText(PictureEnv& env, int row, const QString& path, const QString& text) {
    QString why;
    if (!SafeFile::WriteWholeFile(path, text.toUtf8(), &why)) {
        env.prompt.Tell(Caption(CapFileSaveFailed) + u'\n' + why, Prompt::Icon::Critical);
        return false;
    }
    LinkTextToPicture(env, row, path);
    return true;
}

namespace {
// Deletes a file when it is there (to the trash unless `paperbin` says for good).
bool RemoveIfThere(PictureEnv& env, const QString& path, bool paperbin) {
    if (path.isEmpty())
        return false;
    return !PosixFile::Exists(path) || KillFile(path, 1, true, paperbin, &env.prompt);
}
} // namespace

bool DeleteLinkedText(PictureEnv& env, int row, bool paperbin) {
    if (!RemoveIfThere(env, RowTextPath(env.list, row), paperbin))
        return false;
    RemovePictureLinks(env, row, true, false);
    return true;
}

bool DeletePictureFile(PictureEnv& env, int row, bool paperbin) {
    const QString pic = RowPicturePath(env.list, row);
    if (!RemoveIfThere(env, pic, paperbin))
        return false;
    if (const int l = FindLinkRow(env.links, pic))
        env.links.DeleteRow(l);
    env.list.DeleteRow(row);
    Renumber(env.list);
    env.list.Tag = QStringLiteral("changes");
    return true;
}

// modTexte, second half: deleting texts and lyric entries, links between texts and songs,
// the hand-over to the synchronising editor and the direct edit of the lists.
#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "file/ftcFileOps.h"
#include "list/ftcNames.h"
#include "list/modList.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "tag/TagEngine.h"
#include "text/TexteColumns.h"
#include "text/modTexte.h"
#include "text/modTexteShared.h"

#include <QDir>
#include <array>

using namespace qlt_texte;

namespace {

// The fields that take a text's path, in the order they are tried.
const std::array<TagField, 8> kLinkFields = {
    TagField::V2AudFileUrl, TagField::V2PublisherUrl, TagField::V2EncodedBy, TagField::V2Copyright,
    TagField::V2OrigArtist, TagField::V2Orchestra,    TagField::V2Conductor, TagField::V2Composer};

// Types whose tag can't take a link: WMA, MONKEY, WAV, MPP, AAC, MP4.
bool TypeWithoutLink(int type) {
    return type == 2 || type == 3 || type == 5 || type == 7 || type == 8 || type == 9;
}

} // namespace

bool DeleteTextFile(TexteEnv& env, bool toTrash) {
    int row = 0;
    if (!RowChosen(env, env.txt, false, row))
        return false;
    const QString path = TxtRowPath(env.txt, row);
    const int r = DeleteFile(path, toTrash, true, &env.prompt);
    if (r == FileOp::Cancelled)
        return false;
    if (PosixFile::Exists(path)) {
        TellFailure(env, Caption(CapDeleteFailed) + u'\n' + FileOpErrorText(r));
        return false;
    }
    env.txt.DeleteRow(row);
    ShowTxtCount(env.txt);
    return true;
}

bool DeleteLyrics(TexteEnv& env) {
    DataGrid& g = env.lyrics;
    if (!ListNotEmpty(g, env.prompt))
        return false;
    const int row = g.CurRow() > 0 ? g.CurRow() : (g.SelCount() > 0 ? g.SelRow(1) : 0);
    if (row == 0 || g.CellText(row, LyrCol::Index).isEmpty()) {
        env.prompt.Tell(Caption(CapNoLyricEntry), Prompt::Icon::Information);
        return false;
    }
    if (!env.prompt.AskYesNo(Caption(CapDeleteLyricQuestion), false))
        return false;
    const QString path = LyricsRowPath(g, row);
    const int index = g.CellText(row, LyrCol::Index).toInt();
    TagEngine& e = env.engine;
    bool ok = e.OpenFile(path) != 0;
    if (ok) {
        if (env.deleteAll)
            e.ClearLyrics();
        else
            ok = e.SetLyric(index, QString(), QString(), QString()) != 0;
    }
    if (!ok || !e.SaveV2(path)) {
        TellFailure(env, e.LastError());
        return false;
    }
    for (int r = 1; r <= g.Rows(); ++r) {
        if (LyricsRowPath(g, r) != path)
            continue;
        const int at = g.CellText(r, LyrCol::Index).toInt();
        if (r == row || env.deleteAll) {
            g.SetCellText(r, LyrCol::Index, QString());
            g.SetCellText(r, LyrCol::Language, QString());
            g.SetCellText(r, LyrCol::Description, QString());
        } else if (at > index) {
            g.SetCellText(r, LyrCol::Index, QString::number(at - 1)); // the later entries move up
        }
    }
    return true;
}

QStringList LinkFieldNames() {
    QStringList names;
    for (TagField f : kLinkFields)
        names << TagFieldName(f);
    return names;
}

bool LinkTextToSong(TexteEnv& env) {
    DataGrid& t = env.txt;
    if (!ListNotEmpty(t, env.prompt) || !AtLeastRowsSelected(t, 1, env.prompt))
        return false;
    const QString text = TxtRowPath(t, t.SelRow(1));
    const QString start = SettingCell(env, Ini::TexteSongFolder, Ini::Col1);
    const QString song = env.chooseSongFile ? env.chooseSongFile(start) : QString();
    if (song.isEmpty())
        return false;
    StoreFolderOf(env, Ini::TexteSongFolder, Ini::Col1, song);
    TagEngine& e = env.engine;
    const int type = e.OpenFile(song);
    if (type == 0 && !env.prompt.AskYesNo(Caption(CapFileUnreadableContinue)))
        return false;
    if (TypeWithoutLink(type)) {
        env.prompt.Tell(Caption(CapLinkTypeNotSupported), Prompt::Icon::Information);
        return false;
    }
    bool placed = false;
    for (TagField f : kLinkFields) {
        if (e.Field(f).isEmpty()) {
            e.SetField(f, text);
            placed = true;
            break;
        }
    }
    if (!placed) {
        env.prompt.Tell(Caption(CapLinkFieldsFull), Prompt::Icon::Information);
        return false;
    }
    if (!e.SaveV2(song)) {
        TellFailure(env, Caption(CapLinkSaveFailed) + e.LastError());
        return false;
    }
    if (!env.noMsg)
        env.prompt.Tell(Caption(CapLinkSaved), Prompt::Icon::Information);
    return true;
}

// ---- links inside a text ---------------------------------------------------------------------

QStringList LinksInText(const QString& text) {
    QStringList links;
    for (const QString& line : SplitTextLines(text)) {
        if (!IsSongLinkLine(line))
            continue;
        const QString path = line.trimmed();
        if (PosixFile::ExistsFollowed(path))
            links << path;
    }
    return links;
}

bool InsertLinkIntoText(TexteEnv& env, TextPair& boxes) {
    const QString start = SettingCell(env, Ini::LastDialogFolder, Ini::Col1);
    const QString path = env.chooseAnyFile ? env.chooseAnyFile(start) : QString();
    if (path.isEmpty())
        return false;
    StoreFolderOf(env, Ini::LastDialogFolder, Ini::Col1, path);
    boxes.Active() = path + QStringLiteral("\r\n") + boxes.Active();
    return true;
}

int CopyOrMoveLinks(TexteEnv& env, const QStringList& links, bool move) {
    const QString start = SettingCell(env, Ini::PathTexteLinks, Ini::Col2);
    const QString folder = env.chooseTargetDir ? env.chooseTargetDir(start) : QString();
    if (folder.isEmpty())
        return -1;
    StoreSetting(env, Ini::PathTexteLinks, Ini::Col2, folder);
    const QString target = folder.endsWith(u'/') ? folder : folder + u'/';
    int done = 0;
    for (const QString& source : links) {
        const int r = move ? MoveFile(source, target) : CopyFile(source, target, true, &env.prompt);
        done += r == FileOp::Ok;
    }
    if (!env.noMsg)
        env.prompt.Tell(Caption(move ? CapFilesMoved : CapFilesCopied) + QString::number(done),
                        Prompt::Icon::Information);
    return done;
}

// ---- to the synchronising editor ----------------------------------------------------------------

QString SyncTempPath() {
    return AppFile(QStringLiteral("temp/")) + QString::fromUtf16(kSyncTempName);
}

bool HandTextToEditor(TexteEnv& env, const TextPair& boxes, const std::function<void(const QString&)>& open) {
    const QString& text = boxes.active == 2 ? boxes.text[1] : boxes.text[0];
    if (text.isEmpty()) {
        env.prompt.Tell(Caption(CapNoTextToSave), Prompt::Icon::Information);
        return false;
    }
    QDir().mkpath(AppFile(QStringLiteral("temp")));
    const QString path = SyncTempPath();
    QString error;
    // The editor's reader takes a line only with its line end, so the last line gets one.
    QByteArray bytes = TextFileBytes(text);
    if (!bytes.endsWith("\r\n"))
        bytes += "\r\n";
    if (!SafeFile::WriteWholeFile(path, bytes, &error)) {
        TellFailure(env, Caption(CapFileSaveFailed) + u'\n' + error);
        return false;
    }
    if (open)
        open(path);
    ::unlink(PosixFile::Native(path).constData());
    return true;
}

// ---- direct edit ------------------------------------------------------------------------------

bool EditLyricCell(TexteEnv& env, int row, int col, const QString& value) {
    DataGrid& g = env.lyrics;
    if (row < 1 || row > g.Rows() || (col != LyrCol::Language && col != LyrCol::Description))
        return false;
    if (g.CellText(row, LyrCol::Index).isEmpty()) {
        env.prompt.Tell(Caption(CapLanguageCodePrompt), Prompt::Icon::Information);
        return false;
    }
    if (col == LyrCol::Language && value.size() != 3) {
        env.prompt.Tell(Caption(CapLanguageCodeLength), Prompt::Icon::Warning);
        return false;
    }
    const QString path = LyricsRowPath(g, row);
    const int index = g.CellText(row, LyrCol::Index).toInt();
    TagEngine& e = env.engine;
    if (e.OpenFile(path) == 0 || index > e.LyricCount()) {
        TellFailure(env, e.LastError());
        return false;
    }
    const QString language = col == LyrCol::Language ? value : e.LyricLanguage(index);
    const QString description = col == LyrCol::Description ? value : e.LyricDescription(index);
    if (!e.SetLyric(index, language, description, e.LyricText(index)) || !e.SaveV2(path)) {
        TellFailure(env, e.LastError());
        return false;
    }
    g.SetCellText(row, col, value);
    return true;
}

bool RenameTextFile(TexteEnv& env, int row, const QString& newName) {
    DataGrid& g = env.txt;
    if (row < 1 || row > g.Rows())
        return false;
    const QString old = g.CellText(row, TxtCol::FileName);
    if (newName == old)
        return true;
    QString finalPath;
    const QString folder = g.CellText(row, TxtCol::Folder);
    if (newName.trimmed().isEmpty() || newName.contains(u'/') ||
        RenameFile(TxtRowPath(g, row), folder + u'/' + newName, &finalPath) != FileOp::Ok) {
        env.prompt.Tell(Caption(CapRenameFailed), Prompt::Icon::Critical);
        return false;
    }
    QString dir, name;
    SplitPath(finalPath.isEmpty() ? folder + u'/' + newName : finalPath, dir, name);
    g.SetCellText(row, TxtCol::FileName, name);
    return true;
}

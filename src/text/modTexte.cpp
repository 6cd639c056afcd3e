#include "text/modTexte.h"

#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/TextCodec.h"
#include "list/ftcNames.h"
#include "list/ftcReadPool.h"
#include "list/modList.h"
#include "list/modScan.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "tag/TagEngine.h"
#include "text/TexteColumns.h"
#include "text/modTexteShared.h"

#include <fcntl.h>
#include <unistd.h>

namespace qlt_texte {

QString SettingCell(TexteEnv& env, int row, int col) {
    DataGrid& s = env.Settings();
    return s.Rows() >= row && s.Cols() >= col ? s.CellText(row, col) : QString();
}

void StoreSetting(TexteEnv& env, int row, int col, const QString& value) {
    DataGrid& s = env.Settings();
    if (s.Rows() >= row && s.Cols() >= col)
        s.SetCellText(row, col, value);
    if (env.saveSettingsFile && !env.settings)
        SaveSettings();
}

void StoreFolderOf(TexteEnv& env, int row, int col, const QString& path) {
    QString folder, name;
    SplitPath(path, folder, name);
    StoreSetting(env, row, col, folder);
}

bool RowChosen(TexteEnv& env, const DataGrid& g, bool byClick, int& row) {
    if (!ListNotEmpty(g, env.prompt))
        return false;
    row = g.SelCount() > 0 ? g.SelRow(1) : 0;
    if (row == 0 && g.CurRow() > 0 && byClick)
        row = g.CurRow();
    if (row == 0 && byClick)
        row = 1;
    if (row == 0) {
        env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
        return false;
    }
    return true;
}

void TellFailure(TexteEnv& env, const QString& text) {
    env.prompt.Tell(text, Prompt::Icon::Critical);
}

} // namespace qlt_texte

using namespace qlt_texte;

namespace {

bool ReadBytes(const QString& path, QByteArray& bytes) {
    return PosixFile::ReadWholeFile(path, bytes);
}

// The rows one file gives a search; `engine` is the reader's own.
using FileRows = std::function<void(TagEngine& engine, const QString& path, std::vector<QStringList>& rows)>;

// The walk of both searches: every file below `folder`, with its number and the total in
// the footer. `threads` readers compute the rows of the files ahead of this loop, which
// appends them in the order of the walk; a cancel drops what was read ahead.
int WalkFiles(TexteEnv& env, const QString& folder, bool recurse, DataGrid& list, int footerCol, int threads,
              const FileRows& rowsOf) {
    QStringList paths;
    int count = 0;
    FindFiles(folder, QStringLiteral("*"), paths, recurse, count);
    paths.removeIf([](const QString& p) { return p.startsWith(QLatin1String(">>")); });
    const int total = int(paths.size());
    ReadPool pool(total, threads, env.engine, [&paths, &rowsOf](TagEngine& e, int i, FileRead& out) {
        rowsOf(e, paths.at(i), out.rows);
    });
    int added = 0;
    for (int i = 0; i < total; ++i) {
        if (env.cancel && *env.cancel)
            break;
        if (ProgressStep(i + 1, total)) {
            list.SetFooterText(footerCol, ProgressText(i + 1, total));
            if (env.pump)
                env.pump();
        }
        FileRead read = pool.Take(i, env.pump);
        for (const QStringList& row : read.rows)
            list.AddRow(row);
        added += int(read.rows.size());
    }
    pool.Stop(); // the files in the readers' hands are finished, their rows dropped
    return added;
}

} // namespace

DataGrid& TexteEnv::Settings() const {
    return settings ? *settings : ::Settings();
}

// ---- text boxes ---------------------------------------------------------------------------

int ChooseTargetBox(TextPair& boxes, bool txt1Only) {
    int target;
    if (txt1Only || boxes.text[0].isEmpty()) {
        target = 1;
    } else if (!boxes.box2Shown) {
        boxes.box2Shown = true;
        target = 2;
    } else if (boxes.text[1].isEmpty()) {
        target = 2;
    } else {
        target = boxes.active == 2 ? 2 : 1;
    }
    boxes.active = target;
    boxes.text[target - 1].clear();
    return target;
}

// ---- lists --------------------------------------------------------------------------------

void DefineTxtColumns(DataGrid& g) {
    if (g.Cols() >= TxtCol::Count)
        return;
    g.RemoveAllColumns();
    g.AddColumn(QStringLiteral("FName"), QString(), 4000, Align::Left, true);
    g.AddColumn(QStringLiteral("PathFile"), QString(), 6000, Align::Left, true);
    SetTxtCaptions(g);
}

void SetTxtCaptions(DataGrid& g) {
    if (g.Cols() < TxtCol::Count)
        return;
    g.SetColumnCaption(TxtCol::FileName, Caption(3));
    g.SetColumnCaption(TxtCol::Folder, Caption(7));
}

void DefineLyricsColumns(DataGrid& g) {
    if (g.Cols() >= LyrCol::Count)
        return;
    g.RemoveAllColumns();
    g.AddColumn(QStringLiteral("Index"), QString(), 600, Align::Right, true, SortType::Number);
    g.AddColumn(QStringLiteral("FName"), QString(), 3600, Align::Left, true);
    g.AddColumn(QStringLiteral("Language"), QString(), 1100, Align::Left, true);
    g.AddColumn(QStringLiteral("Description"), QString(), 2000, Align::Left, true);
    g.AddColumn(QStringLiteral("PathFile"), QString(), 5000, Align::Left, true);
    SetLyricsCaptions(g);
}

void SetLyricsCaptions(DataGrid& g) {
    if (g.Cols() < LyrCol::Count)
        return;
    g.SetColumnCaption(LyrCol::Index, Caption(1));
    g.SetColumnCaption(LyrCol::FileName, Caption(3));
    g.SetColumnCaption(LyrCol::Language, Caption(CapHeaderLanguage));
    g.SetColumnCaption(LyrCol::Description, Caption(CapHeaderDescription));
    g.SetColumnCaption(LyrCol::Folder, Caption(7));
}

QString TxtRowPath(const DataGrid& txt, int row) {
    return txt.CellText(row, TxtCol::Folder) + u'/' + txt.CellText(row, TxtCol::FileName);
}

QString LyricsRowPath(const DataGrid& lyrics, int row) {
    return lyrics.CellText(row, LyrCol::Folder) + u'/' + lyrics.CellText(row, LyrCol::FileName);
}

void ShowTxtCount(DataGrid& txt) {
    txt.SetFooterText(TxtCol::FileName, QString::number(txt.Rows()));
}

void ShowLyricsCount(DataGrid& lyrics) {
    lyrics.SetFooterText(LyrCol::FileName, QString::number(lyrics.Rows()));
}

void SortLyricsByHeader(DataGrid& lyrics, int col) {
    lyrics.DoSort(col == LyrCol::Index ? QStringLiteral("1,2") : QString::number(col), 1);
}

bool ProgressStep(int number, int total) {
    const int left = total - number;
    if (left < 11)
        return true;
    if (left < 1001)
        return number % 50 == 0;
    return number % 100 == 0;
}

QString ProgressText(int number, int total) {
    return Caption(CapProgressFile) + QString::number(number) + Caption(CapProgressOf) +
           QString::number(total);
}

// ---- searches -----------------------------------------------------------------------------

int FindTextFiles(TexteEnv& env) {
    const QString start = SettingCell(env, Ini::PathTexte, Ini::Col2);
    const QString folder = env.chooseFolder ? env.chooseFolder(start) : QString();
    if (folder.isEmpty())
        return -1;
    StoreSetting(env, Ini::PathTexte, Ini::Col2, folder);
    return FindTextFilesIn(env, folder);
}

int FindTextFilesIn(TexteEnv& env, const QString& folder) {
    DefineTxtColumns(env.txt);
    env.txt.LockUpdate(true);
    if (!env.attachTxt)
        env.txt.Clear();
    // Names only: no file is opened, so no reader is started.
    const int found = WalkFiles(env, folder, env.withSubFolderTxt, env.txt, TxtCol::FileName, 1,
                                [](TagEngine&, const QString& path, std::vector<QStringList>& rows) {
                                    if (!path.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive))
                                        return;
                                    QString dir, name;
                                    SplitPath(path, dir, name);
                                    rows.push_back({name, dir});
                                });
    ShowTxtCount(env.txt);
    env.txt.LockUpdate(false);
    env.txt.Refresh();
    return found;
}

bool TypeWithoutLyrics(int type) {
    return type == 0 || type == 2 || type == 5 || type == 9;
}

int FindLyrics(TexteEnv& env) {
    const QString start = SettingCell(env, Ini::PathLyrics, Ini::Col2);
    const QString folder = env.chooseFolder ? env.chooseFolder(start) : QString();
    if (folder.isEmpty())
        return -1;
    StoreSetting(env, Ini::PathLyrics, Ini::Col2, folder);
    return FindLyricsIn(env, folder);
}

void LyricRowsOfFile(TagEngine& e, const QString& path, bool withLyricsOnly, std::vector<QStringList>& rows) {
    if (TypeWithoutLyrics(e.OpenFile(path)))
        return;
    const int n = e.LyricCount();
    if (n == 0 && withLyricsOnly)
        return;
    QString dir, name;
    SplitPath(path, dir, name);
    if (n == 0) {
        rows.push_back({QString(), name, QString(), QString(), dir});
        return;
    }
    for (int i = 1; i <= n; ++i)
        rows.push_back({QString::number(i), name, e.LyricLanguage(i), e.LyricDescription(i), dir});
}

int FindLyricsIn(TexteEnv& env, const QString& folder) {
    DefineLyricsColumns(env.lyrics);
    env.lyrics.LockUpdate(true);
    if (!env.attachLyrics)
        env.lyrics.Clear();
    const bool withLyricsOnly = env.withLyricsOnly;
    const int added =
        WalkFiles(env, folder, env.withSubFolderLyrics, env.lyrics, LyrCol::FileName,
                  env.threads > 0 ? env.threads : ScanReadThreads(),
                  [withLyricsOnly](TagEngine& e, const QString& path, std::vector<QStringList>& rows) {
                      LyricRowsOfFile(e, path, withLyricsOnly, rows);
                  });
    ShowLyricsCount(env.lyrics);
    env.lyrics.LockUpdate(false);
    env.lyrics.Refresh();
    return added;
}

// ---- texts --------------------------------------------------------------------------------

bool IsSongLinkLine(const QString& line) {
    return line.size() > 2 && line.startsWith(u'/');
}

QStringList SplitTextLines(const QString& text) {
    QString t = text;
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QStringList lines = t.split(u'\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

bool ReadTextForBox(const QString& path, QString& text, QString* linkedSong) {
    text.clear();
    QByteArray bytes;
    if (!ReadBytes(path, bytes))
        return false;
    QStringList lines = SplitTextLines(DecodeTextFile(bytes));
    if (!lines.isEmpty() && IsSongLinkLine(lines.first())) {
        const QString song = lines.first().trimmed();
        if (PosixFile::ExistsFollowed(song)) {
            lines.first() = song;
            if (linkedSong)
                *linkedSong = song;
        } else {
            lines.first() = song + QString::fromUtf16(kMissingLinkMark);
        }
    }
    if (lines.size() > kMaxTextLines)
        lines.resize(kMaxTextLines);
    qsizetype size = 0;
    for (const QString& l : lines)
        size += l.size() + 2;
    text.reserve(size);
    for (const QString& l : lines) {
        text += l;
        text += QLatin1String("\r\n");
    }
    return true;
}

QString WithCrLf(const QString& text) {
    QString t = text;
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    t.replace(u'\r', u'\n');
    t.replace(QLatin1String("\n"), QLatin1String("\r\n"));
    return t;
}

QByteArray TextFileBytes(const QString& text) {
    return WithCrLf(text).toUtf8();
}

bool OpenTextFile(TexteEnv& env, TextPair& boxes, bool byClick) {
    int row = 0;
    if (!RowChosen(env, env.txt, byClick, row))
        return false;
    const int target = ChooseTargetBox(boxes, env.txt1Only);
    QString text, song;
    if (!ReadTextForBox(TxtRowPath(env.txt, row), text, &song))
        return false; // the box stays empty
    boxes.text[target - 1] = text;
    if (env.openPlayTxt && !song.isEmpty() && env.playSong)
        env.playSong(song);
    return true;
}

bool OpenLyric(TexteEnv& env, TextPair& boxes, bool byClick) {
    int row = 0;
    if (!RowChosen(env, env.lyrics, byClick, row))
        return false;
    const int index = env.lyrics.CellText(row, LyrCol::Index).toInt();
    if (index < 1)
        return false; // the song has no entry
    const QString path = LyricsRowPath(env.lyrics, row);
    if (env.engine.OpenFile(path) == 0 || index > env.engine.LyricCount())
        return false;
    const QString text = env.engine.LyricText(index);
    const int target = ChooseTargetBox(boxes, env.txt1Only);
    boxes.text[target - 1] = text;
    if (env.openPlaySong && env.playSong)
        env.playSong(path);
    return true;
}

namespace {

// The language of a new lyric: asked until it is empty (end) or three characters long.
bool AskLanguage(TexteEnv& env, QString& language) {
    for (;;) {
        const std::optional<QString> answer =
            env.prompt.InputBox(Caption(CapLanguageCodePrompt), QStringLiteral("GER"));
        if (!answer || answer->trimmed().isEmpty())
            return false;
        if (answer->trimmed().size() == 3) {
            language = answer->trimmed().toUpper();
            return true;
        }
        env.prompt.Tell(Caption(CapLanguageCodeLength), Prompt::Icon::Warning);
    }
}

} // namespace

bool SaveLyric(TexteEnv& env, const TextPair& boxes) {
    const QString text = WithCrLf(boxes.Active()); // as the files and the editor keep texts
    if (text.isEmpty()) {
        env.prompt.Tell(Caption(CapNoTextToSave), Prompt::Icon::Information);
        return false;
    }
    DataGrid& g = env.lyrics;
    DefineLyricsColumns(g);
    QString path, language, description;
    int index = 0; // 0: a new entry
    int row = 0;
    if (!env.newFile) {
        if (!ListNotEmpty(g, env.prompt))
            return false;
        row = g.CurRow() > 0 ? g.CurRow() : (g.SelCount() > 0 ? g.SelRow(1) : 0);
        if (row == 0) {
            env.prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
            return false;
        }
        if (g.CellText(row, LyrCol::Language).isEmpty()) {
            const QString ask = Caption(CapLyricNoLanguage) + u' ' + Caption(CapDefaultLanguage) +
                                QStringLiteral("\n\n") + Caption(CapLyricLanguageOkCancel);
            if (!env.prompt.AskOkCancel(ask))
                return false;
            g.SetCellText(row, LyrCol::Language, Caption(CapDefaultLanguage));
        }
        language = g.CellText(row, LyrCol::Language);
        if (!g.CellText(row, LyrCol::Index).isEmpty() && !env.saveNew)
            index = g.CellText(row, LyrCol::Index).toInt();
        path = LyricsRowPath(g, row);
        description = g.CellText(row, LyrCol::Description);
    } else {
        const QString start = SettingCell(env, Ini::TexteSongFolder, Ini::Col1);
        path = env.chooseSongFile ? env.chooseSongFile(start) : QString();
        if (path.isEmpty())
            return false;
        StoreFolderOf(env, Ini::TexteSongFolder, Ini::Col1, path);
        if (!AskLanguage(env, language))
            return false;
        const std::optional<QString> desc =
            env.prompt.InputBox(Caption(CapLyricDescriptionPrompt), QString());
        if (!desc)
            return false;
        description = *desc;
    }
    TagEngine& e = env.engine;
    if (e.OpenFile(path) == 0) {
        TellFailure(env, e.LastError());
        return false;
    }
    if (index < 1 || index > e.LyricCount())
        index = e.LyricCount() + 1;
    if (language.isEmpty())
        language = QStringLiteral("UNO");
    if (!e.SetLyric(index, language, description, text) || !e.SaveV2(path)) {
        TellFailure(env, e.LastError());
        return false;
    }
    QString dir, name;
    SplitPath(path, dir, name);
    const QStringList cells{QString::number(index), name, language, description, dir};
    if (env.newFile) {
        g.AddRow(cells);
    } else if (g.CellText(row, LyrCol::Index).isEmpty()) {
        g.SetRowCells(row, cells); // the song's first entry
    } else if (index != g.CellText(row, LyrCol::Index).toInt()) {
        g.InsertRow(row + 1, cells); // a further entry of the same song
    }
    ShowLyricsCount(g);
    if (!env.noMsg)
        env.prompt.Tell(Caption(CapLyricSaved), Prompt::Icon::Information);
    return true;
}

bool SaveAsText(TexteEnv& env, const TextPair& boxes) {
    const QString text = boxes.Active();
    if (text.isEmpty()) {
        env.prompt.Tell(Caption(CapTextBoxEmpty), Prompt::Icon::Information);
        return false;
    }
    const QString start = SettingCell(env, Ini::LastDialogFolder, Ini::Col1);
    QString path = env.chooseTextSave ? env.chooseTextSave(start) : QString();
    if (path.isEmpty())
        return false;
    StoreFolderOf(env, Ini::LastDialogFolder, Ini::Col1, path);
    QString error;
    if (!SafeFile::WriteWholeFile(path, TextFileBytes(text), &error)) {
        TellFailure(env, Caption(CapFileSaveFailed) + u'\n' + error);
        return false;
    }
    if (!env.noMsg)
        env.prompt.Tell(Caption(CapTextSaved), Prompt::Icon::Information);
    return true;
}

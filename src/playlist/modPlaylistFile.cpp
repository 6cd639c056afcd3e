#include "playlist/modPlaylistFile.h"

#include "core/TextCodec.h"

#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "list/modList.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "playlist/PlaylistColumns.h"

#include <QFile>
#include <QLocale>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kCrLf = QStringLiteral("\r\n");

// Whole number from the start of a text: leading blanks, a sign and digits; anything
// else ends it. Empty or no digits gives 0.
qint64 WholeNumber(QStringView text) {
    const double v = DataGrid::NumericPrefix(text);
    if (!std::isfinite(v))
        return 0;
    if (v > 2147483647.0)
        return 2147483647;
    if (v < -2147483648.0)
        return -2147483648LL;
    return qint64(std::trunc(v));
}

// The fields of one row while a reader collects them; erased after each append.
struct RowRecord {
    QString tf, fileName, durationS, durationMS, sizeByte, sizeMByte, pathFile, pathPlaylist;
    void Clear() { *this = RowRecord(); }
    QStringList Cells() const {
        return {QString(),  QString(), tf,        fileName, QString(),    durationS,
                durationMS, sizeByte,  sizeMByte, pathFile, pathPlaylist, QString()};
    }
};

void SetStatus(RowRecord& rec, const QString& testPath, bool withSize) {
    qint64 bytes = 0;
    if (SongFileExists(testPath, &bytes)) {
        rec.tf = Caption(CapStatusFound);
        if (withSize) {
            rec.sizeByte = QString::number(bytes);
            rec.sizeMByte = PlaylistMegabytes(bytes);
        }
    } else {
        rec.tf = Caption(CapStatusMissing);
    }
}

void SetSeconds(RowRecord& rec, qint64 seconds) {
    rec.durationS = QString::number(seconds);
    rec.durationMS = FormatDuration(seconds);
}

// Windows-1252 back to its bytes: the bytes 0x00 to 0xFF as the decoder of the playlist
// text made them characters. False for a text that has a character beyond it or none
// beyond ASCII (the bytes would then be the text's own UTF-8).
bool Cp1252Bytes(QStringView text, QByteArray& out) {
    static constexpr char16_t high[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                          0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                          0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    out.clear();
    out.reserve(text.size());
    bool beyondAscii = false;
    for (QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
            out += char(c);
        } else {
            const auto* hit = std::find(std::begin(high), std::end(high), c);
            if (hit == std::end(high))
                return false;
            out += char(0x80 + (hit - std::begin(high)));
        }
        beyondAscii = beyondAscii || c >= 0x80;
    }
    return beyondAscii;
}

// The entry as the disk spells it. A playlist that is no UTF-8 is read as Windows-1252;
// its names are then the bytes of old Latin-1 file names. When the name as text names no
// file but its bytes do, the entry becomes that name, its bytes kept (PosixFile), so that
// everything done with the row later reaches the file.
QString OnDiskSpelling(const QString& path) {
    QByteArray bytes;
    if (SongFileExists(path) || !Cp1252Bytes(path, bytes))
        return path;
    const QString raw = PosixFile::FromNative(bytes);
    return SongFileExists(raw) ? raw : path;
}

bool ReadWholeFile(const QString& path, QByteArray& bytes, QString& error) {
    QFile f;
    const int fd = ::open(PosixFile::Native(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        error = SafeFile::ErrorText(errno);
        return false;
    }
    if (!f.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        error = f.errorString();
        return false;
    }
    bytes = f.readAll();
    if (f.error() != QFileDevice::NoError) {
        error = f.errorString();
        return false;
    }
    return true;
}

bool RowTaken(const DataGrid& grid, int row, const QString& markFilter) {
    return markFilter.isEmpty() || grid.CellView(row, PlCol::FTag) == markFilter;
}

// full path and relative entry of a row; false when the relative mode leaves it out.
bool EntryOf(const DataGrid& grid, int row, const PlaylistWriteOptions& o, const QString& playlistFolder,
             QString& full, QString& relative) {
    full = grid.CellText(row, PlCol::PathFile) + u'/' + grid.CellText(row, PlCol::FileName);
    relative.clear();
    if (o.relative) {
        if (!full.contains(playlistFolder, Qt::CaseInsensitive))
            return false;
        relative = full.mid(playlistFolder.size() + 1);
    }
    return true;
}

} // namespace

// ---- paths and texts --------------------------------------------------------------------

void SplitExtensionKeeping(const QString& name, QString& base, QString& ext) {
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot < 0)
        return; // the caller's previous values stay
    base = name.left(dot);
    ext = name.mid(dot + 1);
}

bool IsAbsoluteEntry(QStringView path) {
    return path.startsWith(u'/');
}

bool SongFileExists(const QString& path, qint64* bytes) {
    if (path.isEmpty())
        return false;
    struct stat st {};
    if (PosixFile::Stat(path, st) != 0 || !S_ISREG(st.st_mode))
        return false;
    if (bytes)
        *bytes = qint64(st.st_size);
    return true;
}

QString PlaylistMegabytes(qint64 bytes) {
    return QLocale().toString(double(bytes) / 1024.0 / 1024.0, 'f', 3);
}

QStringList SplitPlaylistLines(const QString& text) {
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    while (start < n) {
        qsizetype lf = text.indexOf(u'\n', start);
        qsizetype end = lf < 0 ? n : lf;
        qsizetype cut = end;
        if (cut > start && text.at(cut - 1) == u'\r')
            --cut;
        lines << text.mid(start, cut - start);
        if (lf < 0)
            break;
        start = lf + 1;
    }
    return lines;
}

bool IsM3uPath(const QString& path) {
    return path.endsWith(QLatin1String(".m3u"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".m3u8"), Qt::CaseInsensitive);
}

bool IsPlsPath(const QString& path) {
    return path.endsWith(QLatin1String(".pls"), Qt::CaseInsensitive);
}

// ---- grids ------------------------------------------------------------------------------

void DefinePlaylistColumns(DataGrid& g) {
    if (g.Cols() >= PlCol::Count)
        return;
    g.RemoveAllColumns();
    g.AddColumn(QStringLiteral("No"), QString(), 600, Align::Right, true, SortType::Number);
    g.AddColumn(QStringLiteral("FTag"), QString(), 1000, Align::Left, true);
    g.AddColumn(QStringLiteral("TF"), QString(), 700, Align::Center, true);
    g.AddColumn(QStringLiteral("FileName"), QString(), 5000, Align::Left, true);
    g.AddColumn(QStringLiteral("Type"), QString(), 700, Align::Left, true);
    g.AddColumn(QStringLiteral("DurationS"), QString(), 900, Align::Right, true, SortType::Number);
    g.AddColumn(QStringLiteral("DurationMS"), QString(), 1150, Align::Right, true);
    g.AddColumn(QStringLiteral("SizeByte"), QString(), 1300, Align::Right, true, SortType::Number);
    g.AddColumn(QStringLiteral("SizeMByte"), QString(), 1100, Align::Right, true, SortType::Number);
    g.AddColumn(QStringLiteral("PathFile"), QString(), 5000, Align::Left, true);
    g.AddColumn(QStringLiteral("PathPlaylist"), QString(), 4000, Align::Left, true);
    g.AddColumn(QStringLiteral("KeyInput"), QString(), 0, Align::Left, false);
    SetPlaylistCaptions(g);
}

void SetPlaylistCaptions(DataGrid& g) {
    // the headers of the same columns of the data list, the status and the playlist
    const CaptionRow rows[PlCol::Count] = {1,  2, CapHeaderFileFound,    3, 6, 8, 9, 10,
                                           11, 7, CapHeaderPlaylistFile, 0};
    for (int c = 1; c <= PlCol::Count && c <= g.Cols(); ++c)
        if (rows[c - 1] > 0)
            g.SetColumnCaption(c, Caption(rows[c - 1]));
}

void DefineM3uPlsColumns(DataGrid& g) {
    if (g.Cols() >= M3uCol::Count)
        return;
    g.RemoveAllColumns();
    g.AddColumn(QStringLiteral("FName"), QString(), 4000, Align::Left, true);
    g.AddColumn(QStringLiteral("PathFile"), QString(), 6000, Align::Left, true);
    SetM3uPlsCaptions(g);
}

void SetM3uPlsCaptions(DataGrid& g) {
    if (g.Cols() >= M3uCol::Count) {
        g.SetColumnCaption(M3uCol::FName, Caption(3));
        g.SetColumnCaption(M3uCol::PathFile, Caption(7));
    }
}

void ShowPlaylistSums(DataGrid& g) {
    if (g.Cols() < PlCol::SizeMByte)
        return;
    double seconds = 0, bytes = 0;
    int zero = 0;
    const int rows = g.Rows();
    for (int r = 1; r <= rows; ++r) {
        seconds += DataGrid::NumericPrefix(g.CellView(r, PlCol::DurationS));
        const QStringView size = g.CellView(r, PlCol::SizeByte);
        const double b = DataGrid::NumericPrefix(size);
        if (b == 0)
            ++zero;
        bytes += b;
    }
    QString count = QString::number(rows);
    if (zero > 0)
        count += QStringLiteral("  (%1 = 0 Byte)").arg(zero);
    g.SetFooterText(PlCol::FileName, count);
    g.SetFooterText(PlCol::DurationMS, FormatDuration(seconds > 0 ? qint64(std::floor(seconds)) : 0));
    g.SetFooterText(PlCol::SizeMByte, QLocale().toString(bytes / 1024.0 / 1024.0, 'f', 2));
}

QString PlaylistTimeSizeText(const DataGrid& g, const QString& markText) {
    int count = 0;
    double seconds = 0, bytes = 0;
    const QString mark = markText.toLower();
    for (int i = 1; i <= g.SelCount(); ++i) {
        const int r = g.SelRow(i);
        if (!mark.isEmpty() && g.CellText(r, PlCol::FTag).toLower() != mark)
            continue;
        ++count;
        seconds += DataGrid::NumericPrefix(g.CellView(r, PlCol::DurationS));
        bytes += DataGrid::NumericPrefix(g.CellView(r, PlCol::SizeByte));
    }
    const qint64 whole = seconds > 0 ? qint64(std::floor(seconds)) : 0;
    const QString time = whole > 0 ? FormatDuration(whole) : QStringLiteral("00:00");
    const QString size = bytes > 0 ? FormatMegabytes(bytes) : QStringLiteral("0,0");
    return QStringLiteral("(%1)  ").arg(count) + time +
           (time.size() > 5 ? QStringLiteral(" h:mm:ss / ") : QStringLiteral(" mm:ss / ")) + size +
           QStringLiteral(" Mb");
}

// ---- reading ----------------------------------------------------------------------------

int ParseM3u(const QByteArray& bytes, const QString& path, DataGrid& grid) {
    QString playlistFolder, playlistName;
    SplitPath(path, playlistFolder, playlistName);
    const QStringList lines = SplitPlaylistLines(DecodeTextFile(bytes));
    RowRecord rec;
    int added = 0;
    // The first line is dropped unseen, whatever it holds.
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QString& line = lines[i];
        if (line.startsWith(QLatin1String("#EXTINF:"))) {
            // the first "," from the ninth character on; the title behind it is not read
            const qsizetype comma = line.indexOf(u',', 8);
            if (comma > 8)
                SetSeconds(rec, WholeNumber(QStringView(line).mid(8, comma - 8)));
            else
                SetSeconds(rec, 0);
            continue;
        }
        QString folder, name;
        SplitPath(line, folder, name);
        rec.fileName = name;
        rec.pathFile = folder.isEmpty() ? playlistFolder : folder;
        rec.pathPlaylist = path;
        const QString testPath = IsAbsoluteEntry(line) ? line : playlistFolder + u'/' + line;
        const QString onDisk = OnDiskSpelling(testPath);
        if (onDisk != testPath)
            SplitPath(onDisk, rec.pathFile, rec.fileName);
        SetStatus(rec, onDisk, true);
        grid.AddRow(rec.Cells());
        ++added;
        rec.Clear();
    }
    return added;
}

int ParsePls(const QByteArray& bytes, const QString& path, DataGrid& grid) {
    QString playlistFolder, playlistName;
    SplitPath(path, playlistFolder, playlistName);
    const QStringList lines = SplitPlaylistLines(DecodeTextFile(bytes));
    RowRecord rec;
    int added = 0;
    auto valueOf = [](const QString& line) {
        const qsizetype eq = line.indexOf(u'=');
        return eq < 0 ? line : line.mid(eq + 1);
    };
    for (const QString& line : lines) {
        if (line.compare(QLatin1String("[playlist]"), Qt::CaseInsensitive) == 0)
            continue;
        if (line.startsWith(QLatin1String("title"), Qt::CaseInsensitive))
            continue;
        if (line.startsWith(QLatin1String("numberofentries"), Qt::CaseInsensitive))
            break;
        if (line.startsWith(QLatin1String("file"), Qt::CaseInsensitive)) {
            const QString value = valueOf(line);
            QString folder, name;
            SplitPath(value, folder, name);
            rec.fileName = name;
            rec.pathFile = folder.isEmpty() ? playlistFolder : folder;
            rec.pathPlaylist = path;
            const bool absolute = IsAbsoluteEntry(rec.pathFile);
            const QString testPath =
                absolute ? rec.pathFile + u'/' + rec.fileName : playlistFolder + u'/' + value;
            const QString onDisk = OnDiskSpelling(testPath);
            if (onDisk != testPath)
                SplitPath(onDisk, rec.pathFile, rec.fileName);
            SetStatus(rec, onDisk, absolute);
            continue;
        }
        if (line.startsWith(QLatin1String("length"), Qt::CaseInsensitive)) {
            SetSeconds(rec, WholeNumber(valueOf(line)));
            grid.AddRow(rec.Cells());
            ++added;
            rec.Clear();
        }
    }
    return added;
}

PlaylistReadResult ReadM3u(const QString& path, DataGrid& grid, bool add, QString* title) {
    PlaylistReadResult result;
    DefinePlaylistColumns(grid);
    if (!add) {
        grid.Clear();
        grid.SetFooterText(PlCol::FTag, QString());
    }
    grid.LockUpdate(true);
    QByteArray bytes;
    if (ReadWholeFile(path, bytes, result.error))
        result.rows = ParseM3u(bytes, path, grid);
    else
        result.ok = false;
    ShowPlaylistSums(grid);
    if (title) {
        QString folder, name;
        SplitPath(path, folder, name);
        if (add && !title->isEmpty())
            *title += QStringLiteral(" / ") + name;
        else
            *title = Caption(CapPlaylistTitle) + name;
    }
    grid.LockUpdate(false);
    grid.Refresh();
    if (grid.Rows() > 0)
        grid.SetCurRow(1);
    return result;
}

PlaylistReadResult ReadPls(const QString& path, DataGrid& grid, bool add) {
    PlaylistReadResult result;
    DefinePlaylistColumns(grid);
    if (!add)
        grid.Clear();
    grid.LockUpdate(true);
    QByteArray bytes;
    if (ReadWholeFile(path, bytes, result.error))
        result.rows = ParsePls(bytes, path, grid);
    else
        result.ok = false;
    ShowPlaylistSums(grid);
    grid.LockUpdate(false);
    grid.Refresh();
    if (grid.Rows() > 0)
        grid.SetCurRow(1);
    return result;
}

// ---- writing ----------------------------------------------------------------------------

QByteArray BuildM3u(DataGrid& grid, const PlaylistWriteOptions& o, const QString& playlistFolder,
                    PlaylistWriteCounts& counts) {
    QString text = QStringLiteral("#EXTM3U") + kCrLf;
    QString base, ext, full, relative; // base lives through the loop: a name without "." repeats it
    const int rows = grid.Rows();
    for (int r = 1; r <= rows; ++r) {
        if (!RowTaken(grid, r, o.markFilter))
            continue;
        SplitExtensionKeeping(grid.CellText(r, PlCol::FileName), base, ext);
        if (!EntryOf(grid, r, o, playlistFolder, full, relative)) {
            ++counts.skipped;
            continue;
        }
        if (!SongFileExists(full))
            ++counts.skipped;
        ++counts.written;
        text += QStringLiteral("#EXTINF:") +
                QString::number(WholeNumber(grid.CellView(r, PlCol::DurationS))) + u',' + base + kCrLf;
        text += (o.relative ? relative : full) + kCrLf;
        grid.SetCellText(r, PlCol::DurationS, playlistFolder);
    }
    return PosixFile::Native(text); // names that are no UTF-8 keep their bytes
}

QByteArray BuildPls(const DataGrid& grid, const PlaylistWriteOptions& o, const QString& playlistFolder,
                    PlaylistWriteCounts& counts) {
    QString text = QStringLiteral("[playlist]") + kCrLf;
    QString full, relative;
    for (int row : grid.SelectedRows()) {
        if (!RowTaken(grid, row, o.markFilter))
            continue;
        if (!EntryOf(grid, row, o, playlistFolder, full, relative)) {
            ++counts.skipped;
            continue;
        }
        if (!SongFileExists(full))
            ++counts.skipped;
        const int n = ++counts.written;
        const QString title = o.relative ? relative : grid.CellText(row, PlCol::FileName);
        text += QStringLiteral("File%1=").arg(n) + full + kCrLf;
        text += QStringLiteral("Title%1=").arg(n) + title + kCrLf;
        text += QStringLiteral("Length%1=%2").arg(n).arg(WholeNumber(grid.CellView(row, PlCol::DurationS))) +
                kCrLf;
    }
    text += QStringLiteral("NumberOfEntries=%1").arg(counts.written) + kCrLf;
    text += QStringLiteral("Version=2") + kCrLf;
    return PosixFile::Native(text); // names that are no UTF-8 keep their bytes
}

bool WritePlaylistBytes(const QString& path, const QByteArray& bytes, QString* error) {
    // A failure keeps the old playlist.
    return SafeFile::WriteWholeFile(path, bytes, error);
}

// modSText: rows, time forms, reading and writing of the time-stamped text.
#include "text/modSText.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/TextCodec.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

using namespace SText;

namespace {

const QString kCrLf = QStringLiteral("\r\n");

QStringList BlankCells() {
    return QStringList(Cols, QString());
}

// The whole file, or an error text.
bool ReadBytes(const QString& path, QByteArray& bytes, QString& error) {
    return PosixFile::ReadWholeFile(path, bytes, &error);
}

// Val of a two-character piece; -1 when it is not two digits.
int TwoDigits(QStringView s) {
    if (s.size() != 2 || !s[0].isDigit() || !s[1].isDigit() || s[0].unicode() > '9' || s[1].unicode() > '9')
        return -1;
    return (s[0].unicode() - '0') * 10 + (s[1].unicode() - '0');
}

QString Stamp8(qint32 ms) {
    if (ms < 0)
        return QLatin1Char('-') + QStringLiteral("%1").arg(-qint64(ms), 8, 10, QLatin1Char('0'));
    return QStringLiteral("%1").arg(ms, 8, 10, QLatin1Char('0'));
}

void FillRows(DataGrid& g, const QStringList& lines, int visibleRows, STextReadResult& r) {
    g.LockUpdate(true);
    g.Clear();
    for (const QString& line : lines)
        AddSTextLine(g, line);
    for (int row = 1; row <= g.Rows(); ++row)
        if (RowTime(g, row) > 0) {
            r.anyTimed = true;
            break;
        }
    RenumberSTextKeys(g);
    PadSTextRows(g, visibleRows);
    g.SetCurRow(g.Rows() ? 1 : 0);
    g.LockUpdate(false);
    r.ok = true;
}

} // namespace

// ---- the row model ---------------------------------------------------------------------

void DefineSTextColumns(DataGrid& g) {
    g.RemoveAllColumns();
    g.AddColumn(QStringLiteral("Refrain"), Caption(CapRefrainHeader), 300, Align::Right);
    g.AddColumn(QStringLiteral("Seconds"), QStringLiteral("[sec]"), 600, Align::Right, true,
                SortType::Number);
    g.AddColumn(QStringLiteral("TimeMSec"), QStringLiteral("mSec"), 20, Align::Right, false,
                SortType::Number);
    g.AddColumn(QStringLiteral("mmss"), QStringLiteral("[mm:ss.nn]"), 800, Align::Right);
    g.AddColumn(QStringLiteral("Text"), Caption(CapTextHeader), 5000, Align::Left);
}

void ClearSTextList(DataGrid& g) {
    g.LockUpdate(true);
    g.Clear();
    for (int i = 0; i < BlankRows; ++i)
        g.AddRow(BlankCells(), QString::number(i + 1));
    g.SetCurRow(1);
    g.Tag.clear();
    g.LockUpdate(false);
}

void PadSTextRows(DataGrid& g, int visibleRows) {
    if (g.Rows() >= visibleRows)
        return;
    while (g.Rows() < visibleRows + 1)
        g.AddRow(BlankCells(), QString::number(g.Rows() + 1));
}

void RenumberSTextKeys(DataGrid& g) {
    for (int row = 1; row <= g.Rows(); ++row)
        g.SetRowKey(row, QString::number(row));
}

int LastSTextRow(const DataGrid& g) {
    for (int row = g.Rows(); row >= 1; --row)
        if (!g.CellView(row, ColText).isEmpty())
            return row;
    return 0;
}

bool RowHasTime(const DataGrid& g, int row) {
    return row >= 1 && row <= g.Rows() && !g.CellView(row, ColTimeMSec).isEmpty();
}

qint32 RowTime(const DataGrid& g, int row) {
    if (row < 1 || row > g.Rows())
        return 0;
    return qint32(DataGrid::NumericPrefix(g.CellView(row, ColTimeMSec)));
}

// ---- time forms ------------------------------------------------------------------------

qint32 ParseSTextTime(const QString& mmss) {
    if (mmss.size() != 8)
        return -1;
    const QStringView s(mmss);
    const int m = TwoDigits(s.mid(0, 2)), sec = TwoDigits(s.mid(3, 2)), cs = TwoDigits(s.mid(6, 2));
    if (m < 0 || sec < 0 || cs < 0)
        return -1;
    return m * 60000 + sec * 1000 + cs * 10;
}

QString FormatSTextTime(qint32 ms) {
    // Rounded to hundredths first, so that 59,999 ms reads "01:00.00" and not "00:60.00".
    // Minutes are floored: a negative time reads as minutes below zero plus a positive
    // rest, -500 ms as "-01:59.50".
    const qint64 cs = qint64(std::floor(double(ms) / 10.0 + 0.5)); // hundredths
    const qint64 minutes = qint64(std::floor(double(cs) / 6000.0));
    const qint64 rest = cs - minutes * 6000;
    const QString m = minutes < 0
                          ? QLatin1Char('-') + QStringLiteral("%1").arg(-minutes, 2, 10, QLatin1Char('0'))
                          : QStringLiteral("%1").arg(minutes, 2, 10, QLatin1Char('0'));
    return m + QLatin1Char(':') + QStringLiteral("%1").arg(rest / 100, 2, 10, QLatin1Char('0')) +
           QLatin1Char('.') + QStringLiteral("%1").arg(rest % 100, 2, 10, QLatin1Char('0'));
}

qint32 StampSeconds(qint32 ms) {
    return qint32(std::nearbyint(double(ms) / 1000.0)); // the default mode rounds half to even
}

void StampRow(DataGrid& g, int row, qint32 ms) {
    g.SetCellText(row, ColSeconds, QString::number(StampSeconds(ms)));
    g.SetCellText(row, ColTimeMSec, Stamp8(ms));
    g.SetCellText(row, ColMmss, FormatSTextTime(ms));
}

void ClearRowTime(DataGrid& g, int row) {
    g.SetCellText(row, ColSeconds, QString());
    g.SetCellText(row, ColTimeMSec, QString());
    g.SetCellText(row, ColMmss, QString());
}

// ---- reading ---------------------------------------------------------------------------

void AddSTextLine(DataGrid& g, const QString& line) {
    QStringList cells = BlankCells();
    if (line.size() >= 7 && line[0] == QLatin1Char('[') && line[6] == QLatin1Char('.')) {
        const QString time = line.mid(1, 8);
        const qint32 ms = ParseSTextTime(time);
        cells[ColSeconds - 1] = QString::number(ms / 1000); // integer quotient on load
        cells[ColTimeMSec - 1] = QString::number(ms);
        cells[ColMmss - 1] = time;
        cells[ColText - 1] = line.mid(10);
    } else {
        cells[ColText - 1] = line;
    }
    g.AddRow(cells, QString::number(g.Rows() + 1));
}

QStringList SplitSTextLines(const QString& text) {
    QStringList items = text.split(kCrLf);
    if (items.size() > 1) {
        items.removeLast(); // what follows the last CR LF is not a line
        return items;
    }
    // No CR LF at all: a line reader that ends lines at LF, CR or CR LF.
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text[i];
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
            lines << text.mid(start, i - start);
            if (c == QLatin1Char('\r') && i + 1 < n && text[i + 1] == QLatin1Char('\n'))
                ++i;
            start = i + 1;
        }
    }
    if (start < n)
        lines << text.mid(start);
    return lines;
}

STextReadResult ReadSTextText(DataGrid& g, const QString& text, const QString& tag, int visibleRows) {
    STextReadResult r;
    FillRows(g, SplitSTextLines(text), visibleRows, r);
    g.Tag = tag;
    CheckSongLink(g, r);
    return r;
}

STextReadResult ReadSTextFile(DataGrid& g, const QString& path, int visibleRows) {
    QByteArray bytes;
    QString error;
    if (!ReadBytes(path, bytes, error)) {
        STextReadResult r;
        r.error = error;
        return r;
    }
    return ReadSTextText(g, DecodeTextFile(bytes), path, visibleRows);
}

SongLrc ReadSTextFromSong(DataGrid& g, TagEngine& engine, const QString& path, int visibleRows,
                          STextReadResult* result) {
    if (engine.OpenFile(path) != 1)
        return SongLrc::NotMp3;
    if (!LrcFrameIndex(engine))
        return SongLrc::NoLrc;
    QStringList items = LrcFrameText(engine).split(kCrLf);
    items.removeLast(); // as in a file: the piece after the last CR LF is no line
    STextReadResult r;
    FillRows(g, items, visibleRows, r);
    g.Tag.clear();
    if (result)
        *result = r;
    return SongLrc::Ok;
}

bool IsSongLink(const QString& text) {
    return text.startsWith(QLatin1Char('/')) && text.toLower().endsWith(QLatin1String(".mp3"));
}

void CheckSongLink(DataGrid& g, STextReadResult& r) {
    if (g.Rows() < 1)
        return;
    const QString first = g.CellText(1, ColText);
    if (!IsSongLink(first))
        return;
    r.song = first;
    if (!PosixFile::ExistsFollowed(first)) {
        r.songMissing = true;
        g.SetCellText(1, ColText, first + QLatin1String(MissingSongMark));
    }
}

// ---- writing ---------------------------------------------------------------------------

QString BuildSTextTxt(const DataGrid& g) {
    QString out;
    const int last = LastSTextRow(g);
    for (int row = 1; row <= last; ++row) {
        out += g.CellView(row, ColText).trimmed();
        out += kCrLf;
    }
    return out;
}

QString BuildSTextLrc(const DataGrid& g) {
    QString out;
    const int last = LastSTextRow(g);
    for (int row = 1; row <= last; ++row) {
        if (RowHasTime(g, row)) {
            out += QLatin1Char('[');
            out += g.CellView(row, ColMmss);
            out += QLatin1Char(']');
            out += g.CellView(row, ColText).trimmed();
        } else {
            out += g.CellView(row, ColText);
        }
        out += kCrLf;
    }
    return out;
}

QString BuildSTextFrame(const DataGrid& g) {
    QString out;
    for (int row = 1; row <= g.Rows(); ++row) {
        if (!g.CellView(row, ColMmss).isEmpty()) {
            out += QLatin1Char('[');
            out += g.CellView(row, ColMmss);
            out += QLatin1Char(']');
        }
        out += g.CellView(row, ColText);
        out += kCrLf;
    }
    return out;
}

QString STextFileName(const QString& name, bool lrc) {
    const QLatin1String ext = lrc ? QLatin1String(".lrc") : QLatin1String(".txt");
    if (name.contains(ext, Qt::CaseInsensitive))
        return name;
    return name + ext;
}

bool WriteSTextFile(DataGrid& g, const QString& path, bool lrc, QString* error) {
    const QString text = lrc ? BuildSTextLrc(g) : BuildSTextTxt(g);
    if (!SafeFile::WriteWholeFile(path, text.toUtf8(), error))
        return false;
    g.Tag.clear();
    return true;
}

bool HasStampForSong(const DataGrid& g) {
    for (int row = 1; row < g.Rows(); ++row)
        if (RowTime(g, row) != 0)
            return true;
    return false;
}

SongWrite WriteSTextInSong(const DataGrid& g, TagEngine& engine, const QString& song, QString* error) {
    if (!HasStampForSong(g))
        return SongWrite::NoStamp;
    if (engine.OpenFile(song) != 1)
        return SongWrite::NotMp3;
    if (SetLrcFrame(engine, BuildSTextFrame(g)) < 1 || engine.SaveV2(song) < 1) {
        if (error)
            *error = engine.LastError();
        return SongWrite::Failed;
    }
    return SongWrite::Ok;
}

SongRemove RemoveLrcFromSong(TagEngine& engine, const QString& song, QString* error) {
    if (engine.OpenFile(song) != 1) {
        if (error)
            *error = engine.LastError();
        return SongRemove::NotMp3;
    }
    if (!RemoveLrcFrame(engine))
        return SongRemove::NoLrc;
    if (engine.SaveV2(song) < 1) {
        if (error)
            *error = engine.LastError();
        return SongRemove::Failed;
    }
    return SongRemove::Ok;
}

// ---- commands --------------------------------------------------------------------------

void ShiftSTextRows(DataGrid& g, qint32 delta, bool fromActRow) {
    const int r = g.CurRow();
    if (r < 1 || r > g.Rows())
        return;
    qint32 ms = 0;
    if (RowHasTime(g, r))
        ms = RowTime(g, r) + delta;
    StampRow(g, r, ms);
    if (ms == 0 || !fromActRow)
        return;
    g.LockUpdate(true);
    for (int row = r + 1; row <= g.Rows(); ++row)
        if (RowHasTime(g, row))
            StampRow(g, row, RowTime(g, row) + delta);
    g.LockUpdate(false);
}

void InsertSTextRow(DataGrid& g, bool before) {
    const int cur = g.CurRow();
    if (cur < 1 || cur >= g.Rows()) {
        g.AddRow(BlankCells(), QString::number(g.Rows() + 1));
        g.SetCurRow(g.Rows());
        return;
    }
    g.LockUpdate(true);
    g.InsertRow(before ? cur : cur + 1, BlankCells());
    RenumberSTextKeys(g);
    g.SetCurRow(cur + 1);
    g.LockUpdate(false);
}

void InsertBlankLine(DataGrid& g) {
    const int cur = g.CurRow();
    InsertSTextRow(g, false);
    if (cur >= 1)
        g.SetCurRow(cur);
}

void EraseAllTimestamps(DataGrid& g) {
    g.LockUpdate(true);
    for (int row = 1; row <= g.Rows(); ++row)
        ClearRowTime(g, row);
    g.LockUpdate(false);
}

void RemoveLineBreaks(DataGrid& g) {
    g.LockUpdate(true);
    for (int row = 1; row <= g.Rows(); ++row) {
        QString t = g.CellText(row, ColText);
        const QString before = t;
        t.remove(kCrLf);
        t.remove(QLatin1Char('\r'));
        t.remove(QLatin1Char('\n'));
        if (t != before)
            g.SetCellText(row, ColText, t);
    }
    g.LockUpdate(false);
}

QString RemoveTimeInLine(QString text) {
    while (text.contains(QLatin1Char('['))) {
        const qsizetype p = text.indexOf(QLatin1Char('[')) + 1; // 1-based positions
        const qsizetype q = text.indexOf(QLatin1Char(']')) + 1;
        if (q < p)
            break; // no "]" behind the "[": nothing more can go
        QString next;
        if (p <= 1)
            next = text.mid(q).trimmed();
        else
            next = text.left(p - 1).trimmed() + QLatin1Char(' ') + text.mid(q).trimmed();
        text = next;
    }
    return text;
}

void RemoveTimeInText(DataGrid& g) {
    g.LockUpdate(true);
    for (int row = 1; row <= g.Rows(); ++row) {
        const QString t = g.CellText(row, ColText);
        if (t.contains(QLatin1Char('[')))
            g.SetCellText(row, ColText, RemoveTimeInLine(t));
    }
    g.LockUpdate(false);
}

void RemoveRefrainMarks(DataGrid& g) {
    g.LockUpdate(true);
    for (int row = 1; row <= g.Rows(); ++row)
        g.SetCellText(row, ColRefrain, QString());
    g.LockUpdate(false);
}

Refrain ToggleRefrain(DataGrid& g, int row) {
    if (row < 1 || row > g.Rows() || g.CellView(row, ColText).isEmpty())
        return Refrain::NoText;
    if (!g.CellView(row, ColRefrain).isEmpty()) {
        g.SetCellText(row, ColRefrain, QString());
        return Refrain::Unmarked;
    }
    if (RefrainRows(g).size() >= MaxRefrains)
        return Refrain::Refused;
    g.SetCellText(row, ColRefrain, QLatin1String(RefrainMark));
    return Refrain::Marked;
}

QList<int> RefrainRows(const DataGrid& g) {
    QList<int> rows;
    for (int row = 1; row <= g.Rows(); ++row)
        if (!g.CellView(row, ColRefrain).isEmpty())
            rows << row;
    return rows;
}

void InsertRefrain(DataGrid& g, int markedRow) {
    if (markedRow < 1 || markedRow > g.Rows())
        return;
    const QString text = g.CellText(markedRow, ColText);
    InsertSTextRow(g, true);
    const int above = g.CurRow() - 1;
    if (above >= 1)
        g.SetCellText(above, ColText, text);
}

void InsertAllRefrains(DataGrid& g) {
    QStringList texts;
    for (int row : RefrainRows(g))
        texts << g.CellText(row, ColText);
    g.LockUpdate(true);
    for (const QString& text : texts) {
        InsertSTextRow(g, true);
        const int above = g.CurRow() - 1;
        if (above >= 1)
            g.SetCellText(above, ColText, text);
    }
    g.LockUpdate(false);
}

bool HasTranslation(const DataGrid& g) {
    for (int row = 1; row <= g.Rows(); ++row)
        if (g.CellView(row, ColText).contains(QLatin1String(TranslationMark)))
            return true;
    return false;
}

void ApplyTranslation(DataGrid& g) {
    g.LockUpdate(true);
    for (int row = 1; row <= g.Rows(); ++row) {
        const QString t = g.CellText(row, ColText);
        const qsizetype p = t.indexOf(QLatin1String(TranslationMark));
        if (p >= 0)
            g.SetCellText(row, ColText, t.mid(p + 2).trimmed());
    }
    g.LockUpdate(false);
}

QString WithTranslationMark(const QString& text) {
    if (text.contains(QLatin1String(TranslationMark)))
        return text;
    return text + QLatin1String(TranslationMark);
}

QString STextPrintText(const DataGrid& g, bool withTime) {
    int last = g.Rows();
    while (last > 0 && g.CellText(last, SText::ColText).isEmpty())
        --last;
    QStringList lines;
    for (int r = 1; r <= last; ++r) {
        const QString words = g.CellText(r, SText::ColText);
        if (withTime && RowHasTime(g, r))
            lines.append(g.CellText(r, SText::ColSeconds) + QStringLiteral(" - ") +
                         g.CellText(r, SText::ColMmss) + QStringLiteral("  -  ") + words);
        else
            lines.append(words);
    }
    return lines.join(QStringLiteral("\r\n"));
}

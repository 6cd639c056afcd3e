// ".xls": an Excel 97-2003 workbook. The BIFF8 records of the workbook stream are
// written straight into the file behind room for the compound file header; the
// compound file structures (directory, allocation table) follow at the end, and the
// header is written last. So even a list of 200,000 rows needs little memory: only the
// shared string table is held.
//
// Workbook stream: globals (BOF, CODEPAGE 1200, WINDOW1, FONTs, XFs, STYLE, BOUNDSHEETs,
// SST, EXTSST, EOF), then each sheet (BOF, COLINFO, DIMENSIONS, LABELSST cells,
// WINDOW2, EOF). A sheet holds at most 65,536 rows; the header row is repeated on
// each further sheet.

#include "output/ExportTable.h"
#include "output/ExportWriters.h"

#include <QFileDevice>
#include <QHash>
#include <QtEndian>
#include <algorithm>
#include <deque>
#include <vector>

namespace {

constexpr int kMaxSheetRows = 65536;
constexpr int kMaxCols = 256;
constexpr int kMaxCellChars = 32767;
constexpr qsizetype kMaxRecordData = 8224;

// Record types.
constexpr quint16 kBof = 0x0809, kEof = 0x000A, kCodepage = 0x0042, kWindow1 = 0x003D, kFont = 0x0031,
                  kXf = 0x00E0, kStyle = 0x0293, kBoundSheet = 0x0085, kSst = 0x00FC, kContinue = 0x003C,
                  kExtSst = 0x00FF, kColInfo = 0x007D, kDimensions = 0x0200, kLabelSst = 0x00FD,
                  kWindow2 = 0x023E, kDateMode = 0x0022;
constexpr quint16 kXfCell = 15, kXfHeader = 16;

// Compound file.
constexpr int kSector = 512;
constexpr quint32 kFreeSect = 0xFFFFFFFF, kEndOfChain = 0xFFFFFFFE, kFatSect = 0xFFFFFFFD,
                  kDifSect = 0xFFFFFFFC, kNoStream = 0xFFFFFFFF;
constexpr int kHeaderDifat = 109;
constexpr qint64 kMinStreamSize = 4096; // smaller streams would belong in the mini stream

void Put16(QByteArray& b, quint16 v) {
    char c[2];
    qToLittleEndian(v, c);
    b.append(c, 2);
}
void Put32(QByteArray& b, quint32 v) {
    char c[4];
    qToLittleEndian(v, c);
    b.append(c, 4);
}

bool IsCompressible(QStringView s) {
    return std::all_of(s.begin(), s.end(), [](QChar ch) { return ch.unicode() < 0x100; });
}

void PutChars(QByteArray& b, QStringView s, bool compressed) {
    for (QChar ch : s) {
        if (compressed)
            b.append(char(ch.unicode()));
        else
            Put16(b, ch.unicode());
    }
}

// A string as a cell holds it: at most 32,767 characters, no broken surrogate pair at the end.
QStringView CellString(QStringView s) {
    if (s.size() <= kMaxCellChars)
        return s;
    qsizetype n = kMaxCellChars;
    if (s[n - 1].isHighSurrogate())
        --n;
    return s.left(n);
}

// The file, written forward, with positions of the workbook stream and back-patching.
class StreamOut {
public:
    explicit StreamOut(QFileDevice& dev) : m_dev(dev) {}
    qint64 StreamPos() const { return m_written + m_buf.size(); } // position in the workbook stream
    bool Ok() const { return m_ok; }
    void Record(quint16 type, const QByteArray& data) {
        Put16(m_buf, type);
        Put16(m_buf, quint16(data.size()));
        m_buf.append(data);
        if (m_buf.size() >= (1 << 20))
            Flush();
    }
    // A text cell: row, column, format, index into the shared strings.
    void LabelSst(quint16 row, quint16 col, quint16 xf, quint32 sst) {
        char r[14];
        qToLittleEndian<quint16>(kLabelSst, r);
        qToLittleEndian<quint16>(10, r + 2);
        qToLittleEndian<quint16>(row, r + 4);
        qToLittleEndian<quint16>(col, r + 6);
        qToLittleEndian<quint16>(xf, r + 8);
        qToLittleEndian<quint32>(sst, r + 10);
        m_buf.append(r, sizeof r);
        if (m_buf.size() >= (1 << 20))
            Flush();
    }
    void Raw(const QByteArray& data) {
        m_buf.append(data);
        if (m_buf.size() >= (1 << 20))
            Flush();
    }
    void Flush() {
        if (m_ok && !m_buf.isEmpty()) {
            m_ok = m_dev.seek(kSector + m_written) && m_dev.write(m_buf) == m_buf.size();
            m_written += m_buf.size();
        }
        m_buf.clear();
    }
    // Overwrites 4 bytes at a stream position already flushed.
    void Patch32(qint64 streamPos, quint32 v) {
        Flush();
        char c[4];
        qToLittleEndian(v, c);
        m_ok = m_ok && m_dev.seek(kSector + streamPos) && m_dev.write(c, 4) == 4;
    }
    // File-level writes outside the stream.
    void WriteAt(qint64 filePos, const QByteArray& data) {
        Flush();
        m_ok = m_ok && m_dev.seek(filePos) && m_dev.write(data) == data.size();
    }

private:
    QFileDevice& m_dev;
    QByteArray m_buf;
    qint64 m_written = 0;
    bool m_ok = true;
};

// The shared string table: every distinct text once, cells refer to it by index. The
// table holds views: of the grid's cells (unchanged while the export runs) and of the
// header texts it keeps itself.
struct SharedStrings {
    QHash<QStringView, quint32> index;
    std::vector<QStringView> strings;
    std::deque<QString> owned;
    quint32 total = 0;
    quint32 Add(QStringView s) {
        ++total;
        const QStringView key = CellString(s);
        const auto it = index.constFind(key);
        if (it != index.constEnd())
            return *it;
        const quint32 i = quint32(strings.size());
        index.insert(key, i);
        strings.push_back(key);
        return i;
    }
    quint32 Find(QStringView s) const { return index.value(CellString(s)); }
    quint32 AddOwned(const QString& s) {
        owned.push_back(s);
        return Add(owned.back());
    }
};

// SST and CONTINUE records: a string's header never splits; its characters may, and
// the continuation then starts with the compression flag again.
void WriteSst(StreamOut& out, const SharedStrings& sst) {
    const quint32 count = quint32(sst.strings.size());
    const quint32 perBucket = std::max<quint32>(8, (count + 127) / 128);
    QByteArray ext;
    Put16(ext, quint16(perBucket));

    QByteArray rec;
    Put32(rec, sst.total);
    Put32(rec, count);
    quint16 type = kSst;
    auto finish = [&] {
        out.Record(type, rec);
        rec.clear();
        type = kContinue;
    };
    for (quint32 i = 0; i < count; ++i) {
        const QStringView s = sst.strings[i];
        const bool compressed = IsCompressible(s);
        const int charSize = compressed ? 1 : 2;
        if (rec.size() + 3 + charSize > kMaxRecordData)
            finish();
        if (i % perBucket == 0) {
            Put32(ext, quint32(out.StreamPos() + 4 + rec.size())); // stream position of the string
            Put16(ext, quint16(4 + rec.size()));                   // its offset in its record
            Put16(ext, 0);
        }
        Put16(rec, quint16(s.size()));
        rec.append(char(compressed ? 0 : 1));
        qsizetype done = 0;
        while (done < s.size()) {
            const qsizetype room = (kMaxRecordData - rec.size()) / charSize;
            if (room <= 0) {
                finish();
                rec.append(char(compressed ? 0 : 1));
                continue;
            }
            const qsizetype n = std::min(room, s.size() - done);
            PutChars(rec, s.mid(done, n), compressed);
            done += n;
        }
    }
    finish();
    out.Record(kExtSst, ext);
}

QByteArray Bof(quint16 kind) {
    QByteArray b;
    Put16(b, 0x0600); // BIFF8
    Put16(b, kind);   // 0x0005 workbook globals, 0x0010 worksheet
    Put16(b, 0x0DBB); // build
    Put16(b, 0x07CC); // year
    Put32(b, 0x00000000);
    Put32(b, 0x00000006); // lowest version that can read the file: BIFF8
    return b;
}

QByteArray Font(bool bold) {
    QByteArray b;
    Put16(b, 200);          // 10 pt in twips
    Put16(b, bold ? 1 : 0); // old readers take bold from bit 0; no italic, no strike-out
    Put16(b, 0x7FFF);       // automatic colour
    Put16(b, bold ? 700 : 400);
    Put16(b, 0);       // no super- or subscript
    b.append(char(0)); // no underline
    b.append(char(0)); // family
    b.append(char(0)); // character set
    b.append(char(0));
    const QString name = QStringLiteral("Arial");
    b.append(char(name.size()));
    b.append(char(0)); // compressed characters
    PutChars(b, name, true);
    return b;
}

QByteArray Xf(quint16 font, bool style, quint8 usedAttributes) {
    QByteArray b;
    Put16(b, font);
    Put16(b, 0);                       // number format "General"
    Put16(b, style ? 0xFFF5 : 0x0001); // locked; a style XF has no parent, a cell XF has style 0
    b.append(char(0x20));              // aligned to the bottom
    b.append(char(0));
    b.append(char(0));
    b.append(char(usedAttributes));
    Put32(b, 0); // no borders
    Put32(b, 0);
    Put16(b, 0x20C0); // pattern colours: automatic
    return b;
}

QString SheetName(const QString& base, int number) {
    QString name;
    for (QChar ch : base)
        name += QStringLiteral("[]:*?/\\").contains(ch) ? u'_' : ch;
    name = name.trimmed();
    while (name.startsWith(u'\''))
        name.remove(0, 1);
    if (name.isEmpty())
        name = QStringLiteral("Export");
    const QString suffix = number > 1 ? QStringLiteral(" (%1)").arg(number) : QString();
    name.truncate(31 - suffix.size());
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1);
    while (name.endsWith(u'\''))
        name.chop(1);
    return name + suffix;
}

quint16 ColumnWidth(int twips) {
    // Excel counts widths in 1/256 of the width of a digit (about 7 pixels).
    const int pixels = std::max(0, twips) / 15;
    const int units = pixels > 0 ? pixels * 256 / 7 : 10 * 256;
    return quint16(std::clamp(units, 256, 255 * 256));
}

// The compound file around the workbook stream of `streamSize` bytes at sector 0.
bool WriteCompoundFile(StreamOut& out, qint64 streamSize) {
    const quint32 streamSectors = quint32((streamSize + kSector - 1) / kSector);
    const quint32 dirSector = streamSectors;
    quint32 fat = 0, difat = 0;
    for (;;) {
        const quint32 used = streamSectors + 1 + fat + difat;
        const quint32 f = (used + 127) / 128;
        const quint32 d = f > quint32(kHeaderDifat) ? (f - kHeaderDifat + 126) / 127 : 0;
        if (f == fat && d == difat)
            break;
        fat = f;
        difat = d;
    }
    const quint32 firstFat = dirSector + 1;
    const quint32 firstDifat = firstFat + fat;

    QByteArray tail;
    // Directory: the root, the workbook stream and two unused entries.
    auto entry = [&](const QString& name, quint8 type, quint32 child, quint32 start, quint32 size) {
        QByteArray e(128, '\0');
        for (int i = 0; i < name.size(); ++i)
            qToLittleEndian<quint16>(name[i].unicode(), e.data() + 2 * i);
        qToLittleEndian<quint16>(quint16(name.isEmpty() ? 0 : 2 * (name.size() + 1)), e.data() + 0x40);
        e[0x42] = char(type);
        e[0x43] = char(type ? 1 : 0); // black
        qToLittleEndian<quint32>(kNoStream, e.data() + 0x44);
        qToLittleEndian<quint32>(kNoStream, e.data() + 0x48);
        qToLittleEndian<quint32>(child, e.data() + 0x4C);
        qToLittleEndian<quint32>(start, e.data() + 0x74);
        qToLittleEndian<quint32>(size, e.data() + 0x78);
        tail.append(e);
    };
    entry(QStringLiteral("Root Entry"), 5, 1, kEndOfChain, 0);
    entry(QStringLiteral("Workbook"), 2, kNoStream, 0, quint32(streamSize));
    entry(QString(), 0, kNoStream, 0, 0);
    entry(QString(), 0, kNoStream, 0, 0);

    // Allocation table.
    std::vector<quint32> table(std::size_t(fat) * 128, kFreeSect);
    for (quint32 i = 0; i < streamSectors; ++i)
        table[i] = i + 1 < streamSectors ? i + 1 : kEndOfChain;
    table[dirSector] = kEndOfChain;
    for (quint32 i = 0; i < fat; ++i)
        table[firstFat + i] = kFatSect;
    for (quint32 i = 0; i < difat; ++i)
        table[firstDifat + i] = kDifSect;
    for (quint32 v : table)
        Put32(tail, v);
    // Further lists of the allocation table's sectors beyond the 109 in the header.
    for (quint32 d = 0; d < difat; ++d) {
        for (quint32 k = 0; k < 127; ++k) {
            const quint32 i = kHeaderDifat + d * 127 + k;
            Put32(tail, i < fat ? firstFat + i : kFreeSect);
        }
        Put32(tail, d + 1 < difat ? firstDifat + d + 1 : kEndOfChain);
    }
    out.WriteAt(kSector + qint64(streamSectors) * kSector, tail);

    QByteArray h;
    h.append("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
    h.append(QByteArray(16, '\0'));
    Put16(h, 0x003E);
    Put16(h, 0x0003);
    Put16(h, 0xFFFE);
    Put16(h, 9); // 512-byte sectors
    Put16(h, 6); // 64-byte mini sectors
    h.append(QByteArray(6, '\0'));
    Put32(h, 0); // directory sectors (always 0 in version 3)
    Put32(h, fat);
    Put32(h, dirSector);
    Put32(h, 0);
    Put32(h, quint32(kMinStreamSize));
    Put32(h, kEndOfChain); // no mini allocation table
    Put32(h, 0);
    Put32(h, difat ? firstDifat : kEndOfChain);
    Put32(h, difat);
    for (quint32 i = 0; i < quint32(kHeaderDifat); ++i)
        Put32(h, i < fat ? firstFat + i : kFreeSect);
    out.WriteAt(0, h);
    return out.Ok();
}

} // namespace

bool WriteXlsExport(const ExportTable& table, QFileDevice& dev, const QString& sheetName,
                    const QString& extra) {
    const int cols = std::min(table.Cols(), kMaxCols);
    const int header = table.WithHeader() ? 1 : 0;
    const qint64 lines = qint64(table.Rows()) + (extra.isEmpty() ? 0 : 2);
    const int perSheet = kMaxSheetRows - header;
    const int sheets = std::max<int>(1, int((lines + perSheet - 1) / perSheet));
    // Line i of the output: a grid row, or the empty row and the extra text at the end.
    auto lineCell = [&](qint64 i, int c) -> QStringView {
        if (i < table.Rows())
            return table.Cell(int(i), c);
        return i == table.Rows() + 1 && c == 0 ? QStringView(extra) : QStringView();
    };

    SharedStrings sst;
    std::vector<quint32> captionIndex;
    for (int c = 0; c < cols && header; ++c)
        captionIndex.push_back(sst.AddOwned(table.Caption(c)));
    sst.total += quint32(captionIndex.size()) * quint32(sheets - 1); // the header row on every sheet
    for (qint64 i = 0; i < lines; ++i)
        for (int c = 0; c < cols; ++c)
            if (const QStringView v = lineCell(i, c); !v.isEmpty())
                sst.Add(v);

    StreamOut out(dev);
    QByteArray b;
    out.Record(kBof, Bof(0x0005));
    b.clear();
    Put16(b, 1200); // texts are UTF-16
    out.Record(kCodepage, b);
    b.clear();
    Put16(b, 0);
    Put16(b, 0);
    Put16(b, 0x3A5C);
    Put16(b, 0x23BE);
    Put16(b, 0x0038); // horizontal and vertical scroll bars, sheet tabs
    Put16(b, 0);      // active sheet
    Put16(b, 0);      // first visible tab
    Put16(b, 1);      // selected sheets
    Put16(b, 0x0258); // tab bar width
    out.Record(kWindow1, b);
    b.clear();
    Put16(b, 0); // dates count from 1900
    out.Record(kDateMode, b);
    // Fonts 0 to 3 plain; index 4 does not exist in BIFF, so the fifth record is font 5, bold.
    for (int i = 0; i < 4; ++i)
        out.Record(kFont, Font(false));
    out.Record(kFont, Font(true));
    for (int i = 0; i < 15; ++i)
        out.Record(kXf, Xf(0, true, i == 0 ? 0x00 : 0xF4));
    out.Record(kXf, Xf(0, false, 0x00)); // 15: cells
    out.Record(kXf, Xf(5, false, 0xF8)); // 16: header cells, bold
    b.clear();
    Put16(b, 0x8000);  // built-in style of XF 0
    b.append(char(0)); // "Normal"
    b.append(char(char(0xFF)));
    out.Record(kStyle, b);

    std::vector<qint64> sheetEntries; // stream positions of the BOUNDSHEET offset fields
    for (int s = 0; s < sheets; ++s) {
        const QString name = SheetName(sheetName, s + 1);
        b.clear();
        Put32(b, 0);       // written back when the sheet's place is known
        b.append(char(0)); // visible
        b.append(char(0)); // worksheet
        const bool compressed = IsCompressible(name);
        b.append(char(name.size()));
        b.append(char(compressed ? 0 : 1));
        PutChars(b, name, compressed);
        sheetEntries.push_back(out.StreamPos() + 4);
        out.Record(kBoundSheet, b);
    }
    WriteSst(out, sst);
    out.Record(kEof, QByteArray());

    qint64 next = 0;
    for (int s = 0; s < sheets; ++s) {
        out.Patch32(sheetEntries[std::size_t(s)], quint32(out.StreamPos()));
        const qint64 first = next;
        const qint64 last = std::min(lines, first + perSheet);
        next = last;
        const quint32 sheetRows = quint32(header + (last - first));

        out.Record(kBof, Bof(0x0010));
        for (int c = 0; c < cols; ++c) {
            b.clear();
            Put16(b, quint16(c));
            Put16(b, quint16(c));
            Put16(b, ColumnWidth(table.Column(c).width));
            Put16(b, kXfCell);
            Put16(b, 0);
            Put16(b, 0);
            out.Record(kColInfo, b);
        }
        b.clear();
        Put32(b, 0);
        Put32(b, cols ? sheetRows : 0);
        Put16(b, 0);
        Put16(b, quint16(sheetRows ? cols : 0));
        Put16(b, 0);
        out.Record(kDimensions, b);
        for (int c = 0; c < cols && header; ++c)
            out.LabelSst(0, quint16(c), kXfHeader, captionIndex[std::size_t(c)]);
        for (qint64 i = first; i < last; ++i)
            for (int c = 0; c < cols; ++c)
                if (const QStringView v = lineCell(i, c); !v.isEmpty())
                    out.LabelSst(quint16(header + (i - first)), quint16(c), kXfCell, sst.Find(v));
        b.clear();
        Put16(b, s == 0 ? 0x06B6 : 0x00B6); // grid lines, headers, zeros, outline; the first sheet shown
        Put16(b, 0);
        Put16(b, 0);
        Put16(b, 0x40); // automatic grid line colour
        Put16(b, 0);
        Put16(b, 0);
        Put16(b, 0);
        Put16(b, 0);
        Put16(b, 0);
        out.Record(kWindow2, b);
        out.Record(kEof, QByteArray());
    }
    // A stream below the mini stream limit is padded: it then lies in normal sectors.
    qint64 size = out.StreamPos();
    if (size < kMinStreamSize) {
        out.Raw(QByteArray(kMinStreamSize - size, '\0'));
        size = kMinStreamSize;
    }
    const qint64 padded = (size + kSector - 1) / kSector * kSector;
    out.Raw(QByteArray(padded - size, '\0'));
    out.Flush();
    return out.Ok() && WriteCompoundFile(out, size);
}

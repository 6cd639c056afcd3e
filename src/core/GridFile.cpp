// Reading and writing a DataGrid as a file: the format of qlt.ini, Caption.qlt,
// lnkpic.qlt, .data and .ref files. The layout is described in docs/grid-format.md.
//
// Both directions work on raw bytes in one pass per line: a data list of 100,000 rows
// is some 60 MB, and the generic string helpers would cost several times the disk time.

#include "core/DataGrid.h"
#include "platform/SafeFile.h"

#include <QFile>
#include <algorithm>
#include <cstring>
#include <limits>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr int kFormatVersion = 1;
constexpr char kMagic[] = "QLTGRID";
constexpr int kMaxColumns = 100000;
constexpr qsizetype kChunk = 1 << 20; // bytes collected before each write
constexpr qsizetype kSlack = 32;      // UTF-16 units that a wide store may write ahead
constexpr qsizetype kNoRoom = -2;     // DecodeField: the row buffer was too small

// ---- writing ------------------------------------------------------------------------

// Writes UTF-8 for [p, end) to `out`, escaping the four characters that the line format
// reserves; returns the new end. The caller has made room: at most 3 bytes per unit (a
// surrogate pair gives 4 for 2 units).
inline char* EncodeEscaped(const char16_t* p, const char16_t* end, char* out) {
    while (p < end) {
#if defined(__SSE2__)
        // Eight plain ASCII characters at a time: nothing to escape or to encode.
        while (end - p >= 8) {
            const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            const __m128i high = _mm_and_si128(v, _mm_set1_epi16(short(0xFF80)));
            const __m128i special = _mm_or_si128(_mm_cmplt_epi16(v, _mm_set1_epi16(0x20)),
                                                 _mm_cmpeq_epi16(v, _mm_set1_epi16(0x5C)));
            if (_mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())) != 0xFFFF ||
                _mm_movemask_epi8(special) != 0)
                break;
            _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(v, v));
            out += 8;
            p += 8;
        }
        if (p >= end)
            break;
#endif
        const char16_t u = *p++;
        if (u < 0x80) {
            switch (u) {
            case u'\\':
                *out++ = '\\';
                *out++ = '\\';
                break;
            case u'\t':
                *out++ = '\\';
                *out++ = 't';
                break;
            case u'\n':
                *out++ = '\\';
                *out++ = 'n';
                break;
            case u'\r':
                *out++ = '\\';
                *out++ = 'r';
                break;
            default:
                *out++ = char(u);
            }
        } else if (u < 0x800) {
            *out++ = char(0xC0 | (u >> 6));
            *out++ = char(0x80 | (u & 0x3F));
        } else if (QChar::isHighSurrogate(u) && p < end && QChar::isLowSurrogate(*p)) {
            const char32_t cp = QChar::surrogateToUcs4(u, *p++);
            *out++ = char(0xF0 | (cp >> 18));
            *out++ = char(0x80 | ((cp >> 12) & 0x3F));
            *out++ = char(0x80 | ((cp >> 6) & 0x3F));
            *out++ = char(0x80 | (cp & 0x3F));
        } else if (u >= 0xDC80 && u <= 0xDCFF) {
            // A byte of a file name that is no UTF-8, as the folder walk keeps it (a lone
            // low surrogate): written as that byte, which reads back the same way.
            *out++ = char(u - 0xDC00);
        } else {
            // Any other lone surrogate has no UTF-8 form: it is written as U+FFFD.
            const char32_t cp = QChar::isSurrogate(u) ? 0xFFFD : u;
            *out++ = char(0xE0 | (cp >> 12));
            *out++ = char(0x80 | ((cp >> 6) & 0x3F));
            *out++ = char(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

// Narrows `n` UTF-16 units into `out` (with 16 bytes to spare) when all of them are
// ASCII that needs no escape; false otherwise.
bool NarrowPlain(const char16_t* p, std::uint32_t n, QByteArray& out) {
    if (out.size() < qsizetype(n) + 16)
        out.resize(std::max<qsizetype>(qsizetype(n) + 16, out.size() * 2));
    char* o = out.data();
    std::uint32_t i = 0;
#if defined(__SSE2__)
    for (; i + 8 <= n; i += 8) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
        const __m128i high = _mm_and_si128(v, _mm_set1_epi16(short(0xFF80)));
        const __m128i bad =
            _mm_or_si128(_mm_cmplt_epi16(v, _mm_set1_epi16(0x20)), _mm_cmpeq_epi16(v, _mm_set1_epi16(0x5C)));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())) != 0xFFFF || _mm_movemask_epi8(bad))
            return false;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(o + i), _mm_packus_epi16(v, v));
    }
#endif
    for (; i < n; ++i) {
        const char16_t u = p[i];
        if (u >= 0x80 || u < 0x20 || u == u'\\')
            return false;
        o[i] = char(u);
    }
    return true;
}

// Appends UTF-8 to a byte buffer, escaping the four characters that the line format
// reserves. The buffer grows in large steps; `size` is the used part.
class LineWriter {
public:
    QByteArray buf;
    qsizetype size = 0;

    void Reserve(qsizetype more) {
        if (size + more > buf.size())
            buf.resize(std::max(buf.size() * 2, size + more));
    }
    void Byte(char c) {
        Reserve(1);
        buf.data()[size++] = c;
    }
    void Raw(const char* s) {
        while (*s)
            Byte(*s++);
    }
    void Number(qint64 v) { Raw(QByteArray::number(v).constData()); }

    void Escaped(QStringView s) {
        Reserve(s.size() * 3);
        size = EncodeEscaped(s.utf16(), s.utf16() + s.size(), buf.data() + size) - buf.data();
    }
};

// ---- reading ------------------------------------------------------------------------

// Turns a field in place into its text: "\\t" -> tab and so on. Returns the new
// length, or -1 on an escape that the writer never makes.
qsizetype Unescape(char16_t* s, qsizetype n) {
    qsizetype w = 0;
    for (qsizetype r = 0; r < n; ++r) {
        char16_t c = s[r];
        if (c == u'\\') {
            if (++r >= n)
                return -1;
            switch (s[r]) {
            case u'\\':
                c = u'\\';
                break;
            case u't':
                c = u'\t';
                break;
            case u'n':
                c = u'\n';
                break;
            case u'r':
                c = u'\r';
                break;
            default:
                return -1;
            }
        }
        s[w++] = c;
    }
    return w;
}

// Splits one header or column line into unescaped fields.
bool SplitFields(QByteArrayView line, QStringList& fields) {
    fields.clear();
    for (QString f : QString::fromUtf8(line).split(QLatin1Char('\t'))) {
        const qsizetype n = Unescape(reinterpret_cast<char16_t*>(f.data()), f.size());
        if (n < 0)
            return false;
        f.truncate(n);
        fields << f;
    }
    return true;
}

bool ToInt(QStringView s, int& out, int min, int max) {
    bool ok = false;
    const int v = s.toInt(&ok);
    if (!ok || v < min || v > max)
        return false;
    out = v;
    return true;
}

bool ToInt(QByteArrayView s, int& out, int min, int max) {
    return ToInt(QString::fromLatin1(s.data(), s.size()), out, min, max);
}

} // namespace

class GridFile {
public:
    static bool Save(const DataGrid& g, const QString& path);
    static bool Load(DataGrid& g, const QString& path, bool keepColumns);

private:
    static bool ReadRow(QByteArrayView line, std::size_t maxCells, DataGrid::Row& r);
    static qsizetype DecodeField(const unsigned char* p, const unsigned char* end, char16_t* out,
                                 const char16_t* outEnd, DataGrid::Row* ends, std::size_t& endCount);
    static bool DecodeRow(QByteArrayView line, std::size_t n, qsizetype units, DataGrid::Row& r, bool& fits);
};

bool DataGrid::SaveFile(const QString& path) const {
    return GridFile::Save(*this, path);
}
bool DataGrid::LoadFile(const QString& path, bool keepColumns) {
    return GridFile::Load(*this, path, keepColumns);
}

bool GridFile::Save(const DataGrid& g, const QString& path) {
    g.m_lastFileError.clear();
    // The writer fills a temporary copy beside the target, checks every write, flushes it
    // and renames it over the target only at the end: a failed or broken-off write leaves
    // the old file as it was.
    SafeFile::AtomicWriter file(path);
    if (!file.Open()) {
        g.m_lastFileError = file.ErrorString();
        return false;
    }
    LineWriter w;
    w.buf.resize(kChunk + (1 << 16));
    auto flush = [&](bool force) {
        if (w.size == 0 || (!force && w.size < kChunk))
            return true;
        const bool ok = file.Write(w.buf.constData(), w.size);
        w.size = 0;
        return ok;
    };
    const int cols = g.Cols();
    const int rows = g.Rows();
    w.Raw(kMagic);
    w.Byte('\t');
    w.Number(kFormatVersion);
    w.Raw("\nC\t");
    w.Number(cols);
    w.Byte('\n');
    for (const GridColumn& c : g.m_columns) {
        w.Raw("c\t");
        w.Escaped(c.key);
        w.Byte('\t');
        w.Escaped(c.caption);
        for (int v : {c.width, int(c.align), c.visible ? 1 : 0, int(c.sortType)}) {
            w.Byte('\t');
            w.Number(v);
        }
        w.Byte('\n');
    }
    w.Raw("R\t");
    w.Number(rows);
    w.Byte('\n');
    bool ok = true;
    QByteArray narrow;
    const std::size_t count = g.m_rows.size();
    for (std::size_t k = 0; k < count; ++k) {
        const DataGrid::Row& r = g.m_rows[k];
        if (k + 8 < count) {
            // Rows live in blocks of their own: ask for the next ones early.
            const char* ahead = reinterpret_cast<const char*>(g.m_rows[k + 8].data.constData());
            __builtin_prefetch(ahead);
            __builtin_prefetch(ahead + 64);
            __builtin_prefetch(ahead + 128);
        }
        // The whole line at once: the cells lie back to back, a tab goes in front of each.
        const std::size_t n = std::min<std::size_t>(r.cells, std::size_t(cols));
        const std::uint32_t total = n ? r.End(n - 1) : 0;
        w.Reserve(qsizetype(4 + 3 * (std::size_t(r.keyLen) + total) + n + 16));
        char* out = w.buf.data() + w.size;
        *out++ = 'r';
        *out++ = '\t';
        const char16_t* key = reinterpret_cast<const char16_t*>(r.Key().utf16());
        out = EncodeEscaped(key, key + r.keyLen, out);
        const char16_t* text = reinterpret_cast<const char16_t*>(r.data.utf16()) + r.TextStart();
        if (NarrowPlain(text, total, narrow)) {
            // Plain ASCII without anything to escape, the usual row: the cells are copied
            // from the narrowed text, 16 bytes at a time (the buffers have room for that).
            const char* src = narrow.constData();
            std::uint32_t pos = 0;
            for (std::size_t i = 0; i < n; ++i) {
                *out++ = '\t';
                const std::uint32_t e = r.End(i);
                const std::uint32_t len = e - pos;
                std::memcpy(out, src + pos, 16);
                if (len > 16)
                    std::memcpy(out + 16, src + pos + 16, len - 16);
                out += len;
                pos = e;
            }
        } else {
            std::uint32_t pos = 0;
            for (std::size_t i = 0; i < n; ++i) {
                *out++ = '\t';
                const std::uint32_t e = r.End(i);
                out = EncodeEscaped(text + pos, text + e, out);
                pos = e;
            }
        }
        *out++ = '\n';
        w.size = out - w.buf.data();
        if (!flush(false)) {
            ok = false;
            break;
        }
    }
    if (ok) {
        w.Raw("E\t");
        w.Number(rows);
        w.Byte('\n');
        ok = flush(true);
    }
    if (!ok || !file.Commit()) {
        g.m_lastFileError = file.ErrorString();
        file.Cancel();
        return false;
    }
    return true;
}

// Decodes UTF-8 into `out`, resolving escapes; a tab ends a cell, and its end offset
// (counted from `out`) goes to `ends` when given. A byte that is no valid UTF-8 becomes
// U+DC00 + byte, as file names that are no UTF-8 are kept (PosixFile::FromNative). Returns
// the number of UTF-16 units written, or -1 on an escape that the writer never makes.
qsizetype GridFile::DecodeField(const unsigned char* p, const unsigned char* end, char16_t* out,
                                const char16_t* outEnd, DataGrid::Row* ends, std::size_t& endCount) {
    char16_t* const start = out;
    while (p < end) {
        if (outEnd - out < kSlack)
            return kNoRoom; // the guess of the length was short: broken UTF-8
#if defined(__SSE2__)
        // Sixteen bytes at a time up to the first escape or non-ASCII byte: widened to
        // UTF-16, with the tabs taken out and their offsets noted. The stores may write up
        // to kSlack units ahead, which the row buffer holds beyond the text.
        while (end - p >= 16 && outEnd - out >= kSlack) {
            const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            const unsigned stop =
                unsigned(_mm_movemask_epi8(v) | _mm_movemask_epi8(_mm_cmpeq_epi8(v, _mm_set1_epi8('\\'))));
            const int lim = stop ? __builtin_ctz(stop) : 16;
            if (lim == 0)
                break;
            unsigned tabs = unsigned(_mm_movemask_epi8(_mm_cmpeq_epi8(v, _mm_set1_epi8('\t'))));
            if (lim < 16)
                tabs &= (1u << lim) - 1;
            if (tabs && !ends)
                break; // a key has no tabs; let the plain loop see it
            alignas(16) char16_t wide[32] = {};
            _mm_store_si128(reinterpret_cast<__m128i*>(wide), _mm_unpacklo_epi8(v, _mm_setzero_si128()));
            _mm_store_si128(reinterpret_cast<__m128i*>(wide + 8), _mm_unpackhi_epi8(v, _mm_setzero_si128()));
            int pos = 0;
            auto copy = [&](int from, int to) {
                _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                                 _mm_loadu_si128(reinterpret_cast<const __m128i*>(wide + from)));
                _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8),
                                 _mm_loadu_si128(reinterpret_cast<const __m128i*>(wide + from + 8)));
                out += to - from;
            };
            while (tabs) {
                const int t = __builtin_ctz(tabs);
                copy(pos, t);
                ends->SetEnd(endCount++, std::uint32_t(out - start));
                pos = t + 1;
                tabs &= tabs - 1;
            }
            copy(pos, lim);
            p += lim;
            if (lim < 16)
                break;
        }
        if (p >= end)
            break;
#endif
        unsigned c = *p;
        if (c < 0x80) {
            ++p;
            if (c == '\t') {
                if (ends)
                    ends->SetEnd(endCount++, std::uint32_t(out - start));
                continue;
            }
            if (c == '\\') {
                if (p >= end)
                    return -1;
                switch (*p++) {
                case '\\':
                    break;
                case 't':
                    c = '\t';
                    break;
                case 'n':
                    c = '\n';
                    break;
                case 'r':
                    c = '\r';
                    break;
                default:
                    return -1;
                }
            }
            *out++ = char16_t(c);
            continue;
        }
        // Multi-byte sequences, checked as strictly as the standard asks.
        const qsizetype left = end - p;
        auto cont = [&](qsizetype k) { return k < left && (p[k] & 0xC0) == 0x80; };
        if (c >= 0xC2 && c <= 0xDF && cont(1)) {
            *out++ = char16_t(((c & 0x1F) << 6) | (p[1] & 0x3F));
            p += 2;
        } else if (c >= 0xE0 && c <= 0xEF && cont(1) && cont(2) && !(c == 0xE0 && p[1] < 0xA0) &&
                   !(c == 0xED && p[1] >= 0xA0)) {
            *out++ = char16_t(((c & 0x0F) << 12) | ((p[1] & 0x3F) << 6) | (p[2] & 0x3F));
            p += 3;
        } else if (c >= 0xF0 && c <= 0xF4 && cont(1) && cont(2) && cont(3) && !(c == 0xF0 && p[1] < 0x90) &&
                   !(c == 0xF4 && p[1] >= 0x90)) {
            const char32_t cp =
                ((c & 0x07) << 18) | ((p[1] & 0x3F) << 12) | ((p[2] & 0x3F) << 6) | (p[3] & 0x3F);
            *out++ = QChar::highSurrogate(cp);
            *out++ = QChar::lowSurrogate(cp);
            p += 4;
        } else {
            *out++ = char16_t(0xDC00 + c);
            ++p;
        }
    }
    return out - start;
}

namespace {

struct LineCounts {
    std::size_t tabs = 0;
    std::size_t continuation = 0; // bytes 0x80 to 0xBF
    std::size_t long4 = 0;        // lead bytes of four-byte sequences
};

LineCounts CountLine(const unsigned char* p, const unsigned char* end) {
    LineCounts c;
#if defined(__SSE2__)
    for (; end - p >= 16; p += 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        c.tabs +=
            unsigned(__builtin_popcount(unsigned(_mm_movemask_epi8(_mm_cmpeq_epi8(v, _mm_set1_epi8('\t'))))));
        const int high = _mm_movemask_epi8(v);
        if (high == 0)
            continue;
        // As signed bytes: continuation bytes are below -64, four-byte leads -16 to -1.
        c.continuation +=
            unsigned(__builtin_popcount(unsigned(_mm_movemask_epi8(_mm_cmplt_epi8(v, _mm_set1_epi8(-64))))));
        c.long4 += unsigned(
            __builtin_popcount(unsigned(_mm_movemask_epi8(_mm_cmpgt_epi8(v, _mm_set1_epi8(-17))) & high)));
    }
#endif
    for (; p < end; ++p) {
        c.tabs += *p == '\t';
        c.continuation += (*p & 0xC0) == 0x80;
        c.long4 += *p >= 0xF0;
    }
    return c;
}

} // namespace

// Decodes key and cells of a row line into a buffer for `units` UTF-16 units. Returns
// false on a bad escape; `fits` tells whether the buffer was large enough.
bool GridFile::DecodeRow(QByteArrayView line, std::size_t n, qsizetype units, DataGrid::Row& r, bool& fits) {
    const auto* b = reinterpret_cast<const unsigned char*>(line.data());
    const auto* e = b + line.size();
    const qsizetype tab = line.indexOf('\t');
    const auto* keyEnd = tab < 0 ? e : b + tab;
    r.cells = std::uint32_t(n);
    r.data = QString(qsizetype(2 * n) + std::max(units, qsizetype(0)) + kSlack, Qt::Uninitialized);
    char16_t* base = reinterpret_cast<char16_t*>(r.data.data());
    const char16_t* outEnd = base + r.data.size();
    fits = false;
    std::size_t none = 0;
    const qsizetype keyLen = DecodeField(b, keyEnd, base + 2 * n, outEnd, nullptr, none);
    if (keyLen == kNoRoom)
        return true;
    if (keyLen < 0)
        return false;
    r.keyLen = std::uint32_t(keyLen);
    if (tab >= 0) {
        // Each tab inside closes a cell; the end of the line closes the last one.
        std::size_t count = 0;
        const qsizetype textLen = DecodeField(keyEnd + 1, e, base + 2 * n + keyLen, outEnd, &r, count);
        if (textLen == kNoRoom)
            return true;
        if (textLen < 0)
            return false;
        r.SetEnd(count, std::uint32_t(textLen));
    }
    fits = true;
    return true;
}

// One row line without its leading "r\t": key, then the cells. The row is built in its
// final single allocation; the text is at most as long in UTF-16 units as in bytes.
bool GridFile::ReadRow(QByteArrayView line, std::size_t maxCells, DataGrid::Row& r) {
    const LineCounts counts = CountLine(reinterpret_cast<const unsigned char*>(line.data()),
                                        reinterpret_cast<const unsigned char*>(line.data()) + line.size());
    const std::size_t n = counts.tabs; // one tab in front of every cell
    // UTF-16 units of key and cells: one per byte, less the tabs and the continuation
    // bytes of UTF-8, plus one for each character beyond 16 bits. That is exact for good
    // UTF-8 (escapes make it less); broken UTF-8 may need more, up to one unit per byte.
    const qsizetype units =
        line.size() - qsizetype(counts.tabs + counts.continuation) + qsizetype(counts.long4);
    bool ok = false;
    if (!DecodeRow(line, n, units, r, ok))
        return false;
    if (!ok && !DecodeRow(line, n, line.size() - qsizetype(n), r, ok))
        return false;
    char16_t* base = reinterpret_cast<char16_t*>(r.data.data());
    const qsizetype keyLen = r.keyLen;
    std::size_t keep = std::min(n, maxCells);
    while (keep > 0 && r.End(keep - 1) == (keep > 1 ? r.End(keep - 2) : 0u))
        --keep; // trailing empty cells are not kept, as in rows built in memory
    const std::uint32_t textKeep = keep ? r.End(keep - 1) : 0;
    if (keep < n) {
        // Fewer offsets: key and text move up.
        std::memmove(base + 2 * keep, base + 2 * n, (std::size_t(keyLen) + textKeep) * sizeof(char16_t));
        r.cells = std::uint32_t(keep);
    }
    const qsizetype size = qsizetype(2 * keep) + keyLen + textKeep;
    r.data.truncate(size);
    if (r.data.capacity() - size > 64)
        r.data.squeeze(); // escapes, broken UTF-8 or dropped cells left much unused room
    return true;
}

bool GridFile::Load(DataGrid& g, const QString& path, bool keepColumns) {
    g.m_lastFileError.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        g.m_lastFileError = file.errorString();
        return false;
    }
    auto fail = [&](const char* why) {
        g.m_lastFileError = QString::fromLatin1(why);
        return false;
    };
    // The file is read in pieces of a megabyte and parsed as it comes: the bytes are
    // still in the cache when they are decoded, and no buffer of the file's size is
    // needed. A line view stays valid until the next call of nextLine.
    const qint64 fileSize = file.size();
    QByteArray buf;
    qsizetype begin = 0, filled = 0;
    bool atEnd = false, readError = false;
    auto fill = [&] {
        if (begin > 0) {
            std::memmove(buf.data(), buf.constData() + begin, std::size_t(filled - begin));
            filled -= begin;
            begin = 0;
        }
        if (buf.size() - filled < kChunk)
            buf.resize(std::max(buf.size() * 2, filled + kChunk));
        const qint64 n = file.read(buf.data() + filled, buf.size() - filled);
        if (n < 0)
            readError = true;
        if (n <= 0)
            atEnd = true;
        else
            filled += qsizetype(n);
    };
    auto nextLine = [&](QByteArrayView& line) {
        for (;;) {
            const void* nl = std::memchr(buf.constData() + begin, '\n', std::size_t(filled - begin));
            if (nl) {
                const qsizetype at = static_cast<const char*>(nl) - buf.constData();
                qsizetype end = at;
                if (end > begin && buf[end - 1] == '\r')
                    --end;
                line = QByteArrayView(buf.constData() + begin, end - begin);
                begin = at + 1;
                return true;
            }
            if (atEnd)
                return false; // every line, the last included, ends in a line feed
            fill();
        }
    };
    fill();
    if (filled >= 3 && std::memcmp(buf.constData(), "\xEF\xBB\xBF", 3) == 0)
        begin = 3; // a byte order mark that an editor may have put in front

    QByteArrayView line;
    QStringList fields;
    if (!nextLine(line))
        return fail("empty or truncated file");
    if (!SplitFields(line, fields) || fields.size() != 2 || fields[0] != QLatin1String(kMagic))
        return fail("not a grid file");
    int version = 0;
    if (!ToInt(QStringView(fields[1]), version, 1, kFormatVersion))
        return fail("grid file of an unknown version");

    int cols = 0;
    if (!nextLine(line) || !line.startsWith("C\t") || !ToInt(line.sliced(2), cols, 0, kMaxColumns))
        return fail("bad column count");
    // A column line takes at least 14 bytes: a count larger than the file can hold is a lie.
    if (qint64(cols) * 14 > fileSize)
        return fail("column count larger than the file");
    std::vector<GridColumn> columns;
    columns.reserve(std::size_t(cols));
    for (int i = 0; i < cols; ++i) {
        // Later versions may add fields behind the seven known ones.
        if (!nextLine(line) || !SplitFields(line, fields) || fields.size() < 7 || fields[0] != u"c")
            return fail("bad column line");
        GridColumn c;
        c.key = fields[1];
        c.caption = fields[2];
        int align = 0, visible = 0, sort = 0;
        if (!ToInt(QStringView(fields[3]), c.width, -1000000, 1000000) ||
            !ToInt(QStringView(fields[4]), align, 0, 2) || !ToInt(QStringView(fields[5]), visible, 0, 1) ||
            !ToInt(QStringView(fields[6]), sort, 0, 2))
            return fail("bad column line");
        c.align = Align(align);
        c.visible = visible == 1;
        c.sortType = SortType(sort);
        columns.push_back(c);
    }
    int rows = 0;
    if (!nextLine(line) || !line.startsWith("R\t") ||
        !ToInt(line.sliced(2), rows, 0, std::numeric_limits<int>::max()))
        return fail("bad row count");
    // A row line takes at least three bytes: guard the reservation against a lying count.
    if (qint64(rows) * 3 > fileSize)
        return fail("row count larger than the file");

    const bool takeColumns = !keepColumns || g.Cols() == 0;
    const std::size_t maxCells = std::size_t(takeColumns ? std::max(cols, g.Cols()) : g.Cols());
    std::vector<DataGrid::Row> newRows;
    newRows.reserve(std::size_t(rows));
    for (int i = 0; i < rows; ++i) {
        if (!nextLine(line) || !line.startsWith("r\t"))
            return fail("truncated or bad row");
        DataGrid::Row r;
        if (!ReadRow(line.sliced(2), maxCells, r))
            return fail("bad escape");
        newRows.push_back(std::move(r));
    }
    if (!nextLine(line) || !line.startsWith("E\t") || line.sliced(2) != QByteArray::number(rows))
        return readError ? fail("read error") : fail("missing end of file");
    while (begin == filled && !atEnd)
        fill();
    if (begin != filled || readError)
        return readError ? fail("read error") : fail("data behind the end of the file");

    // Everything read: only now does the grid change.
    if (takeColumns) {
        // The file's definitions replace the grid's. What the file does not hold (header
        // colour, minimum width, footer) stays with a column that remains, and columns
        // that the grid has beyond the file's stay as they are: a file from an older
        // version with fewer columns must not take columns away from the program.
        for (std::size_t i = 0; i < columns.size() && i < g.m_columns.size(); ++i) {
            columns[i].headerColor = g.m_columns[i].headerColor;
            columns[i].minWidth = g.m_columns[i].minWidth;
            columns[i].footerText = g.m_columns[i].footerText;
        }
        for (std::size_t i = columns.size(); i < g.m_columns.size(); ++i)
            columns.push_back(g.m_columns[i]);
        g.m_columns = std::move(columns);
    }
    g.m_rows = std::move(newRows);
    g.m_selCount = 0;
    g.m_curRow = g.Rows() ? 1 : 0;
    g.NoteColumnsChanged();
    g.NoteRowsChanged();
    g.NoteSelectionChanged();
    if (!g.IsLocked())
        emit g.currentRowChanged(g.m_curRow);
    return true;
}

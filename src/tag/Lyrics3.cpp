// Lyrics3 tags. Version 2.00: "LYRICSBEGIN", fields of a three-letter id, a five-digit
// size and the data, a six-digit size of all that, "LYRICS200". Version 1: "LYRICSBEGIN",
// the lyrics, "LYRICSEND". Both stand immediately in front of an ID3v1 tag, if any.
#include "tag/TagText.h"
#include "tag/TrailerTags.h"

namespace qlt_tag {

namespace {

bool IsFieldId(const QByteArray& id) {
    if (id.size() != 3)
        return false;
    for (char c : id) {
        if (!((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')))
            return false;
    }
    return true;
}

bool DigitsAt(const QByteArray& b, qsizetype at, int n, long long* value) {
    if (at < 0 || at + n > b.size())
        return false;
    long long v = 0;
    for (int i = 0; i < n; ++i) {
        const char c = b.at(at + i);
        if (c < '0' || c > '9')
            return false;
        v = v * 10 + (c - '0');
    }
    *value = v;
    return true;
}

} // namespace

QString Lyrics3Data::Text(const char* id) const {
    for (const Lyrics3Field& f : fields) {
        if (f.id == id)
            return DecodeLegacy(f.value);
    }
    return QString();
}

void Lyrics3Data::SetText(const char* id, const QString& value) {
    const QByteArray bytes = EncodeLegacy(value);
    for (auto it = fields.begin(); it != fields.end(); ++it) {
        if (it->id == id) {
            if (value.isEmpty())
                fields.erase(it);
            else
                it->value = bytes;
            return;
        }
    }
    if (!value.isEmpty())
        fields.push_back(Lyrics3Field{QByteArray(id), bytes});
}

bool Lyrics3Data::HasContent() const {
    for (const Lyrics3Field& f : fields) {
        if (f.id != "IND" && !f.value.isEmpty())
            return true;
    }
    return false;
}

bool ParseLyrics3(const QByteArray& block, Lyrics3Data* out) {
    if (!block.startsWith("LYRICSBEGIN"))
        return false;
    Lyrics3Data tag;
    if (block.endsWith("LYRICSEND")) {
        tag.version = 1;
        const QByteArray lyrics = block.mid(11, block.size() - 11 - 9);
        if (!lyrics.isEmpty())
            tag.fields.push_back(Lyrics3Field{"LYR", lyrics});
        *out = tag;
        return true;
    }
    if (!block.endsWith("LYRICS200") || block.size() < 26)
        return false;
    tag.version = 2;
    const qsizetype end = block.size() - 15;
    qsizetype pos = 11;
    while (pos + 8 <= end) {
        const QByteArray id = block.mid(pos, 3);
        long long size = 0;
        if (!IsFieldId(id) || !DigitsAt(block, pos + 3, 5, &size))
            break; // broken field: keep what was read before it
        const qsizetype dataStart = pos + 8;
        if (size > end - dataStart)
            size = end - dataStart; // a field cut short gives what it holds
        tag.fields.push_back(Lyrics3Field{id, block.mid(dataStart, static_cast<qsizetype>(size))});
        pos = dataStart + static_cast<qsizetype>(size);
    }
    *out = tag;
    return true;
}

QByteArray RenderLyrics3(const Lyrics3Data& tag, QString* error) {
    QByteArray body("LYRICSBEGIN");
    // The indications field comes first: lyrics present, time stamps present, no random.
    QByteArray lyrics;
    for (const Lyrics3Field& f : tag.fields) {
        if (f.id == "LYR")
            lyrics = f.value;
    }
    const bool stamps = lyrics.contains('[') && lyrics.contains(':') && lyrics.contains(']');
    QByteArray ind;
    ind.append(lyrics.isEmpty() ? '0' : '1');
    ind.append(stamps ? '1' : '0');
    ind.append('0');
    body.append("IND00003" + ind);
    for (const Lyrics3Field& f : tag.fields) {
        if (f.id == "IND" || f.value.isEmpty() || !IsFieldId(f.id))
            continue;
        if (f.value.size() > 99999) {
            if (error)
                *error = QStringLiteral("The Lyrics3 field %1 is longer than 99,999 bytes.")
                             .arg(QString::fromLatin1(f.id));
            return QByteArray();
        }
        if (f.value.contains("LYRICS200") || f.value.contains("LYRICSEND")) {
            if (error)
                *error = QStringLiteral("A Lyrics3 field must not contain the text LYRICS200 or LYRICSEND.");
            return QByteArray();
        }
        body.append(f.id);
        body.append(QByteArray::number(f.value.size()).rightJustified(5, '0'));
        body.append(f.value);
    }
    if (body.size() > 999999) {
        if (error)
            *error = QStringLiteral("The Lyrics3 tag is larger than 999,999 bytes.");
        return QByteArray();
    }
    body.append(QByteArray::number(body.size()).rightJustified(6, '0'));
    body.append("LYRICS200");
    return body;
}

} // namespace qlt_tag

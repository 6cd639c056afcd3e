// ID3v1 and ID3v1.1: fixed 128-byte records behind the audio.
#include "tag/TagText.h"
#include "tag/TrailerTags.h"

namespace qlt_tag {

bool ParseId3v1(const QByteArray& b, Id3v1Data* out) {
    if (b.size() != 128 || !b.startsWith("TAG"))
        return false;
    Id3v1Data t;
    t.title = DecodeLegacy(b.mid(3, 30));
    t.artist = DecodeLegacy(b.mid(33, 30));
    t.album = DecodeLegacy(b.mid(63, 30));
    t.year = DecodeLegacy(b.mid(93, 4));
    const auto track = static_cast<unsigned char>(b.at(126));
    if (b.at(125) == '\0' && track != 0) {
        t.v11 = true;
        t.comment = DecodeLegacy(b.mid(97, 28));
        t.track = QString::number(track);
    } else {
        t.comment = DecodeLegacy(b.mid(97, 30));
    }
    t.genre = static_cast<unsigned char>(b.at(127));
    *out = t;
    return true;
}

QByteArray RenderId3v1(const Id3v1Data& t) {
    QByteArray b(128, '\0');
    b[0] = 'T';
    b[1] = 'A';
    b[2] = 'G';
    // A field of blanks only is kept as it is: it marks a tag that exists for Lyrics3.
    auto put = [&](int at, int width, const QString& text) {
        const QByteArray bytes = EncodeLegacy(text, width);
        for (int i = 0; i < bytes.size(); ++i)
            b[at + i] = bytes.at(i);
    };
    put(3, 30, t.title);
    put(33, 30, t.artist);
    put(63, 30, t.album);
    put(93, 4, t.year);
    bool ok = false;
    const int track = t.track.trimmed().section(QLatin1Char('/'), 0, 0).toInt(&ok);
    if (ok && track > 0 && track < 256) {
        put(97, 28, t.comment);
        b[125] = '\0';
        b[126] = static_cast<char>(track);
    } else {
        put(97, 30, t.comment);
    }
    b[127] = static_cast<char>(t.genre < 0 || t.genre > 255 ? 255 : t.genre);
    return b;
}

} // namespace qlt_tag

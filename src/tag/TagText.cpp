#include "tag/TagText.h"

#include <QStringDecoder>

namespace qlt_tag {

namespace {

// Windows-1252 characters of the bytes 0x80 to 0x9F; 0 marks an unassigned byte, read
// as its Latin-1 control character.
constexpr char16_t kCp1252High[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

QByteArray TrimField(const QByteArray& bytes) {
    qsizetype end = bytes.indexOf('\0');
    if (end < 0)
        end = bytes.size();
    while (end > 0 && bytes.at(end - 1) == ' ')
        --end;
    return bytes.left(end);
}

} // namespace

QString DecodeLegacy(const QByteArray& raw) {
    const QByteArray bytes = TrimField(raw);
    bool ascii = true;
    for (char c : bytes) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            ascii = false;
            break;
        }
    }
    if (ascii)
        return QString::fromLatin1(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
    text.clear();
    text.reserve(bytes.size());
    for (char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if (b >= 0x80 && b <= 0x9F && kCp1252High[b - 0x80] != 0)
            text.append(QChar(kCp1252High[b - 0x80]));
        else
            text.append(QChar(b));
    }
    return text;
}

bool IsLatin1(const QString& text) {
    for (QChar c : text) {
        if (c.unicode() > 0xFF)
            return false;
    }
    return true;
}

QByteArray EncodeLegacy(const QString& text, int maxBytes) {
    if (IsLatin1(text)) {
        QByteArray bytes = text.toLatin1();
        if (maxBytes > 0 && bytes.size() > maxBytes)
            bytes.truncate(maxBytes);
        return bytes;
    }
    QByteArray bytes = text.toUtf8();
    if (maxBytes > 0 && bytes.size() > maxBytes) {
        qsizetype cut = maxBytes;
        // Step back over continuation bytes so no character is split.
        while (cut > 0 && (static_cast<unsigned char>(bytes.at(cut)) & 0xC0) == 0x80)
            --cut;
        bytes.truncate(cut);
    }
    return bytes;
}

QString FromTL(const TagLib::String& s) {
    const std::string utf8 = s.to8Bit(true);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

TagLib::String ToTL(const QString& s) {
    return TagLib::String(s.toUtf8().toStdString(), TagLib::String::UTF8);
}

TagLib::String ToLatin1Field(const QString& s) {
    return TagLib::String(s.toUtf8().toStdString(), TagLib::String::Latin1);
}

QString FromLatin1Field(const TagLib::String& s) {
    const std::string bytes = s.to8Bit(false);
    return DecodeLegacy(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

} // namespace qlt_tag

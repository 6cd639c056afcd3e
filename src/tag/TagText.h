#pragma once
// Text conversions shared by the tag readers and writers.

#include <QByteArray>
#include <QString>

#include <taglib/tstring.h>

namespace qlt_tag {

// Bytes of an 8-bit tag field (ID3v1, Lyrics3): valid UTF-8 is read as UTF-8, anything
// else as Windows-1252. Trailing NULs and blanks are cut.
QString DecodeLegacy(const QByteArray& bytes);
// The other way: Latin-1 when every character fits, else UTF-8. With maxBytes > 0 the
// result is cut to that many bytes without splitting a character.
QByteArray EncodeLegacy(const QString& text, int maxBytes = 0);
bool IsLatin1(const QString& text);

QString FromTL(const TagLib::String& s);
TagLib::String ToTL(const QString& s);
// Frames whose format holds only Latin-1 (URL frames, the picture mime) carry UTF-8
// bytes in that field, so that any path survives; plain ASCII reads the same either way.
TagLib::String ToLatin1Field(const QString& s);
QString FromLatin1Field(const TagLib::String& s);

} // namespace qlt_tag

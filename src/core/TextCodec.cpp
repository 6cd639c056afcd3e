#include "core/TextCodec.h"

#include <QStringDecoder>

QString DecodeTextFile(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError()) {
        if (text.startsWith(QChar(0xFEFF)))
            text.remove(0, 1);
        return text;
    }
    QStringDecoder cp1252("windows-1252");
    if (cp1252.isValid())
        return cp1252.decode(bytes);
    return QString::fromLatin1(bytes);
}

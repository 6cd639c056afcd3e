// APE tags, versions 1.0 and 2.0: a footer (and for 2.0 usually a header) of 32 bytes
// around a list of items (size, flags, key, NUL, value).
#include "tag/TagText.h"
#include "tag/TrailerTags.h"

#include <QStringList>

namespace qlt_tag {

namespace {

quint32 Le32(const QByteArray& b, qsizetype at) {
    const auto* u = reinterpret_cast<const unsigned char*>(b.constData() + at);
    return quint32(u[0]) | (quint32(u[1]) << 8) | (quint32(u[2]) << 16) | (quint32(u[3]) << 24);
}

void PutLe32(QByteArray& b, quint32 v) {
    for (int i = 0; i < 4; ++i)
        b.append(static_cast<char>((v >> (8 * i)) & 0xFF));
}

QByteArray HeaderOrFooter(quint32 size, quint32 count, bool header) {
    QByteArray b("APETAGEX");
    PutLe32(b, 2000);
    PutLe32(b, size);
    PutLe32(b, count);
    quint32 flags = 0x80000000u; // the tag has a header
    if (header)
        flags |= 0x20000000u;
    PutLe32(b, flags);
    b.append(QByteArray(8, '\0'));
    return b;
}

} // namespace

QString ApeData::Text(const char* key) const {
    QStringList values;
    for (const ApeItem& item : items) {
        if (((item.flags >> 1) & 3) == 1)
            continue; // binary
        if (item.key.compare(QByteArray(key), Qt::CaseInsensitive) != 0)
            continue;
        // Several values of one item are separated by NUL.
        const QList<QByteArray> parts = item.value.split('\0');
        for (const QByteArray& p : parts) {
            if (!p.isEmpty())
                values << (version >= 2000 ? QString::fromUtf8(p) : DecodeLegacy(p));
        }
    }
    return values.join(QStringLiteral(" / "));
}

void ApeData::SetText(const char* key, const QString& value) {
    const QByteArray k(key);
    for (auto it = items.begin(); it != items.end();) {
        if (it->key.compare(k, Qt::CaseInsensitive) == 0)
            it = items.erase(it);
        else
            ++it;
    }
    if (!value.isEmpty())
        items.push_back(ApeItem{k, 0, value.toUtf8()});
}

bool ParseApe(const QByteArray& block, ApeData* out, bool* complete) {
    if (complete)
        *complete = false;
    if (block.size() < 32)
        return false;
    const qsizetype footerAt = block.size() - 32;
    if (!block.mid(footerAt, 8).startsWith("APETAGEX"))
        return false;
    ApeData tag;
    tag.version = static_cast<int>(Le32(block, footerAt + 8));
    const quint32 size = Le32(block, footerAt + 12);
    const quint32 count = Le32(block, footerAt + 16);
    if (size < 32 || size > static_cast<quint32>(block.size()))
        return false;
    qsizetype pos = block.size() - static_cast<qsizetype>(size);
    const qsizetype end = footerAt;
    // The bytes in front of the items: nothing, or a header of 32 bytes.
    const bool framed = pos == 0 || (pos == 32 && block.startsWith("APETAGEX"));
    quint32 read = 0;
    for (quint32 i = 0; i < count && i < 65536 && pos + 8 < end; ++i) {
        const quint32 valueSize = Le32(block, pos);
        const quint32 flags = Le32(block, pos + 4);
        const qsizetype keyStart = pos + 8;
        const qsizetype keyEnd = block.indexOf('\0', keyStart);
        if (keyEnd < 0 || keyEnd >= end)
            break;
        const qsizetype valueStart = keyEnd + 1;
        if (valueSize > static_cast<quint32>(end - valueStart))
            break; // a size that reaches beyond the tag: stop, keep what was read
        ApeItem item;
        item.key = block.mid(keyStart, keyEnd - keyStart);
        item.flags = flags;
        item.value = block.mid(valueStart, valueSize);
        if (!item.key.isEmpty())
            tag.items.push_back(item);
        pos = valueStart + valueSize;
        ++read;
    }
    if (complete)
        *complete = framed && read == count && pos == end;
    *out = tag;
    return true;
}

QByteArray RenderApe(const ApeData& tag) {
    QByteArray items;
    quint32 count = 0;
    for (const ApeItem& item : tag.items) {
        if (item.key.isEmpty())
            continue;
        PutLe32(items, static_cast<quint32>(item.value.size()));
        // Version 1 items were all text; keep the flags of version 2 items.
        PutLe32(items, tag.version >= 2000 ? (item.flags & 0x7) : 0);
        items.append(item.key);
        items.append('\0');
        items.append(item.value);
        ++count;
    }
    if (count == 0)
        return QByteArray();
    const auto size = static_cast<quint32>(items.size() + 32);
    return HeaderOrFooter(size, count, true) + items + HeaderOrFooter(size, count, false);
}

} // namespace qlt_tag

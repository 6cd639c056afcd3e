#pragma once
// The keys of the rows of the data list. A key is the row's identity ("12k"), given when
// the row is made and kept through sorts, re-reads and refreshes; lists that point at a
// row (KeyInput of the tag list and the playlist) hold it. A row read from a file adds a
// record of the file behind "|" (the refresh compares it with the file as it is now):
// "12k|4711:1700000000.123456789". Compare rows by their identity, never by the whole key.

#include <QString>
#include <QStringView>

inline QStringView KeyIdentity(QStringView key) {
    const qsizetype at = key.indexOf(u'|');
    return at < 0 ? key : key.left(at);
}

// The record behind "|", empty when the key has none.
inline QStringView KeyStamp(QStringView key) {
    const qsizetype at = key.indexOf(u'|');
    return at < 0 ? QStringView() : key.mid(at + 1);
}

inline QString StampedKey(QStringView identity, QStringView stamp) {
    if (stamp.isEmpty())
        return identity.toString();
    QString key;
    key.reserve(identity.size() + 1 + stamp.size());
    key += identity;
    key += u'|';
    key += stamp;
    return key;
}

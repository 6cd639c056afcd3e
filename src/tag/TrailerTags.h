#pragma once
// The tags that stand behind the audio: ID3v1, APE and Lyrics3. Each is parsed from its
// bytes and rendered to bytes here; where the bytes go is the layout's business.

#include <QByteArray>
#include <QString>
#include <vector>

namespace qlt_tag {

// ---- ID3v1 (128 bytes, "TAG") -----------------------------------------------------------
struct Id3v1Data {
    QString title, artist, album, year, comment, track; // track empty for version 1.0
    int genre = 255;
    bool v11 = false; // the comment's last two bytes hold a track number
};
bool ParseId3v1(const QByteArray& bytes, Id3v1Data* out);
QByteArray RenderId3v1(const Id3v1Data& tag);

// ---- APE tag, version 1 or 2 -----------------------------------------------------------
struct ApeItem {
    QByteArray key;    // ASCII
    quint32 flags = 0; // bits 1-2: 0 text, 1 binary, 2 locator
    QByteArray value;  // raw; UTF-8 for text items
};
struct ApeData {
    int version = 2000;
    std::vector<ApeItem> items;
    QString Text(const char* key) const;                 // case-insensitive key; values joined by " / "
    void SetText(const char* key, const QString& value); // empty removes
};
// The whole block as it lies in the file (optional header, items, footer). complete
// tells whether every item that the footer announces was read and the items fill the
// block to the byte: only then may the block be replaced without losing anything.
bool ParseApe(const QByteArray& block, ApeData* out, bool* complete = nullptr);
// Version 2 with header and footer; an empty tag renders to nothing.
QByteArray RenderApe(const ApeData& tag);

// ---- Lyrics3 ----------------------------------------------------------------------------
struct Lyrics3Field {
    QByteArray id; // three letters
    QByteArray value;
};
struct Lyrics3Data {
    int version = 2;                  // 1 or 2
    std::vector<Lyrics3Field> fields; // in file order; for version 1 one "LYR" field
    QString Text(const char* id) const;
    void SetText(const char* id, const QString& value); // empty removes
    bool HasContent() const;                            // any field apart from "IND"
};
bool ParseLyrics3(const QByteArray& block, Lyrics3Data* out);
// Version 2.00; fails (empty result) when a field does not fit its 5-digit size.
QByteArray RenderLyrics3(const Lyrics3Data& tag, QString* error);

} // namespace qlt_tag

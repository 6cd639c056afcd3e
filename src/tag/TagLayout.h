#pragma once
// Where things lie in an audio file: ID3v2 tags in front, the audio (or the format's own
// container) in the middle, and behind it APE, Lyrics3 and ID3v1 blocks in whatever
// order the file has them. Also the file type by content.

#include <QByteArray>
#include <QString>
#include <vector>

#include <taglib/tiostream.h>

namespace qlt_tag {

enum class BlockKind { Id3v1, Ape, Lyrics3v2, Lyrics3v1 };

struct TrailerBlock {
    BlockKind kind;
    long long offset = 0;
    long long length = 0;
};

struct FileLayout {
    long long size = 0;
    long long headEnd = 0;             // bytes of ID3v2 tags at the start
    long long bodyEnd = 0;             // start of the first trailer block (or the file size)
    int headVersion = 0;               // major version of the first ID3v2 tag (2, 3, 4), 0 if none
    std::vector<TrailerBlock> trailer; // in file order
    const TrailerBlock* Find(BlockKind kind) const;
};

enum FileType {
    kTypeNone = 0,
    kTypeMp3,
    kTypeWma,
    kTypeMonkey,
    kTypeFlac,
    kTypeWav,
    kTypeOgg,
    kTypeMpc,
    kTypeAac,
    kTypeMp4
};

// Reads bytes at an offset; fewer (or none) near the end of the stream.
QByteArray ReadAt(TagLib::IOStream* stream, long long offset, long long length);

// Size of the ID3v2 tags at the start (several may follow each other), and the major
// version of the first one.
long long LeadingId3v2Size(TagLib::IOStream* stream, long long fileSize, int* version);

// The APE, Lyrics3 and ID3v1 blocks at the end, never reaching below minOffset.
std::vector<TrailerBlock> ScanTrailer(TagLib::IOStream* stream, long long fileSize, long long minOffset);

// The file type by content, and the layout for the types that may carry ID3v2 in front
// and tags behind (MP3, MONKEY, FLAC, OGG, MPP, AAC); for the others the whole file is
// body. The type is only a first guess: the format reader still has to accept the file.
int DetectType(TagLib::IOStream* stream, long long fileSize, FileLayout* layout);

// Whether these types carry the leading and trailing tag blocks that this layer manages.
bool TypeHasOuterTags(int type);

// MPEG audio frame header: the frame length in bytes, 0 if the four bytes are no header.
int MpegFrameLength(const unsigned char* h);
// ADTS frame header (at least 7 bytes): the frame length, 0 if no header.
int AdtsFrameLength(const unsigned char* h, long long available);

} // namespace qlt_tag

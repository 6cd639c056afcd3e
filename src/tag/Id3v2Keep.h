#pragma once
// Writing an ID3v2 tag without losing what the edit did not touch.
//
// - The frames of ID3v2.3 that version 2.4 gave up (TDAT, TIME, TRDA, TSIZ, RVAD, EQUA)
//   are read as they are, so that a v2.3 tag keeps them and a new year keeps its day.
// - Several tags in a row in front of the audio: the first is the tag; frames of the
//   others that it lacks are taken over, so that a write drops none of them.
// - Frames that are still as they were read keep their bytes to the last one (a genre
//   "(17)Rock" stays "(17)Rock"); only new and changed frames are rendered afresh.

#include <QByteArray>
#include <memory>

namespace TagLib {
class File;
class IOStream;
namespace ID3v2 {
class FrameFactory;
class Tag;
} // namespace ID3v2
} // namespace TagLib

namespace qlt_tag {

const TagLib::ID3v2::FrameFactory* KeepingFrameFactory();

// The tag at the start of file, with the frames of further tags before headEnd merged in.
std::unique_ptr<TagLib::ID3v2::Tag> ReadHeadTags(TagLib::File* file, long long headEnd);

// The bytes of the tag at offset as its header gives them (header, body, footer); 0
// when there is no tag.
long long TagSizeAt(TagLib::IOStream* stream, long long offset);

// Whether every tag in front declares no more bytes than the file holds: a size that
// reaches beyond the end would make a rewrite drop the audio.
bool HeadTagsFit(TagLib::IOStream* stream, long long fileSize);

// Renders tag as the given version (3 or 4); `original` is the first tag as it lies in
// the file (empty for a new tag). Empty result for a tag without frames.
QByteArray RenderKeeping(TagLib::ID3v2::Tag& tag, const QByteArray& original, int version);

} // namespace qlt_tag

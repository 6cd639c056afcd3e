#pragma once
// Reading a file whose type is known: the audio data through TagLib's format readers (or
// our ADTS walker), the typical set, and the tags around the audio.

#include "tag/EngineData.h"

#include <taglib/tiostream.h>

namespace qlt_tag {

// Fills audio data and the typical set; false when the format reader rejects the file.
bool ReadFormat(TagLib::IOStream* stream, EngineData& d);
// Fills V1, V2, Ape and Lyrics as far as the type carries them.
void ReadOuterTags(TagLib::IOStream* stream, EngineData& d);
// Only presence and versions, from the layout (after a save).
void ReadPresence(TagLib::IOStream* stream, EngineData& d);

// Which Ogg codec a stream carries, from its first page: 'v' Vorbis, 'o' Opus,
// 'f' FLAC, 's' Speex, 0 unknown.
char OggCodec(TagLib::IOStream* stream, long long start);

} // namespace qlt_tag

#pragma once
// The steps that every write of TagEngine shares. Internal to src/tag.

#include "tag/EngineData.h"
#include "tag/TagStreams.h"

#include <QString>
#include <functional>

namespace qlt_tag {

// The target file as it is on disk now.
struct Target {
    QString path;
    FileIdentity before; // the file as it was found by Prepare
    int type = 0;
    FileLayout layout;
};

// Whether a save writes the whole set as held in memory rather than only what was staged:
// when the target is another file, or when the opened file has been replaced or changed
// by someone else since (a new inode or a new change time).
bool WholeSet(const EngineData& d, const QString& path, TagSet set);

// Checks the target for a write or strip of 'set' and reads its layout.
bool Prepare(EngineData& d, const QString& given, TagSet set, bool strip, Target* t);

// After a successful write to the open file: its tags are on disk now.
void Written(EngineData& d, const Target& t, TagSet set);
// After a successful strip of the open file: the set reads empty from now on.
void Stripped(EngineData& d, const Target& t, TagSet set);

// TagLib saves through a CheckedStream; a save counts only when every write reached the
// copy, and the finished copy is read back as a valid file of its kind.
bool Finished(CheckedStream& stream, bool saved, const std::function<bool()>& reread, QString* error);

// The audio part [headEnd, bodyEnd) goes to a temporary copy (the whole file for types
// without leading and trailing tags), edit changes it there, and the file is put together
// again with its own leading and trailing tags. 1 done, 0 failed (error in d.error).
int EditBody(EngineData& d, const Target& t, const std::function<bool(const QString&, QString*)>& edit);

// Writes (or, with strip, removes) the V2 set as the "id3 " chunk of a WAV file.
int WriteWavId3(EngineData& d, const Target& t, bool strip);

} // namespace qlt_tag

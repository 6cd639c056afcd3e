// TagEngine: the tags that live inside the container of a file, written by TagLib into a
// temporary copy: the item list of MP4 files, and the INFO list and "id3 " chunk of WAV
// files. Every other atom and chunk is left as it is.
#include "tag/TagEngine.h"

#include "platform/PosixFile.h"
#include "tag/EngineData.h"
#include "tag/FormatRead.h"
#include "tag/TagStreams.h"
#include "tag/WriteSteps.h"

#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/tfilestream.h>
#include <taglib/wavfile.h>

using namespace qlt_tag;

namespace {

// Opens the temporary copy as a WAV file, lets change edit it, and checks the result.
bool EditWav(const QString& temp, const std::function<bool(TagLib::RIFF::WAV::File&)>& change,
             QString* error) {
    UseInfoTextCodec();
    const QByteArray native = PosixFile::Native(temp);
    CheckedStream stream(native);
    bool saved = false;
    {
        TagLib::RIFF::WAV::File f(&stream, false);
        if (!f.isValid()) {
            *error = QStringLiteral("The WAV file can't be read.");
            return false;
        }
        saved = change(f);
    }
    return Finished(
        stream, saved,
        [&] {
            TagLib::FileStream check(native.constData(), true);
            TagLib::RIFF::WAV::File f(&check, false);
            return f.isValid();
        },
        error);
}

// The steps of a save of a set that TagLib writes into a copy of the whole file: check the
// target, let edit change the copy (all: write the whole set, not only what was staged),
// and take the file as written.
int SaveThroughCopy(EngineData& d, const QString& path, TagSet set,
                    const std::function<bool(const QString& temp, bool all, QString* error)>& edit) {
    Target t;
    if (!Prepare(d, path, set, false, &t))
        return 0;
    const bool all = WholeSet(d, path, set);
    const int ok =
        EditBody(d, t, [&](const QString& temp, QString* error) { return edit(temp, all, error); });
    if (ok)
        Written(d, t, set);
    return ok;
}

} // namespace

namespace qlt_tag {

int WriteWavId3(EngineData& d, const Target& t, bool strip) {
    const bool all = WholeSet(d, t.path, TagSet::V2);
    const EngineData& data = d;
    const int ok = EditBody(d, t, [&](const QString& temp, QString* error) {
        return EditWav(
            temp,
            [&](TagLib::RIFF::WAV::File& f) {
                if (strip) {
                    if (f.hasID3v2Tag())
                        f.strip(TagLib::RIFF::WAV::File::ID3v2);
                    return true;
                }
                // An existing v2.4 chunk stays v2.4; others and new ones are written as v2.3.
                const int version = f.hasID3v2Tag() && f.ID3v2Tag()->header()->majorVersion() == 4 ? 4 : 3;
                TagLib::ID3v2::Tag& tag = *f.ID3v2Tag();
                ApplyId3v2(data, tag, all);
                RenderId3v2(tag, version); // sets the text encodings that the version allows
                return f.save(TagLib::RIFF::WAV::File::ID3v2, TagLib::File::StripNone,
                              version == 4 ? TagLib::ID3v2::v4 : TagLib::ID3v2::v3);
            },
            error);
    });
    if (ok && strip)
        Stripped(d, t, TagSet::V2);
    else if (ok)
        Written(d, t, TagSet::V2);
    return ok;
}

} // namespace qlt_tag

int TagEngine::SaveWav(const QString& path) {
    const EngineData& data = *d;
    return SaveThroughCopy(*d, path, TagSet::Wav, [&](const QString& temp, bool all, QString* error) {
        return EditWav(
            temp,
            [&](TagLib::RIFF::WAV::File& f) {
                ApplyInfo(data, *f.InfoTag(), all);
                return f.save(TagLib::RIFF::WAV::File::Info, TagLib::File::StripNone);
            },
            error);
    });
}

int TagEngine::SaveMp4(const QString& path) {
    if (!Mp4NumbersValid(*d, &d->error))
        return 0;
    const EngineData& data = *d;
    return SaveThroughCopy(*d, path, TagSet::Mp4, [&](const QString& temp, bool all, QString* error) {
        const QByteArray native = PosixFile::Native(temp);
        CheckedStream stream(native);
        bool saved = false;
        {
            TagLib::MP4::File f(&stream, false);
            if (!f.isValid() || !f.tag()) {
                *error = QStringLiteral("The MP4 file can't be read.");
                return false;
            }
            ApplyMp4(data, *f.tag(), all);
            saved = f.save();
        }
        return Finished(
            stream, saved,
            [&] {
                TagLib::FileStream check(native.constData(), true);
                TagLib::MP4::File f(&check, true);
                // Readable as before: valid, with a sample rate and a duration.
                return f.isValid() && f.audioProperties() && f.audioProperties()->sampleRate() > 0 &&
                       f.audioProperties()->lengthInMilliseconds() > 0;
            },
            error);
    });
}

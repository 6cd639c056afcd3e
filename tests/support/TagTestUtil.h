#pragma once
// Helpers of the tag engine tests: fixture copies, the audio part of a file that no tag
// write may change, and a bridge to python3-mutagen as an independent reader.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tagtest {

struct FixtureType {
    const char* file;
    int type;
};
// Every fixture with its file type.
extern const FixtureType kFixtures[10];

QByteArray ReadAll(const QString& path);
bool WriteAll(const QString& path, const QByteArray& data);
// Copies a fixture into dir (under a new name if given) and returns the path.
QString CopyFixture(const QString& fixture, const QString& dir, const QString& newName = QString());

// The bytes of a file that carry audio and that no tag operation may change: the whole
// untagged MP3, AAC, MPC, APE; the frames behind the metadata of FLAC; the page payloads
// of the audio pages of Ogg; the data object and index of WMA; the "data" chunk of WAV and
// the "mdat" atom of MP4.
QByteArray AudioPart(const QByteArray& file, int type);
// True when the file still carries the audio of the fixture it was copied from.
bool AudioUnchanged(const QString& path, const QString& fixture, int type);

// python3 with mutagen, or an empty string.
QString MutagenPython();
// Runs a python script with the file path as sys.argv[1]; returns stdout (UTF-8), or a
// text starting with "ERROR" on failure.
QString RunPython(const QString& script, const QStringList& args);

} // namespace tagtest

#include "TagTestUtil.h"

#include "TestPaths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace tagtest {

const FixtureType kFixtures[10] = {{"tone.mp3", 1}, {"tone.wma", 2},     {"tone.ape", 3}, {"tone.flac", 4},
                                   {"tone.wav", 5}, {"tone.ogg", 6},     {"tone.mpc", 7}, {"tone.aac", 8},
                                   {"tone.m4a", 9}, {"tone-opus.oga", 6}};

QByteArray ReadAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QByteArray();
    return f.readAll();
}

bool WriteAll(const QString& path, const QByteArray& data) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return f.write(data) == data.size();
}

QString CopyFixture(const QString& fixture, const QString& dir, const QString& newName) {
    const QString target = dir + QLatin1Char('/') + (newName.isEmpty() ? fixture : newName);
    QFile::remove(target);
    if (!QFile::copy(FixtureDir() + QLatin1Char('/') + fixture, target))
        return QString();
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    return target;
}

namespace {

QByteArray FlacFrames(const QByteArray& f) {
    qsizetype pos = f.indexOf("fLaC");
    if (pos < 0)
        return QByteArray();
    pos += 4;
    while (pos + 4 <= f.size()) {
        const auto* u = reinterpret_cast<const unsigned char*>(f.constData() + pos);
        const bool last = u[0] & 0x80;
        const qsizetype len = (qsizetype(u[1]) << 16) | (u[2] << 8) | u[3];
        pos += 4 + len;
        if (last)
            break;
    }
    // Up to the first trailing tag, if any.
    qsizetype end = f.size();
    if (end - 128 >= pos && f.mid(end - 128, 3) == "TAG")
        end -= 128;
    return f.mid(pos, end - pos);
}

QByteArray OggAudio(const QByteArray& f) {
    QByteArray out;
    qsizetype pos = f.indexOf("OggS");
    while (pos >= 0 && pos + 27 <= f.size() && f.mid(pos, 4) == "OggS") {
        const auto* u = reinterpret_cast<const unsigned char*>(f.constData() + pos);
        qint64 granule = 0;
        for (int i = 0; i < 8; ++i)
            granule |= qint64(u[6 + i]) << (8 * i);
        const int segments = u[26];
        qsizetype body = 0;
        for (int i = 0; i < segments && pos + 27 + i < f.size(); ++i)
            body += u[27 + i];
        const qsizetype start = pos + 27 + segments;
        if (granule != 0)
            out += f.mid(start, body);
        pos = start + body;
    }
    return out;
}

quint32 Be32(const QByteArray& f, qsizetype at) {
    const auto* u = reinterpret_cast<const unsigned char*>(f.constData() + at);
    return (quint32(u[0]) << 24) | (quint32(u[1]) << 16) | (quint32(u[2]) << 8) | u[3];
}

quint32 Le32(const QByteArray& f, qsizetype at) {
    const auto* u = reinterpret_cast<const unsigned char*>(f.constData() + at);
    return (quint32(u[3]) << 24) | (quint32(u[2]) << 16) | (quint32(u[1]) << 8) | u[0];
}

// The payload of the "data" chunk of a RIFF WAVE file.
QByteArray WavData(const QByteArray& f) {
    for (qsizetype pos = 12; pos + 8 <= f.size();) {
        const qsizetype size = Le32(f, pos + 4);
        if (f.mid(pos, 4) == "data")
            return f.mid(pos + 8, size);
        pos += 8 + size + (size & 1);
    }
    return QByteArray();
}

// The payload of the top-level "mdat" atom of an MP4 file.
QByteArray Mp4Data(const QByteArray& f) {
    for (qsizetype pos = 0; pos + 8 <= f.size();) {
        const qsizetype size = Be32(f, pos);
        if (size < 8)
            break;
        if (f.mid(pos + 4, 4) == "mdat")
            return f.mid(pos + 8, size - 8);
        pos += size;
    }
    return QByteArray();
}

} // namespace

QByteArray AudioPart(const QByteArray& file, int type) {
    switch (type) {
    case 4:
        return FlacFrames(file);
    case 6:
        return OggAudio(file);
    case 5:
        return WavData(file);
    case 9:
        return Mp4Data(file);
    case 2: {
        static const char kData[16] = {'\x36', '\x26', '\xB2', '\x75', '\x8E', '\x66', '\xCF', '\x11',
                                       '\xA6', '\xD9', '\x00', '\xAA', '\x00', '\x62', '\xCE', '\x6C'};
        const qsizetype at = file.indexOf(QByteArray(kData, 16));
        return at < 0 ? QByteArray() : file.mid(at);
    }
    default:
        return file;
    }
}

bool AudioUnchanged(const QString& path, const QString& fixture, int type) {
    const QByteArray original = AudioPart(ReadAll(FixtureDir() + QLatin1Char('/') + fixture), type);
    const QByteArray now = ReadAll(path);
    if (original.isEmpty())
        return false;
    if (type == 6 || type == 5 || type == 9)
        return AudioPart(now, type) == original;
    return now.contains(original);
}

QString MutagenPython() {
    static QString found = [] {
        for (const QString& p : {QStringLiteral("/usr/bin/python3"), QStringLiteral("python3")}) {
            QProcess proc;
            proc.start(p, {QStringLiteral("-c"), QStringLiteral("import mutagen")});
            if (proc.waitForFinished(20000) && proc.exitStatus() == QProcess::NormalExit &&
                proc.exitCode() == 0)
                return p;
        }
        return QString();
    }();
    return found;
}

QString RunPython(const QString& script, const QStringList& args) {
    QProcess proc;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("PYTHONIOENCODING"), QStringLiteral("utf-8"));
    proc.setProcessEnvironment(env);
    proc.start(MutagenPython(), QStringList{QStringLiteral("-c"), script} + args);
    if (!proc.waitForFinished(60000))
        return QStringLiteral("ERROR timeout");
    if (proc.exitCode() != 0)
        return QStringLiteral("ERROR ") + QString::fromUtf8(proc.readAllStandardError());
    return QString::fromUtf8(proc.readAllStandardOutput());
}

} // namespace tagtest

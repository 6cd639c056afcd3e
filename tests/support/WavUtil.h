#pragma once
// Writes a small WAV file of a given length (8 kHz, mono, 8 bit, a quiet tone) for the
// player tests: long songs without big fixtures.

#include <QFile>
#include <QString>
#include <QtEndian>

#include <cmath>

inline bool WriteWav(const QString& path, double seconds, int rate = 8000) {
    const quint32 samples = quint32(seconds * rate);
    QByteArray data(int(samples), char(128));
    for (quint32 i = 0; i < samples; ++i)
        data[int(i)] = char(128 + int(20 * std::sin(double(i) * 2 * M_PI * 440 / rate)));
    auto le32 = [](quint32 v) {
        QByteArray b(4, 0);
        qToLittleEndian(v, b.data());
        return b;
    };
    auto le16 = [](quint16 v) {
        QByteArray b(2, 0);
        qToLittleEndian(v, b.data());
        return b;
    };
    QByteArray out = "RIFF" + le32(36 + samples) + "WAVEfmt " + le32(16) + le16(1) + le16(1) +
                     le32(quint32(rate)) + le32(quint32(rate)) + le16(1) + le16(8) + "data" + le32(samples) +
                     data;
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(out) == out.size();
}

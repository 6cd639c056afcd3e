// The read stream of the tag readers against the bytes of the file: every seek and read
// answered exactly as a plain file would, at the block edges, at and past the end, for
// empty, small and big files, a file that shrinks while open, and in random order.
#include "tag/TagStreams.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using qlt_tag::ReadStream;

namespace {

QByteArray Pattern(qsizetype size, quint32 seed) {
    QRandomGenerator rng(seed);
    QByteArray b(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        b[i] = static_cast<char>(rng.bounded(256));
    return b;
}

bool Write(const QString& path, const QByteArray& data) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(data) == data.size() && f.flush();
}

QByteArray Bytes(const TagLib::ByteVector& v) {
    return QByteArray(v.data(), static_cast<qsizetype>(v.size()));
}

// What a plain file gives for a read of `length` at `pos`.
QByteArray Expected(const QByteArray& data, long long pos, unsigned long length) {
    if (pos >= data.size())
        return QByteArray();
    return data.mid(static_cast<qsizetype>(pos), static_cast<qsizetype>(length));
}

} // namespace

class TestReadStream : public QObject {
    Q_OBJECT
private slots:
    void edges() {
        QTemporaryDir dir;
        const long long block = ReadStream::kBlock;
        const QByteArray data = Pattern(3 * block + 17, 1);
        const QString path = dir.filePath(QStringLiteral("edges.bin"));
        QVERIFY(Write(path, data));
        ReadStream s(QFile::encodeName(path));
        QVERIFY(s.isOpen());
        QVERIFY(s.readOnly());
        QCOMPARE(s.length(), long(data.size()));
        const long long points[] = {
            0, 1, block - 1, block, block + 1, 2 * block - 3, 3 * block, data.size() - 1};
        const unsigned long lengths[] = {0,
                                         1,
                                         4,
                                         10,
                                         128,
                                         4096,
                                         static_cast<unsigned long>(block),
                                         static_cast<unsigned long>(2 * block + 5)};
        for (long long p : points) {
            for (unsigned long n : lengths) {
                s.seek(static_cast<long>(p));
                QCOMPARE(Bytes(s.readBlock(n)), Expected(data, p, n));
                QCOMPARE(s.tell(), long(std::min<long long>(p + (n ? n : 0), data.size())));
            }
        }
        // From the end and relative to the position, as the trailer readers ask.
        s.seek(-128, TagLib::IOStream::End);
        QCOMPARE(s.tell(), long(data.size() - 128));
        QCOMPARE(Bytes(s.readBlock(128)), data.right(128));
        s.seek(-32, TagLib::IOStream::Current);
        QCOMPARE(Bytes(s.readBlock(10)), data.mid(data.size() - 32, 10));
        // Past the end: nothing, and the position stays where it was put.
        s.seek(long(data.size() + 100));
        QVERIFY(s.readBlock(10).isEmpty());
        QCOMPARE(s.tell(), long(data.size() + 100));
        s.seek(-5); // before the start counts as the start
        QCOMPARE(s.tell(), 0L);
    }

    void emptyAndMissing() {
        QTemporaryDir dir;
        const QString empty = dir.filePath(QStringLiteral("empty.bin"));
        QVERIFY(Write(empty, QByteArray()));
        ReadStream e(QFile::encodeName(empty));
        QVERIFY(e.isOpen());
        QCOMPARE(e.length(), 0L);
        QVERIFY(e.readBlock(100).isEmpty());
        ReadStream m(QFile::encodeName(dir.filePath(QStringLiteral("none.bin"))));
        QVERIFY(!m.isOpen());
        QVERIFY(m.readBlock(100).isEmpty());
    }

    // The length given by the caller is trusted; a file cut short after it was measured
    // gives short reads, never bytes that are not in it.
    void shrinksWhileOpen() {
        QTemporaryDir dir;
        const QByteArray data = Pattern(50000, 2);
        const QString path = dir.filePath(QStringLiteral("shrink.bin"));
        QVERIFY(Write(path, data));
        ReadStream s(QFile::encodeName(path), data.size());
        QVERIFY(QFile::resize(path, 20000));
        s.seek(19990);
        QCOMPARE(Bytes(s.readBlock(100)), data.mid(19990, 10));
        s.seek(30000);
        QVERIFY(s.readBlock(100).isEmpty());
        s.seek(-128, TagLib::IOStream::End);
        QVERIFY(s.readBlock(128).isEmpty());
    }

    void randomAccess() {
        QTemporaryDir dir;
        QRandomGenerator rng(20261123);
        for (int round = 0; round < 12; ++round) {
            const auto size =
                static_cast<qsizetype>(rng.bounded(6 * static_cast<quint32>(ReadStream::kBlock)));
            const QByteArray data = Pattern(size, 100 + quint32(round));
            const QString path = dir.filePath(QStringLiteral("r%1.bin").arg(round));
            QVERIFY(Write(path, data));
            ReadStream s(QFile::encodeName(path));
            long long pos = 0;
            for (int k = 0; k < 2000; ++k) {
                switch (rng.bounded(4)) {
                case 0:
                    pos = rng.bounded(static_cast<quint32>(size + 200));
                    s.seek(static_cast<long>(pos));
                    break;
                case 1: {
                    const long off = -static_cast<long>(rng.bounded(300));
                    s.seek(off, TagLib::IOStream::End);
                    pos = std::max<long long>(0, size + off);
                    break;
                }
                default: {
                    const unsigned long n = rng.bounded(10) == 0
                                                ? rng.bounded(3 * static_cast<quint32>(ReadStream::kBlock))
                                                : rng.bounded(2000);
                    const QByteArray want = Expected(data, pos, n);
                    QCOMPARE(Bytes(s.readBlock(n)), want);
                    pos += want.size();
                    break;
                }
                }
                QCOMPARE(s.tell(), long(pos));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestReadStream)
#include "test_readstream.moc"

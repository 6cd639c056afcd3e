// Loading and saving pictures: every format, the status texts, the quality bound, and
// broken or hostile files that must give the failure text and never a crash or a huge
// allocation.
#include "TagTestUtil.h"
#include "picture/image/ftcPictureFile.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

using namespace tagtest;

namespace {

QImage Sample(int w = 64, int h = 48) {
    QImage img(w, h, QImage::Format_RGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            img.setPixel(x, y, qRgb(x * 4, y * 5, (x + y) * 2));
    return img;
}

QByteArray Encode(const QImage& img, const char* format) {
    QByteArray bytes;
    QBuffer b(&bytes);
    b.open(QIODevice::WriteOnly);
    QImageWriter w(&b, format);
    w.write(img);
    return bytes;
}

quint32 Crc32(const QByteArray& data) {
    quint32 c = 0xFFFFFFFFu;
    for (char ch : data) {
        c ^= quint8(ch);
        for (int k = 0; k < 8; ++k)
            c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
    }
    return c ^ 0xFFFFFFFFu;
}

void Chunk(QByteArray& png, const char* type, const QByteArray& data) {
    QByteArray len(4, 0);
    qToBigEndian<quint32>(quint32(data.size()), len.data());
    png += len;
    const QByteArray body = QByteArray(type, 4) + data;
    png += body;
    QByteArray crc(4, 0);
    qToBigEndian<quint32>(Crc32(body), crc.data());
    png += crc;
}

// A PNG whose header claims 100,000 x 100,000 pixels, with a few bytes of data.
QByteArray HugePng() {
    QByteArray png("\x89PNG\r\n\x1a\n", 8);
    QByteArray ihdr(13, 0);
    qToBigEndian<quint32>(100000, ihdr.data());
    qToBigEndian<quint32>(100000, ihdr.data() + 4);
    ihdr[8] = 8; // bit depth
    ihdr[9] = 2; // RGB
    Chunk(png, "IHDR", ihdr);
    Chunk(png, "IDAT", QByteArray("\x78\x9c\x03\x00\x00\x00\x00\x01", 8));
    Chunk(png, "IEND", QByteArray());
    return png;
}

} // namespace

class TestPicturesImage : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;
    QString put(const QString& name, const QByteArray& bytes) {
        const QString path = m_dir.path() + u'/' + name;
        return WriteAll(path, bytes) ? path : QString();
    }

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void loadsEveryFormat() {
        const QList<QByteArray> have = QImageReader::supportedImageFormats();
        for (const char* f : {"bmp", "jpg", "png", "gif", "tif", "ico", "webp"}) {
            const QByteArray fmt = QByteArray(f) == "jpg"   ? QByteArray("jpeg")
                                   : QByteArray(f) == "tif" ? QByteArray("tiff")
                                                            : QByteArray(f);
            if (!have.contains(fmt) || !QImageWriter::supportedImageFormats().contains(fmt)) {
                // gif has no writer: a tiny one by hand
                if (QByteArray(f) != "gif")
                    QFAIL(qPrintable(QStringLiteral("no codec for %1").arg(QLatin1String(f))));
                continue;
            }
            const QString path =
                put(QStringLiteral("sample.%1").arg(QLatin1String(f)), Encode(Sample(), fmt));
            const LoadedPicture p = LoadPictureFile(path);
            QVERIFY2(p.ok(), qPrintable(QLatin1String(f) + QStringLiteral(": ") + p.error));
            QCOMPARE(p.image.size(), QSize(64, 48));
            QCOMPARE(p.status, 0);
        }
        // a GIF, written by hand (1x1)
        const QByteArray gif =
            QByteArray::fromHex("47494638396101000100800000000000ffffff2c00000000010001000002024401003b");
        QVERIFY(LoadPictureFile(put(QStringLiteral("one.gif"), gif)).ok());
    }

    void anUpperCaseExtensionCounts() {
        const QString path = put(QStringLiteral("UPPER.JPG"), Encode(Sample(), "jpeg"));
        QVERIFY(LoadPictureFile(path).ok());
    }

    void namesThatAreNoPicture() {
        LoadedPicture p = LoadPictureFile(put(QStringLiteral("noextension"), Encode(Sample(), "png")));
        QCOMPARE(p.error, QStringLiteral("Ungeeigneter Dateiname"));
        p = LoadPictureFile(put(QStringLiteral("song.mp3"), Encode(Sample(), "png")));
        QCOMPARE(p.error, QStringLiteral("Bildformat wird nicht unterstützt"));
        p = LoadPictureFile(m_dir.path() + QStringLiteral("/missing.png"));
        QCOMPARE(p.status, int(PicStatus::FileNotFound));
        QCOMPARE(p.error, QStringLiteral("Laden des Bildes scheitert (Loadpicture)\nDatei nicht gefunden"));
    }

    void hostilePicturesGiveTheFailureText() {
        const QByteArray jpeg = Encode(Sample(300, 200), "jpeg");
        const struct {
            const char* name;
            QByteArray bytes;
        } cases[] = {
            {"empty.jpg", QByteArray()},
            {"text.jpg", QByteArray("This is no picture at all, only text.\n")},
            {"cut.jpg", jpeg.left(40)},
            {"huge.png", HugePng()},
        };
        for (const auto& c : cases) {
            const LoadedPicture p = LoadPictureFile(put(QString::fromLatin1(c.name), c.bytes));
            QVERIFY2(!p.ok() || QLatin1String(c.name) == QLatin1String("cut.jpg"), c.name);
            if (!p.ok())
                QVERIFY2(p.error.startsWith(QStringLiteral("Laden des Bildes scheitert (Loadpicture)\n")),
                         c.name);
        }
        // the huge one is refused for its size, as memory
        const LoadedPicture huge = LoadPictureFile(m_dir.path() + QStringLiteral("/huge.png"));
        QVERIFY(!huge.ok());
        QCOMPARE(huge.fullSize, QSize(100000, 100000));
        QVERIFY(huge.status == PicStatus::OutOfMemory || huge.status == PicStatus::InvalidParameter);
        // as a thumbnail as well
        QVERIFY(!LoadPictureScaled(m_dir.path() + QStringLiteral("/huge.png"), QSize(120, 90)).ok());
    }

    void randomlyBrokenPicturesNeverCrash() {
        QRandomGenerator rng(4711);
        const QByteArray sources[] = {Encode(Sample(80, 60), "jpeg"), Encode(Sample(80, 60), "png"),
                                      Encode(Sample(80, 60), "bmp"), Encode(Sample(80, 60), "tiff")};
        const char* const ext[] = {"jpg", "png", "bmp", "tif"};
        for (int round = 0; round < 400; ++round) {
            const int k = round % 4;
            QByteArray b = sources[k];
            if (round % 3 == 0)
                b.truncate(rng.bounded(qsizetype(b.size())));
            const int flips = rng.bounded(1, 12);
            for (int i = 0; i < flips && !b.isEmpty(); ++i)
                b[rng.bounded(qsizetype(b.size()))] = char(rng.bounded(256));
            const QString path = put(QStringLiteral("fuzz.%1").arg(QLatin1String(ext[k])), b);
            const LoadedPicture p = LoadPictureFile(path);
            if (p.ok())
                QVERIFY(qint64(p.image.width()) * p.image.height() <=
                        qint64(kPictureAllocationLimitMB) * 1024 * 256);
            else
                QVERIFY(!p.error.isEmpty());
            LoadPictureScaled(path, QSize(50, 50));
        }
    }

    void thumbnailsAreDecodedReduced() {
        const QString path = put(QStringLiteral("big.jpg"), Encode(Sample(1600, 1200), "jpeg"));
        const LoadedPicture p = LoadPictureScaled(path, QSize(120, 120));
        QVERIFY(p.ok());
        QCOMPARE(p.image.size(), QSize(120, 90));
        QCOMPARE(p.fullSize, QSize(1600, 1200));
        // never enlarged
        QCOMPARE(LoadPictureScaled(put(QStringLiteral("small.png"), Encode(Sample(30, 20), "png")),
                                   QSize(120, 120))
                     .image.size(),
                 QSize(30, 20));
    }

    void savesJpegPngAndBmp() {
        const QImage img = Sample();
        int status = -1;
        QVERIFY(SavePictureAsJpeg(img, m_dir.path() + QStringLiteral("/q150.jpg"), 150, &status));
        QCOMPARE(status, 0);
        QVERIFY(SavePictureAsJpeg(img, m_dir.path() + QStringLiteral("/q100.jpg"), 100));
        // a quality of 150 saves with quality 100
        QCOMPARE(ReadAll(m_dir.path() + QStringLiteral("/q150.jpg")),
                 ReadAll(m_dir.path() + QStringLiteral("/q100.jpg")));
        QVERIFY(ReadAll(m_dir.path() + QStringLiteral("/q100.jpg")) !=
                Encode(img, "jpeg")); // the default quality differs
        QCOMPARE(ClampJpegQuality(150), 100);
        QVERIFY(SavePictureAsPng(img, m_dir.path() + QStringLiteral("/a.png")));
        QCOMPARE(QImage(m_dir.path() + QStringLiteral("/a.png")).size(), img.size());
        QVERIFY(SavePictureAsBmp(img, m_dir.path() + QStringLiteral("/a.bmp")));
        QVERIFY(ReadAll(m_dir.path() + QStringLiteral("/a.bmp")).startsWith("BM"));
        // a folder that isn't there: the save fails, with a status and its text
        QString error;
        QVERIFY(!SavePictureAsPng(img, m_dir.path() + QStringLiteral("/no/such/x.png"), &status, &error));
        QCOMPARE(status, int(PicStatus::AccessDenied));
        QVERIFY(error.startsWith(QStringLiteral(" Image library error:Access Denied.")));
        QVERIFY(!SavePictureAsPng(QImage(), m_dir.path() + QStringLiteral("/null.png"), &status, &error));
        QCOMPARE(status, int(PicStatus::InvalidParameter));
    }

    void statusTables() {
        QCOMPARE(LoadStatusText(1), QStringLiteral("fehlerhafte Initialisierung"));
        QCOMPARE(LoadStatusText(3), QStringLiteral("Speichermangel"));
        QCOMPARE(LoadStatusText(20), QStringLiteral("Eigenschaft wird nicht unterstützt"));
        QCOMPARE(LoadStatusText(PicStatus::FileNotFound), QStringLiteral("Datei nicht gefunden"));
        QCOMPARE(LoadStatusText(PicStatus::UnknownImageFormat), QStringLiteral("unbekanntes Bildformat"));
        QCOMPARE(LoadStatusText(PicStatus::NotImplemented),
                 QStringLiteral("Unbekannter Fehler der Bildbibliothek"));
        QCOMPARE(SaveStatusText(1), QStringLiteral("Generic Error."));
        QCOMPARE(SaveStatusText(13), QStringLiteral("Unknown Image Format."));
        QCOMPARE(SaveStatusText(20), QStringLiteral("Property Not Supported."));
        // a status beyond the table: the unknown-error text, naming no other platform
        QCOMPARE(SaveStatusText(21), QStringLiteral("Unknown Image Library Error."));
        QCOMPARE(SaveStatusText(-4), QStringLiteral("Unknown Image Library Error."));
        QCOMPARE(LoadStatusText(21), QStringLiteral("Unbekannter Fehler der Bildbibliothek"));
        for (int i = -1; i < 30; ++i) {
            QVERIFY(!SaveStatusText(i).contains(QStringLiteral("GDI")));
            QVERIFY(!LoadStatusText(i).contains(QStringLiteral("GDI")));
            QVERIFY(!SaveStatusText(i).contains(QStringLiteral("Win")));
        }
        QCOMPARE(EncoderMissingText(), QStringLiteral("Konnte keinen passenden Encoder ermitteln."));
    }
};

QTEST_GUILESS_MAIN(TestPicturesImage)
#include "test_pictures_image.moc"

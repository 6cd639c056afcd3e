#include "picture/image/ftcPictureFile.h"

#include "platform/PosixFile.h"
#include "platform/SafeFile.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <unistd.h>

namespace {

// The loading table, from code 1 on.
const char* const kLoadTexts[] = {
    "fehlerhafte Initialisierung",
    "Ungeeigneter Parameter",
    "Speichermangel",
    "Bildbibliothek ist noch beschäftigt",
    "Buffer zu klein",
    "Systemfehler",
    "Falscher interner Zustand",
    "Abbruch der Operation",
    "Datei nicht gefunden",
    "Wert-Überlauf",
    "Zugriff verweigert",
    "unbekanntes Bildformat",
    "Version der Bildbibliothek wird nicht unterstützt",
    "Keine Verbindung zur Bildbibliothek",
    "Eigenschaft nicht gefunden",
    "Eigenschaft wird nicht unterstützt",
};

// The saving table, from code 1 on.
const char* const kSaveTexts[] = {
    "Generic Error.",
    "Invalid Parameter.",
    "Out Of Memory.",
    "Object Busy.",
    "Insufficient Buffer.",
    "Not Implemented.",
    "System Error.",
    "Wrong State.",
    "Aborted.",
    "File Not Found.",
    "Value Overflow.",
    "Access Denied.",
    "Unknown Image Format.",
    "FontFamily Not Found.",
    "FontStyle Not Found.",
    "Not TrueType Font.",
    "Unsupported Image Library Version.",
    "Image Library Not Initialized.",
    "Property Not Found.",
    "Property Not Supported.",
};

const char* const kExtensions[] = {"bmp", "dib", "rle",  "ico", "cur", "emf",  "wmf",  "gif",
                                   "png", "tif", "tiff", "jpe", "jpg", "jpeg", "jfif", "webp"};

constexpr qint64 kMaxPixels = qint64(kPictureAllocationLimitMB) * 1024 * 1024 / 4;

// The reader's failure as a status of the table. A picture refused for its size reads
// as "invalid data" with the allocation limit named in the reader's text.
int StatusOfReader(const QImageReader& reader, bool tooLarge) {
    if (tooLarge)
        return PicStatus::OutOfMemory;
    switch (reader.error()) {
    case QImageReader::FileNotFoundError:
        return PicStatus::FileNotFound;
    case QImageReader::DeviceError:
        return PicStatus::AccessDenied;
    case QImageReader::UnsupportedFormatError:
        return PicStatus::UnknownImageFormat;
    case QImageReader::InvalidDataError:
        return reader.errorString().contains(QLatin1String("allocation limit"), Qt::CaseInsensitive)
                   ? PicStatus::OutOfMemory
                   : PicStatus::InvalidParameter;
    case QImageReader::UnknownError:
        break;
    }
    return PicStatus::GenericError;
}

// Opens the file by the bytes of its name (a name may be no valid UTF-8). The device
// belongs to the caller.
bool OpenDevice(const QString& path, QFile& file, int* err) {
    const int fd = ::open(PosixFile::Native(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        *err = errno;
        return false;
    }
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        *err = EIO;
        return false;
    }
    return true;
}

void Prepare(QImageReader& reader) {
    reader.setAllocationLimit(kPictureAllocationLimitMB);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
}

LoadedPicture Fail(int status) {
    LoadedPicture p;
    p.status = status;
    p.error = QStringLiteral("Laden des Bildes scheitert (Loadpicture)\n") + LoadStatusText(status);
    return p;
}

LoadedPicture Load(const QString& path, const QSize& box) {
    QString name = path.mid(path.lastIndexOf(u'/') + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    LoadedPicture bad;
    if (dot < 0 || dot == name.size() - 1) {
        bad.status = PicStatus::InvalidParameter;
        bad.error = QStringLiteral("Ungeeigneter Dateiname");
        return bad;
    }
    if (!IsPictureExtension(name.mid(dot + 1).toLower())) {
        bad.status = PicStatus::UnknownImageFormat;
        bad.error = QStringLiteral("Bildformat wird nicht unterstützt");
        return bad;
    }
    QFile file;
    int err = 0;
    if (!OpenDevice(path, file, &err))
        return Fail(err == ENOENT || err == ENOTDIR ? PicStatus::FileNotFound
                    : err == EACCES || err == EPERM ? PicStatus::AccessDenied
                                                    : PicStatus::GenericError);
    if (file.size() == 0)
        return Fail(PicStatus::InvalidParameter);
    QImageReader reader(&file);
    Prepare(reader);
    const QSize full = reader.size();
    QSize target;
    if (full.isValid() && box.isValid() && (full.width() > box.width() || full.height() > box.height()))
        target = full.scaled(box, Qt::KeepAspectRatio);
    else if (full.isValid() && qint64(full.width()) * full.height() > kMaxPixels) {
        // too large to hold whole: shown reduced to what the memory bound allows
        const double f = std::sqrt(double(kMaxPixels) / (double(full.width()) * full.height()));
        target = QSize(qMax(1, int(full.width() * f)), qMax(1, int(full.height() * f)));
    }
    if (target.isValid()) {
        target = target.expandedTo(QSize(1, 1));
        reader.setScaledSize(target);
    }
    QImage image;
    bool tooLarge = false;
    if (!reader.read(&image)) {
        tooLarge = full.isValid() && !target.isValid() && qint64(full.width()) * full.height() > kMaxPixels;
        LoadedPicture p = Fail(StatusOfReader(reader, tooLarge));
        p.fullSize = full;
        return p;
    }
    LoadedPicture p;
    p.image = std::move(image);
    p.fullSize = full.isValid() ? full : p.image.size();
    return p;
}

bool Save(const QImage& picture, const QString& path, const char* format, int quality, int* status,
          QString* error) {
    auto fail = [&](int code, const QString& text) {
        if (status)
            *status = code;
        if (error)
            *error = text;
        return false;
    };
    if (!QImageWriter::supportedImageFormats().contains(QByteArray(format)))
        return fail(PicStatus::NotImplemented, EncoderMissingText());
    if (picture.isNull())
        return fail(PicStatus::InvalidParameter,
                    QStringLiteral(" Image library error:") + SaveStatusText(PicStatus::InvalidParameter));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (quality >= 0)
        writer.setQuality(ClampJpegQuality(quality));
    if (!writer.write(picture)) {
        const int code = writer.error() == QImageWriter::UnsupportedFormatError
                             ? PicStatus::UnknownImageFormat
                         : writer.error() == QImageWriter::InvalidImageError ? PicStatus::InvalidParameter
                         : writer.error() == QImageWriter::DeviceError       ? PicStatus::SystemError
                                                                             : PicStatus::GenericError;
        return fail(code, QStringLiteral(" Image library error:") + SaveStatusText(code));
    }
    QString why;
    if (!SafeFile::WriteWholeFile(path, bytes, &why))
        return fail(PicStatus::AccessDenied, QStringLiteral(" Image library error:") +
                                                 SaveStatusText(PicStatus::AccessDenied) + u'\n' + why);
    if (status)
        *status = PicStatus::Ok;
    return true;
}

} // namespace

QString LoadStatusText(int status) {
    // The loading table has no texts for "not implemented" and the three font codes:
    // each status selects the text of its meaning.
    static const int kLoadIndex[] = {0, 1, 2, 3, 4, 5, 0, 6, 7, 8, 9, 10, 11, 12, 0, 0, 0, 13, 14, 15, 16};
    constexpr int n = int(sizeof kLoadIndex / sizeof kLoadIndex[0]);
    if (status >= 1 && status < n && kLoadIndex[status] > 0)
        return QString::fromUtf8(kLoadTexts[kLoadIndex[status] - 1]);
    return QStringLiteral("Unbekannter Fehler der Bildbibliothek");
}

QString SaveStatusText(int status) {
    constexpr int n = int(sizeof kSaveTexts / sizeof kSaveTexts[0]);
    if (status >= 1 && status <= n)
        return QString::fromUtf8(kSaveTexts[status - 1]);
    return QStringLiteral("Unknown Image Library Error.");
}

bool IsPictureExtension(const QString& extension) {
    for (const char* e : kExtensions)
        if (extension == QLatin1String(e))
            return true;
    return false;
}

LoadedPicture LoadPictureFile(const QString& path) {
    return Load(path, QSize());
}

LoadedPicture LoadPictureScaled(const QString& path, const QSize& box) {
    return Load(path, box.expandedTo(QSize(1, 1)));
}

QSize PictureFileSize(const QString& path) {
    QFile file;
    int err = 0;
    if (!OpenDevice(path, file, &err))
        return QSize();
    QImageReader reader(&file);
    Prepare(reader);
    return reader.size();
}

QSize PictureDataSize(const QByteArray& data) {
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    Prepare(reader);
    return reader.size();
}

int ClampJpegQuality(int quality) {
    return qBound(0, quality, 100);
}

bool SavePictureAsJpeg(const QImage& picture, const QString& path, int quality, int* status, QString* error) {
    return Save(picture, path, "jpeg", quality, status, error);
}

bool SavePictureAsPng(const QImage& picture, const QString& path, int* status, QString* error) {
    return Save(picture, path, "png", -1, status, error);
}

bool SavePictureAsBmp(const QImage& picture, const QString& path, int* status, QString* error) {
    return Save(picture, path, "bmp", -1, status, error);
}

QString EncoderMissingText() {
    return QStringLiteral("Konnte keinen passenden Encoder ermitteln.");
}

QString SaveFailedText() {
    return QStringLiteral("Speichern ist fehlgeschlagen.");
}

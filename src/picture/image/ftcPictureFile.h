#pragma once
// Loading picture files for display and saving a shown picture as JPEG, PNG or BMP, on
// Qt's image library (QImageReader, QImageWriter). Decoding is bounded: a picture whose
// size would need more memory than kPictureAllocationLimitMB is read reduced or refused,
// so that a broken or hostile file (a huge size in its header, cut short, empty, text
// under a picture's name) gives a status text and never a crash or a huge allocation.
//
// The status codes follow the old image library's numbering, which the two message
// tables below are indexed by: 0 success, 1 generic error, 2 invalid parameter, 3 out of
// memory, ..., 10 file not found, 12 access denied, 13 unknown image format.

#include <QImage>
#include <QSize>
#include <QString>

class QImageReader;

namespace PicStatus {
enum : int {
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
    OutOfMemory = 3,
    ObjectBusy = 4,
    InsufficientBuffer = 5,
    NotImplemented = 6,
    SystemError = 7,
    WrongState = 8,
    Aborted = 9,
    FileNotFound = 10,
    ValueOverflow = 11,
    AccessDenied = 12,
    UnknownImageFormat = 13,
};
} // namespace PicStatus

constexpr int kPictureAllocationLimitMB = 256;

// The texts of a status: of the loading table (German) and of the saving table
// (English). A code beyond a table gives its unknown-error text.
QString LoadStatusText(int status);
QString SaveStatusText(int status);

// The extensions the loader takes (lower case, without the point).
bool IsPictureExtension(const QString& extension);

struct LoadedPicture {
    QImage image;   // null on failure
    QSize fullSize; // the picture's own size, when its header could be read
    int status = 0; // PicStatus
    QString error;  // the user's text of a failure, empty on success
    bool ok() const { return !image.isNull(); }
};

// Loads `path` for display. The extension is tested in lower case against the list;
// a name without one gives "Ungeeigneter Dateiname", another one "Bildformat wird nicht
// unterstützt". A picture larger than the memory bound is decoded reduced.
LoadedPicture LoadPictureFile(const QString& path);
// Loads `path` reduced to fit `box` (aspect kept, never enlarged): the decoder itself
// reduces, so a large JPEG costs little time and memory. For thumbnails.
LoadedPicture LoadPictureScaled(const QString& path, const QSize& box);
// The size from the header alone; invalid when it can't be read.
QSize PictureFileSize(const QString& path);
QSize PictureDataSize(const QByteArray& data);

// Saving: JPEG with a quality (above 100 counts as 100), PNG and BMP. The bytes are
// written through the safe whole-file writer, so a failed save leaves an existing file
// as it was. Returns true on success; otherwise `status` and `error` tell why (the error
// is " Image library error:" + the status text, or the missing-encoder text).
bool SavePictureAsJpeg(const QImage& picture, const QString& path, int quality, int* status = nullptr,
                       QString* error = nullptr);
bool SavePictureAsPng(const QImage& picture, const QString& path, int* status = nullptr,
                      QString* error = nullptr);
bool SavePictureAsBmp(const QImage& picture, const QString& path, int* status = nullptr,
                      QString* error = nullptr);
// The quality really used for a requested one.
int ClampJpegQuality(int quality);

// Texts of the message boxes around saving.
QString EncoderMissingText(); // "Konnte keinen passenden Encoder ermitteln."
QString SaveFailedText();     // "Speichern ist fehlgeschlagen."

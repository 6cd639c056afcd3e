// qlt-mkicons FOLDER: draws the pictures the program shows from the folder `icons` beside
// it (the loudspeaker of the player's volume, on and muted, as .ico files, and the
// placeholder of the picture window, NoPicture.jpg).
// They are drawn here in code, so the repository holds no binary pictures.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QPainterPath>
#include <cstdio>

namespace {

QImage Speaker(bool on, int size) {
    QImage img(size, size, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 32.0, size / 32.0);
    const QColor ink(0x33, 0x3b, 0x47);
    // the loudspeaker: a box and its cone
    QPainterPath body;
    body.moveTo(4, 12);
    body.lineTo(10, 12);
    body.lineTo(17, 5);
    body.lineTo(17, 27);
    body.lineTo(10, 20);
    body.lineTo(4, 20);
    body.closeSubpath();
    p.fillPath(body, ink);
    QPen pen(on ? QColor(0x1f, 0x6f, 0xd1) : QColor(0xc6, 0x28, 0x28), 2.4, Qt::SolidLine, Qt::RoundCap);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    if (on) {
        // two sound waves
        p.drawArc(QRectF(13, 10, 10, 12), -50 * 16, 100 * 16);
        p.drawArc(QRectF(12, 5, 17, 22), -50 * 16, 100 * 16);
    } else {
        // muted: a cross beside the cone
        p.drawLine(QPointF(21, 12), QPointF(29, 20));
        p.drawLine(QPointF(29, 12), QPointF(21, 20));
    }
    return img;
}

bool Write(const QString& path, bool on) {
    QImageWriter w(path, "ico");
    if (!w.write(Speaker(on, 32))) {
        std::fprintf(stderr, "qlt-mkicons: %s: %s\n", qPrintable(path), qPrintable(w.errorString()));
        return false;
    }
    return true;
}

// "NoPicture.jpg": what the picture window shows in place of a picture that can't be
// shown, a grey frame with a crossed-out landscape.
bool WriteNoPicture(const QString& path) {
    QImage img(320, 240, QImage::Format_RGB32);
    img.fill(QColor(0xe8, 0xea, 0xed));
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor ink(0x9a, 0xa0, 0xa6);
    p.setPen(QPen(ink, 6));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(QRectF(90, 60, 140, 110), 10, 10);
    QPainterPath hills;
    hills.moveTo(96, 160);
    hills.lineTo(140, 110);
    hills.lineTo(170, 140);
    hills.lineTo(190, 120);
    hills.lineTo(224, 160);
    p.fillPath(hills, ink);
    p.setBrush(ink);
    p.drawEllipse(QPointF(192, 90), 12, 12);
    p.setPen(QPen(QColor(0xc6, 0x28, 0x28), 8, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(80, 190), QPointF(240, 40));
    p.end();
    QImageWriter w(path, "jpeg");
    w.setQuality(90);
    if (!w.write(img)) {
        std::fprintf(stderr, "qlt-mkicons: %s: %s\n", qPrintable(path), qPrintable(w.errorString()));
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: qlt-mkicons FOLDER\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]) + QStringLiteral("/icons");
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "qlt-mkicons: can't make %s\n", qPrintable(folder));
        return 1;
    }
    const bool ok = Write(folder + QStringLiteral("/VolOn.ico"), true) &&
                    Write(folder + QStringLiteral("/VolOff.ico"), false) &&
                    WriteNoPicture(folder + QStringLiteral("/NoPicture.jpg"));
    return ok ? 0 : 1;
}

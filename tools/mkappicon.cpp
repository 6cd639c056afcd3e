// qlt-mkappicon SVG FOLDER: renders the program's icon (an SVG drawn for it) into PNGs of
// the sizes a desktop asks for, as FOLDER/quillotune-N.png. The window takes its icon
// from them, and the installation puts them into the desktop's icon theme.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: qlt-mkappicon SVG FOLDER\n");
        return 2;
    }
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    if (!svg.isValid()) {
        std::fprintf(stderr, "qlt-mkappicon: can't read %s\n", argv[1]);
        return 1;
    }
    const QString folder = QString::fromLocal8Bit(argv[2]);
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "qlt-mkappicon: can't make %s\n", qPrintable(folder));
        return 1;
    }
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        QImage img(size, size, QImage::Format_ARGB32_Premultiplied);
        img.fill(Qt::transparent);
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        svg.render(&p, QRectF(0, 0, size, size));
        p.end();
        const QString path = folder + QStringLiteral("/quillotune-%1.png").arg(size);
        if (!img.save(path, "PNG")) {
            std::fprintf(stderr, "qlt-mkappicon: can't write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}

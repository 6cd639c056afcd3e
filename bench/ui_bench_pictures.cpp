// ui_bench_pictures: the picture window's thumbnails and the embedded-picture search.
//
// 1. Thumbnails of 1,000 JPEG pictures of 3000 x 3000 pixels (made here, in a folder
//    under the system's temporary folder, reused by later runs): FrmPictures lists them
//    and ListViewPic fills. Printed: time to the first thumbnail, time to all of them
//    against a plain loop of QImageReader scaled decodes over the same files, the
//    longest pause of the main thread meanwhile (a 1 ms timer measures it), and the
//    peak resident memory.
// 2. The embedded-picture search over 10,000 songs (each with a cover) against the
//    folder scan of the data list over the same folder.
#include "app/FrmPictures.h"
#include "bench_clock.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "list/InputColumns.h"
#include "list/modScan.h"
#include "picture/PictureColumns.h"
#include "picture/image/ThumbnailLoader.h"
#include "picture/modEmbeddedPictures.h"
#include "picture/modExternPictures.h"
#include "tag/TagEngine.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <cstdio>
#include <sys/resource.h>

using namespace bench;

namespace {

double PeakRssMB() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return double(u.ru_maxrss) / 1024.0;
}

QStringList MakePictures(const QString& folder, int count) {
    QDir().mkpath(folder);
    QStringList paths;
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        const QString path = folder + QStringLiteral("/pic%1.jpg").arg(i, 4, 10, QLatin1Char('0'));
        paths << path;
        if (QFileInfo(path).size() > 0)
            continue;
        if (bytes.isEmpty()) {
            QImage img(3000, 3000, QImage::Format_RGB32);
            QPainter p(&img);
            QLinearGradient g(0, 0, 3000, 3000);
            g.setColorAt(0, QColor(30, 60, 140));
            g.setColorAt(1, QColor(240, 180, 40));
            p.fillRect(img.rect(), g);
            for (int k = 0; k < 60; ++k)
                p.fillRect(QRect((k * 97) % 2800, (k * 211) % 2800, 200, 200),
                           QColor::fromHsv(k * 6 % 360, 200, 220));
            p.end();
            const QString first = path;
            QImageWriter w(first, "jpeg");
            w.setQuality(85);
            w.write(img);
            QFile f(first);
            f.open(QIODevice::ReadOnly);
            bytes = f.readAll();
            continue;
        }
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
    }
    return paths;
}

void Thumbnails(const QString& folder) {
    const QStringList paths = MakePictures(folder, 1000);
    std::printf("pictures: %lld of 3000 x 3000 px, %lld bytes each\n", qlonglong(paths.size()),
                qlonglong(QFileInfo(paths.first()).size()));
    const QSize box(120, 90);
    // the plain loop: one thread, scaled decodes
    {
        QElapsedTimer t;
        t.start();
        for (const QString& p : paths) {
            QImageReader r(p);
            const QSize s = r.size();
            r.setScaledSize(s.scaled(box, Qt::KeepAspectRatio));
            QImage img = r.read();
        }
        std::printf("plain QImageReader loop     %8.3f s\n", Seconds(t));
    }
    FrmPictures w;
    w.resize(1280, 800);
    w.show();
    DataGrid& list = Grids::LbxPic_Extern();
    DataGrid links;
    PictureSearch how;
    how.fileTypes = {QStringLiteral("jpg")};
    SearchPictures(list, links, paths, how);
    auto* loader = w.findChild<ThumbnailLoader*>();
    QElapsedTimer t, gap;
    double first = -1, all = -1, longest = 0;
    int seen = 0;
    QObject::connect(loader, &ThumbnailLoader::thumbnailReady, [&] {
        if (first < 0)
            first = Seconds(t);
        ++seen;
    });
    QObject::connect(loader, &ThumbnailLoader::finished, [&] { all = Seconds(t); });
    QTimer tick;
    tick.setInterval(1);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        longest = std::max(longest, Seconds(gap));
        gap.restart();
    });
    auto* tabs = w.findChild<QTabWidget*>(QStringLiteral("SSTabPic_Files"));
    t.start();
    gap.start();
    tick.start();
    tabs->setCurrentIndex(2); // the thumbnails tab: the list fills
    const double setup = Seconds(t);
    while (all < 0)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    tick.stop();
    std::printf("window: list ready after    %8.3f s\n", setup);
    std::printf("first thumbnail after       %8.3f s\n", first);
    std::printf("all %d thumbnails after    %8.3f s\n", seen, all);
    std::printf("longest main-thread pause   %8.3f s\n", longest);
    std::printf("peak resident memory        %8.1f MB\n", PeakRssMB());
}

void Search(const QString& folder) {
    QDir().mkpath(folder);
    const QString tone = FixtureDir() + QStringLiteral("/tone.mp3");
    const QString cover = FixtureDir() + QStringLiteral("/cover.jpg");
    TagEngine engine;
    QString withCover = folder + QStringLiteral("/song00000.mp3");
    if (!QFile::exists(withCover)) {
        QFile::copy(tone, withCover);
        QString error;
        StorePictureInSong(engine, withCover, cover, QStringLiteral("Cover"), 3, 0, false, &error);
    }
    for (int i = 1; i < 10000; ++i) {
        const QString p = folder + QStringLiteral("/song%1.mp3").arg(i, 5, 10, QLatin1Char('0'));
        if (!QFile::exists(p))
            QFile::copy(withCover, p);
    }
    // Both read the same 10,000 files; each runs twice in turn, so that neither pays
    // alone for a cold file cache or a busy moment of the machine.
    auto search = [&] {
        QStringList paths;
        int count = 0;
        QElapsedTimer t;
        t.start();
        FindFiles(folder, QStringLiteral("*"), paths, true, count);
        DataGrid pics;
        DefineEmbeddedPictureColumns(pics);
        EmbeddedSearch how;
        SearchEmbeddedPictures(pics, engine, paths, how);
        std::printf("embedded-picture search      %8.3f s  (%d rows)\n", Seconds(t), pics.Rows());
        return Seconds(t);
    };
    auto scan = [&] {
        DataGrid input;
        EnsureInputColumns(input);
        ScanOptions o;
        o.subFolders = true;
        QElapsedTimer t;
        t.start();
        ScanFolder(input, folder, o, engine);
        std::printf("folder scan of the data list %8.3f s  (%d rows)\n", Seconds(t), input.Rows());
        return Seconds(t);
    };
    const double s1 = search(), c1 = scan(), s2 = search(), c2 = scan();
    const double best = std::min(s1, s2), bestScan = std::min(c1, c2);
    std::printf("search / scan (best of two each) = %.2f\n", bestScan > 0 ? best / bestScan : 0.0);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    const QString root = QDir::tempPath() + QStringLiteral("/qlt_bench_pictures");
    Thumbnails(root + QStringLiteral("/pictures"));
    Search(root + QStringLiteral("/songs"));
    return 0;
}

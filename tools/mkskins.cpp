// qlt-mkskins writes the skins of the scrolling text window into the folder "skin" of a
// program folder, by the program's own skin writer: the default skin and a few others
// (dark and light ones with rows that fade in and out around the current one).
#include "text/modScrollText.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

namespace {
// 0xBBGGRR from red, green and blue.
qint32 Bgr(int r, int g, int b) {
    return r | (g << 8) | (b << 16);
}
qint32 Mix(qint32 from, qint32 to, double t) {
    auto ch = [&](int shift) {
        const int a = (from >> shift) & 0xFF, b = (to >> shift) & 0xFF;
        return int(a + (b - a) * t + 0.5) << shift;
    };
    return ch(0) | ch(8) | ch(16);
}

// Rows fade from the back colour into `text`: step 0 is the row next to the current one.
void Fade(ScrollSkin& k, qint32 text, double nearest, double farthest) {
    auto at = [&](int distance, int steps) {
        const double t = nearest + (farthest - nearest) * (distance - 1) / std::max(1, steps - 1);
        return Mix(text, k.ListBack, t);
    };
    k.BackTable.fill(k.ListBack);
    if (k.Mode == 3) {
        for (int d = 1; d <= 5; ++d) {
            k.ForeTable[size_t(5 - d)] = at(d, 5); // entries 1..5: rows -5..-1
            k.ForeTable[size_t(4 + d)] = at(d, 5); // entries 6..10: rows +1..+5
        }
    } else {
        for (int d = 1; d <= Scroll::TableSize; ++d)
            k.ForeTable[size_t(d - 1)] = at(d, k.Mode == 2 ? 1 : Scroll::TableSize);
    }
}

ScrollSkin Base(int mode, qint32 window, qint32 list, qint32 actFore, const char* font, int size) {
    ScrollSkin k = DefaultScrollSkin();
    k.Mode = mode;
    k.WindowBack = window;
    k.ListBack = list;
    k.ListFore = list;
    k.ActBack = list;
    k.ActFore = actFore;
    k.FontName = QString::fromLatin1(font);
    k.FontSize = size;
    k.FontBold = false;
    k.ActBold = true;
    k.Alignment = 2;
    k.Top1Bold = false;
    return k;
}
} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        QTextStream(stderr) << "usage: qlt-mkskins PROGRAM_FOLDER...\n";
        return 2;
    }
    QList<std::pair<QString, ScrollSkin>> skins;
    skins.append({QStringLiteral("Default"), DefaultScrollSkin()});

    // Night: light grey words on a deep slate, the current row in warm amber.
    ScrollSkin night =
        Base(3, Bgr(0x14, 0x17, 0x1d), Bgr(0x1c, 0x20, 0x29), Bgr(0xff, 0xc8, 0x57), "DejaVu Sans", 20);
    Fade(night, Bgr(0xd6, 0xdb, 0xe4), 0.1, 0.78);
    night.Top1Bold = false;
    skins.append({QStringLiteral("Night"), night});

    // Paper: dark ink on warm paper, the current row in deep red.
    ScrollSkin paper =
        Base(3, Bgr(0xe4, 0xdc, 0xcc), Bgr(0xfa, 0xf6, 0xee), Bgr(0x9b, 0x1b, 0x30), "DejaVu Serif", 20);
    Fade(paper, Bgr(0x2e, 0x2a, 0x26), 0.15, 0.8);
    skins.append({QStringLiteral("Paper"), paper});

    // Stage: white on black, the next ten rows fading into the dark below.
    ScrollSkin stage =
        Base(4, Bgr(0x00, 0x00, 0x00), Bgr(0x0a, 0x0a, 0x0a), Bgr(0xff, 0xff, 0xff), "DejaVu Sans", 22);
    Fade(stage, Bgr(0xb8, 0xb8, 0xb8), 0.05, 0.85);
    skins.append({QStringLiteral("Stage"), stage});

    // Karaoke: two rows, the current one in yellow and the coming one in pale blue.
    ScrollSkin karaoke =
        Base(2, Bgr(0x10, 0x1e, 0x4a), Bgr(0x16, 0x2a, 0x66), Bgr(0xff, 0xe0, 0x3a), "DejaVu Sans", 24);
    Fade(karaoke, Bgr(0xc4, 0xd4, 0xff), 0.0, 0.0);
    skins.append({QStringLiteral("Karaoke"), karaoke});

    // Spotlight: the current row alone, bold white on teal.
    ScrollSkin spot =
        Base(1, Bgr(0x0b, 0x3c, 0x49), Bgr(0x0f, 0x4c, 0x5c), Bgr(0xff, 0xff, 0xff), "DejaVu Sans", 24);
    skins.append({QStringLiteral("Spotlight"), spot});

    // Sheet: the plain list, black on white with the current row marked.
    ScrollSkin sheet = Base(0, Bgr(0xd8, 0xdc, 0xe2), Bgr(0xff, 0xff, 0xff), 0, "DejaVu Sans", 16);
    sheet.ListFore = Bgr(0x20, 0x20, 0x20);
    sheet.ActBack = Bgr(0xff, 0xff, 0xff);
    sheet.Alignment = 0;
    skins.append({QStringLiteral("Sheet"), sheet});

    for (int i = 1; i < args.size(); ++i) {
        const QString folder = args[i] + QStringLiteral("/skin");
        if (!QDir().mkpath(folder)) {
            QTextStream(stderr) << "qlt-mkskins: cannot make " << folder << "\n";
            return 1;
        }
        for (const auto& [name, skin] : skins) {
            QString error;
            if (!SaveScrollSkin(folder + QLatin1Char('/') + ScrollSkinFileName(name), skin, &error)) {
                QTextStream(stderr) << "qlt-mkskins: " << name << ": " << error << "\n";
                return 1;
            }
        }
    }
    return 0;
}

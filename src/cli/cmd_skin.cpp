// quillotune-cli skin: the 33 values of a scrolling text skin (.scs), and writing a skin
// from values by the program's own writer.
#include "cli/CliCommands.h"
#include "text/modScrollText.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {
const char kSkinUsage[] =
    "usage: quillotune-cli skin FILE.scs [--json]\n"
    "       quillotune-cli skin --write FILE.scs [--from FILE.scs] [NAME=VALUE...]\n"
    "  The first form prints the 33 values a skin gives (the default skin's values where\n"
    "  the file is missing or short) as NAME=VALUE lines, or with --json as one object.\n"
    "  --write starts from the default skin (or the skin of --from), sets the values named\n"
    "  (Mode, WindowBack, ListBack, ListFore, FontName, FontSize, FontBold, FontItalic,\n"
    "  Alignment, ActBack, ActFore, ActBold, BackTable1..10, ForeTable1..10, Top1Bold;\n"
    "  colours as decimal 0xBBGGRR) and writes the file; \".scs\" is added when missing.";
} // namespace

int RunSkin(const QStringList& args) {
    if (args.isEmpty() || args[0] == QLatin1String("--help")) {
        Err(QString::fromLatin1(kSkinUsage));
        return args.isEmpty() ? 2 : 0;
    }
    if (args[0] == QLatin1String("--write")) {
        if (args.size() < 2) {
            Err(QString::fromLatin1(kSkinUsage));
            return 2;
        }
        const QString path = ScrollSkinFileName(args[1]);
        ScrollSkin skin = DefaultScrollSkin();
        for (int i = 2; i < args.size(); ++i) {
            if (args[i] == QLatin1String("--from") && i + 1 < args.size()) {
                skin = LoadScrollSkin(args[++i]);
                continue;
            }
            const int eq = int(args[i].indexOf(QLatin1Char('=')));
            if (eq <= 0 || !SetScrollSkinField(skin, args[i].left(eq), args[i].mid(eq + 1))) {
                Err(QStringLiteral("quillotune-cli: not a skin value: ") + args[i]);
                return 2;
            }
        }
        QString error;
        if (!SaveScrollSkin(path, skin, &error)) {
            Err(QStringLiteral("quillotune-cli: cannot write %1: %2").arg(path, error));
            return 1;
        }
        Out(path);
        return 0;
    }
    const bool json = args.contains(QStringLiteral("--json"));
    QString path;
    for (const QString& a : args)
        if (!a.startsWith(QLatin1String("--")))
            path = a;
    if (path.isEmpty()) {
        Err(QString::fromLatin1(kSkinUsage));
        return 2;
    }
    const auto fields = ScrollSkinFields(LoadScrollSkin(path));
    if (json) {
        QJsonObject o;
        for (const auto& [name, value] : fields) {
            bool number = false;
            const qint64 v = value.toLongLong(&number);
            o.insert(name, number && name != QLatin1String("FontName") ? QJsonValue(v) : QJsonValue(value));
        }
        Out(QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Indented)).trimmed());
    } else {
        for (const auto& [name, value] : fields)
            Out(name + QLatin1Char('=') + value);
    }
    return 0;
}

#include "core/ControlCaptions.h"

#include "core/Captions.h"

#include <QStringList>

namespace {
std::vector<ControlCaption>& Table() {
    static std::vector<ControlCaption> t;
    return t;
}
} // namespace

std::vector<ControlCaption> ParseControlCaptions(const QString& tsv) {
    std::vector<ControlCaption> out;
    const QStringList lines = tsv.split(u'\n');
    for (QString line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.trimmed().isEmpty() || line.startsWith(u'#'))
            continue;
        const QStringList f = line.split(u'\t');
        if (f.size() < 3)
            continue;
        ControlCaption c;
        c.objectName = f[0].trimmed();
        bool ok = false;
        c.row = f[1].trimmed().toInt(&ok);
        if (!ok || c.row < 1 || c.row > kCaptionRowCount || c.objectName.isEmpty())
            continue;
        const QString kind = f[2].trimmed();
        const qsizetype colon = kind.indexOf(u':');
        if (colon >= 0) {
            c.kind = kind.left(colon);
            c.index = kind.mid(colon + 1).toInt(&ok);
            if (!ok || c.index < 0)
                continue;
        } else {
            c.kind = kind;
        }
        if (c.kind != u"text" && c.kind != u"tooltip" && c.kind != u"title" && c.kind != u"tab" &&
            c.kind != u"item")
            continue;
        out.push_back(c);
    }
    return out;
}

void SetControlCaptions(std::vector<ControlCaption> entries) {
    Table() = std::move(entries);
}

const std::vector<ControlCaption>& ControlCaptions() {
    return Table();
}

QString NamedCaption(const QString& objectName, const QString& kind) {
    for (const ControlCaption& c : Table()) {
        if (c.objectName == objectName && c.kind == kind)
            return Caption(c.row);
    }
    return QString();
}

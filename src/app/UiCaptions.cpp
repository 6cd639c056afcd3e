#include "app/UiCaptions.h"

#include "core/AppState.h"
#include "core/Captions.h"
#include "core/ControlCaptions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTabWidget>
#include <QWidget>
#include <vector>

namespace {
struct Pending {
    QString de, en;
};

QHash<QString, Pending>& PendingTexts() { // key: objectName + '\t' + kind
    static QHash<QString, Pending> t;
    return t;
}

std::vector<QPointer<QWidget>>& Roots() {
    static std::vector<QPointer<QWidget>> r;
    return r;
}

QString ReadResource(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(f.readAll());
}

QString KindKey(const ControlCaption& c) {
    return c.index >= 0 ? c.kind + u':' + QString::number(c.index) : c.kind;
}

QString PendingText(const QString& objectName, const QString& kind) {
    const auto it = PendingTexts().constFind(objectName + u'\t' + kind);
    if (it == PendingTexts().constEnd())
        return QString();
    return LanguageColumn() == kLanguageGerman ? it->de : it->en;
}

void Apply(QWidget* w, const QString& kind, int index, const QString& text, bool toolTips) {
    if (kind == u"text") {
        if (auto* b = qobject_cast<QAbstractButton*>(w))
            b->setText(text);
        else if (auto* l = qobject_cast<QLabel*>(w))
            l->setText(text);
        else if (auto* g = qobject_cast<QGroupBox*>(w))
            g->setTitle(text);
        else if (auto* e = qobject_cast<QLineEdit*>(w))
            e->setPlaceholderText(text);
        else
            w->setWindowTitle(text);
    } else if (kind == u"tooltip") {
        w->setToolTip(toolTips ? text : QString());
    } else if (kind == u"title") {
        w->setWindowTitle(text);
    } else if (kind == u"tab") {
        if (auto* t = qobject_cast<QTabWidget*>(w)) {
            const int pos = TabPositionOf(t, index);
            if (pos >= 0)
                t->setTabText(pos, text);
        }
    } else if (kind == u"item") {
        if (auto* c = qobject_cast<QComboBox*>(w); c && index < c->count())
            c->setItemText(index, text);
    }
}

// One widget: every assigned entry of its name, then the pending texts of kinds that
// have no row yet.
void ApplyTo(QWidget* w, const QMultiHash<QString, const ControlCaption*>& byName, bool toolTips) {
    const QString name = w->objectName();
    if (name.isEmpty())
        return;
    QStringList done;
    for (auto it = byName.constFind(name); it != byName.constEnd() && it.key() == name; ++it) {
        const ControlCaption* c = it.value();
        Apply(w, c->kind, c->index, Caption(c->row), toolTips);
        done << KindKey(*c);
    }
    for (const char* k : {"text", "tooltip", "title"}) {
        const QString kind = QString::fromLatin1(k);
        if (done.contains(kind))
            continue;
        const auto it = PendingTexts().constFind(name + u'\t' + kind);
        if (it != PendingTexts().constEnd())
            Apply(w, kind, -1, LanguageColumn() == kLanguageGerman ? it->de : it->en, toolTips);
    }
    const int count = qobject_cast<QTabWidget*>(w)  ? qobject_cast<QTabWidget*>(w)->count()
                      : qobject_cast<QComboBox*>(w) ? qobject_cast<QComboBox*>(w)->count()
                                                    : 0;
    const QString indexed = qobject_cast<QTabWidget*>(w) ? QStringLiteral("tab") : QStringLiteral("item");
    for (int i = 0; i < count; ++i) {
        const QString kind = indexed + u':' + QString::number(i);
        if (done.contains(kind))
            continue;
        const auto it = PendingTexts().constFind(name + u'\t' + kind);
        if (it != PendingTexts().constEnd())
            Apply(w, indexed, i, LanguageColumn() == kLanguageGerman ? it->de : it->en, toolTips);
    }
}

void Walk(QWidget* root) {
    QMultiHash<QString, const ControlCaption*> byName;
    for (const ControlCaption& c : ControlCaptions())
        byName.insert(c.objectName, &c);
    const bool toolTips = SettingOn(Ini::ToolTips, Ini::Col1);
    ApplyTo(root, byName, toolTips);
    const QList<QWidget*> children = root->findChildren<QWidget*>();
    for (QWidget* w : children)
        ApplyTo(w, byName, toolTips);
}
} // namespace

void LoadUiCaptionTables() {
    Q_INIT_RESOURCE(app); // src/app/app.qrc, in a static library
    SetControlCaptions(ParseControlCaptions(ReadResource(QStringLiteral(":/captions/control_captions.tsv"))));
    PendingTexts().clear();
    // Every branch of work keeps its own file of texts waiting for rows.
    QStringList lines;
    const QStringList files = QDir(QStringLiteral(":/captions"))
                                  .entryList({QStringLiteral("pending_*.tsv")}, QDir::Files, QDir::Name);
    for (const QString& f : files)
        lines += ReadResource(QStringLiteral(":/captions/") + f).split(u'\n');
    for (QString line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QStringList f = line.split(u'\t');
        if (f.size() < 4)
            continue;
        PendingTexts().insert(f[0] + u'\t' + f[1], Pending{f[2], f[3]});
    }
}

void RegisterCaptionRoot(QWidget* root) {
    for (const auto& r : Roots())
        if (r == root)
            return;
    Roots().push_back(root);
}

void UnregisterCaptionRoot(QWidget* root) {
    auto& r = Roots();
    r.erase(
        std::remove_if(r.begin(), r.end(), [root](const QPointer<QWidget>& p) { return !p || p == root; }),
        r.end());
}

void SetCaptions() {
    if (State().SuppressEvents)
        return;
    for (const auto& r : Roots())
        if (r)
            Walk(r);
}

void SetCaptionsOf(QWidget* root) {
    if (State().SuppressEvents || !root)
        return;
    Walk(root);
}

int FixedTabIndex(const QTabWidget* strip, int position) {
    const QVariant v = strip->widget(position)->property(kSubTabIndexProperty);
    return v.isValid() ? v.toInt() : position;
}

int TabPositionOf(const QTabWidget* strip, int index) {
    if (!strip || index < 0)
        return -1;
    for (int i = 0; i < strip->count(); ++i)
        if (FixedTabIndex(strip, i) == index)
            return i;
    return -1;
}

QString UiText(const QString& objectName, const QString& kind) {
    const QString assigned = NamedCaption(objectName, kind);
    if (!assigned.isEmpty())
        return assigned;
    return PendingText(objectName, kind);
}

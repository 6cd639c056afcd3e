#include "app/UiCaptions.h"

#include "app/Mnemonics.h"
#include "core/AppState.h"
#include "core/Captions.h"
#include "core/ControlCaptions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QPointer>
#include <QTabWidget>
#include <QTimer>
#include <QTranslator>
#include <QWidget>
#include <vector>

namespace {
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

// One widget: every entry of the register under its name.
void ApplyTo(QWidget* w, const QMultiHash<QString, const ControlCaption*>& byName, bool toolTips) {
    const QString name = w->objectName();
    if (name.isEmpty())
        return;
    for (auto it = byName.constFind(name); it != byName.constEnd() && it.key() == name; ++it) {
        const ControlCaption* c = it.value();
        Apply(w, c->kind, c->index, Caption(c->row), toolTips);
    }
}

// Alt keys and Tab order of the whole window, now and once more when the events of the
// walk are through (some windows put texts of their own after it).
void KeyboardOf(QWidget* root) {
    QWidget* window = root->window();
    AssignMnemonics(window);
    OrderTabChain(window);
    if (window->property("mnemonicsPending").toBool())
        return;
    window->setProperty("mnemonicsPending", true);
    QTimer::singleShot(0, window, [window] {
        window->setProperty("mnemonicsPending", false);
        AssignMnemonics(window);
        OrderTabChain(window);
    });
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
    KeyboardOf(root);
}
} // namespace

void LoadUiCaptionTables() {
    Q_INIT_RESOURCE(app); // src/app/app.qrc, in a static library
    SetControlCaptions(ParseControlCaptions(ReadResource(QStringLiteral(":/captions/control_captions.tsv"))));
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

namespace {
// Qt's own texts (file dialogs, standard buttons, context menus of text boxes) follow the
// program's language: German loads Qt's German translation, every other language keeps
// Qt's English.
void FollowQtTranslation() {
    static QTranslator* installed = nullptr;
    static int loadedFor = 0;
    const int language = LanguageColumn();
    if (language == loadedFor)
        return;
    loadedFor = language;
    if (installed) {
        QCoreApplication::removeTranslator(installed);
        delete installed;
        installed = nullptr;
    }
    if (language != kLanguageGerman)
        return;
    auto* translator = new QTranslator;
    if (translator->load(QLocale(QLocale::German), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(translator);
        installed = translator;
    } else {
        delete translator;
    }
}
} // namespace

void SetCaptions() {
    if (State().SuppressEvents)
        return;
    FollowQtTranslation();
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
    return NamedCaption(objectName, kind);
}

// Alt keys that are unique on every page of a window; see Mnemonics.h for what a page is.

#include "app/Mnemonics.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSet>
#include <QStackedWidget>
#include <QTabBar>
#include <QTextDocument>
#include <QTextEdit>
#include <QToolButton>
#include <algorithm>
#include <climits>
#include <vector>

namespace {

// The text a control had before it got its key, and the text with the key: a control
// whose text still equals the second one is given its key anew from the first.
constexpr char kSourceProperty[] = "mnemonicSource";
constexpr char kKeyedProperty[] = "mnemonicText";

struct Parsed {
    QString plain;    // as shown
    int carried = -1; // position in `plain` of the letter the text marks with "&"
};

bool Usable(QChar c) {
    return c.unicode() < 128 && c.isLetterOrNumber();
}

Parsed Parse(const QString& text) {
    Parsed p;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'&' && i + 1 < text.size()) {
            const QChar next = text.at(i + 1);
            if (next == u'&') {
                p.plain += u'&';
                ++i;
                continue;
            }
            if (next.isLetterOrNumber()) {
                if (p.carried < 0)
                    p.carried = int(p.plain.size());
                continue;
            }
        }
        p.plain += c;
    }
    return p;
}

QString Compose(const QString& plain, int at) {
    QString out;
    out.reserve(plain.size() + 2);
    for (qsizetype i = 0; i < plain.size(); ++i) {
        if (i == at)
            out += u'&';
        out += plain.at(i);
        if (plain.at(i) == u'&')
            out += u'&';
    }
    return out;
}

bool IsField(const QWidget* w) {
    return qobject_cast<const QLineEdit*>(w) || qobject_cast<const QComboBox*>(w) ||
           qobject_cast<const QAbstractSpinBox*>(w) || qobject_cast<const QPlainTextEdit*>(w) ||
           qobject_cast<const QTextEdit*>(w);
}

bool PlainLabel(const QLabel* l) {
    return l->textFormat() == Qt::PlainText ||
           (l->textFormat() == Qt::AutoText && !Qt::mightBeRichText(l->text()));
}

// The field that stands right after `label` in its layout, or null.
QWidget* FieldAfter(QLabel* label) {
    QWidget* parent = label->parentWidget();
    if (!parent)
        return nullptr;
    std::vector<QLayout*> layouts;
    if (parent->layout())
        layouts.push_back(parent->layout());
    for (std::size_t k = 0; k < layouts.size(); ++k) {
        QLayout* l = layouts[k];
        const int at = l->indexOf(label);
        if (at >= 0) {
            QLayoutItem* next = nullptr;
            if (auto* g = qobject_cast<QGridLayout*>(l)) {
                int row = 0, col = 0, rows = 0, cols = 0;
                g->getItemPosition(at, &row, &col, &rows, &cols);
                next = g->itemAtPosition(row, col + cols);
            } else if (auto* f = qobject_cast<QFormLayout*>(l)) {
                int row = 0;
                QFormLayout::ItemRole role{};
                f->getWidgetPosition(label, &row, &role);
                next = role == QFormLayout::LabelRole ? f->itemAt(row, QFormLayout::FieldRole) : nullptr;
            } else if (auto* b = qobject_cast<QBoxLayout*>(l);
                       b && (b->direction() == QBoxLayout::LeftToRight) && at + 1 < b->count()) {
                next = b->itemAt(at + 1);
            }
            QWidget* w = next ? next->widget() : nullptr;
            return w && IsField(w) ? w : nullptr;
        }
        for (int i = 0; i < l->count(); ++i)
            if (QLayout* sub = l->itemAt(i)->layout())
                layouts.push_back(sub);
    }
    return nullptr;
}

// Controls that take an Alt key, with their text.
bool Takes(QWidget* w) {
    if (auto* b = qobject_cast<QAbstractButton*>(w)) {
        if (qobject_cast<QTabBar*>(w->parentWidget()))
            return false; // the close and scroll buttons of a tab strip
        if (auto* t = qobject_cast<QToolButton*>(w); t && t->toolButtonStyle() == Qt::ToolButtonIconOnly)
            return false;
        return !WithoutMnemonic(b->text()).trimmed().isEmpty();
    }
    if (auto* l = qobject_cast<QLabel*>(w)) {
        if (!PlainLabel(l) || WithoutMnemonic(l->text()).trimmed().isEmpty())
            return false;
        if (!l->buddy()) {
            // A label of a field: it stands right before it and ends with a colon.
            if (!l->text().trimmed().endsWith(u':'))
                return false;
            QWidget* field = FieldAfter(l);
            if (!field)
                return false;
            l->setBuddy(field);
        }
        return true;
    }
    return false;
}

QString TextOf(const QWidget* w) {
    if (auto* b = qobject_cast<const QAbstractButton*>(w))
        return b->text();
    return static_cast<const QLabel*>(w)->text();
}

void SetTextOf(QWidget* w, const QString& text) {
    if (TextOf(w) == text)
        return;
    if (auto* b = qobject_cast<QAbstractButton*>(w))
        b->setText(text);
    else
        static_cast<QLabel*>(w)->setText(text);
}

// A control that takes a key, with the pages it lies on: one (stack, page) pair for
// every stack of pages above it.
struct Item {
    QWidget* w;
    std::vector<std::pair<const QStackedWidget*, int>> path;
    QString source;
    Parsed parsed;
    int at = -1;
    int turn = 0; // place among the controls of its kind on its page
};

void Collect(QWidget* w, std::vector<std::pair<const QStackedWidget*, int>>& path, std::vector<Item>& out) {
    if (Takes(w))
        out.push_back({w, path, {}, {}, -1, 0});
    if (auto* st = qobject_cast<QStackedWidget*>(w)) {
        for (int i = 0; i < st->count(); ++i) {
            path.emplace_back(st, i);
            if (QWidget* p = st->widget(i))
                Collect(p, path, out);
            path.pop_back();
        }
        return;
    }
    for (QObject* o : w->children())
        if (auto* c = qobject_cast<QWidget*>(o); c && !c->isWindow())
            Collect(c, path, out);
}

// Two controls can be seen together unless they lie on different pages of one stack.
bool Together(const Item& a, const Item& b) {
    for (const auto& [stack, page] : a.path)
        for (const auto& [otherStack, otherPage] : b.path)
            if (stack == otherStack && page != otherPage)
                return false;
    return true;
}

int Rank(QWidget* w) {
    if (qobject_cast<QPushButton*>(w) || qobject_cast<QToolButton*>(w))
        return 0;
    if (qobject_cast<QAbstractButton*>(w))
        return 1;
    return 2;
}

// The key for `plain`, not in `blocked`: a word start first (a letter or the digit of
// "1 digit"), then any letter, then a digit. Among those, a key that controls of other
// pages use already comes before a fresh one: it costs nothing on the pages that show
// together with this one, and leaves more keys for them.
int Pick(const QString& plain, const QSet<QChar>& blocked, const QSet<QChar>& taken) {
    auto wordStart = [&](qsizetype i) { return i == 0 || !plain.at(i - 1).isLetterOrNumber(); };
    for (const int kind : {0, 1, 2}) // word start, letter, digit
        for (const bool reused : {true, false})
            for (qsizetype i = 0; i < plain.size(); ++i) {
                const QChar c = plain.at(i);
                const bool fits = kind == 0 ? wordStart(i) : kind == 1 ? c.isLetter() : c.isDigit();
                if (fits && Usable(c) && !blocked.contains(c.toUpper()) &&
                    taken.contains(c.toUpper()) == reused)
                    return int(i);
            }
    return -1;
}

QSet<QChar> BlockedFor(const std::vector<Item>& items, std::size_t k) {
    QSet<QChar> blocked;
    for (std::size_t j = 0; j < items.size(); ++j)
        if (j != k && items[j].at >= 0 && Together(items[j], items[k]))
            blocked.insert(items[j].parsed.plain.at(items[j].at).toUpper());
    return blocked;
}
} // namespace

QString WithoutMnemonic(const QString& text) {
    return Parse(text).plain;
}

QChar MnemonicOf(const QString& text) {
    const Parsed p = Parse(text);
    return p.carried >= 0 ? p.plain.at(p.carried).toUpper() : QChar();
}

void AssignMnemonics(QWidget* w) {
    if (!w)
        return;
    QWidget* window = w->window();
    QHash<QWidget*, int> order;
    const QList<QWidget*> reading = ReadingOrder(window);
    for (int i = 0; i < reading.size(); ++i)
        order.insert(reading.at(i), i);
    std::vector<Item> items;
    std::vector<std::pair<const QStackedWidget*, int>> path;
    Collect(window, path, items);
    for (Item& item : items) {
        const QString now = TextOf(item.w);
        const QVariant keyed = item.w->property(kKeyedProperty);
        item.source =
            keyed.isValid() && keyed.toString() == now ? item.w->property(kSourceProperty).toString() : now;
        item.parsed = Parse(item.source);
    }
    // What stays on more pages first; then buttons before check boxes and options, those
    // before labels. Pages take turns, so that the first buttons of every page get
    // theirs before the later ones of any: the n-th of each page, in reading order.
    std::stable_sort(items.begin(), items.end(), [&](const Item& a, const Item& b) {
        return order.value(a.w, INT_MAX) < order.value(b.w, INT_MAX);
    });
    QHash<QString, int> seen;
    for (Item& item : items) {
        QString page = QString::number(Rank(item.w));
        for (const auto& [stack, index] : item.path)
            page += QStringLiteral("/%1:%2").arg(quintptr(stack)).arg(index);
        item.turn = seen[page]++;
    }
    std::stable_sort(items.begin(), items.end(), [&](const Item& a, const Item& b) {
        if (a.path.size() != b.path.size())
            return a.path.size() < b.path.size();
        const int ra = Rank(a.w), rb = Rank(b.w);
        if (ra != rb)
            return ra < rb;
        return a.turn < b.turn;
    });
    // A key that the caption brings comes first.
    for (std::size_t k = 0; k < items.size(); ++k) {
        const Parsed& p = items[k].parsed;
        if (p.carried >= 0 && Usable(p.plain.at(p.carried)) &&
            !BlockedFor(items, k).contains(p.plain.at(p.carried).toUpper()))
            items[k].at = p.carried;
    }
    QSet<QChar> taken;
    for (const Item& item : items)
        if (item.at >= 0)
            taken.insert(item.parsed.plain.at(item.at).toUpper());
    for (std::size_t k = 0; k < items.size(); ++k) {
        if (items[k].at >= 0)
            continue;
        items[k].at = Pick(items[k].parsed.plain, BlockedFor(items, k), taken);
        if (items[k].at >= 0)
            taken.insert(items[k].parsed.plain.at(items[k].at).toUpper());
    }
    for (Item& item : items) {
        const QString keyed = Compose(item.parsed.plain, item.at);
        item.w->setProperty(kSourceProperty, item.source);
        item.w->setProperty(kKeyedProperty, keyed);
        SetTextOf(item.w, keyed);
    }
}

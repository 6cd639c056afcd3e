// The reading order of a window and the Tab chain that follows it.

#include "app/Mnemonics.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QSet>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>
#include <algorithm>
#include <tuple>
#include <vector>

namespace {

// Widgets whose inner parts are no business of the chain.
bool IsLeaf(const QWidget* w) {
    return qobject_cast<const QAbstractButton*>(w) || qobject_cast<const QLineEdit*>(w) ||
           qobject_cast<const QComboBox*>(w) || qobject_cast<const QAbstractSpinBox*>(w) ||
           qobject_cast<const QAbstractSlider*>(w) || qobject_cast<const QTabBar*>(w) ||
           qobject_cast<const QLabel*>(w) || qobject_cast<const QProgressBar*>(w) ||
           (qobject_cast<const QAbstractScrollArea*>(w) && !qobject_cast<const QScrollArea*>(w));
}

class Reader {
public:
    explicit Reader(QWidget* window) : m_window(window) {}

    QList<QWidget*> Read() {
        Visit(m_window);
        return m_out;
    }

private:
    void Visit(QWidget* w) {
        if (!w || (w != m_window && w->isWindow()) || m_seen.contains(w))
            return;
        m_seen.insert(w);
        m_out << w;
        if (IsLeaf(w))
            return;
        if (auto* t = qobject_cast<QTabWidget*>(w)) {
            Visit(t->cornerWidget(Qt::TopLeftCorner));
            Visit(t->tabBar());
            Visit(t->cornerWidget(Qt::TopRightCorner));
            for (int i = 0; i < t->count(); ++i)
                Visit(t->widget(i));
        } else if (auto* s = qobject_cast<QScrollArea*>(w)) {
            Visit(s->widget());
        } else if (auto* sp = qobject_cast<QSplitter*>(w)) {
            for (int i = 0; i < sp->count(); ++i)
                Visit(sp->widget(i));
        } else if (auto* st = qobject_cast<QStackedWidget*>(w)) {
            for (int i = 0; i < st->count(); ++i)
                Visit(st->widget(i));
        } else if (w->layout()) {
            VisitLayout(w->layout());
        }
        // What no layout places comes after, in the order of its making.
        for (QObject* o : w->children())
            if (auto* c = qobject_cast<QWidget*>(o))
                Visit(c);
    }

    void VisitItem(QLayoutItem* item) {
        if (!item)
            return;
        if (QWidget* w = item->widget())
            Visit(w);
        else if (QLayout* l = item->layout())
            VisitLayout(l);
    }

    void VisitLayout(QLayout* l) {
        if (auto* g = qobject_cast<QGridLayout*>(l)) {
            std::vector<std::tuple<int, int, int>> cells; // row, column, index
            for (int i = 0; i < g->count(); ++i) {
                int row = 0, col = 0, rows = 0, cols = 0;
                g->getItemPosition(i, &row, &col, &rows, &cols);
                cells.emplace_back(row, col, i);
            }
            std::sort(cells.begin(), cells.end());
            for (const auto& [row, col, i] : cells)
                VisitItem(g->itemAt(i));
        } else if (auto* f = qobject_cast<QFormLayout*>(l)) {
            for (int r = 0; r < f->rowCount(); ++r)
                for (QFormLayout::ItemRole role :
                     {QFormLayout::LabelRole, QFormLayout::FieldRole, QFormLayout::SpanningRole})
                    VisitItem(f->itemAt(r, role));
        } else if (auto* b = qobject_cast<QBoxLayout*>(l)) {
            const bool reversed =
                b->direction() == QBoxLayout::RightToLeft || b->direction() == QBoxLayout::BottomToTop;
            for (int i = 0; i < b->count(); ++i)
                VisitItem(b->itemAt(reversed ? b->count() - 1 - i : i));
        } else {
            for (int i = 0; i < l->count(); ++i)
                VisitItem(l->itemAt(i));
        }
    }

    QWidget* m_window;
    QSet<QWidget*> m_seen;
    QList<QWidget*> m_out;
};

bool TakesTab(const QWidget* w) {
    return (w->focusPolicy() & Qt::TabFocus) == Qt::TabFocus || w->focusProxy();
}

} // namespace

QList<QWidget*> ReadingOrder(QWidget* window) {
    return window ? Reader(window).Read() : QList<QWidget*>();
}

void OrderTabChain(QWidget* w) {
    if (!w)
        return;
    QWidget* window = w->window();
    std::vector<QWidget*> chain;
    for (QWidget* x : ReadingOrder(window)) {
        // A scrolled page is no stop of its own: its controls are, and the page scrolls
        // to the one that takes the focus.
        if (auto* s = qobject_cast<QScrollArea*>(x); s && s->widget())
            s->setFocusPolicy(Qt::NoFocus);
        // Containers that hand the focus to a part (a list's frame, a tab strip) stand
        // in the chain too, right before their parts: left elsewhere, a Tab that reaches
        // one would jump to its part out of order.
        if (x == window || !TakesTab(x))
            continue;
        // The Tab key leaves a list or a text box for the next control instead of
        // wandering through its cells or writing a tab character.
        if (auto* v = qobject_cast<QAbstractItemView*>(x))
            v->setTabKeyNavigation(false);
        else if (auto* t = qobject_cast<QTextEdit*>(x))
            t->setTabChangesFocus(true);
        else if (auto* p = qobject_cast<QPlainTextEdit*>(x))
            p->setTabChangesFocus(true);
        chain.push_back(x);
    }
    for (std::size_t i = 1; i < chain.size(); ++i)
        QWidget::setTabOrder(chain[i - 1], chain[i]);
}

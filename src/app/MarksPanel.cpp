#include "app/MarksPanel.h"

#include "app/DataGridView.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/MessageBoxPrompt.h"
#include "core/AppState.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "list/InputColumns.h"
#include "list/modDoubles.h"
#include "list/modMarks.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSet>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QTableView>

namespace {
constexpr int kSignCount = 10;
// Columns of the picture link list: 4 holds the full path of the linked song.
constexpr int kLinkSongCol = 4;

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};
} // namespace

// ---- SignButton ------------------------------------------------------------------------

void SignButton::SetSign(const QString& sign) {
    m_sign = sign;
    setAccessibleName(ShownText());
    updateGeometry();
    update();
}

QString SignButton::ShownText() const {
    return m_sign.isEmpty() ? text() : text() + QStringLiteral("  ") + m_sign;
}

QSize SignButton::minimumSizeHint() const {
    // Narrow enough for the ten of them on the player tab.
    return QSize(minimumWidth(), sizeHint().height());
}

QSize SignButton::sizeHint() const {
    // As wide as the digit and its sign need, not the style's wide button: ten of them
    // share a row with little room.
    const QSize textSize = fontMetrics().size(Qt::TextShowMnemonic, ShownText());
    return QSize(std::max(minimumWidth(), textSize.width() + 2 * fontMetrics().averageCharWidth() + 6),
                 QPushButton::sizeHint().height());
}

void SignButton::paintEvent(QPaintEvent*) {
    QStylePainter p(this);
    QStyleOptionButton o;
    initStyleOption(&o);
    o.text = ShownText();
    p.drawControl(QStyle::CE_PushButton, o);
}

// ---- MarksPanel --------------------------------------------------------------------------

MarksPanel* MarksPanel::Install(InputDataPage* page, ListProgress* progress) {
    auto* panel = new MarksPanel(page, progress);
    page->AddSubTab(page->TabInput1_Sub2, panel, QStringLiteral("pagTab1_Marks"), SubTab::Marks);
    return panel;
}

MarksPanel::MarksPanel(InputDataPage* page, ListProgress* progress, QWidget* parent)
    : QWidget(parent), m_page(page), m_progress(progress) {
    auto button = [this](QWidget* parent, const char* name) {
        auto* b = new QPushButton(parent);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(6, 6, 6, 6);
    outer->setSpacing(0);

    auto* rows = new QGridLayout;
    m_rows = rows;
    rows->setHorizontalSpacing(4);
    rows->setVerticalSpacing(3);
    // By hand: the next sign; the ten signs and the mark box into the current row in a row
    // of their own, which a mark run borrows for the player tab.
    btnTab1_SignNext = button(this, "btnTab1_Sign");
    chbTab1_SignPreviousRow = new QCheckBox(this);
    chbTab1_SignPreviousRow->setObjectName(QStringLiteral("chbTab1_SignPreviousRow"));
    rows->addWidget(btnTab1_SignNext, 0, 0);
    rows->addWidget(chbTab1_SignPreviousRow, 0, 1, 1, 3);
    fraTab1_Signs = new QWidget(this);
    fraTab1_Signs->setObjectName(QStringLiteral("fraTab1_Signs"));
    // Two lines, so that the row also fits the narrower player tab: the signs, then the
    // mark box into the current row.
    auto* signs = new QGridLayout(fraTab1_Signs);
    signs->setContentsMargins(0, 0, 0, 0);
    signs->setHorizontalSpacing(3);
    signs->setVerticalSpacing(3);
    auto* lblSigns = new QLabel(fraTab1_Signs);
    lblSigns->setObjectName(QStringLiteral("lblTab1_Sign0_9"));
    signs->addWidget(lblSigns, 0, 0);
    for (int i = 0; i < kSignCount; ++i) {
        btnTab1_Sign[i] = new SignButton(fraTab1_Signs);
        btnTab1_Sign[i]->setObjectName(QStringLiteral("btnTab1_Sign(%1)").arg(i));
        btnTab1_Sign[i]->setMinimumWidth(26);
        btnTab1_Sign[i]->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        signs->addWidget(btnTab1_Sign[i], 0, i + 1);
    }
    btnTab1_SetFTagActRow = button(fraTab1_Signs, "btnTab1_SetFTagActRow");
    signs->addWidget(btnTab1_SetFTagActRow, 1, 0, 1, 4, Qt::AlignLeft);
    signs->setColumnStretch(kSignCount + 1, 1);
    rows->addWidget(fraTab1_Signs, 1, 0, 1, 4);
    // Marks and selection.
    btnTab1_ClearFtag = button(this, "btnTab1_ClearFtag");
    btnTab1_RemoveFtag = button(this, "btnTab1_RemoveFtag");
    btnTab1_FTagBlue = button(this, "btnTab1_FTagBlue");
    btnTab1_HighlightAll = button(this, "btnTab1_HighlightAll");
    btnTab1_InvertHighlight = button(this, "btnTab1_InvertHighlight");
    rows->addWidget(btnTab1_ClearFtag, 2, 0);
    rows->addWidget(btnTab1_RemoveFtag, 2, 1);
    rows->addWidget(btnTab1_HighlightAll, 2, 2);
    rows->addWidget(btnTab1_InvertHighlight, 2, 3);
    // Marks by a rule.
    btnTab1_MarkLrc = button(this, "btnTab1_MarkLrc");
    btnTab1_HighlightLyrics = button(this, "btnTab1_HighlightLyrics");
    btnTab1_HighlightiPic = button(this, "btnTab1_HighlightiPic");
    btnTab1_HighlightLink = button(this, "btnTab1_HighlightLink");
    rows->addWidget(btnTab1_FTagBlue, 3, 0);
    rows->addWidget(btnTab1_MarkLrc, 3, 1);
    rows->addWidget(btnTab1_HighlightLyrics, 3, 2);
    rows->addWidget(btnTab1_HighlightiPic, 3, 3);
    // By file type, picture links, doubles.
    auto* typeRow = new QHBoxLayout;
    typeRow->setSpacing(4);
    cmbTab1_FileType = new QComboBox(this);
    cmbTab1_FileType->setObjectName(QStringLiteral("cmbTab1_FileType"));
    for (int t = 1; t < kFileTypeCount; ++t) // type 0 is no audio file: never in the list
        cmbTab1_FileType->addItem(FileTypeName(t));
    btnTab1_MarkFileType = button(this, "btnTab1_MarkFileType");
    typeRow->addWidget(cmbTab1_FileType);
    typeRow->addWidget(btnTab1_MarkFileType, 1);
    btnTab1_FindDouble = button(this, "btnTab1_FindDouble");
    btnTab1_EraseDouble = button(this, "btnTab1_EraseDouble");
    rows->addWidget(btnTab1_HighlightLink, 4, 0);
    rows->addLayout(typeRow, 4, 1);
    rows->addWidget(btnTab1_FindDouble, 4, 2);
    rows->addWidget(btnTab1_EraseDouble, 4, 3);
    for (int c = 0; c < 4; ++c)
        rows->setColumnStretch(c, 1);
    outer->addLayout(rows);
    outer->addStretch(1);

    DataGrid* lp = &Grids::LbxInput(); // lives for the whole run
    auto env = [this] { return InputListEnv(m_page, m_progress); };

    connect(btnTab1_SetFTagActRow, &QPushButton::clicked, this, [this, lp, env] {
        ::btnTab1_SetFTagActRow(*lp, m_page->txtTab1_FTag->text(), env());
        FocusList();
    });
    for (int i = 0; i < kSignCount; ++i)
        connect(btnTab1_Sign[i], &QPushButton::clicked, this, [this, lp, env, i] {
            ::btnTab1_Sign(*lp, Signs(), i, chbTab1_SignPreviousRow->isChecked(), env());
            FocusList();
        });
    connect(btnTab1_SignNext, &QPushButton::clicked, this, [this, lp, env] {
        ::btnTab1_SignNext(*lp, Signs(), chbTab1_SignPreviousRow->isChecked(), env());
        FocusList();
    });
    connect(btnTab1_ClearFtag, &QPushButton::clicked, this, [this, env] {
        MarkBoxes boxes{m_page->txtTab1_FTag->text(), QString(), QString()};
        // The box is emptied first, so that the sums the command refreshes read it empty.
        const bool quiet = State().SuppressEvents;
        State().SuppressEvents = true;
        m_page->txtTab1_FTag->clear();
        State().SuppressEvents = quiet;
        ::btnTab1_ClearFtag(boxes, env());
        m_page->txtTab1_FTag->setText(boxes.ftag);
    });
    connect(btnTab1_RemoveFtag, &QPushButton::clicked, this,
            [this, lp, env] { ::btnTab1_RemoveFtag(*lp, m_page->txtTab1_FTag->text(), env()); });
    connect(btnTab1_HighlightAll, &QPushButton::clicked, this,
            [lp, env] { ::btnTab1_HighlightAll(*lp, env()); });
    connect(btnTab1_InvertHighlight, &QPushButton::clicked, this,
            [lp, env] { ::btnTab1_InvertHighlight(*lp, env()); });
    connect(btnTab1_FTagBlue, &QPushButton::clicked, this,
            [this, lp, env] { ::btnTab1_FTagBlue(*lp, m_page->txtTab1_FTag->text(), NoMsg(), env()); });
    connect(btnTab1_MarkLrc, &QPushButton::clicked, this, [this, lp, env] {
        WaitCursor wait;
        ::btnTab1_MarkLrc(*lp, NoMsg(), env());
    });
    connect(btnTab1_HighlightLyrics, &QPushButton::clicked, this, [this, lp, env] {
        WaitCursor wait;
        ::btnTab1_HighlightLyrics(*lp, NoMsg(), env());
    });
    connect(btnTab1_HighlightiPic, &QPushButton::clicked, this, [this, lp, env] {
        WaitCursor wait;
        ::btnTab1_HighlightiPic(*lp, NoMsg(), env());
    });
    connect(btnTab1_HighlightLink, &QPushButton::clicked, this, [this, lp, env] {
        WaitCursor wait;
        // The songs named in the picture link list, by full path.
        QSet<QString> linked;
        EnsureLinkListLoaded(AppPrompt());
        const DataGrid& links = Grids::LbxPic_LinkToPic();
        if (links.Cols() >= kLinkSongCol)
            for (int r = 1; r <= links.Rows(); ++r)
                if (!links.CellView(r, kLinkSongCol).isEmpty())
                    linked.insert(links.CellText(r, kLinkSongCol));
        ::btnTab1_HighlightLink(
            *lp,
            [&linked](const DataGrid& g, int r) {
                return !linked.isEmpty() && linked.contains(InputRowPath(g, r));
            },
            NoMsg(), env());
    });
    connect(btnTab1_MarkFileType, &QPushButton::clicked, this, [this, lp, env] {
        WaitCursor wait;
        ::MarkFileType(*lp, cmbTab1_FileType->currentText(), NoMsg(), env());
    });
    connect(btnTab1_FindDouble, &QPushButton::clicked, this, [this, lp, env] {
        ::btnTab1_FindDouble(*lp, env());
        FocusList();
    });
    connect(btnTab1_EraseDouble, &QPushButton::clicked, this, [this, lp, env] {
        WaitCursor wait;
        ::btnTab1_EraseDouble(*lp, NoMsg(), env());
    });
}

bool MarksPanel::NoMsg() const {
    return m_page->chbTab1_NoMsg->isChecked();
}

void MarksPanel::FocusList() {
    m_page->LbxInput->table()->setFocus();
}

QStringList MarksPanel::Signs() const {
    QStringList signs;
    for (int i = 0; i < kSignCount; ++i)
        signs << btnTab1_Sign[i]->Sign();
    return signs;
}

void MarksPanel::ApplySettings() {
    for (int i = 0; i < kSignCount; ++i) {
        const QString sign = Setting(Ini::SignFirst + i, Ini::SignCol);
        btnTab1_Sign[i]->SetSign(sign);
        btnTab1_Sign[i]->setEnabled(!sign.isEmpty());
    }
    btnTab1_SignNext->setEnabled(!Signs().join(QString()).isEmpty());
}

void MarksPanel::LendSigns(QBoxLayout* into) {
    if (fraTab1_Signs->parentWidget() != this)
        return;
    ApplySettings();
    m_rows->removeWidget(fraTab1_Signs);
    into->addWidget(fraTab1_Signs);
    fraTab1_Signs->show();
}

void MarksPanel::TakeSignsBack() {
    if (fraTab1_Signs->parentWidget() == this)
        return;
    fraTab1_Signs->setParent(this);
    m_rows->addWidget(fraTab1_Signs, 1, 0, 1, 4);
    fraTab1_Signs->show();
}

void MarksPanel::showEvent(QShowEvent* event) {
    // The signs may have been edited in the preferences meanwhile.
    ApplySettings();
    QWidget::showEvent(event);
}

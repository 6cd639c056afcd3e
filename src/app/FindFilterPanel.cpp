#include "app/FindFilterPanel.h"

#include "app/DataGridView.h"
#include "app/FrmShowColumn.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/MessageBoxPrompt.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/ControlCaptions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "list/InputColumns.h"
#include "list/modFilter.h"
#include "list/modFind.h"
#include "playlist/modPlaylistPlay.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {

// Restores the wait cursor on every way out of a command.
struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

QComboBox* MakeCombo(QWidget* parent, const QString& name, bool editable = false) {
    auto* c = new QComboBox(parent);
    c->setObjectName(name);
    c->setEditable(editable);
    c->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    c->setMinimumContentsLength(10);
    c->setMaxVisibleItems(25);
    return c;
}

// Entry 0 of cmbTab1_FindInColumn, "all columns", by the caption table's entry for it.
QString AllColumnsEntry() {
    for (const ControlCaption& c : ControlCaptions())
        if (c.objectName == u"cmbTab1_FindInColumn" && c.kind == u"item" && c.index == 0)
            return Caption(c.row);
    return QString();
}

QLabel* MakeCount(QWidget* parent, const QString& name) {
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    l->setMinimumWidth(44);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return l;
}
} // namespace

FindFilterPanel* FindFilterPanel::Install(InputDataPage* page, ListProgress* progress) {
    auto* panel = new FindFilterPanel(page, progress);
    page->AddSubTab(page->TabInput1_Sub1, panel, QStringLiteral("pagTab1_FindFilter"), SubTab::FindFilter);
    return panel;
}

FindFilterPanel::FindFilterPanel(InputDataPage* page, ListProgress* progress, QWidget* parent)
    : QWidget(parent), m_page(page), m_progress(progress) {
    auto* outer = new QHBoxLayout(this);
    outer->setContentsMargins(6, 6, 6, 6);
    outer->setSpacing(10);

    // ---- find ----
    auto* grpFind = new QGroupBox(this);
    grpFind->setObjectName(QStringLiteral("grpTab1_Find"));
    auto* find = new QGridLayout(grpFind);
    find->setContentsMargins(8, 6, 8, 6);
    find->setHorizontalSpacing(6);
    find->setVerticalSpacing(3);
    cmbTab1_Find = MakeCombo(grpFind, QStringLiteral("cmbTab1_Find"), true);
    cmbTab1_Find->setInsertPolicy(QComboBox::NoInsert); // the command keeps the history
    cmbTab1_Find->setMinimumContentsLength(16);
    cmbTab1_FindInColumn = MakeCombo(grpFind, QStringLiteral("cmbTab1_FindInColumn"));
    btnTab1_M_Find = new QPushButton(grpFind);
    btnTab1_M_Find->setObjectName(QStringLiteral("btnTab1_M_Find"));
    btnTab1_M_Find->setDefault(false);
    for (int i = 0; i < 3; ++i) {
        chbTab1_Find[i] = new QCheckBox(grpFind);
        chbTab1_Find[i]->setObjectName(QStringLiteral("chbTab1_Find(%1)").arg(i));
    }
    // The reference list does not exist in this program yet: the box stays off.
    find->addWidget(cmbTab1_Find, 0, 0, 1, 2);
    find->addWidget(btnTab1_M_Find, 0, 2);
    find->addWidget(cmbTab1_FindInColumn, 1, 0, 1, 2);
    find->addWidget(chbTab1_Find[0], 2, 0, 1, 3);
    find->addWidget(chbTab1_Find[1], 3, 0, 1, 3);
    find->addWidget(chbTab1_Find[2], 4, 0, 1, 3);
    find->setColumnStretch(1, 1);
    find->setRowStretch(5, 1);
    outer->addWidget(grpFind, 3);

    // ---- filter ----
    auto* grpFilter = new QGroupBox(this);
    grpFilter->setObjectName(QStringLiteral("grpTab1_Filter"));
    auto* filter = new QGridLayout(grpFilter);
    filter->setContentsMargins(8, 6, 8, 6);
    filter->setHorizontalSpacing(6);
    filter->setVerticalSpacing(3);
    const char* labels[4] = {"lblTab1_Filter(0)", "lblTab1_Filter(1)", "lblTab1_Filter(2)",
                             "lblTab1_Filter(3)"};
    for (int i = 0; i < 4; ++i) {
        cmbTab1_Filter[i] = MakeCombo(grpFilter, QStringLiteral("cmbTab1_Filter(%1)").arg(i));
        auto* l = new QLabel(grpFilter);
        l->setObjectName(QString::fromLatin1(labels[i]));
        l->setBuddy(cmbTab1_Filter[i]);
        filter->addWidget(l, i < 2 ? i : 2, i < 3 ? 0 : 2);
    }
    lblTab1_CmbFilter1_Count = MakeCount(grpFilter, QStringLiteral("lblTab1_CmbFilter1_Count"));
    lblTab1_CmbFilter2_Count = MakeCount(grpFilter, QStringLiteral("lblTab1_CmbFilter2_Count"));
    lblTab1_CmbQualityCount = MakeCount(grpFilter, QStringLiteral("lblTab1_CmbQualityCount"));
    chbTab1_AddFilter = new QCheckBox(grpFilter);
    chbTab1_AddFilter->setObjectName(QStringLiteral("chbTab1_AddFilter"));
    btnTab1_FilterMarkChoosen = new QPushButton(grpFilter);
    btnTab1_FilterMarkChoosen->setObjectName(QStringLiteral("btnTab1_FilterMarkChoosen"));
    filter->addWidget(cmbTab1_Filter[0], 0, 1, 1, 3);
    filter->addWidget(lblTab1_CmbFilter1_Count, 0, 4);
    filter->addWidget(cmbTab1_Filter[1], 1, 1, 1, 3);
    filter->addWidget(lblTab1_CmbFilter2_Count, 1, 4);
    cmbTab1_Filter[2]->setMinimumContentsLength(6);
    cmbTab1_Filter[3]->setMinimumContentsLength(6);
    filter->addWidget(cmbTab1_Filter[2], 2, 1);
    filter->addWidget(cmbTab1_Filter[3], 2, 3);
    filter->addWidget(lblTab1_CmbQualityCount, 2, 4);
    filter->addWidget(chbTab1_AddFilter, 3, 0, 1, 3);
    filter->addWidget(btnTab1_FilterMarkChoosen, 3, 3, 1, 2, Qt::AlignRight);
    filter->setColumnStretch(1, 1);
    filter->setColumnStretch(3, 1);
    btnTab1_PlaySelection = new QPushButton(grpFilter);
    btnTab1_PlaySelection->setObjectName(QStringLiteral("btnTab1_PlaySelection"));
    filter->addWidget(btnTab1_PlaySelection, 4, 3, 1, 2, Qt::AlignRight);
    filter->setRowStretch(5, 1);
    outer->addWidget(grpFilter, 4);

    // The visible columns: opened from the find, where a column is chosen too.
    btnTab1_ShowColumns = new QPushButton(grpFind);
    btnTab1_ShowColumns->setObjectName(QStringLiteral("btnTab1_ShowColumns"));
    find->addWidget(btnTab1_ShowColumns, 1, 2);

    RebuildColumnEntries();
    cmbTab1_Find->lineEdit()->setPlaceholderText(Caption(CapFindHint));

    connect(btnTab1_M_Find, &QPushButton::clicked, this, &FindFilterPanel::btnTab1_M_Find_Click);
    connect(cmbTab1_Find->lineEdit(), &QLineEdit::returnPressed, this,
            &FindFilterPanel::btnTab1_M_Find_Click);
    connect(btnTab1_FilterMarkChoosen, &QPushButton::clicked, this,
            &FindFilterPanel::btnTab1_FilterMarkChoosen_Click);
    connect(btnTab1_PlaySelection, &QPushButton::clicked, this,
            &FindFilterPanel::btnTab1_PlaySelection_Click);
    for (int i = 0; i < 4; ++i)
        connect(cmbTab1_Filter[i], &QComboBox::activated, this, [this, i] { cmbTab1_Filter_Change(i); });
    connect(btnTab1_ShowColumns, &QPushButton::clicked, this, [this] {
        FrmShowColumn* w = ShowColumnWindow();
        w->Open();
    });
    // Captions of the columns change with the language: the column lists follow.
    connect(&Grids::LbxInput(), &DataGrid::columnsChanged, this, &FindFilterPanel::RebuildColumnEntries);
}

FrmShowColumn* FindFilterPanel::ShowColumnWindow() {
    if (!m_showColumn)
        m_showColumn = new FrmShowColumn(Grids::LbxInput(), window());
    return m_showColumn;
}

bool FindFilterPanel::NoMsg() const {
    return m_page->chbTab1_NoMsg->isChecked();
}

void FindFilterPanel::RebuildColumnEntries() {
    const DataGrid& g = Grids::LbxInput();
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;

    // Entry 0 all columns, entry n the column n + 2.
    const int findAt = cmbTab1_FindInColumn->currentIndex();
    QStringList findEntries{AllColumnsEntry()};
    for (int c = InCol::FileName; c <= g.Cols(); ++c)
        findEntries << g.Column(c).caption;
    if (cmbTab1_FindInColumn->count() != findEntries.size()) {
        cmbTab1_FindInColumn->clear();
        cmbTab1_FindInColumn->addItems(findEntries);
    } else {
        for (int i = 0; i < findEntries.size(); ++i)
            cmbTab1_FindInColumn->setItemText(i, findEntries[i]);
    }
    cmbTab1_FindInColumn->setCurrentIndex(findAt >= 0 && findAt < findEntries.size() ? findAt : 0);

    const QStringList filterEntries = FilterColumnEntries(g);
    const int filterAt = cmbTab1_Filter[0]->currentIndex();
    if (cmbTab1_Filter[0]->count() != filterEntries.size()) {
        cmbTab1_Filter[0]->clear();
        cmbTab1_Filter[0]->addItems(filterEntries);
    } else {
        for (int i = 0; i < filterEntries.size(); ++i)
            cmbTab1_Filter[0]->setItemText(i, filterEntries[i]);
    }
    cmbTab1_Filter[0]->setCurrentIndex(filterAt);

    cmbTab1_Find->lineEdit()->setPlaceholderText(Caption(CapFindHint));
    State().SuppressEvents = quiet;
}

void FindFilterPanel::btnTab1_M_Find_Click() {
    FindOptions o;
    o.text = cmbTab1_Find->currentText();
    for (int i = 0; i < cmbTab1_Find->count(); ++i)
        o.history << cmbTab1_Find->itemText(i);
    // Shift with the click searches every text of the history at once.
    o.allEntries = QApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    o.column = FindColumnOfEntry(cmbTab1_FindInColumn->currentIndex());
    o.clearMarks = chbTab1_Find[0]->isChecked();
    o.wholeWords = chbTab1_Find[1]->isChecked();
    o.inReferenceList = chbTab1_Find[2]->isEnabled() && chbTab1_Find[2]->isChecked();
    o.noMsg = NoMsg();

    FindResult r;
    {
        WaitCursor wait;
        r = ::btnTab1_M_Find_Click(Grids::LbxInput(), Grids::LbxRef(), o, InputListEnv(m_page, m_progress));
    }
    if (!r.ran) {
        cmbTab1_Find->setFocus();
        cmbTab1_Find->lineEdit()->selectAll();
        return;
    }
    const QString text = o.text;
    if (cmbTab1_Find->findText(text, Qt::MatchFixedString) < 0)
        cmbTab1_Find->addItem(text);
    cmbTab1_Find->setCurrentText(text);
    m_page->LbxInput->table()->setFocus();
}

void FindFilterPanel::FillValues(QComboBox* box, const QStringList& values) {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    const QString was = box->currentText();
    box->clear();
    box->addItem(QString()); // no choice: the criterion is not tested
    box->addItems(values);
    const int at = box->findText(was, Qt::MatchExactly | Qt::MatchCaseSensitive);
    box->setCurrentIndex(at > 0 ? at : 0);
    State().SuppressEvents = quiet;
}

void FindFilterPanel::cmbTab1_Filter_Change(int index) {
    FilterOptions o;
    o.columnIndex = cmbTab1_Filter[0]->currentIndex();
    o.value = cmbTab1_Filter[1]->currentText();
    o.rating = cmbTab1_Filter[2]->currentText();
    o.mood = cmbTab1_Filter[3]->currentText();
    FilterChangeResult r;
    {
        WaitCursor wait;
        r = ::cmbTab1_Filter_Change(Grids::LbxInput(), index, o, InputListEnv(m_page, m_progress));
    }
    if (!r.handled)
        return;
    switch (index) {
    case 0:
        FillValues(cmbTab1_Filter[1], r.values);
        lblTab1_CmbFilter1_Count->setText(r.filter1Count);
        lblTab1_CmbFilter2_Count->clear();
        break;
    case 1:
        lblTab1_CmbFilter2_Count->setText(o.value.isEmpty() ? QString() : r.filter2Count);
        break;
    default: {
        const QString chosen = index == 2 ? o.rating : o.mood;
        lblTab1_CmbQualityCount->setText(chosen.isEmpty() ? QString() : r.qualityCount);
        break;
    }
    }
}

void FindFilterPanel::RebuildQualityLists() {
    const ListEnv env = InputListEnv(m_page, nullptr);
    FillValues(cmbTab1_Filter[2], FilterValueList(Grids::LbxInput(), InCol::Rating, env));
    FillValues(cmbTab1_Filter[3], FilterValueList(Grids::LbxInput(), InCol::Mood, env));
    lblTab1_CmbQualityCount->clear();
}

void FindFilterPanel::SetQualityLists(const QStringList& ratings, const QStringList& moods) {
    FillValues(cmbTab1_Filter[2], ratings);
    FillValues(cmbTab1_Filter[3], moods);
    lblTab1_CmbQualityCount->clear();
}

void FindFilterPanel::ListRefilled() {
    const DataGrid& list = Grids::LbxInput();
    if (list.Rows() == 0 || cmbTab1_Filter[0]->count() == 0)
        return;
    // The first entry and the values of its column; the footers stay as the command
    // left them (an aborted scan leaves them empty).
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    cmbTab1_Filter[0]->setCurrentIndex(0);
    State().SuppressEvents = quiet;
    const QStringList values = FilterValueList(list, ColumnOfFilterIndex(0), InputListEnv(m_page, nullptr));
    FillValues(cmbTab1_Filter[1], values);
    lblTab1_CmbFilter1_Count->setText(QString::number(values.size()));
    lblTab1_CmbFilter2_Count->clear();
}

void FindFilterPanel::btnTab1_FilterMarkChoosen_Click() {
    FilterOptions o;
    o.columnIndex = cmbTab1_Filter[0]->currentIndex();
    o.value = cmbTab1_Filter[1]->currentText();
    o.rating = cmbTab1_Filter[2]->currentText();
    o.mood = cmbTab1_Filter[3]->currentText();
    o.addFilter = chbTab1_AddFilter->isChecked();
    o.noMsg = NoMsg();
    FilterResult r;
    {
        WaitCursor wait;
        r = ::btnTab1_FilterMarkChoosen(Grids::LbxInput(), o, InputListEnv(m_page, m_progress));
    }
    if (r.ran)
        m_page->LbxInput->table()->setFocus();
}

void FindFilterPanel::btnTab1_PlaySelection_Click() {
    // The album file of the two filter values (column and value), through the default handler.
    DataGrid& list = Grids::LbxInput();
    const ListEnv env = InputListEnv(m_page, m_progress);
    if (!env.ListNotEmpty(list))
        return;
    const int column = ColumnOfFilterIndex(cmbTab1_Filter[0]->currentIndex());
    if (column < 1 || cmbTab1_Filter[1]->currentText().isEmpty()) {
        AppPrompt().Tell(Caption(CapNothingChosen), Prompt::Icon::Information);
        return;
    }
    PlayEnv play(AppPrompt());
    play.noMsg = NoMsg();
    PlayAlbum(list, column, cmbTab1_Filter[1]->currentText(), play);
}

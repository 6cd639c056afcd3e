#include "app/DataGridView.h"

#include "app/DataGridModel.h"
#include "app/DataGridWidgets.h"
#include "core/DataGrid.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace {
constexpr int kTwipsPerPixel = 15;
constexpr int kCellPadding = 12; // left and right margin of a cell's text, in pixels
} // namespace

struct DataGridView::Impl {
    DataGridView* q = nullptr;
    DataGrid* grid = nullptr;
    DataGridModel* model = nullptr;
    DataGridTable* table = nullptr;
    DataGridFooter* footer = nullptr;
    QScrollBar* hbar = nullptr; // mirrors the table's own bar, below the footer
    bool applying = false;      // the view itself is setting section sizes
    int sortCol = 0;
    bool headerSort = true;
    int sortOrder = 1;

    void ApplyColumns();
    void RowsReset();
    void SectionResized(int logical, int newSize);
    void SectionMoved();
    void SortByHeader(int logical);
    void AutoSize(int col);
    int MinPixels(int col) const { return grid->Column(col).minWidth / kTwipsPerPixel; }
};

void DataGridView::Impl::ApplyColumns() {
    if (model->columnCount() != grid->Cols())
        model->Reset();
    QHeaderView* h = table->horizontalHeader();
    applying = true;
    for (int c = 1; c <= grid->Cols() && c <= h->count(); ++c) {
        const GridColumn& gc = grid->Column(c);
        table->setColumnHidden(c - 1, !gc.visible);
        const int px = std::max(std::max(gc.width, gc.minWidth) / kTwipsPerPixel, 1);
        if (gc.visible && h->sectionSize(c - 1) != px)
            h->resizeSection(c - 1, px);
    }
    // The order the grid holds (set by code, or reset when columns were added).
    const std::vector<int> order = grid->DisplayOrder();
    if (int(order.size()) == h->count()) {
        for (int visual = 0; visual < h->count(); ++visual) {
            const int from = h->visualIndex(order[std::size_t(visual)] - 1);
            if (from != visual)
                h->moveSection(from, visual);
        }
    }
    applying = false;
    model->HeadersChanged();
    h->viewport()->update();
    footer->update();
}

void DataGridView::Impl::RowsReset() {
    model->Reset();
    ApplyColumns();
    table->ShowCurrentRow(grid->CurRow(), false);
}

void DataGridView::Impl::SectionResized(int logical, int newSize) {
    footer->update();
    const int col = logical + 1;
    if (applying || col > grid->Cols() || table->horizontalHeader()->isSectionHidden(logical) || newSize <= 0)
        return;
    if (newSize < MinPixels(col)) {
        table->horizontalHeader()->resizeSection(logical, MinPixels(col));
        return;
    }
    // The user's width goes straight into the grid, so that ColumnWidthsText and the
    // logic read what the screen shows. No signal: the view is already up to date.
    grid->Column(col).width = newSize * kTwipsPerPixel;
}

void DataGridView::Impl::SectionMoved() {
    footer->update();
    if (applying)
        return;
    // A dragged header: the grid learns the order, so that an export writes what the
    // user sees.
    QHeaderView* h = table->horizontalHeader();
    std::vector<int> order;
    for (int visual = 0; visual < h->count(); ++visual)
        order.push_back(h->logicalIndex(visual) + 1);
    grid->SetDisplayOrder(order);
}

void DataGridView::Impl::SortByHeader(int logical) {
    const int col = logical + 1;
    if (!headerSort || col > grid->Cols())
        return;
    sortOrder = (sortCol == col && sortOrder == 1) ? 2 : 1;
    sortCol = col;
    grid->DoSort(col, sortOrder);
    grid->SetCurRow(grid->Rows() ? 1 : 0);
    table->horizontalHeader()->setSortIndicator(logical,
                                                sortOrder == 1 ? Qt::AscendingOrder : Qt::DescendingOrder);
    table->ShowCurrentRow(grid->CurRow(), true);
}

void DataGridView::Impl::AutoSize(int col) {
    if (col < 1 || col > grid->Cols())
        return;
    const QFontMetrics fm(table->font());
    QFont bold = table->horizontalHeader()->font();
    bold.setBold(true);
    int best = QFontMetrics(bold).horizontalAdvance(grid->Column(col).caption);
    // No text can be wider than its length times the widest glyph: most rows are
    // skipped without being measured.
    const int widest = std::max(fm.maxWidth(), 1);
    // One long name must not push every other column out of sight: the fitted width
    // stops at a third of the view (the user can still widen the column by hand).
    const int cap =
        std::max({std::max(table->viewport()->width(), 900) / 3, MinPixels(col) - kCellPadding, best});
    const int rows = grid->Rows();
    for (int r = 1; r <= rows && best < cap; ++r) {
        const QStringView v = grid->CellView(r, col);
        if (v.isEmpty() || v.size() * widest <= best)
            continue;
        best = std::max(best, fm.horizontalAdvance(v.toString()));
    }
    best = std::min(best, cap);
    grid->SetColumnWidth(col, (best + kCellPadding) * kTwipsPerPixel);
}

DataGridView::DataGridView(DataGrid* grid, QWidget* parent) : QWidget(parent), d(new Impl) {
    d->q = this;
    d->grid = grid;
    d->table = new DataGridTable(grid, this);
    d->table->setObjectName(QStringLiteral("table"));
    d->model = new DataGridModel(grid, this);
    d->table->setModel(d->model);
    d->footer = new DataGridFooter(grid, d->table, this);
    d->footer->setObjectName(QStringLiteral("footer"));
    d->hbar = new QScrollBar(Qt::Horizontal, this);
    d->hbar->setObjectName(QStringLiteral("hbar"));
    d->hbar->hide();
    d->table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusProxy(d->table);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(d->table, 1);
    layout->addWidget(d->footer);
    layout->addWidget(d->hbar);

    // The footer sits between the rows and the horizontal scroll bar; the bar below it
    // mirrors the table's hidden one.
    QScrollBar* inner = d->table->horizontalScrollBar();
    connect(inner, &QScrollBar::rangeChanged, this, [this, inner](int min, int max) {
        d->hbar->setRange(min, max);
        d->hbar->setPageStep(inner->pageStep());
        d->hbar->setSingleStep(inner->singleStep());
        d->hbar->setVisible(max > min);
    });
    connect(inner, &QScrollBar::valueChanged, d->hbar, &QScrollBar::setValue);
    connect(d->hbar, &QScrollBar::valueChanged, inner, &QScrollBar::setValue);
    connect(inner, &QScrollBar::valueChanged, d->footer, qOverload<>(&QWidget::update));

    QHeaderView* h = d->table->horizontalHeader();
    connect(h, &QHeaderView::sectionResized, this,
            [this](int logical, int, int newSize) { d->SectionResized(logical, newSize); });
    connect(h, &QHeaderView::sectionMoved, this, [this] { d->SectionMoved(); });
    connect(h, &QHeaderView::geometriesChanged, d->footer, qOverload<>(&QWidget::update));
    connect(h, &QHeaderView::sectionCountChanged, d->footer, qOverload<>(&QWidget::update));
    connect(h, &QHeaderView::sectionClicked, this, [this](int logical) { d->SortByHeader(logical); });

    connect(grid, &DataGrid::rowsReset, this, [this] { d->RowsReset(); });
    connect(grid, &DataGrid::cellChanged, d->model, &DataGridModel::CellChanged);
    connect(grid, &DataGrid::columnsChanged, this, [this] { d->ApplyColumns(); });
    connect(grid, &DataGrid::footersChanged, d->footer, qOverload<>(&QWidget::update));
    connect(grid, &DataGrid::selectionChanged, d->table->viewport(), qOverload<>(&QWidget::update));
    connect(grid, &DataGrid::currentRowChanged, this, [this](int row) {
        d->table->ShowCurrentRow(row, true);
        emit currentRowChanged(row);
    });
    connect(grid, &DataGrid::autoSizeRequested, this, [this](int col) { d->AutoSize(col); });
    connect(d->table, &DataGridTable::keyPressed, this, &DataGridView::keyPressed);
    connect(d->table, &DataGridTable::rowDoubleClicked, this, &DataGridView::rowDoubleClicked);

    d->ApplyColumns();
    d->table->ShowCurrentRow(grid->CurRow(), false);
}

DataGridView::~DataGridView() {
    delete d;
}

DataGrid* DataGridView::grid() const {
    return d->grid;
}
QTableView* DataGridView::table() const {
    return d->table;
}
QWidget* DataGridView::footer() const {
    return d->footer;
}

QString DataGridView::ColumnWidthsText() const {
    QStringList parts;
    for (int c = 1; c <= d->grid->Cols(); ++c)
        parts << QString::number(d->grid->Column(c).width);
    return parts.join(QLatin1Char(','));
}

void DataGridView::SetColumnWidthsText(const QString& text) {
    const QStringList parts = text.split(QLatin1Char(','));
    bool any = false;
    for (int c = 1; c <= d->grid->Cols() && c <= parts.size(); ++c) {
        bool ok = false;
        const int twips = parts[c - 1].trimmed().toInt(&ok);
        if (!ok || twips <= 0 || twips > 1000000)
            continue; // a damaged entry keeps the column's default
        GridColumn& gc = d->grid->Column(c);
        gc.width = std::max(twips, gc.minWidth);
        any = true;
    }
    if (any)
        d->grid->ColumnsChanged();
}

void DataGridView::SetMinWidthsFromCaptions(int firstCol) {
    QFont bold = d->table->horizontalHeader()->font();
    bold.setBold(true);
    const QFontMetrics fm(bold);
    for (int c = std::max(firstCol, 1); c <= d->grid->Cols(); ++c) {
        GridColumn& gc = d->grid->Column(c);
        gc.minWidth = (fm.horizontalAdvance(gc.caption) + kCellPadding) * kTwipsPerPixel;
        gc.width = std::max(gc.width, gc.minWidth);
    }
    d->grid->ColumnsChanged();
}

int DataGridView::SortColumn() const {
    return d->sortCol;
}

void DataGridView::SetHeaderSort(bool on) {
    d->headerSort = on;
}
int DataGridView::SortOrder() const {
    return d->sortOrder;
}

void DataGridView::SetCellEditing(std::function<bool(int, int)> editable,
                                  std::function<bool(int, int, QString&)> edited) {
    const bool on = editable && edited;
    d->model->SetEditing(std::move(editable), std::move(edited));
    d->table->setEditTriggers(on ? QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                                 : QAbstractItemView::NoEditTriggers);
}

#include "app/DataGridModel.h"

#include "core/DataGrid.h"
#include "platform/PosixFile.h"

#include <QBrush>
#include <QColor>

QColor ColorFromBgr(unsigned bgr) {
    return QColor(int(bgr & 0xFF), int((bgr >> 8) & 0xFF), int((bgr >> 16) & 0xFF));
}

namespace {

Qt::Alignment ToQt(Align a) {
    switch (a) {
    case Align::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case Align::Center:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case Align::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace

DataGridModel::DataGridModel(DataGrid* grid, QObject* parent) : QAbstractTableModel(parent), m_grid(grid) {
    m_rows = grid->Rows();
    m_cols = grid->Cols();
}

int DataGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int DataGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_cols;
}

bool DataGridModel::Valid(int row, int col) const {
    return row >= 1 && col >= 1 && row <= m_grid->Rows() && col <= m_grid->Cols();
}

QVariant DataGridModel::data(const QModelIndex& index, int role) const {
    const int row = index.row() + 1;
    const int col = index.column() + 1;
    if (!index.isValid() || !Valid(row, col))
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
        // A file name that is no valid UTF-8 carries its bytes escaped: shown readably.
        return PosixFile::DisplayName(m_grid->CellText(row, col));
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(ToQt(m_grid->Column(col).align));
    case Qt::BackgroundRole:
        if (m_grid->IsSelected(row))
            return QBrush(ColorFromBgr(m_grid->highlightColor));
        return {};
    case Qt::ForegroundRole:
        // The highlight is a pale colour: text stays dark on it whatever the palette.
        if (m_grid->IsSelected(row))
            return QBrush(QColor(Qt::black));
        return {};
    default:
        return {};
    }
}

QVariant DataGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        if (role == Qt::DisplayRole)
            return section + 1;
        return {};
    }
    const int col = section + 1;
    if (col < 1 || col > m_grid->Cols())
        return {};
    const GridColumn& c = m_grid->Column(col);
    switch (role) {
    case Qt::DisplayRole:
        return c.caption;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(ToQt(c.align));
    case Qt::BackgroundRole:
        if (c.headerColor != kNoColor)
            return QBrush(ColorFromBgr(c.headerColor));
        return {};
    default:
        return {};
    }
}

Qt::ItemFlags DataGridModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (IsEditable(index.row() + 1, index.column() + 1))
        f |= Qt::ItemIsEditable;
    return f;
}

void DataGridModel::SetEditing(EditableFn editable, EditedFn edited) {
    m_editable = std::move(editable);
    m_edited = std::move(edited);
}

bool DataGridModel::IsEditable(int row, int col) const {
    return m_editable && m_edited && Valid(row, col) && m_editable(row, col);
}

bool DataGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const int row = index.row() + 1;
    const int col = index.column() + 1;
    if (role != Qt::EditRole || !index.isValid() || !IsEditable(row, col))
        return false;
    QString text = value.toString();
    if (text == m_grid->CellText(row, col))
        return false; // left unchanged: nothing to do
    if (!m_edited(row, col, text))
        return false;
    if (Valid(row, col))
        m_grid->SetCellText(row, col, text);
    return true;
}

void DataGridModel::Reset() {
    beginResetModel();
    m_rows = m_grid->Rows();
    m_cols = m_grid->Cols();
    endResetModel();
}

void DataGridModel::HeadersChanged() {
    if (m_cols > 0)
        emit headerDataChanged(Qt::Horizontal, 0, m_cols - 1);
}

void DataGridModel::CellChanged(int row, int col) {
    if (row < 1 || col < 1 || row > m_rows || col > m_cols)
        return;
    const QModelIndex i = index(row - 1, col - 1);
    emit dataChanged(i, i);
}

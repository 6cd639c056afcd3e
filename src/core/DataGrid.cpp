#include "core/DataGrid.h"

#include <QDate>
#include <algorithm>
#include <limits>
#include <numeric>
#include <stdexcept>

DataGrid::DataGrid(QObject* parent) : QObject(parent) {}
DataGrid::~DataGrid() = default;

// ---- helpers -----------------------------------------------------------------------

// Loops over all rows wait mostly for memory, as each row lives in its own block. This
// asks for the block of a row some steps ahead, and for the cell of a row a little less
// far ahead, whose offsets have arrived by then.
void DataGrid::PrefetchCell(const std::vector<Row>& rows, std::size_t r, std::size_t n, std::size_t col) {
    constexpr std::size_t kFar = 16, kNear = 8;
    if (r + kFar < n)
        __builtin_prefetch(rows[r + kFar].data.constData());
    if (r + kNear < n) {
        const Row& ahead = rows[r + kNear];
        if (col < ahead.cells) {
            const QChar* p = ahead.data.constData() + ahead.TextStart() + (col ? ahead.End(col - 1) : 0);
            __builtin_prefetch(p);
        }
    }
}

void DataGrid::CheckRow(int row) const {
    if (row < 1 || row > Rows())
        throw std::out_of_range("DataGrid: row out of range");
}

void DataGrid::CheckCol(int col) const {
    if (col < 1 || col > Cols())
        throw std::out_of_range("DataGrid: column out of range");
}

DataGrid::Row DataGrid::MakeRow(const QStringList& cells, const QString& key) {
    // Trailing empty cells cost nothing to leave out.
    qsizetype n = cells.size();
    while (n > 0 && cells[n - 1].isEmpty())
        --n;
    qsizetype total = 0;
    for (qsizetype i = 0; i < n; ++i)
        total += cells[i].size();
    Row r;
    r.cells = std::uint32_t(n);
    r.keyLen = std::uint32_t(key.size());
    r.data = QString(2 * n + key.size() + total, Qt::Uninitialized);
    QChar* out = r.data.data();
    std::memcpy(static_cast<void*>(out + 2 * n), key.constData(), std::size_t(key.size()) * sizeof(QChar));
    QChar* text = out + 2 * n + key.size();
    std::uint32_t pos = 0;
    for (qsizetype i = 0; i < n; ++i) {
        std::memcpy(static_cast<void*>(text + pos), cells[i].constData(),
                    std::size_t(cells[i].size()) * sizeof(QChar));
        pos += std::uint32_t(cells[i].size());
        r.SetEnd(std::size_t(i), pos);
    }
    return r;
}

void DataGrid::NoteRowsChanged() {
    m_selCacheValid = false;
    if (m_locked)
        m_pendingRows = true;
    else
        emit rowsReset();
}

void DataGrid::NoteSelectionChanged() {
    m_selCacheValid = false;
    if (m_locked)
        m_pendingSel = true;
    else
        emit selectionChanged();
}

void DataGrid::NoteColumnsChanged() {
    if (m_locked)
        m_pendingCols = true;
    else
        emit columnsChanged();
}

void DataGrid::NoteFootersChanged() {
    if (m_locked)
        m_pendingFooters = true;
    else
        emit footersChanged();
}

// ---- columns -----------------------------------------------------------------------

int DataGrid::AddColumn(const QString& key, const QString& caption, int widthTwips, Align align, bool visible,
                        SortType sortType) {
    GridColumn c;
    c.key = key;
    c.caption = caption;
    c.width = widthTwips;
    c.align = align;
    c.visible = visible;
    c.sortType = sortType;
    m_columns.push_back(c);
    m_displayOrder.clear();
    NoteColumnsChanged();
    return Cols();
}

const GridColumn& DataGrid::Column(int col) const {
    CheckCol(col);
    return m_columns[col - 1];
}

GridColumn& DataGrid::Column(int col) {
    CheckCol(col);
    return m_columns[col - 1];
}

void DataGrid::ColumnsChanged() {
    NoteColumnsChanged();
}

int DataGrid::ColumnByKey(const QString& key) const {
    for (int i = 0; i < Cols(); ++i)
        if (m_columns[i].key == key)
            return i + 1;
    return 0;
}

void DataGrid::SetColumnCaption(int col, const QString& caption) {
    Column(col).caption = caption;
    NoteColumnsChanged();
}

void DataGrid::SetColumnVisible(int col, bool visible) {
    if (Column(col).visible == visible)
        return;
    Column(col).visible = visible;
    NoteColumnsChanged();
}

void DataGrid::SetColumnWidth(int col, int widthTwips) {
    Column(col).width = std::max(widthTwips, Column(col).minWidth);
    NoteColumnsChanged();
}

QString DataGrid::FooterText(int col) const {
    return Column(col).footerText;
}

void DataGrid::SetFooterText(int col, const QString& text) {
    if (Column(col).footerText == text)
        return;
    Column(col).footerText = text;
    NoteFootersChanged();
}

void DataGrid::ClearFooters() {
    for (auto& c : m_columns)
        c.footerText.clear();
    NoteFootersChanged();
}

void DataGrid::RemoveAllColumns() {
    m_columns.clear();
    m_displayOrder.clear();
    NoteColumnsChanged();
}

std::vector<int> DataGrid::DisplayOrder() const {
    if (m_displayOrder.size() == m_columns.size())
        return m_displayOrder;
    std::vector<int> natural(m_columns.size());
    for (std::size_t i = 0; i < natural.size(); ++i)
        natural[i] = int(i) + 1;
    return natural;
}

void DataGrid::SetDisplayOrder(const std::vector<int>& order) {
    m_displayOrder.clear();
    if (order.size() != m_columns.size())
        return;
    std::vector<bool> seen(order.size(), false);
    for (int c : order) {
        if (c < 1 || c > Cols() || seen[std::size_t(c - 1)])
            return;
        seen[std::size_t(c - 1)] = true;
    }
    m_displayOrder = order;
}

// ---- rows --------------------------------------------------------------------------

int DataGrid::AddItem(const QString& tabSeparatedCells, const QString& key) {
    return AddRow(tabSeparatedCells.split(QLatin1Char('\t')), key);
}

int DataGrid::AddRow(const QStringList& cells, const QString& key) {
    const int n = Rows() + 1;
    m_rows.push_back(MakeRow(cells, key.isEmpty() ? QString::number(n) + QLatin1Char('k') : key));
    NoteRowsChanged();
    return n;
}

int DataGrid::InsertRow(int row, const QStringList& cells, const QString& key) {
    if (row < 1 || row > Rows() + 1)
        throw std::out_of_range("DataGrid: insert position out of range");
    const QString k = key.isEmpty() ? QString::number(Rows() + 1) + QLatin1Char('k') : key;
    m_rows.insert(m_rows.begin() + (row - 1), MakeRow(cells, k));
    if (m_curRow >= row)
        ++m_curRow;
    NoteRowsChanged();
    return row;
}

void DataGrid::DeleteRow(int row) {
    CheckRow(row);
    if (m_rows[row - 1].selected)
        --m_selCount;
    m_rows.erase(m_rows.begin() + (row - 1));
    if (m_curRow > Rows())
        m_curRow = Rows();
    NoteRowsChanged();
    m_selCacheValid = false;
}

int DataGrid::DeleteSelected() {
    const auto before = m_rows.size();
    m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(), [](const Row& r) { return r.selected; }),
                 m_rows.end());
    m_selCount = 0;
    if (m_curRow > Rows())
        m_curRow = Rows();
    const int removed = int(before - m_rows.size());
    if (removed) {
        NoteRowsChanged();
        NoteSelectionChanged();
    }
    return removed;
}

void DataGrid::Clear() {
    m_rows.clear();
    m_rows.shrink_to_fit();
    m_selCount = 0;
    m_curRow = 0;
    NoteRowsChanged();
    NoteSelectionChanged();
}

void DataGrid::MoveRow(int from, int to) {
    CheckRow(from);
    CheckRow(to);
    if (from == to)
        return;
    Row r = std::move(m_rows[from - 1]);
    m_rows.erase(m_rows.begin() + (from - 1));
    m_rows.insert(m_rows.begin() + (to - 1), std::move(r));
    NoteRowsChanged();
}

QStringView DataGrid::CellView(int row, int col) const {
    CheckRow(row);
    CheckCol(col);
    return m_rows[std::size_t(row - 1)].Cell(std::size_t(col - 1));
}

QString DataGrid::CellText(int row, int col) const {
    return CellView(row, col).toString();
}

void DataGrid::SetCellText(int row, int col, const QString& text) {
    CheckRow(row);
    CheckCol(col);
    Row& r = m_rows[std::size_t(row - 1)];
    const std::size_t i = std::size_t(col - 1);
    if (i >= r.cells) {
        if (text.isEmpty())
            return;
        // Room for the offsets of the new (empty) cells up to this one.
        const std::uint32_t end = r.TextSize();
        const std::size_t more = i + 1 - r.cells;
        r.data.insert(qsizetype(2 * std::size_t(r.cells)), QString(qsizetype(2 * more), QChar()));
        r.cells = std::uint32_t(i + 1);
        for (std::size_t k = i + 1 - more; k <= i; ++k)
            r.SetEnd(k, end);
    }
    const std::uint32_t begin = i ? r.End(i - 1) : 0;
    const std::uint32_t oldLen = r.End(i) - begin;
    if (r.Cell(i) == text)
        return;
    r.data.replace(qsizetype(r.TextStart() + begin), qsizetype(oldLen), text);
    const std::int64_t delta = std::int64_t(text.size()) - std::int64_t(oldLen);
    for (std::size_t k = i; k < r.cells; ++k)
        r.SetEnd(k, std::uint32_t(std::int64_t(r.End(k)) + delta));
    if (m_locked)
        m_pendingRows = true;
    else
        emit cellChanged(row, col);
}

QStringList DataGrid::RowCells(int row) const {
    QStringList out;
    out.reserve(Cols());
    for (int c = 1; c <= Cols(); ++c)
        out << CellText(row, c);
    return out;
}

void DataGrid::SetRowCells(int row, const QStringList& cells) {
    CheckRow(row);
    Row& r = m_rows[row - 1];
    Row n = MakeRow(cells, r.Key().toString());
    n.selected = r.selected;
    r = std::move(n);
    if (m_locked)
        m_pendingRows = true;
    else
        emit rowsReset();
}

QString DataGrid::RowKey(int row) const {
    CheckRow(row);
    return m_rows[std::size_t(row - 1)].Key().toString();
}

void DataGrid::SetRowKey(int row, const QString& key) {
    CheckRow(row);
    Row& r = m_rows[std::size_t(row - 1)];
    r.data.replace(qsizetype(2 * std::size_t(r.cells)), qsizetype(r.keyLen), key);
    r.keyLen = std::uint32_t(key.size());
}

// ---- selection ---------------------------------------------------------------------

int DataGrid::SelCount() const {
    return m_selCount;
}

std::vector<int> DataGrid::SelectedRows() const {
    if (!m_selCacheValid) {
        m_selCache.clear();
        m_selCache.reserve(std::size_t(m_selCount));
        for (int i = 0; i < Rows(); ++i)
            if (m_rows[i].selected)
                m_selCache.push_back(i + 1);
        m_selCacheValid = true;
    }
    return m_selCache;
}

int DataGrid::SelRow(int i) const {
    if (!m_selCacheValid)
        (void)SelectedRows();
    if (i < 1 || i > int(m_selCache.size()))
        throw std::out_of_range("DataGrid: selection index out of range");
    return m_selCache[std::size_t(i - 1)];
}

bool DataGrid::IsSelected(int row) const {
    CheckRow(row);
    return m_rows[row - 1].selected;
}

void DataGrid::SetSelected(int row, bool selected) {
    CheckRow(row);
    Row& r = m_rows[row - 1];
    if (r.selected == selected)
        return;
    r.selected = selected;
    m_selCount += selected ? 1 : -1;
    NoteSelectionChanged();
}

void DataGrid::SelectRange(int first, int last, bool selected) {
    if (first > last)
        std::swap(first, last);
    first = std::max(first, 1);
    last = std::min(last, Rows());
    bool changed = false;
    for (int i = first; i <= last; ++i) {
        Row& r = m_rows[i - 1];
        if (r.selected != selected) {
            r.selected = selected;
            m_selCount += selected ? 1 : -1;
            changed = true;
        }
    }
    if (changed)
        NoteSelectionChanged();
}

void DataGrid::SelectAll() {
    SelectRange(1, Rows(), true);
}
void DataGrid::ClearSelection() {
    SelectRange(1, Rows(), false);
}

void DataGrid::InvertSelection() {
    for (Row& r : m_rows)
        r.selected = !r.selected;
    m_selCount = Rows() - m_selCount;
    NoteSelectionChanged();
}

void DataGrid::SetCurRow(int row) {
    if (row < 0 || row > Rows())
        row = Rows() ? 1 : 0;
    if (row == m_curRow)
        return;
    m_curRow = row;
    if (!m_locked)
        emit currentRowChanged(row);
}

// ---- repaint control ---------------------------------------------------------------

void DataGrid::LockUpdate(bool locked) {
    if (locked == m_locked)
        return;
    m_locked = locked;
    if (!locked)
        Refresh();
}

void DataGrid::Refresh() {
    if (m_locked)
        return;
    if (m_pendingCols) {
        m_pendingCols = false;
        emit columnsChanged();
    }
    if (m_pendingRows) {
        m_pendingRows = false;
        emit rowsReset();
    }
    if (m_pendingSel) {
        m_pendingSel = false;
        emit selectionChanged();
    }
    if (m_pendingFooters) {
        m_pendingFooters = false;
        emit footersChanged();
    }
    emit currentRowChanged(m_curRow);
}

// ---- numbers -----------------------------------------------------------------------

double DataGrid::NumericPrefix(QStringView t) {
    qsizetype i = 0;
    const qsizetype n = t.size();
    while (i < n && (t[i] == u' ' || t[i] == u'\t'))
        ++i;
    bool neg = false;
    if (i < n && (t[i] == u'-' || t[i] == u'+')) {
        neg = t[i] == u'-';
        ++i;
    }
    double v = 0;
    while (i < n && t[i] >= u'0' && t[i] <= u'9')
        v = v * 10 + (t[i++].unicode() - u'0');
    if (i < n && t[i] == u'.') {
        ++i;
        double f = 0.1;
        while (i < n && t[i] >= u'0' && t[i] <= u'9') {
            v += f * (t[i++].unicode() - u'0');
            f /= 10;
        }
    }
    return neg ? -v : v;
}

double DataGrid::NumberSortKey(QStringView t) {
    qsizetype i = 0;
    const qsizetype n = t.size();
    while (i < n && (t[i] == u' ' || t[i] == u'\t'))
        ++i;
    bool neg = false;
    if (i < n && (t[i] == u'-' || t[i] == u'+')) {
        neg = t[i] == u'-';
        ++i;
    }
    auto digit = [&](qsizetype k) { return k < n && t[k] >= u'0' && t[k] <= u'9'; };
    if (!digit(i)) {
        // No number at all: sorts before every number.
        return -1e300;
    }
    double v = 0;
    for (;;) {
        while (digit(i))
            v = v * 10 + (t[i++].unicode() - u'0');
        // A separator followed by exactly three digits groups thousands.
        if (i < n && (t[i] == u'.' || t[i] == u',') && digit(i + 1) && digit(i + 2) && digit(i + 3) &&
            !digit(i + 4)) {
            ++i;
            continue;
        }
        break;
    }
    if (i < n && (t[i] == u'.' || t[i] == u',') && digit(i + 1)) {
        ++i;
        double f = 0.1;
        while (digit(i)) {
            v += f * (t[i++].unicode() - u'0');
            f /= 10;
        }
    }
    return neg ? -v : v;
}

qint64 DataGrid::DateSortKey(QStringView t) {
    // dd.MM.yyyy, read by hand: QDate::fromString per cell is slow on 100,000 rows.
    t = t.trimmed();
    if (t.size() < 10)
        return std::numeric_limits<qint64>::min();
    auto num = [&](qsizetype from, qsizetype len) {
        int v = 0;
        for (qsizetype k = from; k < from + len; ++k) {
            if (t[k] < u'0' || t[k] > u'9')
                return -1;
            v = v * 10 + (t[k].unicode() - u'0');
        }
        return v;
    };
    const int d = num(0, 2), m = num(3, 2), y = num(6, 4);
    if (d < 0 || m < 0 || y < 0 || t[2] != u'.' || t[5] != u'.')
        return std::numeric_limits<qint64>::min();
    return qint64(y) * 10000 + m * 100 + d;
}

// ---- sort and find -----------------------------------------------------------------

void DataGrid::DoSort(const QString& columns, int order) {
    std::vector<int> cols;
    for (const QString& part : columns.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        bool ok = false;
        const int c = part.trimmed().toInt(&ok);
        if (ok && c >= 1 && c <= Cols())
            cols.push_back(c);
    }
    if (cols.empty() || m_rows.size() < 2)
        return;
    const bool desc = order == 2;
    const std::size_t n = m_rows.size();

    // One key per row and sort column, made once: numbers and dates as doubles, text
    // case-folded into one buffer. Each text key also keeps 4 folded characters behind
    // the prefix that all rows share (a music folder, say) packed into one number:
    // most comparisons end there, without touching the texts.
    struct Key {
        SortType type;
        std::vector<double> num;
        std::u16string folded;           // all folded texts back to back
        std::vector<std::uint32_t> ends; // end of each row's text in `folded`
        std::vector<std::uint64_t> head; // 4 characters from `common` on
        std::size_t common = 0;
        QStringView Text(std::uint32_t r) const {
            const std::uint32_t b = r ? ends[r - 1] : 0;
            return QStringView(folded.data() + b, qsizetype(ends[r] - b));
        }
    };
    std::vector<Key> keys(cols.size());
    for (std::size_t k = 0; k < cols.size(); ++k) {
        keys[k].type = m_columns[std::size_t(cols[k] - 1)].sortType;
        if (keys[k].type == SortType::Text) {
            keys[k].folded.reserve(n * 24);
            keys[k].ends.resize(n);
        } else {
            keys[k].num.resize(n);
        }
    }
    // One pass over the rows, all keys of a row at once: a row is read from memory once.
    for (std::size_t r = 0; r < n; ++r) {
        const Row& row = m_rows[r];
        for (int c : cols)
            PrefetchCell(m_rows, r, n, std::size_t(c - 1));
        for (std::size_t k = 0; k < cols.size(); ++k) {
            Key& key = keys[k];
            const QStringView v = row.Cell(std::size_t(cols[k] - 1));
            if (key.type == SortType::Text) {
                for (QChar ch : v) {
                    const char16_t u = ch.unicode();
                    if (u < 0x80)
                        key.folded.push_back((u >= u'A' && u <= u'Z') ? char16_t(u + 32) : u);
                    else
                        key.folded.push_back(ch.toCaseFolded().unicode());
                }
                key.ends[r] = std::uint32_t(key.folded.size());
            } else {
                key.num[r] = key.type == SortType::Number ? NumberSortKey(v) : double(DateSortKey(v));
            }
        }
    }
    for (Key& key : keys) {
        if (key.type != SortType::Text)
            continue;
        const QStringView first = key.Text(0);
        std::size_t common = std::size_t(first.size());
        for (std::uint32_t r = 1; r < n && common > 0; ++r) {
            const QStringView t = key.Text(r);
            std::size_t i = 0;
            const std::size_t m = std::min(common, std::size_t(t.size()));
            while (i < m && t[qsizetype(i)] == first[qsizetype(i)])
                ++i;
            common = i;
        }
        key.common = common;
        key.head.resize(n);
        for (std::uint32_t r = 0; r < n; ++r) {
            const QStringView t = key.Text(r);
            std::uint64_t h = 0;
            for (std::size_t i = 0; i < 4; ++i) {
                const std::size_t at = common + i;
                h = (h << 16) | (at < std::size_t(t.size()) ? t[qsizetype(at)].unicode() : 0u);
            }
            key.head[r] = h;
        }
    }
    std::vector<std::uint32_t> perm(n);
    std::iota(perm.begin(), perm.end(), 0u);
    // Stable: rows with equal keys keep their order, in both directions.
    std::stable_sort(perm.begin(), perm.end(), [&](std::uint32_t a, std::uint32_t b) {
        for (const Key& k : keys) {
            int cmp;
            if (k.type == SortType::Text) {
                if (k.head[a] != k.head[b]) {
                    cmp = k.head[a] < k.head[b] ? -1 : 1;
                } else {
                    const QStringView x = k.Text(a), y = k.Text(b);
                    const qsizetype from = qsizetype(
                        std::min<std::size_t>(k.common + 4, std::size_t(std::min(x.size(), y.size()))));
                    cmp = x.sliced(from).compare(y.sliced(from), Qt::CaseSensitive);
                }
            } else {
                cmp = k.num[a] < k.num[b] ? -1 : (k.num[a] > k.num[b] ? 1 : 0);
            }
            if (cmp != 0)
                return desc ? cmp > 0 : cmp < 0;
        }
        return false;
    });
    keys.clear();
    std::vector<Row> sorted;
    sorted.reserve(n);
    for (std::uint32_t i : perm)
        sorted.push_back(std::move(m_rows[i]));
    m_rows = std::move(sorted);
    NoteRowsChanged();
}

void DataGrid::DoColumnAutoSize(int col) {
    CheckCol(col);
    // Estimate for a grid without a view: about 105 twips (7 pixels) per character.
    qsizetype longest = Column(col).caption.size();
    for (int r = 1; r <= Rows(); ++r)
        longest = std::max(longest, CellView(r, col).size());
    Column(col).width = std::max(int(longest * 105 + 150), Column(col).minWidth);
    NoteColumnsChanged();
    emit autoSizeRequested(col);
}

namespace {

// Simple case folding as the case-insensitive compare of QString does it, one UTF-16
// unit at a time, with ASCII kept on the fast path.
inline char16_t Fold(char16_t u) {
    if (u < 0x80)
        return (u >= u'A' && u <= u'Z') ? char16_t(u + 32) : u;
    return QChar(u).toCaseFolded().unicode();
}

// Whether `hay` contains `needle` (already folded), without regard to case.
bool ContainsFolded(QStringView hay, QStringView needle) {
    const qsizetype m = needle.size();
    const qsizetype last = hay.size() - m;
    if (last < 0)
        return false;
    const char16_t* h = hay.utf16();
    const char16_t* nd = needle.utf16();
    const char16_t first = nd[0];
    for (qsizetype i = 0; i <= last; ++i) {
        if (Fold(h[i]) != first)
            continue;
        qsizetype j = 1;
        while (j < m && Fold(h[i + j]) == nd[j])
            ++j;
        if (j == m)
            return true;
    }
    return false;
}

} // namespace

int DataGrid::FindRow(const QString& text, int col, int start, bool exact) const {
    if (col < 1 || col > Cols())
        return 0;
    const std::size_t i = std::size_t(col - 1);
    const QString folded = text.toCaseFolded();
    const std::size_t n = m_rows.size();
    for (int r = std::max(start, 1); r <= Rows(); ++r) {
        PrefetchCell(m_rows, std::size_t(r - 1), n, i);
        // Read the cell in place: no range checks in this loop over all rows.
        const QStringView v = m_rows[std::size_t(r - 1)].Cell(i);
        if (exact) {
            // Case folding keeps the length of every UTF-16 unit: different lengths never match.
            if (v.size() == text.size() && v.compare(text, Qt::CaseInsensitive) == 0)
                return r;
        } else if (folded.isEmpty() || ContainsFolded(v, folded)) {
            return r;
        }
    }
    return 0;
}

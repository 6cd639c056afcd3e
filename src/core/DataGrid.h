#pragma once
// DataGrid: the one table of the program. Text cells, 1-based rows and columns, a
// multi-row selection, a current row and per-column footers. It needs no window: a
// view (src/app/DataGridView) shows it and follows its signals.
//
// Rows are stored compactly (one allocation per row: cell end offsets, key and cells)
// because the data list holds up to 200,000 rows of 71 cells. A row may hold fewer cells than the
// grid has columns; the missing cells read as empty.

#include <QObject>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <cstdint>
#include <cstring>
#include <vector>

enum class Align { Left = 0, Right = 1, Center = 2 };
enum class SortType { Text = 0, Number = 1, Date = 2 };

// A colour as the settings and the old grid keep it: 0xBBGGRR. kNoColor = default.
using BgrColor = std::uint32_t;
constexpr BgrColor kNoColor = 0xFFFFFFFFu;

struct GridColumn {
    QString key;
    QString caption;
    int width = 1200; // twips (pixels = twips / 15)
    int minWidth = 0; // twips; the view never makes the column narrower
    Align align = Align::Left;
    bool visible = true;
    SortType sortType = SortType::Text;
    QString footerText;
    BgrColor headerColor = kNoColor;
};

class DataGrid : public QObject {
    Q_OBJECT
public:
    explicit DataGrid(QObject* parent = nullptr);
    ~DataGrid() override;

    // ---- columns -------------------------------------------------------------------
    int Cols() const { return int(m_columns.size()); }
    // Appends a column and returns its number. Width in twips.
    int AddColumn(const QString& key, const QString& caption, int widthTwips = 1200,
                  Align align = Align::Left, bool visible = true, SortType sortType = SortType::Text);
    const GridColumn& Column(int col) const;
    GridColumn& Column(int col); // call ColumnsChanged() after editing through this
    void ColumnsChanged();
    int ColumnByKey(const QString& key) const; // 0 when absent
    void SetColumnCaption(int col, const QString& caption);
    void SetColumnVisible(int col, bool visible);
    void SetColumnWidth(int col, int widthTwips);
    QString FooterText(int col) const;
    void SetFooterText(int col, const QString& text);
    void ClearFooters();
    void RemoveAllColumns(); // rows stay, cells beyond the new columns are dropped on the next write
    // The order in which the columns are shown (column numbers, left to right): the
    // grid's own order until a view moves a column. Exports write in this order.
    std::vector<int> DisplayOrder() const;
    // Taken only when it holds every column exactly once; anything else restores the
    // grid's own order.
    void SetDisplayOrder(const std::vector<int>& order);

    // ---- rows and cells ------------------------------------------------------------
    int Rows() const { return int(m_rows.size()); }
    // Appends a row from tab-separated cells. An empty key gives the default key
    // "<n>k" (n = the row count after adding). Returns the new row number.
    int AddItem(const QString& tabSeparatedCells, const QString& key = QString());
    int AddRow(const QStringList& cells, const QString& key = QString());
    // Inserts before `row` (1..Rows()+1).
    int InsertRow(int row, const QStringList& cells, const QString& key = QString());
    void DeleteRow(int row);
    int DeleteSelected(); // returns the number of rows removed
    void Clear();         // rows go, columns stay
    void MoveRow(int from, int to);

    QString CellText(int row, int col) const;
    QStringView CellView(int row, int col) const; // valid until the row changes
    void SetCellText(int row, int col, const QString& text);
    QStringList RowCells(int row) const; // exactly Cols() cells
    void SetRowCells(int row, const QStringList& cells);
    QString RowKey(int row) const;
    void SetRowKey(int row, const QString& key);

    // ---- selection and current row -------------------------------------------------
    int SelCount() const;
    int SelRow(int i) const; // i from 1 to SelCount(), ascending row order
    std::vector<int> SelectedRows() const;
    bool IsSelected(int row) const;
    void SetSelected(int row, bool selected);
    void SelectAll();
    void ClearSelection();
    void InvertSelection();
    void SelectRange(int first, int last, bool selected);
    int CurRow() const { return m_curRow; } // 0 = none
    void SetCurRow(int row);

    // ---- repaint control -----------------------------------------------------------
    // While locked, the grid tells its views nothing; Refresh() or LockUpdate(false)
    // sends one reset for everything that changed meanwhile.
    void LockUpdate(bool locked);
    bool IsLocked() const { return m_locked; }
    void Refresh();

    // ---- sort and find -------------------------------------------------------------
    // `columns` is a comma list of column numbers ("7,3"); order 1 ascending,
    // 2 descending. Stable; each column compares by its own sort type.
    void DoSort(const QString& columns, int order);
    void DoSort(int column, int order) { DoSort(QString::number(column), order); }
    // Asks the views to fit the column to its content; without a view the width is
    // estimated from the longest text.
    void DoColumnAutoSize(int col);
    // First row from `start` whose cell in `col` equals (exact) or contains the text,
    // compared without regard to case. 0 when none.
    int FindRow(const QString& text, int col, int start = 1, bool exact = true) const;

    // ---- persistence (docs/grid-format.md) -----------------------------------------
    bool SaveFile(const QString& path) const;
    // keepColumns: the grid keeps its own column definitions and takes only rows and
    // cells from the file (used for saved lists). A grid without columns always takes
    // the file's columns. Without keepColumns the file's definitions replace the grid's,
    // but a load never removes columns: those beyond the file's stay, with empty cells.
    // A failed load (false, reason in LastFileError) leaves the grid as it was.
    bool LoadFile(const QString& path, bool keepColumns = false);
    QString LastFileError() const { return m_lastFileError; }

    // ---- free slots ----------------------------------------------------------------
    QString Tag; // "edited", "changes", ...
    BgrColor highlightColor = 0xC0FFFF;

    // Number parse used by sums and the number sort: leading blanks, an optional sign,
    // digits and one decimal point; anything after that is ignored ("3 [Lrc]" -> 3).
    static double NumericPrefix(QStringView text);
    // Sort key of a number cell: like NumericPrefix, but a '.' or ',' followed by
    // exactly three digits is taken as a thousands separator, so "1.234" and "1,234"
    // both sort as 1234.
    static double NumberSortKey(QStringView text);
    // "dd.MM.yyyy" as a day count; cells that are no date sort first.
    static qint64 DateSortKey(QStringView text);

signals:
    void rowsReset(); // rows were added, removed, reordered or many cells changed
    void cellChanged(int row, int col);
    void columnsChanged(); // definitions, captions, widths, visibility
    void footersChanged();
    void selectionChanged();
    void currentRowChanged(int row);
    void autoSizeRequested(int col);

private:
    // One row in a single allocation, since a list holds up to 200,000 of them: the end
    // offsets of its cells (two UTF-16 units each), then the key, then the cells back to
    // back. Trailing empty cells need not be stored.
    struct Row {
        QString data;
        std::uint32_t cells = 0;  // stored cells
        std::uint32_t keyLen = 0; // UTF-16 units of the key
        bool selected = false;

        std::uint32_t End(std::size_t i) const {
            std::uint32_t v;
            std::memcpy(&v, data.constData() + 2 * i, sizeof v);
            return v;
        }
        void SetEnd(std::size_t i, std::uint32_t v) {
            std::memcpy(static_cast<void*>(data.data() + 2 * i), &v, sizeof v);
        }
        std::size_t TextStart() const { return 2 * std::size_t(cells) + keyLen; }
        std::uint32_t TextSize() const { return cells ? End(cells - 1) : 0; }
        QStringView Key() const {
            return QStringView(data.constData() + 2 * std::size_t(cells), qsizetype(keyLen));
        }
        QStringView Cell(std::size_t i) const {
            if (i >= cells)
                return {};
            const std::uint32_t begin = i ? End(i - 1) : 0;
            return QStringView(data.constData() + TextStart() + begin, qsizetype(End(i) - begin));
        }
    };
    friend class GridFile;

    static Row MakeRow(const QStringList& cells, const QString& key);
    static void PrefetchCell(const std::vector<Row>& rows, std::size_t r, std::size_t n, std::size_t col);
    void CheckRow(int row) const;
    void CheckCol(int col) const;
    void NoteRowsChanged();
    void NoteSelectionChanged();
    void NoteColumnsChanged();
    void NoteFootersChanged();

    std::vector<GridColumn> m_columns;
    std::vector<int> m_displayOrder; // empty: the grid's own order
    std::vector<Row> m_rows;
    int m_curRow = 0;
    bool m_locked = false;
    bool m_pendingRows = false, m_pendingSel = false, m_pendingCols = false, m_pendingFooters = false;
    mutable int m_selCount = 0;
    mutable bool m_selCacheValid = true;
    mutable std::vector<int> m_selCache;
    mutable QString m_lastFileError;
};

#include "picture/modLinkList.h"

#include "core/DataGrid.h"
#include "picture/PictureColumns.h"
#include "platform/PosixFile.h"

void EnsureLinkListColumns(DataGrid& links) {
    static const char* const keys[LinkCol::Count] = {"Picture", "Reserved1", "Text", "Song", "Reserved2"};
    while (links.Cols() < LinkCol::Count)
        links.AddColumn(QString::fromLatin1(keys[links.Cols()]), QString());
}

int FindLinkRow(const DataGrid& links, const QString& picturePath) {
    if (links.Cols() < 1 || picturePath.isEmpty())
        return 0;
    for (int r = 1; r <= links.Rows(); ++r)
        if (links.CellView(r, LinkCol::Picture) == picturePath)
            return r;
    return 0;
}

QHash<QString, int> LinkListIndex(const DataGrid& links) {
    QHash<QString, int> index;
    if (links.Cols() < 1)
        return index;
    index.reserve(links.Rows());
    for (int r = links.Rows(); r >= 1; --r) // the first row of a path wins
        index.insert(links.CellText(r, LinkCol::Picture), r);
    return index;
}

QString LinkCellPath(const DataGrid& links, int row, int col) {
    if (row < 1 || row > links.Rows() || col > links.Cols())
        return QString();
    const QString v = links.CellText(row, col);
    return v == u"/" || v == u"\\" ? QString() : v;
}

void SetPictureLink(DataGrid& links, const QString& picturePath, int col, const QString& value) {
    EnsureLinkListColumns(links);
    int row = FindLinkRow(links, picturePath);
    if (row == 0) {
        if (value.isEmpty())
            return;
        QStringList cells(LinkCol::Count);
        cells[LinkCol::Picture - 1] = picturePath;
        row = links.AddRow(cells);
    }
    links.SetCellText(row, col, value);
    if (LinkCellPath(links, row, LinkCol::Text).isEmpty() &&
        LinkCellPath(links, row, LinkCol::Song).isEmpty())
        links.DeleteRow(row);
}

int PurgeLinkList(DataGrid& links) {
    if (links.Cols() < 1)
        return 0;
    int removed = 0;
    links.LockUpdate(true);
    for (int row = links.Rows(); row >= 1; --row) {
        const QString file = links.CellText(row, 1);
        if (!file.isEmpty() && !PosixFile::ExistsFollowed(file)) {
            links.DeleteRow(row);
            ++removed;
        }
    }
    links.LockUpdate(false);
    links.Refresh();
    return removed;
}

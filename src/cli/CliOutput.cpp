#include "cli/CliCommands.h"
#include "core/DataGrid.h"
#include "platform/PosixFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

void Out(const QString& text) {
    const QByteArray bytes = PosixFile::Native(text); // names with their own bytes
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fputc('\n', stdout);
}

void Err(const QString& text) {
    const QByteArray bytes = PosixFile::Native(text); // names with their own bytes
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    std::fputc('\n', stderr);
}

void PrintGridRows(const DataGrid& g, const QStringList& keys, int lastRow, bool json) {
    if (json) {
        QJsonArray rows;
        for (int row = 1; row <= lastRow; ++row) {
            QJsonObject o;
            for (int c = 1; c <= keys.size(); ++c)
                o.insert(keys[c - 1], g.CellText(row, c));
            rows.append(o);
        }
        Out(QString::fromUtf8(QJsonDocument(rows).toJson(QJsonDocument::Indented)).trimmed());
        return;
    }
    Out(keys.join(u'\t'));
    for (int row = 1; row <= lastRow; ++row)
        Out(g.RowCells(row).mid(0, keys.size()).join(u'\t'));
}

#pragma once
// A program folder of its own for a test: qlt.ini, Caption.qlt and the folder temp in a
// temporary directory that becomes AppPath() for the test's life.

#include "core/AppPaths.h"
#include "core/Captions.h"
#include "core/DataGrid.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QPair>
#include <QTemporaryDir>

class ProgramFolder {
public:
    ProgramFolder() { SetAppPath(dir.path()); }
    ~ProgramFolder() { SetAppPath(QString()); }

    QString path() const { return dir.path(); }
    QString file(const QString& name) const { return dir.filePath(name); }

    // qlt.ini with 8 columns and 1000 rows and the given cells (row, column) -> text.
    bool WriteIni(const QMap<QPair<int, int>, QString>& cells = {}, int rows = 1000) const {
        DataGrid g;
        for (int c = 1; c <= 8; ++c)
            g.AddColumn(QStringLiteral("C%1").arg(c), QString());
        for (int r = 1; r <= rows; ++r)
            g.AddRow({});
        for (auto it = cells.begin(); it != cells.end(); ++it)
            g.SetCellText(it.key().first, it.key().second, it.value());
        return g.SaveFile(file(QStringLiteral("qlt.ini")));
    }

    // The caption file with German and English texts per row; `name` may be spelled
    // "caption.qlt".
    bool WriteCaptions(const QMap<int, QPair<QString, QString>>& rows,
                       const QString& name = QStringLiteral("Caption.qlt")) const {
        DataGrid g;
        g.AddColumn(QStringLiteral("No"), QString());
        g.AddColumn(QStringLiteral("Note"), QString());
        g.AddColumn(QStringLiteral("Deutsch"), QStringLiteral("Deutsch"));
        g.AddColumn(QStringLiteral("English"), QStringLiteral("English"));
        for (int r = 1; r <= kCaptionRowCount; ++r)
            g.AddRow({QString::number(r)});
        for (auto it = rows.begin(); it != rows.end(); ++it) {
            g.SetCellText(it.key(), 3, it.value().first);
            g.SetCellText(it.key(), 4, it.value().second);
        }
        return g.SaveFile(file(name));
    }

    static QMap<int, QPair<QString, QString>> StandardCaptions() {
        return {
            {1, {QStringLiteral("Nr."), QStringLiteral("No.")}},
            {60, {QStringLiteral("Soll das Programm beendet werden?"), QStringLiteral("Close the program?")}},
            {96, {QStringLiteral("Die Liste ist leer."), QStringLiteral("The list is empty.")}},
            {102, {QStringLiteral("Keine Zeile markiert."), QStringLiteral("No row selected.")}},
            {533, {QStringLiteral("Notiz"), QStringLiteral("Note")}},
            {1032, {QStringLiteral("Trotzdem beenden?"), QStringLiteral("Close anyway?")}},
            {1350, {QStringLiteral("Text nicht gespeichert."), QStringLiteral("Text not saved.")}},
            {1372, {QStringLiteral("Summen ..."), QStringLiteral("Sums ...")}},
            {1384, {QStringLiteral("Links nicht gespeichert."), QStringLiteral("Links not saved.")}}};
    }

    bool WriteStandard() const {
        QDir(path()).mkpath(QStringLiteral("temp"));
        return WriteIni() && WriteCaptions(StandardCaptions());
    }

    QByteArray Read(const QString& name) const {
        QFile f(file(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    QTemporaryDir dir;
};

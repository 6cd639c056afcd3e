#pragma once
// The byte writers of the export formats. Each writes a whole document into an open
// device and returns false when the device refuses a write.

#include <QString>

class ExportTable;
class QFileDevice;
class QIODevice;

bool WriteTextExport(const ExportTable& table, QIODevice& out, QChar delimiter, bool csv,
                     const QString& title, const QString& extra);
bool WriteXmlExport(const ExportTable& table, QIODevice& out, const QString& title, const QString& extra);
bool WriteHtmlExport(const ExportTable& table, QIODevice& out, const QString& title, const QString& language);
// Needs a seekable file: sheet positions are written back once they are known.
bool WriteXlsExport(const ExportTable& table, QFileDevice& out, const QString& sheetName,
                    const QString& extra);

// A valid XML element name made from a column caption: letters, digits, "_", "-" and
// "." are kept, anything else becomes "_"; a name that cannot start an element gets a
// leading "_"; an empty result is "Column".
QString XmlElementName(const QString& caption);

#pragma once
// Messages of the file layer, the saved lists and the exports that have no row of
// their own in the caption table yet. Each entry names its row once the row exists;
// until then it carries its German and English text (the lines of
// resources/pending/files.tsv) and follows LanguageColumn().

#include <QString>

enum class FileText {
    AskReplace,        // a copy meets a file of the same name in the target
    AskTrash,          // confirm moving a file to the trash
    AskDelete,         // confirm deleting a file for good
    ExportWriteFailed, // an export file could not be written
};

QString FileTextOf(FileText text);

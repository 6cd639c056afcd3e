#pragma once
// Messages of the file layer and the exports, by meaning.

#include <QString>

enum class FileText {
    AskReplace,        // a copy meets a file of the same name in the target
    AskTrash,          // confirm moving a file to the trash
    AskDelete,         // confirm deleting a file for good
    ExportWriteFailed, // an export file could not be written
};

QString FileTextOf(FileText text);

#include "file/ftcFileTexts.h"

#include "core/CaptionRows.h"

QString FileTextOf(FileText text) {
    switch (text) {
    case FileText::AskReplace:
        return Caption(CapFileReplaceQuestion);
    case FileText::AskTrash:
        return Caption(CapFileTrashQuestion);
    case FileText::AskDelete:
        return Caption(CapFileDeleteQuestion);
    case FileText::ExportWriteFailed:
        return Caption(CapExportWriteFailed);
    }
    return QString();
}

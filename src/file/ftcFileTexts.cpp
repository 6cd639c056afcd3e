#include "file/ftcFileTexts.h"

#include "core/Captions.h"

namespace {

struct Entry {
    CaptionRow row; // 0 while the caption table has no row for the text
    const char* german;
    const char* english;
};

const Entry& EntryOf(FileText text) {
    static const Entry entries[] = {
        {0, "Im Zielordner gibt es bereits eine Datei mit diesem Namen. Soll sie ersetzt werden?",
         "A file with this name already exists in the target folder. Do you want to replace it?"},
        {0, "Soll diese Datei in den Papierkorb verschoben werden?",
         "Do you want to move this file to the trash?"},
        {0, "Soll diese Datei endgültig gelöscht werden?", "Do you want to delete this file permanently?"},
        {0, "Die Exportdatei konnte nicht geschrieben werden.", "The export file could not be written."},
    };
    return entries[int(text)];
}

} // namespace

QString FileTextOf(FileText text) {
    const Entry& e = EntryOf(text);
    if (e.row > 0) {
        const QString s = Caption(e.row);
        if (!s.isEmpty())
            return s;
    }
    return QString::fromUtf8(LanguageColumn() == kLanguageGerman ? e.german : e.english);
}

#include "core/Startup.h"

#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "platform/PosixFile.h"

#include <QDir>
#include <QFileInfo>

namespace {
template <typename F> void Run(const F& f) {
    if (f)
        f();
}

// The picture link list as the start found it: whether a close may write it, and the
// message about a file that could not be read (shown once the window can show it).
struct LinkListState {
    bool writable = true;
    bool loaded = false;
    QString note;
};
LinkListState& LinkList() {
    static LinkListState state;
    return state;
}

// Closing goes on whatever one step does.
template <typename F> void Guarded(const F& f) {
    try {
        f();
    } catch (...) {
    }
}
} // namespace

QString StartMessage(StartCheck failure) {
    const QString tail = QStringLiteral("Ohne diese Datei kann das Programm nicht ausgeführt werden.");
    const QString tailEn = QStringLiteral("Without this file the program could not be executed.");
    QString de, en;
    switch (failure) {
    case StartCheck::MissingIni:
        de = QStringLiteral("Die Datei 'qlt.ini' wurde nicht gefunden.");
        en = QStringLiteral("The file 'qlt.ini' was not found.");
        break;
    case StartCheck::MissingCaption:
        de = QStringLiteral("Die Datei 'caption.qlt' wurde nicht gefunden.");
        en = QStringLiteral("The file 'caption.qlt' was not found.");
        break;
    case StartCheck::UnreadableIni:
        de = QStringLiteral("Die Datei 'qlt.ini' konnte nicht gelesen werden.");
        en = QStringLiteral("The file 'qlt.ini' could not be read.");
        break;
    case StartCheck::Ok:
        return QString();
    }
    return de + u'\n' + tail + QStringLiteral("\n\n") + en + u'\n' + tailEn;
}

StartCheck CheckFiles(Prompt& prompt) {
    StartCheck result = StartCheck::Ok;
    if (!QFileInfo(SettingsFilePath()).isFile())
        result = StartCheck::MissingIni;
    else if (CaptionFilePath().isEmpty())
        result = StartCheck::MissingCaption;
    else if (!LoadSettings())
        result = StartCheck::UnreadableIni;
    if (result != StartCheck::Ok) {
        prompt.Tell(StartMessage(result), Prompt::Icon::Critical);
        return result;
    }
    FileTypeNames(); // the table of type names is built here
    return StartCheck::Ok;
}

std::vector<LanguageEntry> AvailableLanguages() {
    std::vector<LanguageEntry> out;
    const DataGrid& t = CaptionTable();
    if (t.Rows() < 1)
        return out;
    for (int c = kLanguageGerman; c <= t.Cols(); ++c) {
        if (t.CellText(1, c).isEmpty())
            continue;
        QString name = t.Column(c).caption;
        if (name.isEmpty())
            name = t.Column(c).key;
        out.push_back({c, name});
    }
    return out;
}

std::vector<LanguageEntry> GetLanguage() {
    std::vector<LanguageEntry> langs = AvailableLanguages();
    bool ok = false;
    const int stored = Setting(Ini::Language, Ini::Col1).trimmed().toInt(&ok);
    // A stored column that holds no language (its import was erased, say) would leave
    // every text empty: German stands in then.
    int column = kLanguageGerman;
    for (const LanguageEntry& l : langs)
        if (ok && l.column == stored)
            column = stored;
    SetLanguageColumn(column);
    return langs;
}

void DefineSettingsLists() {
    DefineLinkList();
    DefineRatingList();
    // The picture link list comes in when the picture window first loads (or when the
    // close needs it), see EnsureLinkListLoaded.
    LinkList() = {};
}

bool SaveLinkList() {
    if (!LinkList().writable)
        return false;
    return Grids::LbxPic_LinkToPic().SaveFile(LinkListFilePath());
}

void EnsureLinkListLoaded(Prompt& prompt) {
    if (LinkList().loaded)
        return;
    LinkList().loaded = true;
    // The link list is rewritten at every close: load what stands on disk, so that a
    // close never writes an empty list over it. A file that is there but can't be read
    // is kept: it goes aside under a new name, and the close never writes an empty list
    // over a file that was not loaded.
    const QString links = LinkListFilePath();
    if (!QFileInfo::exists(links) || Grids::LbxPic_LinkToPic().LoadFile(links))
        return;
    QString aside = links + QStringLiteral(".unreadable");
    for (int n = 2; PosixFile::Exists(aside) && n < 1000; ++n)
        aside = PosixFile::NumberedName(links + QStringLiteral(".unreadable"), n);
    const bool moved = PosixFile::RenameNoReplace(links, aside) == 0;
    LinkList().writable = moved;
    LinkList().note = Caption(CapReadFailed) + QStringLiteral("\n") + QDir::toNativeSeparators(links);
    if (moved)
        LinkList().note += QStringLiteral("\n-> ") + QDir::toNativeSeparators(aside);
    prompt.Tell(LinkList().note, Prompt::Icon::Warning);
}

void ApplySettingsDefaults() {
    ApplyNumberDigitsDefault();
}

StartCheck StartProgram(Prompt& prompt, const StartupSteps& s) {
    Run(s.createTagEngine);
    const StartCheck check = CheckFiles(prompt);
    if (check != StartCheck::Ok)
        return check;
    LoadCaptionTable(); // the first touch of the caption table loads it
    const std::vector<LanguageEntry> langs = GetLanguage();
    if (s.fillLanguageChooser)
        s.fillLanguageChooser(langs);
    SetCaptionTableHeaders(); // step 4: headers in the language now chosen
    Run(s.selectFirstMainTab);
    DefineSettingsLists();
    Run(s.defineGrids);
    if (!State().SuppressEvents)
        Run(s.setCaptions);
    ApplySettingsDefaults();
    Run(s.applySettings);
    Run(s.resetTabsAndRedraw);
    Run(s.fillTextInTagChooser);
    Run(s.showWindow);
    Run(s.removeFocusRects);
    Run(s.selectFirstDrive);
    SaveSettings(); // a start always rewrites the settings file
    return StartCheck::Ok;
}

QString LinkListFilePath() {
    return AppFile(QStringLiteral("lnkpic.qlt"));
}

int EmptyTempFolder() {
    QDir temp(AppFile(QStringLiteral("temp")));
    if (!temp.exists())
        return 0;
    int failed = 0;
    const QFileInfoList files = temp.entryInfoList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QFileInfo& fi : files) {
        if (!QFile::remove(fi.absoluteFilePath()))
            ++failed;
    }
    return failed;
}

bool QuitProgram(int& alreadyAsked, int force, Prompt& prompt, const QuitSteps& s) {
    if (alreadyAsked == 0 && force == 0) {
        if (!prompt.AskYesNo(Caption(CapQuitQuestion), true, Prompt::Icon::Question))
            return false;
        alreadyAsked = -1;
    }
    if (Grids::LbxSText().Tag == u"edited") {
        if (!prompt.AskYesNo(Caption(CapSyncTextUnsaved) + QStringLiteral("\n\n") +
                                 Caption(CapQuitAnywayQuestion),
                             false, Prompt::Icon::Question))
            return false;
    }
    if (Grids::LbxPic_Extern().Tag == u"changes") {
        if (!prompt.AskYesNo(Caption(CapPicLinksUnsaved) + QStringLiteral("\n\n") +
                                 Caption(CapQuitAnywayQuestion),
                             false, Prompt::Icon::Question))
            return false;
    }
    State().SuppressEvents = true; // never cleared again: the program is closing

    Guarded([] { WriteLinkListToSettings(); });
    Guarded([] { SaveSettings(); });
    Guarded([&] { EnsureLinkListLoaded(prompt); });
    Guarded([&] {
        if (SettingOn(Ini::PurgeLinklist, Ini::Col1) && s.purgeLinkList)
            s.purgeLinkList();
    });
    Guarded([] {
        if (LinkList().writable)
            Grids::LbxPic_LinkToPic().SaveFile(LinkListFilePath());
    });
    Guarded([] { EmptyTempFolder(); });
    Guarded([&] { Run(s.closeMedia); });
    Guarded([&] { Run(s.unloadForms); });
    return true;
}

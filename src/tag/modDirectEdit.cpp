#include "tag/modDirectEdit.h"

#include "tag/modTagJournal.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/ftcFileOps.h"
#include "list/InputColumns.h"
#include "list/ftcNames.h"
#include "platform/PosixFile.h"
#include "tag/TagEngine.h"

#include <array>

namespace {

using TF = TagField;

constexpr std::array<TF, 7> kV1 = {TF::V1Genre, TF::V1Year,  TF::V1Track,  TF::V1Artist,
                                   TF::V1Title, TF::V1Album, TF::V1Comment};
constexpr std::array<TF, 6> kV2 = {TF::V2Genre,  TF::V2Year,  TF::V2Track,
                                   TF::V2Artist, TF::V2Title, TF::V2Album};
constexpr std::array<TF, 8> kV2Links = {TF::V2Composer,     TF::V2Conductor, TF::V2Orchestra,
                                        TF::V2OrigArtist,   TF::V2Copyright, TF::V2EncodedBy,
                                        TF::V2PublisherUrl, TF::V2AudFileUrl};
constexpr std::array<TF, 8> kApe = {TF::ApeGenre, TF::ApeYear,  TF::ApeTrack,   TF::ApeArtist,
                                    TF::ApeTitle, TF::ApeAlbum, TF::ApeComment, TF::ApeCopyright};
constexpr std::array<TF, 8> kLyrics = {TF::LyricsGenre, TF::LyricsArtist, TF::LyricsTitle, TF::LyricsAlbum,
                                       TF::LyricsExtra, TF::LyricsAuthor, TF::LyricsLink,  TF::LyricsLyric};

} // namespace

void WriteCellToTag(TagEngine& engine, int column, const QString& text, const QString& path, bool& failed) {
    failed = false;
    const int type = engine.OpenFile(path);
    if (type == 0) {
        failed = true;
        return;
    }
    int result = 1;
    if (column >= 15 && column <= 21) {
        engine.SetField(kV1[std::size_t(column - 15)], text);
        result = engine.SaveV1(path);
    } else if (column >= 22 && column <= 27) {
        engine.SetField(kV2[std::size_t(column - 22)], text);
        result = engine.SaveV2(path);
    } else if (column >= 29 && column <= 36) {
        engine.SetField(kV2Links[std::size_t(column - 29)], text);
        result = engine.SaveV2(path);
    } else if (column >= 37 && column <= 44) {
        engine.SetField(kApe[std::size_t(column - 37)], text);
        result = engine.SaveApe(path);
    } else if (column >= 45 && column <= 52) {
        engine.SetField(kLyrics[std::size_t(column - 45)], text);
        result = engine.SaveLyrics(path);
    } else if (column >= 53 && column <= 66) {
        const TagSet set = TypicalSetOfType(type);
        if (const TagField* fields = TypicalFields(set)) {
            engine.SetField(fields[column - 53], text);
            result = engine.Save(set, path);
        }
    }
    failed = result <= 0;
}

bool DirectEditColumn(int column) {
    if (column >= InCol::FTag && column <= InCol::Title)
        return true;
    return column >= 15 && column <= 67 && column != InCol::TagComment && column != InCol::TagAnzLyrics &&
           column != InCol::TagAnzPic;
}

bool CheckEditedFileName(QString& text, Prompt& prompt) {
    if (!text.right(4).contains(u'.')) {
        prompt.Tell(Caption(CapNameNeedsExtension), Prompt::Icon::Critical);
        return false;
    }
    if (!text.contains(u'-') &&
        !prompt.AskYesNo(Caption(CapNameWithoutHyphen) + u'\n' + Caption(CapContinueQuestion), true,
                         Prompt::Icon::Question))
        return false;
    if (!text.contains(QStringLiteral(" - "))) {
        // "Artist -Title" and "Artist-Title" get their blanks; "Artist- Title" goes by the
        // plain rule and keeps its own blank as well.
        if (text.contains(QStringLiteral(" -")))
            text.replace(QStringLiteral(" -"), QStringLiteral(" - "));
        else if (text.contains(u'-'))
            text.replace(QStringLiteral("-"), QStringLiteral(" - "));
    }
    return true;
}

bool DirectEditCell(DataGrid& list, int row, int column, QString& text, bool escaped, TagEngine& engine,
                    Prompt& prompt, bool* listChanged, const QString& journalPath) {
    if (row < 1 || row > list.Rows())
        return false;
    if (column == InCol::FileName && !CheckEditedFileName(text, prompt))
        return false;
    if (escaped)
        return false;
    const QString folder = list.CellText(row, InCol::Path);
    const QString oldPath = folder + u'/' + list.CellText(row, InCol::FileName);
    if (column == InCol::FileName) {
        if (text == list.CellText(row, InCol::FileName))
            return true;
        QString finalPath;
        if (text.contains(u'/') || RenameFile(oldPath, folder + u'/' + text, &finalPath) != 0) {
            prompt.Tell(Caption(CapRenameFailedCell), Prompt::Icon::Critical);
            return false;
        }
        text = finalPath.mid(finalPath.lastIndexOf(u'/') + 1);
        QString base, ext, artist, title, number;
        SplitExtension(text, base, ext);
        SplitArtistTitle(base, artist, title);
        if (!artist.isEmpty() && artist[0].isDigit())
            StripArtistNumber(artist, number, 0);
        list.SetCellText(row, InCol::Artist, artist);
        list.SetCellText(row, InCol::Title, title);
        if (listChanged)
            *listChanged = true;
        return true;
    }
    if (column < 15 || column > 67)
        return true;
    if (column >= InCol::TagComposer && column <= InCol::TagAudFileUrl && text.startsWith(u'/') &&
        !PosixFile::ExistsFollowed(text) &&
        !prompt.AskYesNo(Caption(CapFileNotFound) + u'\n' + Caption(CapCheckPath) + u'\n' +
                             Caption(CapKeepTextQuestion),
                         false, Prompt::Icon::Question))
        return false;
    bool failed = false;
    TagJournalRecorder journal(journalPath);
    if (!journalPath.isEmpty() && engine.OpenFile(oldPath) != 0)
        journal.Before(engine, oldPath);
    WriteCellToTag(engine, column, text, oldPath, failed);
    journal.After(oldPath);
    if (failed) {
        prompt.Tell(Caption(CapTagWriteFailed), Prompt::Icon::Information);
        return false;
    }
    return true;
}

bool LinkToTag(DataGrid& list, int row, const QString& link, TagEngine& engine, Prompt& prompt) {
    if (row < 1 || row > list.Rows())
        return false;
    const QString path = InputRowPath(list, row);
    if (engine.OpenFile(path) == 0) {
        prompt.Tell(engine.LastError(), Prompt::Icon::Critical);
        return false;
    }
    engine.SetV2AudFileUrl(link);
    if (engine.SaveV2(path) <= 0) {
        prompt.Tell(engine.LastError(), Prompt::Icon::Critical);
        return false;
    }
    list.SetCellText(row, InCol::TagAudFileUrl, link);
    return true;
}

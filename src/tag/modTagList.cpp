#include "tag/modTagList.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/RowKeys.h"
#include "tag/TagEngine.h"

using F = TagField;

// ---- fields behind the boxes ------------------------------------------------------------

const std::vector<TagField>& V1BoxFields() {
    static const std::vector<TagField> f{F::V1Year,  F::V1Track, F::V1Artist,
                                         F::V1Title, F::V1Album, F::V1Comment};
    return f;
}

const std::vector<TagField>& V2BoxFields() {
    static const std::vector<TagField> f{F::V2Year,       F::V2Track,     F::V2Artist,    F::V2Title,
                                         F::V2Album,      F::V2Composer,  F::V2Conductor, F::V2Orchestra,
                                         F::V2OrigArtist, F::V2Copyright, F::V2EncodedBy, F::V2PublisherUrl,
                                         F::V2AudFileUrl};
    return f;
}

const std::vector<TagField>& ApeBoxFields() {
    static const std::vector<TagField> f{F::ApeYear,  F::ApeTrack,   F::ApeArtist,   F::ApeTitle,
                                         F::ApeAlbum, F::ApeComment, F::ApeCopyright};
    return f;
}

const std::vector<TagField>& LyricsBoxFields() {
    static const std::vector<TagField> f{F::LyricsArtist, F::LyricsTitle, F::LyricsAlbum, F::LyricsInfo,
                                         F::LyricsAuthor, F::LyricsLink,  F::LyricsLyric};
    return f;
}

const std::vector<TagField>& TypicalBoxFields(int type) {
    // The WMA boxes follow the window's own order; FLAC, OGG, MP4 and WAV the order of the
    // data list's typical columns without the genre.
    static const std::vector<TagField> wma{F::WmaYear,   F::WmaTrack,   F::WmaArtist, F::WmaTitle,
                                           F::WmaAlbum,  F::WmaComment, F::WmaExtra1, F::WmaExtra2,
                                           F::WmaExtra3, F::WmaExtra4,  F::WmaExtra6, F::WmaExtra5,
                                           F::WmaExtra8, F::WmaRating,  F::WmaMood};
    static const std::array<std::vector<TagField>, 10> byType = [] {
        std::array<std::vector<TagField>, 10> boxes;
        for (int t = 0; t < 10; ++t) {
            if (const TagField* f = TypicalFields(TypicalSetOfType(t)))
                boxes[size_t(t)].assign(f + 1, f + kTypicalFieldCount);
        }
        return boxes;
    }();
    if (type == 2)
        return wma;
    return byType[type >= 0 && type < 10 ? size_t(type) : 0];
}

bool TypicalGenreField(int type, TagField* field) {
    const TagField* f = TypicalFields(TypicalSetOfType(type));
    if (!f)
        return false;
    *field = f[0];
    return true;
}

// ---- the list -------------------------------------------------------------------------

void DefineTagList(DataGrid& lbxTag) {
    if (lbxTag.Cols() >= TagCol::Count)
        return;
    lbxTag.RemoveAllColumns();
    lbxTag.AddColumn(QStringLiteral("No"), QString(), 500, Align::Right, false, SortType::Number);
    lbxTag.AddColumn(QStringLiteral("FTag"), QString(), 1200, Align::Left, true);
    lbxTag.AddColumn(QStringLiteral("FileName"), QString(), 5000, Align::Left, true);
    lbxTag.AddColumn(QStringLiteral("Type"), QString(), 600, Align::Left, false);
    lbxTag.AddColumn(QStringLiteral("Path"), QString(), 6000, Align::Left, false);
    lbxTag.AddColumn(QStringLiteral("KeyInput"), QString(), 0, Align::Left, false);
    SetTagListCaptions(lbxTag);
}

void SetTagListCaptions(DataGrid& lbxTag) {
    // the headers of the same columns of the data list
    const int rows[] = {InCol::FTag, InCol::FileName, InCol::Type, InCol::Path};
    const int cols[] = {TagCol::FTag, TagCol::FileName, TagCol::Type, TagCol::Path};
    for (int i = 0; i < 4; ++i)
        if (cols[i] <= lbxTag.Cols())
            lbxTag.SetColumnCaption(cols[i], Caption(kInputColumns[size_t(rows[i] - 1)].captionRow));
}

QString TagRowPath(const DataGrid& lbxTag, int row) {
    return lbxTag.CellText(row, TagCol::Path) + QLatin1Char('/') + lbxTag.CellText(row, TagCol::FileName);
}

QString NormaliseTypeText(const QString& typeText) {
    if (typeText.compare(QLatin1String("mpeg"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("MP3");
    return typeText;
}

static bool SameType(QStringView cell, const QString& typeText) {
    return cell.compare(typeText, Qt::CaseInsensitive) == 0;
}

LoadTagResult LoadTagList(DataGrid& lbxInput, DataGrid& lbxTag, LoadTagRequest& request, Prompt& prompt) {
    DefineTagList(lbxTag);
    SetTagListCaptions(lbxTag);
    if (lbxInput.Rows() == 0) {
        prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return LoadTagResult::Ended;
    }
    request.typeText = NormaliseTypeText(request.typeText);
    const QString& type = request.typeText;

    if (lbxInput.SelCount() == 0) {
        if (prompt.AskYesNo(Caption(CapTakeAllRowsQuestion))) {
            lbxInput.SelectAll();
        } else {
            const int cur = lbxInput.CurRow();
            if (cur < 1 || cur > lbxInput.Rows() || !SameType(lbxInput.CellView(cur, InCol::Type), type))
                return LoadTagResult::Ended;
            lbxInput.SetSelected(cur, true);
        }
    }

    bool anyOfType = false;
    for (int i = 1; i <= lbxInput.SelCount() && !anyOfType; ++i)
        anyOfType = SameType(lbxInput.CellView(lbxInput.SelRow(i), InCol::Type), type);
    if (!anyOfType) {
        prompt.Tell(Caption(CapNoRowOfType) + QLatin1Char('\n') + Caption(CapSelectOneType),
                    Prompt::Icon::Information);
        return LoadTagResult::Ended;
    }

    if (lbxTag.Rows() > 0) {
        if (!prompt.AskYesNo(Caption(CapReplaceTagListQuestion)))
            return LoadTagResult::KeptList;
        lbxTag.Clear();
        if (request.clearBoxes)
            request.clearBoxes();
    }

    const QString& filter = request.markFilter;
    lbxInput.LockUpdate(true);
    lbxTag.LockUpdate(true);
    const int total = lbxInput.SelCount();
    const std::vector<int> rows = lbxInput.SelectedRows();
    int done = 0;
    for (int row : rows) {
        ++done;
        if (request.progress && (done % 50 == 0 || done == total))
            request.progress(done, total);
        if (!filter.isEmpty() && lbxInput.CellView(row, InCol::FTag) != filter)
            continue;
        if (!SameType(lbxInput.CellView(row, InCol::Type), type))
            continue;
        lbxTag.AddRow({QString(), QString(), lbxInput.CellText(row, InCol::FileName), QString(),
                       lbxInput.CellText(row, InCol::Path), lbxInput.RowKey(row)});
    }
    lbxTag.LockUpdate(false);
    lbxInput.LockUpdate(false);
    lbxTag.Refresh();
    lbxInput.Refresh();
    lbxTag.SetFooterText(TagCol::FileName, QString::number(lbxTag.Rows()));
    if (lbxTag.Rows() > 0)
        lbxTag.SetCurRow(1);
    return LoadTagResult::Loaded;
}

// ---- ReadTagRow -----------------------------------------------------------------------

int V1GenreComboIndex(int code, int genreCount) {
    if (code < 0 || code >= genreCount || code == 255)
        return 0;
    return code + 1;
}

void ReadRatingMood(const TagEngine& engine, QString* rating, QString* mood) {
    const int n = engine.UserFrameCount();
    for (int i = 1; i <= n; ++i) {
        const QString text = engine.UserFrameText(i);
        if (text.startsWith(QLatin1String("QLT")))
            *rating = text.mid(3);
        else if (text.startsWith(QLatin1String("MOOD")))
            *mood = text.mid(4);
    }
}

static bool TypeIn(int t, std::initializer_list<int> types) {
    for (int x : types)
        if (x == t)
            return true;
    return false;
}

TagRowValues ReadTagRow(TagEngine& engine, const QString& path) {
    TagRowValues v;
    const int t = engine.OpenFile(path);
    v.type = t;
    if (t == 0)
        return v;
    v.opened = true;

    if (TypeIn(t, {1, 4, 6, 7}) && engine.HasV1()) {
        v.v1GenreIndex = V1GenreComboIndex(engine.V1GenreCode(), engine.GenreCount());
        const auto& f = V1BoxFields();
        for (size_t i = 0; i < f.size(); ++i)
            v.v1[i + 1] = engine.Field(f[i]);
    }
    if (TypeIn(t, {1, 3, 4, 5, 6, 7, 8}) && engine.HasV2()) {
        v.v2Genre = engine.V2Genre();
        const auto& f = V2BoxFields();
        for (size_t i = 0; i < f.size(); ++i)
            v.v2[i] = engine.Field(f[i]);
        ReadRatingMood(engine, &v.v2[13], &v.v2[14]);
        v.commentCount = engine.CommentCount();
        if (v.commentCount > 0) {
            v.commentItem = 1;
            v.commentLanguage = engine.CommentLanguage(1);
            v.commentDescription = engine.CommentDescription(1);
            v.commentText = engine.CommentText(1);
        }
        v.hasComment = !v.commentText.isEmpty();
    }
    if (TypeIn(t, {1, 4, 6, 7}) && engine.HasApe()) {
        v.apeGenre = engine.ApeGenre();
        const auto& f = ApeBoxFields();
        for (size_t i = 0; i < f.size(); ++i)
            v.ape[i] = engine.Field(f[i]);
    }
    if (TypeIn(t, {1, 7}) && engine.HasLyrics()) {
        v.lyricsGenre = engine.LyricsGenre();
        const auto& f = LyricsBoxFields();
        for (size_t i = 0; i < f.size(); ++i)
            v.lyrics[i] = engine.Field(f[i]);
    }
    TagField genre;
    if (TypicalGenreField(t, &genre)) {
        v.typicalGenre = engine.Field(genre);
        const auto& f = TypicalBoxFields(t);
        for (size_t i = 0; i < f.size(); ++i)
            v.typical[i] = engine.Field(f[i]);
    }
    return v;
}

TagRowValues ReadTagRow(TagEngine& engine, const DataGrid& lbxTag, int row) {
    if (row < 1 || row > lbxTag.Rows())
        return {};
    return ReadTagRow(engine, TagRowPath(lbxTag, row));
}

// ---- SetTabsForType -------------------------------------------------------------------

UpdateSet UpdateOptionFromSetting(const QString& text) {
    const QString s = text.trimmed();
    if (s.size() == 1 && s[0] >= QLatin1Char('1') && s[0] <= QLatin1Char('5'))
        return UpdateSet(s[0].unicode() - '0');
    for (int i = 0; i < 5 && i < s.size(); ++i)
        if (s[i] == QLatin1Char('1'))
            return UpdateSet(i + 1);
    return UpdateSet::None;
}

QString UpdateOptionToSetting(UpdateSet set) {
    QString s(5, QLatin1Char('0'));
    const int n = int(set);
    if (n >= 1 && n <= 5)
        s[n - 1] = QLatin1Char('1');
    return s;
}

TabsForType SetTabsForType(const QString& typeText, const QString& updateOption) {
    TabsForType r;
    const QString t = NormaliseTypeText(typeText).toUpper();
    // Both forms of the row: "00001" and the lone number "5".
    const bool typicalOn = UpdateOptionFromSetting(updateOption) == UpdateSet::Typical;
    if (t == QLatin1String("MP3") || t == QLatin1String("MPP")) {
        r.tabEnabled = {true, true, true, true, false};
        r.tab4Caption = Caption(CapTypicalTab);
        r.optionOffered = {true, true, true, true, false};
    } else if (t == QLatin1String("WMA")) {
        r.tabEnabled = {false, false, false, false, true};
        r.tab4Caption = QStringLiteral("WMA");
        r.optionOffered = {false, false, false, false, true};
    } else if (t == QLatin1String("FLAC") || t == QLatin1String("OGG")) {
        r.tabEnabled = {true, true, true, false, true};
        r.tab4Caption = typeText;
        r.optionOffered = {true, true, true, false, true};
    } else if (t == QLatin1String("MP4")) {
        r.tabEnabled = {false, false, false, false, true};
        r.tab4Caption = typeText;
        r.optionOffered = {false, false, false, false, true};
    } else if (t == QLatin1String("WAV")) {
        // The "id3 " chunk is the V2 set; the INFO list is the typical one.
        r.tabEnabled = {false, true, false, false, true};
        r.tab4Caption = typeText;
        r.optionOffered = {false, true, false, false, true};
    } else if (t == QLatin1String("MONKEY") || t == QLatin1String("AAC")) {
        r.tabEnabled = {true, true, false, false, false};
        r.tab4Caption = Caption(CapTypicalTab);
        r.optionOffered = {true, true, false, false, false};
        r.v1ChecksEnabled = false;
        r.v1ChecksChecked = true;
        r.v1BoxesEmptied = true;
    } else {
        r.tab4Caption = Caption(CapTypicalTab);
    }
    r.optionTypicalSet = r.optionOffered[4] && typicalOn;

    // Labels 0 to 6 are shared; from 7 on each set has its own.
    const std::array<int, 8>* own = nullptr;
    static const auto run = [](int from7) {
        std::array<int, 8> rows{};
        for (int i = 0; i < 8; ++i)
            rows[size_t(i)] = from7 + 7 + i;
        return rows;
    };
    static const std::array<int, 8> wma = run(CapWmaLabel), flac = run(CapFlacLabel), ogg = run(CapOggLabel);
    static const std::array<int, 8> mp4 = {CapWmaLabel + 7,  CapMp4Encoder,   CapOggLabel + 9,
                                           CapWmaLabel + 8,  CapMp4Grouping,  CapMp4Disc,
                                           CapWmaLabel + 13, CapWmaLabel + 14};
    static const std::array<int, 8> wav = {CapWavEngineer,     CapWavSoftware,  CapOggLabel + 9,
                                           CapWavCommissioned, CapWavKeywords,  CapWavLocation,
                                           CapWmaLabel + 13,   CapWmaLabel + 14};
    if (t == QLatin1String("WMA"))
        own = &wma;
    else if (t == QLatin1String("FLAC"))
        own = &flac;
    else if (t == QLatin1String("OGG"))
        own = &ogg;
    else if (t == QLatin1String("MP4"))
        own = &mp4;
    else if (t == QLatin1String("WAV"))
        own = &wav;
    if (own) {
        for (int i = 0; i < 15; ++i) {
            r.typicalLabelRows[size_t(i)] = i < 7 ? CapTypicalLabel + i : (*own)[size_t(i - 7)];
            r.typicalLabels[size_t(i)] = Caption(r.typicalLabelRows[size_t(i)]);
        }
    }
    return r;
}

// ---- data list rows -------------------------------------------------------------------

QHash<QString, int> InputRowsByKey(const DataGrid& lbxInput) {
    QHash<QString, int> map;
    map.reserve(lbxInput.Rows());
    for (int r = 1; r <= lbxInput.Rows(); ++r)
        map.insert(KeyIdentity(lbxInput.RowKey(r)).toString(), r);
    return map;
}

void RefreshInputTagCells(DataGrid& lbxInput, int row, const TagEngine& e) {
    if (row < 1 || row > lbxInput.Rows())
        return;
    QStringList cells = lbxInput.RowCells(row);
    auto set = [&](int col, const QString& text) { cells[col - 1] = text; };
    const int t = e.FileType();
    set(InCol::HasTag, HasTagText(e));
    set(InCol::Tg1Genre, e.V1Genre());
    set(InCol::Tg1Year, e.V1Year());
    set(InCol::Tg1Track, e.V1Track());
    set(InCol::Tg1Artist, e.V1Artist());
    set(InCol::Tg1Title, e.V1Title());
    set(InCol::Tg1Album, e.V1Album());
    set(InCol::Tg1Comment, e.V1Comment());
    set(InCol::TagGenre, e.V2Genre());
    const auto& v2 = V2BoxFields();
    const int v2Cols[] = {InCol::TagYear,      InCol::TagTrack,     InCol::TagArtist,
                          InCol::TagTitle,     InCol::TagAlbum,     InCol::TagComposer,
                          InCol::TagConductor, InCol::TagOrchestra, InCol::TagOrigArtist,
                          InCol::TagCopyright, InCol::TagEncodedBy, InCol::TagPublisherUrl,
                          InCol::TagAudFileUrl};
    for (size_t i = 0; i < v2.size(); ++i)
        set(v2Cols[i], e.Field(v2[i]));
    set(InCol::TagComment, e.CommentText(1));
    set(InCol::TagAnzLyrics, QString::number(e.LyricCount()));
    set(InCol::TagAnzPic, QString::number(e.PictureCount()));
    set(InCol::TagApeGenre, e.ApeGenre());
    const auto& ape = ApeBoxFields();
    for (size_t i = 0; i < ape.size(); ++i)
        set(InCol::TagApeYear + int(i), e.Field(ape[i]));
    set(InCol::TagLyricsGenre, e.LyricsGenre());
    const auto& ly = LyricsBoxFields();
    for (size_t i = 0; i < ly.size(); ++i)
        set(InCol::TagLyricsArtist + int(i), e.Field(ly[i]));
    // The typical columns, with year and genre of WMA crossed as the data list shows them.
    for (int i = 0; i < kTypicalFieldCount; ++i)
        set(InCol::TypFirst + i, TypicalColumnText(e, t, i));
    QString rating, mood;
    if (t == 2) {
        rating = e.WmaRating();
        mood = e.WmaMood();
    } else {
        ReadRatingMood(e, &rating, &mood);
    }
    set(InCol::Rating, rating);
    set(InCol::Mood, mood);
    lbxInput.SetRowCells(row, cells);
}

#include "tag/modTagFilter.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/RowKeys.h"
#include "list/modList.h"
#include "tag/TagEngine.h"

#include <QSet>
#include <algorithm>

FilterTexts FilterValuesOfFile(const TagEngine& e) {
    FilterTexts v;
    if (!e.HasV2())
        return v;
    const auto& f = V2BoxFields();
    for (size_t i = 0; i < f.size(); ++i)
        v[i] = e.Field(f[i]);
    ReadRatingMood(e, &v[13], &v[14]);
    v[15] = e.V2Genre();
    return v;
}

QString FilterProgressText(int done, int total) {
    return Caption(CapFilterProgress) + QString::number(done) + Caption(CapFilterProgressOf) +
           QString::number(total);
}

FilterOnResult FilterOn(DataGrid& lbxTag, TagEngine& engine, Prompt& prompt, const TagProgress& progress) {
    FilterOnResult r;
    if (!ListNotEmpty(lbxTag, prompt))
        return r;
    const int rows = lbxTag.Rows();
    // One pass over the files: the rows without V2 are marked, the values of the others
    // kept for the combos.
    std::vector<FilterTexts> values;
    values.reserve(size_t(rows));
    int marked = 0;
    lbxTag.LockUpdate(true);
    for (int row = 1; row <= rows; ++row) {
        const bool hasV2 = engine.OpenFile(TagRowPath(lbxTag, row)) != 0 && engine.HasV2();
        if (hasV2) {
            values.push_back(FilterValuesOfFile(engine));
        } else {
            lbxTag.SetCellText(row, TagCol::FTag, Mark::DDelete);
            ++marked;
        }
        if (progress)
            progress(row, rows);
    }
    lbxTag.LockUpdate(false);
    if (marked > 0) {
        const QString q = Caption(CapFilterNoV2) + QLatin1Char('\n') + Caption(CapFilterNoV2Count) +
                          QString::number(marked) + QLatin1Char('\n') + Caption(CapContinueQuestion);
        if (!prompt.AskYesNo(q)) {
            // No: the rows stay, their marks are cleared, the filter stays off.
            for (int row = 1; row <= rows; ++row)
                if (lbxTag.CellView(row, TagCol::FTag) == Mark::DDelete)
                    lbxTag.SetCellText(row, TagCol::FTag, QString());
            return r;
        }
        lbxTag.LockUpdate(true);
        for (int row = rows; row >= 1; --row)
            if (lbxTag.CellView(row, TagCol::FTag) == Mark::DDelete)
                lbxTag.DeleteRow(row);
        lbxTag.LockUpdate(false);
        lbxTag.Refresh();
        r.removed = marked;
        lbxTag.SetFooterText(TagCol::FileName, QString::number(lbxTag.Rows()));
    }
    r.turnedOn = true;
    std::array<QSet<QString>, kFilterFieldCount> seen;
    for (const FilterTexts& v : values)
        for (int i = 0; i < kFilterFieldCount; ++i)
            if (!v[size_t(i)].isEmpty())
                seen[size_t(i)].insert(v[size_t(i)]);
    for (int i = 0; i < kFilterFieldCount; ++i) {
        QStringList list(seen[size_t(i)].begin(), seen[size_t(i)].end());
        std::sort(list.begin(), list.end(),
                  [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
        list.prepend(QString());
        r.values[size_t(i)] = list;
    }
    return r;
}

bool FilterMatches(const QString& value, const QString& filter, bool matchComplete) {
    if (matchComplete)
        return value == filter;
    return value.contains(filter, Qt::CaseInsensitive);
}

int ApplyTagFilter(DataGrid& lbxTag, TagEngine& engine, Prompt& prompt, const FilterTexts& filters,
                   bool matchComplete, bool keepMark, const TagProgress& progress) {
    if (!ListNotEmpty(lbxTag, prompt))
        return -1;
    bool any = false;
    for (const QString& f : filters)
        any = any || !f.trimmed().isEmpty();
    if (!any) {
        prompt.Tell(Caption(CapNoFilterValue), Prompt::Icon::Information);
        return -1;
    }
    lbxTag.LockUpdate(true);
    if (!keepMark)
        for (int row = 1; row <= lbxTag.Rows(); ++row)
            lbxTag.SetCellText(row, TagCol::FTag, QString());
    int passed = 0;
    const int total = lbxTag.Rows();
    for (int row = 1; row <= total; ++row) {
        bool pass = false;
        if (engine.OpenFile(TagRowPath(lbxTag, row)) != 0) {
            const FilterTexts v = FilterValuesOfFile(engine);
            pass = true;
            for (int i = 0; i < kFilterFieldCount && pass; ++i) {
                const QString& f = filters[size_t(i)];
                if (f.trimmed().isEmpty())
                    continue;
                pass = FilterMatches(v[size_t(i)], f, matchComplete);
            }
        }
        if (pass) {
            lbxTag.SetCellText(row, TagCol::FTag, Mark::Default);
            ++passed;
        }
        if (progress)
            progress(row, total);
    }
    lbxTag.DoSort(TagCol::FTag, 2);
    lbxTag.LockUpdate(false);
    lbxTag.Refresh();
    if (lbxTag.Rows() > 0)
        lbxTag.SetCurRow(1);
    return passed;
}

bool TransferFilterToDatalist(DataGrid& lbxTag, DataGrid& lbxInput, Prompt& prompt, bool noMsg) {
    if (!ListNotEmpty(lbxTag, prompt))
        return false;
    bool any = false;
    for (int row = 1; row <= lbxTag.Rows() && !any; ++row)
        any = lbxTag.CellView(row, TagCol::FTag) == Mark::Default;
    if (!any) {
        prompt.Tell(Caption(CapNoFilterHit), Prompt::Icon::Information);
        return false;
    }
    if (!noMsg && !prompt.AskYesNo(Caption(CapTransferFilterQuestion) + QLatin1Char('\n') +
                                   Caption(CapContinueQuestion)))
        return false;
    const QHash<QString, int> byKey = InputRowsByKey(lbxInput);
    lbxInput.LockUpdate(true);
    for (int row = 1; row <= lbxTag.Rows(); ++row) {
        if (lbxTag.CellView(row, TagCol::FTag) != Mark::Default)
            continue;
        const int in = byKey.value(KeyIdentity(lbxTag.CellText(row, TagCol::KeyInput)).toString(), 0);
        if (in > 0)
            lbxInput.SetCellText(in, InCol::FTag, Mark::TagFilter);
    }
    lbxInput.DoSort(InCol::FTag, 2);
    lbxInput.LockUpdate(false);
    lbxInput.Refresh();
    return true;
}

// ---- genre list ----------------------------------------------------------------------------

void LoadGenreList(DataGrid& lbxGenre) {
    if (lbxGenre.Cols() == 0)
        lbxGenre.AddColumn(QStringLiteral("Genre"), Caption(CapHeaderGenre), 3000);
    lbxGenre.Clear();
    for (int r = Ini::GenreFirst; r <= Ini::GenreLast; ++r) {
        const QString g = Setting(r, Ini::GenreCol).trimmed();
        if (!g.isEmpty())
            lbxGenre.AddRow({g});
    }
}

int TransferGenres(const QStringList& genreTexts, DataGrid& lbxGenre, Prompt& prompt) {
    QStringList texts;
    for (const QString& t : genreTexts)
        if (!t.trimmed().isEmpty())
            texts << t.trimmed();
    if (texts.isEmpty()) {
        prompt.Tell(Caption(CapNoGenreToTransfer), Prompt::Icon::Information);
        return 0;
    }
    if (lbxGenre.Cols() == 0)
        LoadGenreList(lbxGenre);
    int added = 0;
    for (const QString& t : texts) {
        if (lbxGenre.FindRow(t, 1) != 0)
            continue;
        if (lbxGenre.Rows() >= Ini::GenreLast - Ini::GenreFirst + 1)
            break; // the list is full
        lbxGenre.AddRow({t});
        ++added;
    }
    lbxGenre.DoSort(1, 1);
    int r = Ini::GenreFirst;
    for (int row = 1; row <= lbxGenre.Rows() && r <= Ini::GenreLast; ++row, ++r)
        SetSetting(r, Ini::GenreCol, lbxGenre.CellText(row, 1));
    for (; r <= Ini::GenreLast; ++r)
        SetSetting(r, Ini::GenreCol, QString());
    return added;
}

#include "list/modFind.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/Marks.h"

#include <QStringMatcher>
#include <vector>

namespace {

constexpr int kRefStartColumn = 4;

// One word of the find, prepared once: the matcher folds case without copying cells.
class WordMatcher {
public:
    WordMatcher(const QString& word, bool wholeWord)
        : m_word(word), m_whole(wholeWord), m_matcher(word, Qt::CaseInsensitive) {}

    bool Matches(QStringView cell) const {
        if (cell.size() < m_word.size())
            return false;
        const qsizetype at = m_matcher.indexIn(cell);
        if (at < 0)
            return false;
        if (!m_whole)
            return true;
        return WholeWordAt(cell, at);
    }

private:
    // Tests the whole-word rules, starting at the first case-free occurrence.
    bool WholeWordAt(QStringView cell, qsizetype at) const {
        const qsizetype n = m_word.size();
        for (; at >= 0; at = m_matcher.indexIn(cell, at + 1)) {
            const bool atStart = at == 0;
            const bool atEnd = at + n == cell.size();
            const bool blankBefore = !atStart && cell[at - 1] == QLatin1Char(' ');
            const QChar after = atEnd ? QChar() : cell[at + n];
            if (atStart && atEnd)
                return true; // equals the word
            if (atStart && after == QLatin1Char(' '))
                return true; // begins with "word "
            if (blankBefore && atEnd)
                return true; // ends with " word"
            if (blankBefore && (after == QLatin1Char(' ') || after == QLatin1Char('.')))
                return true; // " word " or " word."
        }
        return false;
    }

    QString m_word;
    bool m_whole;
    QStringMatcher m_matcher;
};

// The hit rule: "_#FOUND" goes in front of the mark unless its first eight characters are
// "_#FOUND", which is only the case for exactly "_#FOUND".
void MarkFound(DataGrid& list, int row) {
    const QStringView mark = list.CellView(row, InCol::FTag);
    if (mark.left(8) != Mark::Found)
        list.SetCellText(row, InCol::FTag, Mark::Found + mark.toString());
}

} // namespace

int FindColumnOfEntry(int entry) {
    return entry <= 0 ? 0 : entry + 2;
}

bool MatchText(QStringView cell, QStringView word, bool wholeWord) {
    if (word.isEmpty())
        return false;
    return WordMatcher(word.toString(), wholeWord).Matches(cell);
}

int FindInList(DataGrid& lbxInput, DataGrid& lbxRef, const FindOptions& options, int& startColumn,
               const ListEnv& env) {
    DataGrid& list = options.inReferenceList ? lbxRef : lbxInput;
    const int firstColumn = options.inReferenceList ? kRefStartColumn : InCol::FileName;
    if (list.Cols() >= firstColumn)
        list.SetFooterText(firstColumn, Caption(CapFindFooter) + options.text);
    const bool allColumns = startColumn == 0;
    if (allColumns)
        startColumn = firstColumn;

    list.LockUpdate(true);
    const int rows = list.Rows();
    if (options.clearMarks && list.Cols() >= InCol::FTag)
        for (int r = 1; r <= rows; ++r)
            list.SetCellText(r, InCol::FTag, QString());

    QStringList words;
    if (options.allEntries && !options.history.isEmpty())
        words = options.history;
    else
        words = QStringList{options.text};

    std::vector<char> hit(std::size_t(rows) + 1, 0);
    // The mark column is never searched: a single column left of the first one finds nothing.
    const int lastColumn =
        allColumns ? list.Cols() : (startColumn <= InCol::FTag ? 0 : std::min(startColumn, list.Cols()));
    if (list.Cols() >= InCol::FTag) {
        for (const QString& word : std::as_const(words)) {
            if (word.isEmpty())
                continue;
            const WordMatcher matcher(word, options.wholeWords);
            for (int r = 1; r <= rows; ++r) {
                for (int c = startColumn; c <= lastColumn; ++c) {
                    if (matcher.Matches(list.CellView(r, c))) {
                        MarkFound(list, r);
                        hit[std::size_t(r)] = 1;
                    }
                }
            }
        }
    }
    int hits = 0;
    for (char h : hit)
        hits += h;

    if (list.Cols() >= InCol::FTag) {
        list.DoSort(QString::number(InCol::FTag), 1);
        list.SetCurRow(rows > 0 ? 1 : 0);
        list.DoColumnAutoSize(InCol::FTag);
    }
    list.LockUpdate(false);
    list.Refresh();
    if (options.inReferenceList)
        env.RefreshSums(SumList::Ref);
    else
        env.ShowTotals();
    if (!options.noMsg)
        env.prompt.Tell(CountText(CapFindHits, hits), Prompt::Icon::Information);
    return hits;
}

FindResult btnTab1_M_Find_Click(DataGrid& lbxInput, DataGrid& lbxRef, const FindOptions& options,
                                const ListEnv& env) {
    FindResult result;
    result.history = options.history;
    if (options.text.isEmpty() || options.text == Caption(CapFindHint)) {
        env.prompt.Tell(Caption(CapNoFindText), Prompt::Icon::Information);
        return result;
    }
    int column = options.column;
    result.hits = FindInList(lbxInput, lbxRef, options, column, env);
    result.ran = true;
    if (!result.history.contains(options.text, Qt::CaseInsensitive))
        result.history.append(options.text);
    return result;
}

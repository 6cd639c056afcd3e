#include "list/modList.h"

#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"

#include <QLocale>
#include <cmath>
#include <map>

namespace {
std::map<QString, SumTarget>& Targets() {
    static std::map<QString, SumTarget> t;
    return t;
}

constexpr int kHintFromRows = 51; // from this many selected rows the walk shows a hint

qint64 WholeSeconds(double seconds) {
    return seconds > 0 ? qint64(std::floor(seconds)) : 0;
}
} // namespace

bool ListNotEmpty(const DataGrid& list, Prompt& prompt) {
    if (list.Rows() > 0)
        return true;
    prompt.Tell(Caption(CapListEmpty), Prompt::Icon::Information);
    return false;
}

bool AtLeastRowsSelected(const DataGrid& list, int n, Prompt& prompt) {
    if (list.SelCount() >= n)
        return true;
    prompt.Tell(Caption(CapNoRowSelected), Prompt::Icon::Information);
    return false;
}

QString FormatDuration(qint64 seconds) {
    if (seconds < 0)
        seconds = 0;
    const qint64 hours = seconds / 3600;
    const qint64 minutes = (seconds % 3600) / 60;
    const qint64 rest = seconds % 60;
    const QString mmss =
        QStringLiteral("%1:%2").arg(minutes, 2, 10, QLatin1Char('0')).arg(rest, 2, 10, QLatin1Char('0'));
    if (hours == 0)
        return mmss;
    return QString::number(hours) + u':' + mmss;
}

QString FormatMegabytes(double bytes) {
    const double mb = bytes / 1024.0 / 1024.0;
    const QLocale loc;
    if (mb < 1000.0)
        return loc.toString(mb, 'f', 2);
    return loc.toString(std::round(mb), 'f', 0);
}

SumTarget DefaultSumTarget(const QString& list) {
    SumTarget t;
    if (list == u"Ref") {
        t.secondsCol = 9;
        t.bytesCol = 11;
        t.hintFooterCol = 4;
    } else if (list == u"Playlist") {
        t.secondsCol = 6;
        t.bytesCol = 8;
    } else {
        t.secondsCol = InCol::DurationS;
        t.bytesCol = InCol::SizeByte;
    }
    return t;
}

void RegisterSumTarget(const QString& list, const SumTarget& target) {
    Targets()[list] = target;
}
void UnregisterSumTarget(const QString& list) {
    Targets().erase(list);
}

SumTarget* FindSumTarget(const QString& list) {
    auto it = Targets().find(list);
    return it == Targets().end() ? nullptr : &it->second;
}

QString SumLabelText(const SumTarget& t, bool markedOnly) {
    int count = 0;
    double seconds = 0, bytes = 0;
    if (t.grid) {
        DataGrid& g = *t.grid;
        const int sel = g.SelCount();
        QString oldFooter;
        const bool hint = sel >= kHintFromRows && t.hintFooterCol >= 1 && t.hintFooterCol <= g.Cols();
        if (hint) {
            oldFooter = g.FooterText(t.hintFooterCol);
            g.SetFooterText(t.hintFooterCol, Caption(CapSumsPending));
        }
        const QString mark = markedOnly && t.markBox ? t.markBox() : QString();
        const int cols = g.Cols();
        for (int i = 1; i <= sel; ++i) {
            const int r = g.SelRow(i);
            if (markedOnly && QString::compare(t.markCol <= cols ? g.CellView(r, t.markCol) : QStringView(),
                                               mark, Qt::CaseInsensitive) != 0)
                continue;
            ++count;
            if (t.secondsCol >= 1 && t.secondsCol <= cols)
                seconds += DataGrid::NumericPrefix(g.CellView(r, t.secondsCol));
            if (t.bytesCol >= 1 && t.bytesCol <= cols)
                bytes += DataGrid::NumericPrefix(g.CellView(r, t.bytesCol));
        }
        if (hint)
            g.SetFooterText(t.hintFooterCol, oldFooter);
    }
    const qint64 whole = WholeSeconds(seconds);
    const QString time = whole > 0 ? FormatDuration(whole) : QStringLiteral("00:00");
    // "0,0 " for none: the label then reads "... / 0,0  Mb", as it always has; in
    // English "0.0 ", the same number as every other in the program's language.
    const QString size = bytes > 0 ? FormatMegabytes(bytes) : QLocale().toString(0.0, 'f', 1) + u' ';
    return QStringLiteral("(%1)  ").arg(count) + time +
           (time.size() <= 5 ? QStringLiteral(" mm:ss / ") : QStringLiteral(" h:mm:ss / ")) + size +
           QStringLiteral(" Mb");
}

void ShowSelectionSum(const QString& list) {
    if (SumTarget* t = FindSumTarget(list); t && t->setLabel)
        t->setLabel(SumLabelText(*t, false));
}

void ShowMarkedSum(const QString& list) {
    if (SumTarget* t = FindSumTarget(list); t && t->setLabel)
        t->setLabel(SumLabelText(*t, true));
}

void ShowTotals(DataGrid& g) {
    double seconds = 0, bytes = 0, lyrics = 0, pictures = 0;
    int lrcRows = 0;
    const int rows = g.Rows();
    const int cols = g.Cols();
    for (int r = 1; r <= rows; ++r) {
        if (cols >= InCol::DurationS)
            seconds += DataGrid::NumericPrefix(g.CellView(r, InCol::DurationS));
        if (cols >= InCol::SizeByte)
            bytes += DataGrid::NumericPrefix(g.CellView(r, InCol::SizeByte));
        if (cols >= InCol::TagAnzPic) {
            const QStringView ly = g.CellView(r, InCol::TagAnzLyrics);
            lyrics += DataGrid::NumericPrefix(ly);
            if (ly.contains(u"Lrc"))
                ++lrcRows;
            pictures += DataGrid::NumericPrefix(g.CellView(r, InCol::TagAnzPic));
        }
    }
    if (cols >= InCol::TagAnzPic) {
        g.SetFooterText(InCol::FileName, QString::number(rows));
        g.SetFooterText(InCol::DurationMS, seconds != 0 ? FormatDuration(WholeSeconds(seconds)) : QString());
        g.SetFooterText(InCol::SizeMByte, bytes != 0 ? FormatMegabytes(bytes) : QString());
        QString ly;
        if (lyrics > 0) {
            ly = QString::number(qint64(lyrics));
            if (lrcRows > 0)
                ly += QStringLiteral(" [%1]").arg(lrcRows);
        }
        g.SetFooterText(InCol::TagAnzLyrics, ly);
        g.SetFooterText(InCol::TagAnzPic, pictures > 0 ? QString::number(qint64(pictures)) : QString());
    }
    const SumTarget* t = FindSumTarget(QStringLiteral("Input"));
    const bool marked = t && t->markBox && !t->markBox().isEmpty();
    if (marked)
        ShowMarkedSum(QStringLiteral("Input"));
    else
        ShowSelectionSum(QStringLiteral("Input"));
}

void ShowTotals() {
    if (SumTarget* t = FindSumTarget(QStringLiteral("Input")); t && t->grid)
        ShowTotals(*t->grid);
}

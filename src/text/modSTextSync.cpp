#include "text/modSTextSync.h"

#include "core/DataGrid.h"
#include "player/modPlayer.h"
#include "text/modSText.h"

#include <algorithm>

using namespace SText;

bool ArmSync(DataGrid& g, qint32& nextStamp) {
    for (int row = 1; row < g.Rows(); ++row) {
        const qint32 t = RowTime(g, row);
        if (t != 0) {
            g.SetCurRow(row - 1);
            nextStamp = t;
            return true;
        }
    }
    return false;
}

SyncStep SyncTick(DataGrid& g, qint32 position, qint32& nextStamp) {
    SyncStep s;
    if (nextStamp == 0)
        return s;
    int cur = g.CurRow();
    if (position >= nextStamp && cur < g.Rows()) {
        ++cur;
        g.SetCurRow(cur);
        s.moved = true;
        nextStamp = cur < g.Rows() ? RowTime(g, cur + 1) : 0;
    }
    if (cur >= g.Rows() || RowTime(g, cur + 1) == 0) {
        nextStamp = 0;
        s.ended = true;
    }
    return s;
}

bool SeekSync(DataGrid& g, qint32 t, qint32& nextStamp) {
    for (int row = 1; row < g.Rows(); ++row) {
        if (RowHasTime(g, row) && RowTime(g, row) >= t) {
            nextStamp = RowTime(g, row);
            g.SetCurRow(row - 1);
            return nextStamp != 0;
        }
    }
    nextStamp = 0;
    return false;
}

qint32 ClickStampTime(qint32 position, const QString& shiftMinus, const QString& shiftPlus) {
    if (!shiftMinus.isEmpty())
        return position - qint32(DataGrid::NumericPrefix(shiftMinus));
    if (!shiftPlus.isEmpty())
        return position + qint32(DataGrid::NumericPrefix(shiftPlus));
    return position;
}

void StampAt(DataGrid& g, int row, qint32 t) {
    if (row < 1 || row > g.Rows())
        return;
    if (t < 1)
        ClearRowTime(g, row);
    else
        StampRow(g, row, t);
}

QString STextTimeLine(qint32 lengthMs, qint32 positionMs) {
    return FormatPlayerTime(lengthMs) + QStringLiteral(" / ") + FormatPlayerTime(positionMs) +
           QStringLiteral(" - ") +
           QStringLiteral("%1").arg(std::max(0, positionMs) / 1000, 3, 10, QLatin1Char('0')) +
           QStringLiteral(" / ") + FormatPlayerTime(lengthMs - positionMs);
}

QString STextTimeLineLoaded(qint32 lengthMs) {
    return FormatPlayerTime(lengthMs) + QStringLiteral(" / 00:00 - 000 / 00:00");
}

QString STextTimeLineIdle() {
    return PlayerTimeLineIdle();
}

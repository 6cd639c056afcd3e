#pragma once
// modSTextSync: how the current row of LbxSText follows a playing song. The editor's
// sync timer calls SyncTick every 100 ms with the player's position; the row moves by
// one at most per tick, and a row without a time ends the following.

#include <QString>

class DataGrid;

// Arms the following: the first row before the last with a time other than 0 gives
// CurRow = that row - 1 (0 for row 1) and nextStamp = its time. False when there is none.
bool ArmSync(DataGrid& g, qint32& nextStamp);

struct SyncStep {
    bool moved = false; // CurRow went on by one
    bool ended = false; // the following is over: timer to 0, nextStamp 0
};
// One tick at `position` ms.
SyncStep SyncTick(DataGrid& g, qint32 position, qint32& nextStamp);

// After a seek to t ms: the first timed row (1 to Rows - 1) at or after t becomes the
// next stamp, the row before it current. False (nextStamp 0) when there is none.
bool SeekSync(DataGrid& g, qint32 t, qint32& nextStamp);

// The time a click stamps: the position less the reaction time in txtSText_TimeShiftM,
// or else plus txtSText_TimeShiftP (empty boxes count as not given).
qint32 ClickStampTime(qint32 position, const QString& shiftMinus, const QString& shiftPlus);
// Stamps row r at t (t below 1 clears its time).
void StampAt(DataGrid& g, int row, qint32 t);

// lblSText_Time while playing: length, " / ", position, " - ", position in seconds with
// three digits, " / ", remaining.
QString STextTimeLine(qint32 lengthMs, qint32 positionMs);
// The same before playing (after an eject): length, " / 00:00 - 000", " / 00:00".
QString STextTimeLineLoaded(qint32 lengthMs);
QString STextTimeLineIdle(); // "00:00 / 00:00 / 00:00"

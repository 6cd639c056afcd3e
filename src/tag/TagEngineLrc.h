#pragma once
// The time-stamped text of an MP3 as this program keeps it: a V2 user text frame (TXXX)
// named "lrc". A new one is put before the other user frames (the save keeps the order of
// frames the file already has); other user frames (rating, mood) are kept as they are.

#include <QString>

class TagEngine;

// Index (1-based) of the first user frame named "lrc" (any case); 0 when none.
int LrcFrameIndex(const TagEngine& engine);
// Whether the first user frame is named "lrc" (any case).
bool FirstUserFrameIsLrc(const TagEngine& engine);
// The text of the "lrc" frame, empty when none.
QString LrcFrameText(const TagEngine& engine);
// Puts the text as the first user frame named "lrc"; an earlier "lrc" frame is replaced.
// The change is in memory until SaveV2. Returns non-zero when done.
int SetLrcFrame(TagEngine& engine, const QString& text);
// Takes every "lrc" frame out; 0 when the file held none.
int RemoveLrcFrame(TagEngine& engine);

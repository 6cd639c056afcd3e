#pragma once
// The sixteen columns of the reference list LbxRef. Every command addresses them by
// these numbers; the order is fixed because .ref files keep it.

namespace RefCol {
enum : int {
    Remark = 1, // key "Bewertung": the user's free remark
    FTag = 2,
    TF = 3, // found remark: Caption(213) or Caption(214) of the language in use
    FileName = 4,
    Artist = 5,
    Title = 6,
    Type = 7,
    Path = 8,
    DurationS = 9,
    DurationMS = 10,
    SizeByte = 11,
    SizeMByte = 12,
    Bitrate = 13,
    Frequency = 14,
    Rating = 15,
    Mood = 16,
};
constexpr int Count = 16;
} // namespace RefCol

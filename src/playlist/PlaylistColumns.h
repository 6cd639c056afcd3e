#pragma once
// The columns of the playlist grids. LbxPlaylist and lbxPlaylist2 have the same twelve
// columns; lbxM3UPLS lists playlist files by name and folder. Every part of the program
// addresses them by these numbers.

namespace PlCol {
enum : int {
    No = 1,            // row number; the shuffle writes its order here
    FTag = 2,          // free-text mark of the row
    TF = 3,            // status: Caption(213) found, Caption(214) missing (language text)
    FileName = 4,      // name with extension, no folder
    Type = 5,          // file type
    DurationS = 6,     // whole seconds
    DurationMS = 7,    // FormatDuration
    SizeByte = 8,      // bytes
    SizeMByte = 9,     // MiB, "#,##0.000"
    PathFile = 10,     // the song's folder, or a folder relative to the playlist
    PathPlaylist = 11, // full path of the playlist the row came from or was saved to
    KeyInput = 12,     // key of the row in the data list, for rows taken over from it
};
constexpr int Count = 12;
} // namespace PlCol

namespace M3uCol {
enum : int {
    FName = 1,    // the playlist's file name
    PathFile = 2, // its folder
};
constexpr int Count = 2;
} // namespace M3uCol

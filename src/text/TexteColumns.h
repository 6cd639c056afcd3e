#pragma once
// The columns of the two lists of the texts area: LbxTxt lists text files by name and
// folder, LbxLyrics one row per lyric entry of a song. Every part of the program
// addresses them by these numbers.

namespace TxtCol {
enum : int {
    FileName = 1, // the text file's name
    Folder = 2,   // its folder
};
constexpr int Count = 2;
} // namespace TxtCol

namespace LyrCol {
enum : int {
    Index = 1,       // number of the entry in the song, from 1; empty: the song has none
    FileName = 2,    // the song's file name
    Language = 3,    // three-letter code
    Description = 4, // free text
    Folder = 5,      // the song's folder
};
constexpr int Count = 5;
} // namespace LyrCol

#pragma once
// The 71 columns of the data list LbxInput. Every part of the program addresses them
// by these numbers; the order is fixed because saved lists (.data) keep it.

#include "core/DataGrid.h"

#include <array>

namespace InCol {
enum : int {
    No = 1,
    FTag = 2,
    FileName = 3,
    Artist = 4,
    Title = 5,
    Type = 6,
    Path = 7,
    DurationS = 8,
    DurationMS = 9,
    SizeByte = 10,
    SizeMByte = 11,
    Bitrate = 12,
    Frequency = 13,
    HasTag = 14,
    Tg1Genre = 15,
    Tg1Year = 16,
    Tg1Track = 17,
    Tg1Artist = 18,
    Tg1Title = 19,
    Tg1Album = 20,
    Tg1Comment = 21,
    TagGenre = 22,
    TagYear = 23,
    TagTrack = 24,
    TagArtist = 25,
    TagTitle = 26,
    TagAlbum = 27,
    TagComment = 28,
    TagComposer = 29,
    TagConductor = 30,
    TagOrchestra = 31,
    TagOrigArtist = 32,
    TagCopyright = 33,
    TagEncodedBy = 34,
    TagPublisherUrl = 35,
    TagAudFileUrl = 36,
    TagAnzLyrics = 37,
    TagAnzPic = 38,
    TagApeGenre = 39,
    TagApeYear = 40,
    TagApeTrack = 41,
    TagApeArtist = 42,
    TagApeTitle = 43,
    TagApeAlbum = 44,
    TagApeComment = 45,
    TagApeCopyright = 46,
    TagLyricsGenre = 47,
    TagLyricsArtist = 48,
    TagLyricsTitle = 49,
    TagLyricsAlbum = 50,
    TagLyricsInfo = 51,
    TagLyricsAuthor = 52,
    TagLyricsLink = 53,
    TagLyricsLyric = 54,
    TagTypGenre = 55,
    TagTypYear = 56,
    TagTypTrack = 57,
    TagTypArtist = 58,
    TagTypTitle = 59,
    TagTypAlbum = 60,
    TagTypComment = 61,
    TagTypDescription = 62,
    TagTypPerformer = 63,
    TagTypVendor = 64,
    TagTypCopyright = 65,
    TagTypContact = 66,
    TagTypLicense = 67,
    TagTypLocation = 68,
    Rating = 69,
    Mood = 70,
    DateTime = 71,
};
constexpr int Count = 71;

// First and last column of each group of tag fields.
constexpr int V1First = Tg1Genre, V1Last = Tg1Comment;
constexpr int V2First = TagGenre, V2Last = TagAnzPic;
constexpr int ApeFirst = TagApeGenre, ApeLast = TagApeCopyright;
constexpr int LyricsFirst = TagLyricsGenre, LyricsLast = TagLyricsLyric;
constexpr int TypFirst = TagTypGenre, TypLast = TagTypLocation;
} // namespace InCol

struct InputColumnDef {
    const char* key;
    int captionRow;
    int widthTwips;
    Align align;
    SortType sortType;
};

// Indexed by column number - 1.
inline constexpr std::array<InputColumnDef, InCol::Count> kInputColumns = {{
    {"No", 1, 500, Align::Right, SortType::Number},
    {"FTag", 2, 1200, Align::Left, SortType::Text},
    {"FileName", 3, 6000, Align::Left, SortType::Text},
    {"Artist", 4, 3000, Align::Left, SortType::Text},
    {"Title", 5, 3000, Align::Left, SortType::Text},
    {"Type", 6, 1200, Align::Left, SortType::Text},
    {"Path", 7, 3000, Align::Left, SortType::Text},
    {"DurationS", 8, 700, Align::Center, SortType::Number},
    {"DurationMS", 9, 1000, Align::Right, SortType::Text},
    {"SizeByte", 10, 1200, Align::Right, SortType::Number},
    {"SizeMByte", 11, 1200, Align::Right, SortType::Text},
    {"Bitrate", 12, 600, Align::Right, SortType::Number},
    {"Frequency", 13, 600, Align::Right, SortType::Number},
    {"HasTag", 14, 1500, Align::Left, SortType::Text},
    {"Tg1Genre", 15, 1500, Align::Left, SortType::Text},
    {"Tg1Year", 16, 1000, Align::Center, SortType::Number},
    {"Tg1Track", 36, 800, Align::Center, SortType::Number},
    {"Tg1Artist", 17, 3000, Align::Left, SortType::Text},
    {"Tg1Title", 18, 3000, Align::Left, SortType::Text},
    {"Tg1Album", 19, 2000, Align::Left, SortType::Text},
    {"Tg1Comment", 20, 3000, Align::Left, SortType::Text},
    {"TagGenre", 21, 1500, Align::Left, SortType::Text},
    {"TagYear", 22, 800, Align::Center, SortType::Number},
    {"TagTrack", 23, 800, Align::Center, SortType::Number},
    {"TagArtist", 24, 1500, Align::Left, SortType::Text},
    {"TagTitle", 25, 1500, Align::Left, SortType::Text},
    {"TagAlbum", 26, 1500, Align::Left, SortType::Text},
    {"TagComment", 27, 1500, Align::Left, SortType::Text},
    {"TagComposer", 28, 1500, Align::Left, SortType::Text},
    {"TagConductor", 29, 1500, Align::Left, SortType::Text},
    {"TagOrchestra", 30, 1500, Align::Left, SortType::Text},
    {"TagOrigArtist", 31, 1500, Align::Left, SortType::Text},
    {"TagCopyright", 32, 1500, Align::Left, SortType::Text},
    {"TagEncodedBy", 33, 1500, Align::Left, SortType::Text},
    {"TagPublisherUrl", 34, 1500, Align::Left, SortType::Text},
    {"TagAudFileUrl", 653, 600, Align::Left, SortType::Text},
    {"TagAnzLyrics", 35, 600, Align::Left, SortType::Text},
    {"TagAnzPic", 655, 600, Align::Left, SortType::Text},
    {"TagApeGenre", 37, 600, Align::Left, SortType::Text},
    {"TagApeYear", 38, 600, Align::Center, SortType::Number},
    {"TagApeTrack", 39, 600, Align::Center, SortType::Number},
    {"TagApeArtist", 40, 600, Align::Left, SortType::Text},
    {"TagApeTitle", 41, 600, Align::Left, SortType::Text},
    {"TagApeAlbum", 42, 600, Align::Left, SortType::Text},
    {"TagApeComment", 43, 600, Align::Left, SortType::Text},
    {"TagApeCopyright", 44, 600, Align::Left, SortType::Text},
    {"TagLyricsGenre", 45, 600, Align::Left, SortType::Text},
    {"TagLyricsArtist", 46, 600, Align::Left, SortType::Text},
    {"TagLyricsTitle", 47, 600, Align::Left, SortType::Text},
    {"TagLyricsAlbum", 48, 600, Align::Left, SortType::Text},
    {"TagLyricsInfo", 49, 600, Align::Left, SortType::Text},
    {"TagLyricsAuthor", 50, 600, Align::Left, SortType::Text},
    {"TagLyricsLink", 572, 600, Align::Left, SortType::Text},
    {"TagLyricsLyric", 573, 600, Align::Left, SortType::Text},
    {"TagTypGenre", 596, 600, Align::Left, SortType::Text},
    {"TagTypYear", 597, 600, Align::Center, SortType::Number},
    {"TagTypTrack", 598, 600, Align::Center, SortType::Number},
    {"TagTypArtist", 599, 600, Align::Left, SortType::Text},
    {"TagTypTitle", 600, 600, Align::Left, SortType::Text},
    {"TagTypAlbum", 601, 600, Align::Left, SortType::Text},
    {"TagTypComment", 584, 600, Align::Left, SortType::Text},
    {"TagTypDescription", 585, 600, Align::Left, SortType::Text},
    {"TagTypPerformer", 586, 600, Align::Left, SortType::Text},
    {"TagTypVendor", 587, 600, Align::Left, SortType::Text},
    {"TagTypCopyright", 588, 600, Align::Left, SortType::Text},
    {"TagTypContact", 589, 600, Align::Left, SortType::Text},
    {"TagTypLicense", 590, 600, Align::Left, SortType::Text},
    {"TagTypLocation", 591, 600, Align::Left, SortType::Text},
    {"Rating", 1293, 600, Align::Left, SortType::Text},
    {"Mood", 1294, 600, Align::Left, SortType::Text},
    {"DateTime", 167, 1000, Align::Left, SortType::Date},
}};

// The full path of the file of data-list row `row`: its folder, "/", its file name.
inline QString InputRowPath(const DataGrid& list, int row) {
    const QStringView folder = list.CellView(row, InCol::Path);
    const QStringView name = list.CellView(row, InCol::FileName);
    QString path;
    path.reserve(folder.size() + 1 + name.size());
    path += folder;
    path += QLatin1Char('/');
    path += name;
    return path;
}

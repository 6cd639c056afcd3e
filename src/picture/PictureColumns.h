#pragma once
// The columns of the picture grids of FrmPictures: the pictures found on disk
// (LbxPic_Extern), the pictures inside songs (LbxPic_Intern) and the link list
// (LbxPic_LinkToPic, the file lnkpic.qlt). Every part of the program addresses them by
// these numbers.

namespace PicCol {
enum : int {
    HasTextlink = 1,  // empty, Caption(213) when the linked text is there, Caption(214) when gone
    HasAudioLink = 2, // the same for the linked song
    Picfile = 3,      // file name of the picture
    Free = 4,         // free text, editable
    Textfile = 5,     // file name of the linked text
    Song = 6,         // file name of the linked song
    PathPic = 7,      // folder of the picture
    PathTxt = 8,      // folder of the linked text
    PathSong = 9,     // folder of the linked song
    PicType = 10,     // extension of the picture, as found
};
constexpr int Count = 10;
} // namespace PicCol

namespace IPicCol {
enum : int {
    HasPic = 1,      // index in the tag ("00") of an embedded picture
    HasPicLink = 2,  // index in the tag ("00") of a link
    Filename = 3,    // file name of the song
    Description = 4, // description of the frame
    PicType = 5,     // name of the picture type
    Mime_Link = 6,   // mime type; for a link the path behind "-->"
    Path = 7,        // folder of the song
};
constexpr int Count = 7;
} // namespace IPicCol

// The link list: one row per picture, keyed by its full path.
namespace LinkCol {
enum : int {
    Picture = 1,   // full path of the picture (the key)
    Reserved1 = 2, // empty, copied with the row
    Text = 3,      // full path of the linked text, or empty ("/" alone counts as empty)
    Song = 4,      // full path of the linked song, or empty
    Reserved2 = 5, // copied with the row
};
constexpr int Count = 5;
} // namespace LinkCol

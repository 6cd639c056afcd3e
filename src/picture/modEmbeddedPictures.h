#pragma once
// Pictures inside the tags of songs (the list LbxPic_Intern of FrmPictures). Everything
// goes through the TagEngine's picture roles: PictureCount, PictureDescription(i),
// PictureType(i), PictureMime(i), ExportPicture(i, path), AddPicture, RemovePicture(i).
// A frame whose mime holds "-->" followed by a path is a link to a picture file outside
// the song; it carries no picture data, and its mime survives reading and writing as it
// stands.

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class DataGrid;
class Prompt;
class TagEngine;

// The link convention.
bool IsPictureLinkMime(const QString& mime);
QString PictureLinkMime(const QString& picturePath); // "-->" + path
QString PictureLinkPath(const QString& mime);        // the path behind "-->"

// The name of picture type `type` (0 to 20, the published ID3v2 list): row type + 1 of
// LbxPictureType, that is settings row PictureTypeFirst + type, column PictureTypeCol.
// Empty for a type outside the list.
QString PictureTypeName(int type);
int PictureTypeCount(); // the names in the list (21)

// "image/" + the extension in lower case, "jpg" becoming "jpeg".
QString PictureMimeForFile(const QString& picturePath);
// The extension of a temporary file for a mime: its part after "/" ("image/png" -> "png").
QString PictureExtensionOfMime(const QString& mime);

// The name under which picture i of a song is written out: the song's base name, "_",
// i with two digits, ".", and the format after the "/" of the description, else of the
// mime ("jpeg" written "jpg"; "jpg" when neither names one).
QString EmbeddedPictureFileName(const QString& songBase, int i, const QString& description,
                                const QString& mime);

// Columns of LbxPic_Intern and their captions in the current language.
void DefineEmbeddedPictureColumns(DataGrid& list);
void SetEmbeddedPictureCaptions(DataGrid& list);

// The names of all picture types, in the order of their numbers (PictureTypeName).
QStringList PictureTypeNames();
// The cells of the rows of the engine's current file (folder and name given), appended to
// `rows`: one per picture, or one empty row when it has none and `withPicturesOnly` is
// off. `typeNames` from PictureTypeNames(). Touches nothing but the engine: a reader
// thread may call it with its own engine.
void EmbeddedPictureCells(const TagEngine& engine, const QString& folder, const QString& name,
                          bool withPicturesOnly, const QStringList& typeNames,
                          std::vector<QStringList>& rows);
// Adds the rows of the engine's current file (folder and name given): one per picture,
// or one empty row when it has none and `withPicturesOnly` is off. Returns the rows
// added. Row keys continue the running number.
int AddEmbeddedPictureRows(DataGrid& list, const TagEngine& engine, const QString& folder,
                           const QString& name, bool withPicturesOnly);

// Whether the progress of a search shows at `position` of `total`: always the first
// file, then every 10th while the total is below 201 and every 50th from there on.
bool ProgressDue(int position, int total);

struct EmbeddedSearch {
    bool withPicturesOnly = true;                 // chbPic_WithiPicOnly
    std::function<void()> pump;                   // events between two files
    std::function<bool()> aborted;                // the abort flag
    std::function<void(const QString&)> progress; // footer of column 3
    int threads = 0; // readers at once; 0 = as the preferences say (ScanReadThreads)
};
// Opens every path (an entry beginning with ">>" loses those two characters; paths
// holding "system" or "recycler" are skipped) and adds its rows. Returns the songs read.
// The files are read ahead on `threads` readers; the rows come in the order of `paths`,
// and an abort drops what was read ahead.
int SearchEmbeddedPictures(DataGrid& list, TagEngine& engine, const QStringList& paths,
                           const EmbeddedSearch& how);

// The picture index of a row: HasPic, else HasPicLink; 0 when the row has neither.
int EmbeddedPictureIndex(const DataGrid& list, int row);

// Puts a picture file (or a link to it) into a song and saves the ID3v2 tag. `index`
// count + 1 adds, an existing index replaces. False with the engine's LastError in
// `error`.
bool StorePictureInSong(TagEngine& engine, const QString& songPath, const QString& picturePath,
                        const QString& description, int type, int index, bool asLink, QString* error);
// Removes picture `index` of a song, or all of them with index 0, and saves.
bool RemoveSongPictures(TagEngine& engine, const QString& songPath, int index, QString* error);

// Rewrites the rows of one song in `list` after a change: the song's rows go and its
// current pictures take their place (or the one empty row). Returns the first row of the
// song afterwards, 0 when none is left.
int RefreshSongRows(DataGrid& list, TagEngine& engine, const QString& folder, const QString& name,
                    bool withPicturesOnly);

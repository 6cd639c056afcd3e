#pragma once
// Pictures on disk (the list LbxPic_Extern of FrmPictures) in relation to songs and text
// files, through the link list (modLinkList.h). The window reads its controls into a
// PictureEnv and calls these; they never touch a widget.

#include <QString>
#include <QStringList>
#include <functional>

class DataGrid;
class Prompt;

struct PictureEnv {
    PictureEnv(Prompt& p, DataGrid& l, DataGrid& k) : prompt(p), list(l), links(k) {}
    Prompt& prompt;
    DataGrid& list;  // LbxPic_Extern
    DataGrid& links; // LbxPic_LinkToPic
};

// Columns of LbxPic_Extern and their captions in the current language.
void DefineExternPictureColumns(DataGrid& list);
void SetExternPictureCaptions(DataGrid& list);

// Row keys 1, 2, 3 ... in the present order.
void RenumberRowKeys(DataGrid& list);

// The full path of a row's picture, text and song ("" when a part is empty).
QString RowPicturePath(const DataGrid& list, int row);
QString RowTextPath(const DataGrid& list, int row);
QString RowSongPath(const DataGrid& list, int row);

// The status word of a link: Caption(213) when the file is there, else Caption(214).
QString LinkStatusText(const QString& path);

// Progress of the picture search: every 10th file while the total is below 201, every
// 50th otherwise.
bool PictureSearchProgressDue(int position, int total);

struct PictureSearch {
    QStringList fileTypes;      // settings row 59, lower case ("jpg", "png" ...)
    bool onlyWithLink = false;  // chbPic_OnlyWithLink
    std::function<void()> pump; // events between two files
    std::function<bool()> aborted;
    std::function<void(const QString&)> progress; // footer of column 3
};
// The file types of settings row 59 ("jpg;jpeg;png"), lower case.
QStringList PictureFileTypes(const QString& settingText);
// Adds a row for each picture among `paths`: paths holding "system" or "recycler" are
// skipped; the last three characters of the path, looked up among the types, decide.
// Then the list is sorted by folder and name and the keys renumbered. Returns the rows
// added.
int SearchPictures(DataGrid& list, const DataGrid& links, const QStringList& paths, const PictureSearch& how);
// The cells of the row of one picture, with its links from the link list (row 0: none).
QStringList PictureRowCells(const QString& picturePath, const DataGrid& links, int linkRow, bool checkText);

// btnPic_ShowLinkedPic: the whole link list into the list (after the question). Returns
// false when nothing happened; the window then titles the list as the link list.
bool ShowLinkList(PictureEnv& env);
// btnPic_WriteLinklist: rebuilds the link list from the list, saves it to `linkListPath`
// and clears the list. False when the user said No or the save failed.
bool RebuildLinkList(PictureEnv& env, const QString& linkListPath);
// btnPic_RemoveBrokenLinks. Returns the rows removed, -1 when nothing happened.
int RemoveBrokenLinks(PictureEnv& env);

// The guards of the link commands: rows present (Caption 96), a current row (Caption 146).
bool CheckPictureRow(PictureEnv& env, int row);

// Reads a text file for the text box: at most 20,000 lines, joined with CR LF. An
// unreadable file gives an empty text.
QString ReadLinkedText(const QString& path);
// Links a text or a song to the picture of `row`: the cells and the link list; the list's
// Tag becomes "changes".
void LinkTextToPicture(PictureEnv& env, int row, const QString& textPath);
void LinkSongToPicture(PictureEnv& env, int row, const QString& songPath);
// Removes the text link, the song link or both of `row`; the files stay.
void RemovePictureLinks(PictureEnv& env, int row, bool text, bool song);
// Writes `text` as the row's linked text (to `path`) and links it. False on a failed write.
bool SaveLinkedText(PictureEnv& env, int row, const QString& path, const QString& text);
// Deletes the linked text file, then its link; a failed delete leaves the link.
bool DeleteLinkedText(PictureEnv& env, int row, bool paperbin);
// Deletes the picture file, its row and its link row.
bool DeletePictureFile(PictureEnv& env, int row, bool paperbin);

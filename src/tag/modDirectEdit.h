#pragma once
// Direct edit of the data list: a new text in the column FileName renames the file at
// once, a new text in a tag column writes that one field at once. One file and one
// answer: no batch, no preview, no undo, no row mark. The window's after-edit event
// calls DirectEditCell; the field map is WriteCellToTag's.

#include <QString>

class DataGrid;
class Prompt;
class TagEngine;

// Writes `text` into the field that `column` stands for and saves that set of `path`.
// The map keeps its historic offset: from column 37 on it stands two columns below the
// data list's columns (an edit in TagApeGenre, 39, reaches ApeTrack). Columns 53 to 66
// go to the typical set of the file's type (WMA, FLAC, OGG); other types are left
// alone. `failed` is set when the file could not be opened or the save failed.
void WriteCellToTag(TagEngine& engine, int column, const QString& text, const QString& path, bool& failed);

// True for the columns the grid lets the user edit in direct edit: mark, file name,
// artist, title and the tag columns, but not 28 (comment) nor 37 and 38 (counts).
bool DirectEditColumn(int column);

// The checks of a new file name typed into column 3: a point in the last four characters
// (else Caption 339 and false), a hyphen (else the question 264 + 265; No gives false),
// and " - " between artist and title ("Artist-Title" -> "Artist - Title"). `text` is
// normalised in place.
bool CheckEditedFileName(QString& text, Prompt& prompt);

// The after-edit handler of LbxInput for the cell (row, column) with the new `text`
// (changed in place to what the cell is to show). `escaped`: the edit was left by Esc.
// False cancels the edit: the cell keeps its old text and no file changed. `listChanged`
// is set when the list's contents changed (a rename). With a `journalPath` the old tags of
// a written file are kept there, as the last batch, for an undo.
bool DirectEditCell(DataGrid& list, int row, int column, QString& text, bool escaped, TagEngine& engine,
                    Prompt& prompt, bool* listChanged = nullptr, const QString& journalPath = QString());

// LinkToTag of the data list's menu: puts `link` into V2AudFileUrl of the row's file and
// into its cell. False (after showing the engine's reason) when the save failed.
bool LinkToTag(DataGrid& list, int row, const QString& link, TagEngine& engine, Prompt& prompt);

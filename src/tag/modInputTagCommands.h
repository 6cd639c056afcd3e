#pragma once
// Tag commands of the data list's rename tab that change tags, not names: a text into one
// tag column of the selected rows (optTab1_SetTextInTag), and the removal of links to
// files that are gone (optTab1_RemoveInvalidLinks). Rows that pass the mark filter take
// part; a failed file gets "_#-/->"; the row's cells follow the file.

#include <QString>
#include <vector>

class DataGrid;
class TagEngine;
struct ListEnv;

// The columns of the data list that SetTextInTag can fill (16 to 68 without the counts
// 37 and 38), in column order.
std::vector<int> TextInTagColumns();

struct TagCommandResult {
    bool ran = false;
    int done = 0;
    int failed = 0;
    int linksRemoved = 0;
};

// optTab1_SetTextInTag: `text` goes into the field of `column` of each row's file, through
// the set that owns the column (16-21 V1, 22-36 V2 with 28 the first comment, 39-46 APE,
// 47-54 Lyrics, 55-68 the file type's typical set). `confirmedEmpty`: the user agreed that
// an empty text clears the field. Types the set does not serve are left alone.
// With a `journalPath` the old tags of every written file are kept there for an undo.
TagCommandResult SetTextInTag(DataGrid& list, int column, const QString& text, const QString& markFilter,
                              bool noMsg, TagEngine& engine, const ListEnv& env,
                              const QString& journalPath = QString());

// optTab1_RemoveInvalidLinks: empties the link fields (TagComposer to TagAudFileUrl) that
// name a file that does not exist. Unless noMsg, asks first (190) and for each link
// (1238 + name, 1239, No keeps it).
TagCommandResult RemoveInvalidLinks(DataGrid& list, const QString& markFilter, bool noMsg, TagEngine& engine,
                                    const ListEnv& env, const QString& journalPath = QString());

// optTab1_FilenameToTag: number (with chbTab1_NumToTrack), artist and title of each row's
// file name into the tag set chosen in the tag window (UpdateSet as a number), as the tag
// list's command does; the question 369 first (unless noMsg).
TagCommandResult FilenameToTagRows(DataGrid& list, int set, bool withTrack, const QString& markFilter,
                                   bool noMsg, TagEngine& engine, const ListEnv& env,
                                   const QString& journalPath = QString());

// The rating (or, with `mood`, the mood) of each row's file: the program's user text
// frame of V2, or the WMA field; an empty `value` removes it. The cells Rating and Mood
// follow the file. The menu entries and the keys of the data list share it.
TagCommandResult SetRatingMoodRows(DataGrid& list, bool mood, const QString& value, const QString& markFilter,
                                   bool noMsg, TagEngine& engine, const ListEnv& env,
                                   const QString& journalPath = QString());

// The album column of the data list for a tag set (UpdateSet as a number; 0 or unknown: V2).
int AlbumColumnOfSet(int set);

#pragma once
// Name splits of the data list: a path into folder and name, a name into base and
// extension, a base into artist and title, and the leading track numbers of artist and
// title. Pure text work; the scan, the rename engine and the tag transfers share them.

#include <QString>

class DataGrid;

// At the last "/": the folder (without a trailing "/") and the name. A path without a
// "/" has an empty folder and is all name.
void SplitPath(const QString& path, QString& folder, QString& name);

// At the last ".": base and extension (without the point). A name without a point
// leaves both empty.
void SplitExtension(const QString& name, QString& base, QString& extension);

// "Artist - Title" at the first "-"; a numeric text in front of the first "-" (a track
// number) moves the split to the next "-", and the number stays in the artist. Without
// any "-" the whole base is the artist and the title is empty; with a number and no
// second "-" both stay empty.
void SplitArtistTitle(const QString& base, QString& artist, QString& title);

// Leading digits of `artist` become `number`, padded with zeros to `digits`; then
// everything up to the first letter is dropped. When nothing is left and `row` > 0,
// the artist is taken from the text between the first and second "-" of the file name
// (column FileName) of that row of `list`.
void StripArtistNumber(QString& artist, QString& number, int row, int digits, const DataGrid* list = nullptr);
// The same with the digits of the settings (row NumberDigits).
void StripArtistNumber(QString& artist, QString& number, int row);

// A leading number of `title` (digits and "#") becomes `number`, padded like the
// artist's; the trimmed rest is `rest`.
void StripTitleNumber(const QString& title, QString& number, QString& rest, int digits);
void StripTitleNumber(const QString& title, QString& number, QString& rest);

// Digits padded with zeros to `digits` places ("7" -> "07"); leading zeros beyond the
// width go ("0012" -> "12"). Empty for a text without digits.
QString PadNumber(QStringView digitText, int digits);

// True for a text that reads as a number (after trimming): digits with an optional sign
// and one decimal point or comma.
bool IsNumericText(QStringView text);

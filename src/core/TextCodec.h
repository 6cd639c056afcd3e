#pragma once
// Text files of the program and of the user (language files, playlists, song texts): UTF-8
// without a byte-order mark is written; on reading, a leading mark is dropped, and a file
// that is not valid UTF-8 is read as Windows-1252, as older programs wrote them.

#include <QByteArray>
#include <QString>

QString DecodeTextFile(const QByteArray& bytes);

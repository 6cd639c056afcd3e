#pragma once
// The reserved row marks of the FTag column (column 2 of LbxInput, LbxRef, LbxTag,
// LbxPlaylist). Everything else in that column is the user's own text.

#include <QString>

namespace Mark {
inline const QString Default = QStringLiteral("_#-->");        // positive mark of the last marking command
inline const QString Failed = QStringLiteral("_#-/->");        // the operation on this row's file failed
inline const QString FailedPrefix = QStringLiteral("_#-/-> "); // put in front of the old mark on load
inline const QString DDelete = QStringLiteral("_#DDelete");    // staged: drop this row from the list
inline const QString Moved = QStringLiteral("_#moved");        // staged: file moved to another list
inline const QString Found = QStringLiteral("_#FOUND");        // hit of the last find (a prefix)
inline const QString FoundFilter = QStringLiteral("_#FOUND "); // hit of the filter (a prefix, with its blank)
inline const QString TypePrefix = QStringLiteral("_#_");       // marking by file type: "_#_" + type
inline const QString TagFilter = QStringLiteral("_#TAGFILTER");  // hit of the tag list filter
inline const QString SpecialNamePrefix = QStringLiteral("_##_"); // file name prefix, not a row mark
} // namespace Mark

#pragma once
// The desktop's trash, after the freedesktop.org Trash specification: a trashed file
// goes to "files/" of a trash folder, and "info/<name>.trashinfo" beside it records
// where it came from and when, so that a file manager can put it back.
//
// Which trash: the home trash ($XDG_DATA_HOME/Trash, by default
// ~/.local/share/Trash) for files on the file system of the home trash; for a file on
// another volume the volume's own "$topdir/.Trash/$uid" (when the administrator made
// ".Trash" with the sticky bit) or "$topdir/.Trash-$uid". A file is never copied
// between file systems on its way into the trash: when no trash on its own volume can
// be used, the call fails and the file stays.

#include <QString>

struct TrashResult {
    int error = 0;       // 0 success, else errno
    QString trashedPath; // the file's new place inside "files/"
    QString infoPath;    // its ".trashinfo"
};

// Moves a file, link or folder to the trash.
TrashResult MoveToTrash(const QString& path);

// $XDG_DATA_HOME/Trash, or ~/.local/share/Trash when the variable is unset or not absolute.
QString HomeTrashPath();

// The trash folder that would take `path` (created when missing), or empty with
// `error` set when none on its volume can be used.
QString TrashFolderFor(const QString& path, int* error = nullptr);

#pragma once
// Folder listing for the scan and the folder tree: one folder at a time, straight from
// the directory stream. A folder that can't be read lists nothing. Symbolic links are
// followed; each folder reports its (device, inode) so that a walker can leave a folder
// it has already entered (a link loop) alone.

#include <QString>
#include <cstdint>
#include <vector>

struct FolderId {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    bool operator<(const FolderId& o) const {
        return device != o.device ? device < o.device : inode < o.inode;
    }
    bool operator==(const FolderId& o) const { return device == o.device && inode == o.inode; }
};

struct FolderEntry {
    QString name;
    bool isDir = false;
};

// Lists `folder` (entries "." and ".." and hidden entries, whose names begin with ".",
// are left out), sorted by name. Returns false, with `entries` empty, when the folder
// can't be opened. `id` receives the identity of the folder itself.
bool ListFolder(const QString& folder, std::vector<FolderEntry>& entries, FolderId* id = nullptr);

// Identity of an existing folder; false when it can't be examined.
bool FolderIdentity(const QString& folder, FolderId& id);

// The sub-folders of `folder`, sorted by their upper-cased names (the folder tree).
std::vector<QString> ListSubfolders(const QString& folder);
// True when `folder` has at least one sub-folder (the tree shows an expander).
bool HasSubfolder(const QString& folder);

// Modification time of a file as "dd.MM.yyyy" in local time; empty when the file
// can't be examined.
QString FileDateText(const QString& path);

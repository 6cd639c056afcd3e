#pragma once
// Mounted volumes: what the program calls drives. The file layer asks whether two
// paths share a file system (a move across file systems is a verified copy) and where
// the volume of a path begins (for the trash of removable and other volumes).

#include <QList>
#include <QString>

struct Volume {
    QString rootPath;       // mount point, "/" for the root file system
    QString name;           // label when the system knows one, else the last part of the root path
    QString fileSystemType; // "ext4", "vfat", ...
    qint64 bytesTotal = 0;
    qint64 bytesFree = 0; // available to this user
    bool readOnly = false;
};

// Real volumes only: pseudo file systems (proc, sysfs, cgroup, ...) are left out.
// Sorted by root path.
QList<Volume> MountedVolumes();

// True when both existing paths lie on the same file system (same device). A path
// that does not exist yet is judged by its nearest existing parent folder.
bool SameFileSystem(const QString& a, const QString& b);

// The top folder of the file system that holds `path`: the last folder on the way up
// that is still on the same device. Empty when the path cannot be examined.
QString MountTopDir(const QString& path);

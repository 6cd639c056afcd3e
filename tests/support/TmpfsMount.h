#pragma once
// A small tmpfs mounted for one test (root only): a real second file system, a full
// disk of a chosen size, or a read-only volume. Unmounted when it goes out of scope.

#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <sys/mount.h>
#include <unistd.h>

class TmpfsMount {
public:
    // sizeText as mount(8) takes it: "64k", "4m".
    explicit TmpfsMount(const char* sizeText = "4m") {
        if (::geteuid() != 0 || !m_dir.isValid())
            return;
        const QByteArray options = QByteArray("size=") + sizeText + ",mode=0755";
        m_mounted = ::mount("tmpfs", QFile::encodeName(m_dir.path()).constData(), "tmpfs", 0,
                            options.constData()) == 0;
    }
    ~TmpfsMount() {
        if (m_mounted)
            ::umount2(QFile::encodeName(m_dir.path()).constData(), MNT_DETACH);
    }
    TmpfsMount(const TmpfsMount&) = delete;
    TmpfsMount& operator=(const TmpfsMount&) = delete;

    bool IsMounted() const { return m_mounted; }
    QString Path() const { return m_dir.path(); }
    bool MakeReadOnly() {
        return m_mounted && ::mount(nullptr, QFile::encodeName(m_dir.path()).constData(), nullptr,
                                    MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

private:
    QTemporaryDir m_dir;
    bool m_mounted = false;
};

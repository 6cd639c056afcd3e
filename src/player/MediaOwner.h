#pragma once
// MediaOwner: who plays on the one media device. The player of the data list and the
// synchronising editor both play through Media(); before one of them opens a song it
// claims the device, and the one that had it hears so through `taken` and puts its own
// display to rest without touching the device (the song on it now belongs to the other).

#include <QObject>
#include <QPointer>

class MediaOwner : public QObject {
    Q_OBJECT
public:
    static MediaOwner& Instance();

    // Makes `who` the owner; emits taken(who) when the owner changes.
    void Claim(QObject* who);
    // Gives the device up (after a close); nobody owns it then.
    void Release(QObject* who);
    bool Owns(const QObject* who) const { return m_owner == who; }
    // Nobody else plays: the device is free for `who` or already its own.
    bool FreeFor(const QObject* who) const { return !m_owner || m_owner == who; }
    QObject* Current() const { return m_owner; }

signals:
    void taken(QObject* newOwner);

private:
    using QObject::QObject;
    QPointer<QObject> m_owner;
};

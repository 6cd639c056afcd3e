#include "player/MediaOwner.h"

MediaOwner& MediaOwner::Instance() {
    static MediaOwner* owner = new MediaOwner; // lives as long as the device
    return *owner;
}

void MediaOwner::Claim(QObject* who) {
    if (m_owner == who)
        return;
    m_owner = who;
    emit taken(who);
}

void MediaOwner::Release(QObject* who) {
    if (m_owner == who)
        m_owner = nullptr;
}

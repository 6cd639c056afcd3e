#include "player/MediaDevice.h"

#include "player/MpvDevice.h"

#include <memory>

namespace {
std::unique_ptr<MediaDevice> g_default;
MediaDevice* g_override = nullptr;
QString g_ao;
} // namespace

MediaDevice& Media() {
    if (g_override)
        return *g_override;
    if (!g_default)
        g_default = std::make_unique<MpvDevice>(g_ao);
    return *g_default;
}

void SetMedia(MediaDevice* device) {
    g_override = device;
}

void SetDefaultAudioOutput(const QString& ao) {
    g_ao = ao;
}

void CloseMedia() {
    if (g_override)
        g_override->Close();
    if (g_default)
        g_default->Close();
}

#include "player/MediaDevice.h"

namespace {

// The device of a program without a sound library: it opens nothing.
class NoMediaDevice : public MediaDevice {
public:
    bool Open(const QString&) override { return false; }
    void PlayFrom(qint32) override {}
    void Close() override {}
    void Pause() override {}
    void Resume() override {}
    qint32 Position() const override { return 0; }
    bool IsOpen() const override { return false; }
    void SetVolume(int percent) override { m_volume = percent; }
    int Volume() const override { return m_volume; }
    bool HasAudioOutput() const override { return false; }

private:
    int m_volume = 100;
};

MediaFactory g_factory;
std::unique_ptr<MediaDevice> g_default;
MediaDevice* g_override = nullptr;
QString g_ao;

} // namespace

void SetMediaFactory(MediaFactory factory) {
    g_factory = std::move(factory);
}

MediaDevice& Media() {
    if (g_override)
        return *g_override;
    if (!g_default)
        g_default = g_factory ? g_factory(g_ao) : std::make_unique<NoMediaDevice>();
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

#pragma once
// MediaDevice: the one device that plays songs for the player of the data list and for the
// synchronising editor. One song at a time; positions in milliseconds.
//
// The device reports through signals on the user-interface thread. Open() waits for the
// outcome while the event queue runs (no busy waiting), so the caller knows at once whether
// the song can be played.

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

class MediaDevice : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~MediaDevice() override = default;

    // Opens the song, paused at 0. False when it is missing or cannot be played.
    virtual bool Open(const QString& path) = 0;
    virtual void PlayFrom(qint32 ms) = 0; // plays from this position
    virtual void Close() = 0;
    virtual void Pause() = 0;
    virtual void Resume() = 0;
    virtual qint32 Position() const = 0; // 0 when nothing is open
    virtual bool IsOpen() const = 0;
    // True when the open song has played to its end (or its stream broke off).
    virtual bool AtEnd() const { return false; }
    // The device's own volume, 0 to 100.
    virtual void SetVolume(int percent) = 0;
    virtual int Volume() const = 0;
    // False once the device found no audio output (it then plays silently); the window
    // says so once.
    virtual bool HasAudioOutput() const { return true; }
    // The engine's name of the stream type of the open song, empty when none.
    virtual QString StreamType() const { return {}; }

signals:
    void positionChanged(qint32 ms);
    void endReached();
    void audioOutputMissing();
};

// Makes the program's device for an audio output list (see SetDefaultAudioOutput). The
// window program installs the libmpv device (platform/mpv); without a factory the shared
// device opens nothing, so the logic runs and is tested without a sound library.
using MediaFactory = std::function<std::unique_ptr<MediaDevice>(const QString& ao)>;
void SetMediaFactory(MediaFactory factory);

// The shared device; created at first use by the factory (unless a test set another).
MediaDevice& Media();
// For tests: the device that Media() gives from now on (nullptr: back to the default).
void SetMedia(MediaDevice* device);
// For tests and the benchmarks: the audio output of the default device, e.g. "null".
// Takes effect for a device created afterwards.
void SetDefaultAudioOutput(const QString& ao);
// Closes the shared device, if it was ever created (closing of the program).
void CloseMedia();

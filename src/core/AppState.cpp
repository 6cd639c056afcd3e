#include "core/AppState.h"

AppState& State() {
    static AppState s;
    return s;
}

const std::array<QString, kFileTypeCount>& FileTypeNames() {
    static const std::array<QString, kFileTypeCount> names = {
        QStringLiteral("Datei"), QStringLiteral("MP3"), QStringLiteral("WMA"), QStringLiteral("MONKEY"),
        QStringLiteral("FLAC"),  QStringLiteral("WAV"), QStringLiteral("OGG"), QStringLiteral("MPP"),
        QStringLiteral("AAC"),   QStringLiteral("MP4")};
    return names;
}

QString FileTypeName(int type) {
    const auto& n = FileTypeNames();
    return type >= 0 && type < kFileTypeCount ? n[std::size_t(type)] : n[0];
}

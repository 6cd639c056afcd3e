#include "cli/CliCommands.h"
#include "platform/PosixFile.h"

#include <cstdio>

void Out(const QString& text) {
    const QByteArray bytes = PosixFile::Native(text); // names with their own bytes
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fputc('\n', stdout);
}

void Err(const QString& text) {
    const QByteArray bytes = PosixFile::Native(text); // names with their own bytes
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    std::fputc('\n', stderr);
}

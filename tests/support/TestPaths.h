#pragma once
// Where the tests find the repository, the built program folder and the fixtures.

#include <QString>

inline QString SourceDir() {
    return QStringLiteral(QLT_SOURCE_DIR);
}
inline QString ProgramDir() {
    return QStringLiteral(QLT_PROGRAM_DIR);
}
inline QString FixtureDir() {
    return QStringLiteral(QLT_FIXTURE_DIR);
}

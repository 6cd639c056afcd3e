#pragma once
// The program folder: where qlt.ini, Caption.qlt, lnkpic.qlt and the folders data,
// temp, skin, icons and language lie. By default the folder of the executable; tests
// and tools set their own.

#include <QString>

QString AppPath();                        // no trailing "/"
void SetAppPath(const QString& dir);      // for tests and tools
QString AppFile(const QString& relative); // AppPath() + "/" + relative

#pragma once
// modExtPrg: the external programs of lbxPrg_Extern (settings rows 1 to 10, name in
// column 2, path in column 3), offered under the keys extPrg01 to extPrg10, and their
// start without a shell.

#include <QString>
#include <QStringList>
#include <vector>

class DataGrid;
class Prompt;

inline constexpr int kMaxExternalPrograms = 10;

struct ExternalProgram {
    int number = 0; // 1 to 10: the settings row
    QString name, path;
    QString Key() const; // "extPrg01" to "extPrg10"
};

// The programs with a path, in row order; ten at most.
std::vector<ExternalProgram> ExternalPrograms(const DataGrid& ini);
// The number of a key "extPrg01".."extPrg10"; 0 for any other text.
int ExternalProgramNumber(const QString& key);

// The program file to start: `path` itself when it names a folder path, else looked up in
// PATH; empty when there is no such executable file.
QString ResolveProgram(const QString& path);

// Starts `path` detached with `arguments`, each handed over as one argument as it stands
// (no shell: quotes, blanks, "$" and a leading "-" reach the program unchanged). A missing
// program or a failed start gives a message; returns whether it started.
bool StartExternalProgram(const QString& path, const QStringList& arguments, Prompt& prompt);

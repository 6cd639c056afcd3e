#include "core/ProgramFolder.h"

#include "core/AppPaths.h"
#include "core/DataGrid.h"
#include "platform/SafeFile.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

#ifndef QLT_VERSION
#define QLT_VERSION "0"
#endif

namespace {

const QString kShippedMark = QStringLiteral(".shipped"); // copy of what was shipped last time
const QString kSignatureFile = QStringLiteral(".shipped/signature");
const QString kShippedCaption = QStringLiteral(".shipped/Caption.qlt");
const QString kCaptionFile = QStringLiteral("Caption.qlt");
const QString kIniFile = QStringLiteral("qlt.ini");

// The folders the program writes into; made on every preparation.
const char* const kWorkFolders[] = {"data", "reference", "skin", "temp", "language", "icons"};

bool Writable(const QString& folder) {
    return ::access(QFile::encodeName(folder).constData(), W_OK) == 0;
}

bool IsFile(const QString& path) {
    return QFileInfo(path).isFile();
}

// The files of the shipped folder, relative, sorted; hidden files are not shipped.
QStringList ShippedFiles(const QString& shared) {
    QStringList files;
    QDirIterator it(shared, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files << QDir(shared).relativeFilePath(path);
    }
    files.sort();
    return files;
}

// What changes when the package is updated: names, sizes and contents of the shipped files.
QByteArray Signature(const QString& shared, const QStringList& files) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(QByteArrayLiteral(QLT_VERSION "\n"));
    for (const QString& rel : files) {
        QFile f(shared + u'/' + rel);
        hash.addData(rel.toUtf8());
        hash.addData(QByteArrayLiteral("\n"));
        if (f.open(QIODevice::ReadOnly))
            hash.addData(&f);
    }
    return hash.result().toHex();
}

bool CopyFile(const QString& from, const QString& to, QString* error) {
    QFile in(from);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = from + QStringLiteral(": ") + in.errorString();
        return false;
    }
    const QByteArray bytes = in.readAll();
    if (in.error() != QFileDevice::NoError) {
        *error = from + QStringLiteral(": ") + in.errorString();
        return false;
    }
    if (!QDir().mkpath(QFileInfo(to).absolutePath())) {
        *error = QFileInfo(to).absolutePath();
        return false;
    }
    QString why;
    if (!SafeFile::WriteWholeFile(to, bytes, &why)) {
        *error = to + QStringLiteral(": ") + why;
        return false;
    }
    return true;
}

QString SetupError(const QString& folder, const QString& detail) {
    return QStringLiteral("Der Programmordner '%1' konnte nicht eingerichtet werden.\n%2\n\n"
                          "The program folder '%1' could not be set up.\n%2")
        .arg(folder, detail);
}

} // namespace

ProgramFolderChoice ChooseProgramFolder(const QString& exeFolder, const QString& userDataFolder) {
    ProgramFolderChoice choice;
    const QString exe = QDir::cleanPath(exeFolder);
    choice.folder = exe;
    const QString shared = QDir::cleanPath(exe + QStringLiteral("/../share/quillotune"));
    const bool ownFiles = IsFile(exe + u'/' + kIniFile);
    if (ownFiles && Writable(exe))
        return choice; // a build folder or a folder the user keeps the program in
    if (!IsFile(shared + u'/' + kIniFile))
        return choice; // nothing shipped to copy from: the start-up check tells what is missing
    choice.sharedFolder = shared;
    choice.folder = QDir::cleanPath(userDataFolder + QStringLiteral("/quillotune"));
    choice.perUser = true;
    return choice;
}

bool MergeCaptionFile(const QString& userFile, const QString& oldShippedFile, const QString& newShippedFile,
                      QString* error) {
    DataGrid user, oldShipped, newShipped;
    if (!user.LoadFile(userFile)) {
        *error = userFile + QStringLiteral(": ") + user.LastFileError();
        return false;
    }
    if (!newShipped.LoadFile(newShippedFile)) {
        *error = newShippedFile + QStringLiteral(": ") + newShipped.LastFileError();
        return false;
    }
    // Without the earlier shipped table every text the user has counts as the user's own.
    const bool haveBase = !oldShippedFile.isEmpty() && oldShipped.LoadFile(oldShippedFile);
    while (user.Cols() < newShipped.Cols()) {
        const GridColumn& c = newShipped.Column(user.Cols() + 1);
        user.AddColumn(c.key, c.caption);
    }
    const int lastShippedColumn = 4; // number, note, German, English; 5 and 6 are imported
    bool changed = false;
    for (int row = 1; row <= newShipped.Rows(); ++row) {
        if (row > user.Rows()) {
            QStringList cells = newShipped.RowCells(row);
            while (cells.size() < user.Cols())
                cells << QString();
            while (cells.size() > user.Cols())
                cells.removeLast();
            user.AddRow(cells);
            changed = true;
            continue;
        }
        for (int col = 1; col <= std::min(lastShippedColumn, newShipped.Cols()); ++col) {
            const QString fresh = newShipped.CellText(row, col);
            const QString mine = user.CellText(row, col);
            if (fresh == mine)
                continue;
            const QString before = haveBase && row <= oldShipped.Rows() && col <= oldShipped.Cols()
                                       ? oldShipped.CellText(row, col)
                                       : QString();
            // An empty cell of the user's is a row the user never had: it takes the new text.
            if (mine == before || mine.isEmpty()) {
                user.SetCellText(row, col, fresh);
                changed = true;
            }
        }
    }
    if (!changed)
        return true;
    if (!user.SaveFile(userFile)) {
        *error = userFile + QStringLiteral(": ") + user.LastFileError();
        return false;
    }
    return true;
}

ProgramFolderSetup PrepareProgramFolder(const ProgramFolderChoice& choice) {
    ProgramFolderSetup setup;
    if (!choice.perUser)
        return setup;
    const QString folder = choice.folder;
    const QString shared = choice.sharedFolder;
    auto fail = [&](const QString& detail) {
        setup.ok = false;
        setup.error = SetupError(folder, detail);
        return setup;
    };
    if (!QDir().mkpath(folder))
        return fail(folder);
    for (const char* sub : kWorkFolders) {
        if (!QDir().mkpath(folder + u'/' + QLatin1String(sub)))
            return fail(folder + u'/' + QLatin1String(sub));
    }
    const QStringList files = ShippedFiles(shared);
    const QByteArray signature = Signature(shared, files);
    QFile sigFile(folder + u'/' + kSignatureFile);
    const bool firstStart = !sigFile.exists();
    if (!firstStart) {
        if (!sigFile.open(QIODevice::ReadOnly))
            return fail(sigFile.fileName() + QStringLiteral(": ") + sigFile.errorString());
        if (sigFile.readAll().trimmed() == signature)
            return setup; // nothing new shipped
        sigFile.close();
    }
    QString error;
    for (const QString& rel : files) {
        const QString target = folder + u'/' + rel;
        if (IsFile(target))
            continue; // never overwrite what the user has
        // After the first start a missing settings or caption file is the user's doing:
        // the start-up check reports it instead of quietly replacing it.
        if (!firstStart && (rel == kIniFile || rel == kCaptionFile))
            continue;
        if (!CopyFile(shared + u'/' + rel, target, &error))
            return fail(error);
        if (firstStart)
            setup.filled = true;
    }
    const QString userCaption = folder + u'/' + kCaptionFile;
    const QString shippedCaption = shared + u'/' + kCaptionFile;
    const QString baseCaption = folder + u'/' + kShippedCaption;
    if (!firstStart && IsFile(userCaption) && IsFile(shippedCaption)) {
        if (!MergeCaptionFile(userCaption, IsFile(baseCaption) ? baseCaption : QString(), shippedCaption,
                              &error))
            return fail(error);
        setup.updated = true;
    }
    if (IsFile(shippedCaption) && !CopyFile(shippedCaption, baseCaption, &error))
        return fail(error);
    QString why;
    if (!SafeFile::WriteWholeFile(folder + u'/' + kSignatureFile, signature + '\n', &why))
        return fail(folder + u'/' + kSignatureFile + QStringLiteral(": ") + why);
    setup.filled = firstStart;
    return setup;
}

ProgramFolderSetup UseProgramFolder() {
    const QString userData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const ProgramFolderChoice choice = ChooseProgramFolder(QCoreApplication::applicationDirPath(), userData);
    const ProgramFolderSetup setup = PrepareProgramFolder(choice);
    if (choice.perUser)
        SetAppPath(choice.folder);
    return setup;
}

QString ProgramVersion() {
    return QStringLiteral(QLT_VERSION);
}

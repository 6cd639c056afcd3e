#pragma once
// A working setting for the tests of the tag list: the shipped captions in English,
// settings in memory, a data list with the 71 columns, the tag list, an engine of its
// own, a scripted prompt, and copies of the audio fixtures in a temporary folder.

#include "ProgramFolder.h"
#include "TestPaths.h"

#include "core/AppState.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "tag/TagEngine.h"
#include "tag/modTagList.h"
#include "tag/modTagUpdate.h"

#include <QFile>
#include <QTemporaryDir>

class TagUiFixture {
public:
    TagUiFixture() {
        QFile::copy(ProgramDir() + QStringLiteral("/Caption.qlt"), pf.file(QStringLiteral("Caption.qlt")));
        pf.WriteIni();
        LoadCaptionTable();
        SetLanguageColumn(kLanguageEnglish);
        LoadSettings(pf.file(QStringLiteral("qlt.ini")));
        EnsureSettingsShape();
        for (const auto& c : kInputColumns)
            input.AddColumn(QString::fromLatin1(c.key), QString(), c.widthTwips, c.align, true, c.sortType);
        DefineTagList(tag);
    }

    // The stored sample of a kind ("mp3", "flac", "ogg", "wma").
    static QString Sample(const QString& kind) { return FixtureDir() + QStringLiteral("/tone.") + kind; }

    // Copies a sample to `name` in the work folder and adds its data list row.
    QString AddFile(const QString& kind, const QString& name) {
        const QString path = work.filePath(name);
        QFile::remove(path);
        QFile::copy(Sample(kind), path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        const int type = engine.OpenFile(path);
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Type - 1] = FileTypeName(type);
        cells[InCol::Path - 1] = work.path();
        input.AddRow(cells);
        return path;
    }

    // Loads every data list row of the type into the tag list (answers Yes throughout).
    LoadTagResult LoadAll(const QString& type) {
        input.SelectAll();
        LoadTagRequest req;
        req.typeText = type;
        return LoadTagList(input, tag, req, prompt);
    }

    TagBatch Batch() {
        TagBatch b;
        b.lbxTag = &tag;
        b.lbxInput = &input;
        b.engine = &engine;
        b.prompt = &prompt;
        b.busy = &busy;
        return b;
    }

    QString PathOf(int tagRow) const { return TagRowPath(tag, tagRow); }

    ProgramFolder pf;
    QTemporaryDir work;
    DataGrid input;
    DataGrid tag;
    TagEngine engine;
    ScriptedPrompt prompt;
    bool busy = false;
};

// btnTab1_RefOK: a file of one list replaces the file of the other, in both directions,
// keeping the replaced file's name and tags or not, with its guards and failures; and the
// other commands of the reference list: found rows selected, the mark column, the export.

#include "InstalledCaptions.h"
#include "TagTestUtil.h"
#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Settings.h"
// GCC 12 reports a false "maybe uninitialized" inside std::optional<QString> of ScriptedPrompt.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include "core/Prompt.h"
#pragma GCC diagnostic pop
#include "list/InputColumns.h"
#include "list/modListColumns.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"
#include "ref/modRefReplace.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace tagtest;

class TestRefReplace : public QObject {
    Q_OBJECT
    QTemporaryDir m_app;
    QTemporaryDir m_xdg;
    QTemporaryDir m_dir;
    DataGrid m_input, m_ref;
    ScriptedPrompt m_prompt;
    QString m_dataFolder, m_refFolder;

    // A data row and a reference row for files that are there.
    int AddData(const QString& name, const QString& type = QStringLiteral("MP3")) {
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Path - 1] = m_dataFolder;
        cells[InCol::Type - 1] = type;
        cells[InCol::DurationS - 1] = QStringLiteral("3");
        cells[InCol::DurationMS - 1] = QStringLiteral("00:03");
        cells[InCol::SizeByte - 1] = QString::number(QFileInfo(m_dataFolder + u'/' + name).size());
        cells[InCol::SizeMByte - 1] = QStringLiteral("0.010");
        cells[InCol::Bitrate - 1] = QStringLiteral("128");
        cells[InCol::Frequency - 1] = QStringLiteral("44100");
        m_input.AddRow(cells);
        return m_input.Rows();
    }
    int AddRef(const QString& name, const QString& tf = QStringLiteral("no")) {
        m_ref.AddRow({QStringLiteral("remark"), QString(), tf, name, QString(), QString(),
                      QStringLiteral("OGG"), m_refFolder, QStringLiteral("9"), QStringLiteral("00:09"),
                      QStringLiteral("1"), QStringLiteral("0.000"), QStringLiteral("64"),
                      QStringLiteral("22050"), QString(), QString()});
        return m_ref.Rows();
    }
    static QString V2Title(const QString& path) {
        TagEngine e;
        if (e.OpenFile(path) == 0)
            return QStringLiteral("<unreadable>");
        return e.HasV2() ? e.V2Title() : QStringLiteral("<no v2>");
    }
    static bool SetV2(const QString& path, const QString& title, const QString& artist) {
        TagEngine e;
        if (e.OpenFile(path) == 0)
            return false;
        e.SetV2Title(title);
        e.SetV2Artist(artist);
        return e.SaveV2(path) != 0;
    }
    void SelectPair(int inputRow, int refRow) {
        m_input.SetCurRow(inputRow);
        m_input.SelectRange(1, m_input.Rows(), false);
        m_input.SetSelected(inputRow, true);
        m_ref.SetCurRow(refRow);
        m_ref.SelectRange(1, m_ref.Rows(), false);
        m_ref.SetSelected(refRow, true);
    }
    int Trashed() const {
        return int(QDir(m_xdg.path() + QStringLiteral("/Trash/files")).entryList(QDir::Files).size());
    }

private slots:
    void initTestCase() {
        SetAppPath(m_app.path());
        qputenv("XDG_DATA_HOME", m_xdg.path().toUtf8());
        QVERIFY(LoadInstalledCaptions(kLanguageEnglish));
        EnsureSettingsShape();
    }
    void init() {
        for (DataGrid* g : {&m_input, &m_ref}) {
            g->Clear();
            g->RemoveAllColumns();
        }
        DefineInputColumns(m_input);
        DefineRefColumns(m_ref);
        m_prompt.shown.clear();
        m_dataFolder =
            m_dir.path() + QStringLiteral("/data") + QString::number(QRandomGenerator::global()->generate());
        m_refFolder =
            m_dir.path() + QStringLiteral("/ref ä") + QString::number(QRandomGenerator::global()->generate());
        QVERIFY(QDir().mkpath(m_dataFolder));
        QVERIFY(QDir().mkpath(m_refFolder));
    }

    // ---- guards ------------------------------------------------------------------------
    void guardsNeedBothCurrentRowsAndOneRowEach() {
        ReplaceOptions o;
        RefReplace(m_input, m_ref, o, m_prompt);
        QCOMPARE(m_prompt.LastText(), Caption(CapRefNeedsBothRows));

        CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("a.mp3"));
        CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("b.mp3"));
        AddData(QStringLiteral("a.mp3"));
        AddData(QStringLiteral("b.mp3"));
        RefReplace(m_input, m_ref, o, m_prompt);
        QCOMPARE(m_prompt.LastText(), Caption(CapRefNeedsBothRows)); // the reference list is empty

        AddRef(QStringLiteral("a.mp3"));
        SelectPair(1, 1);
        m_input.SetSelected(2, true);
        RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(m_prompt.LastText().contains(Caption(CapRefOneRowOnly)));
        QVERIFY(m_prompt.LastText().contains(Caption(CapRefWorksOnCurrentRows)));
        QVERIFY(QFile::exists(m_dataFolder + QStringLiteral("/b.mp3")));
    }

    void missingSourceAndSameFileAreRefused() {
        AddData(QStringLiteral("gone.mp3"));
        AddRef(QStringLiteral("other.mp3"));
        SelectPair(1, 1);
        ReplaceOptions o;
        ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(!r.done);
        QVERIFY(m_prompt.LastText().contains(Caption(CapFileNotFound)));
        QVERIFY(m_prompt.LastText().contains(Caption(CapCheckPath)));

        // The reference row names the very file of the data row.
        init();
        CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("same.mp3"));
        AddData(QStringLiteral("same.mp3"));
        m_refFolder = m_dataFolder;
        AddRef(QStringLiteral("same.mp3"));
        SelectPair(1, 1);
        o.keepFilename = true;
        r = RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(!r.done);
        QCOMPARE(m_prompt.LastText(), Caption(CapSameSourceTarget));
        QVERIFY(QFile::exists(m_dataFolder + QStringLiteral("/same.mp3")));
    }

    // ---- data replaces reference -------------------------------------------------------
    void fromDataWithTheSourceNameAndItsTags() {
        const QString src = CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("new.mp3"));
        const QString old = CopyFixture(QStringLiteral("tone.mp3"), m_refFolder, QStringLiteral("old.mp3"));
        QVERIFY(SetV2(src, QStringLiteral("New title"), QStringLiteral("New artist")));
        QVERIFY(SetV2(old, QStringLiteral("Old title"), QStringLiteral("Old artist")));
        AddData(QStringLiteral("new.mp3"));
        AddRef(QStringLiteral("old.mp3"));
        SelectPair(1, 1);
        ReplaceOptions o;
        const ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(r.done);
        QVERIFY(!r.failed);
        QCOMPARE(m_prompt.LastText(), Caption(CapOneFileCopied));
        QVERIFY(!QFile::exists(old));
        QCOMPARE(Trashed(), 1);
        const QString copy = m_refFolder + QStringLiteral("/new.mp3");
        QCOMPARE(r.newPath, copy);
        QCOMPARE(V2Title(copy), QStringLiteral("New title"));
        QVERIFY(QFile::exists(src));
        // The reference row takes the data row's name and technical values.
        QCOMPARE(m_ref.CellText(1, RefCol::FileName), QStringLiteral("new.mp3"));
        QCOMPARE(m_ref.CellText(1, RefCol::TF), Caption(CapStatusFound));
        QCOMPARE(m_ref.CellText(1, RefCol::Type), QStringLiteral("MP3"));
        QCOMPARE(m_ref.CellText(1, RefCol::DurationS), QStringLiteral("3"));
        QCOMPARE(m_ref.CellText(1, RefCol::Bitrate), QStringLiteral("128"));
        QCOMPARE(m_ref.CellText(1, RefCol::Frequency), QStringLiteral("44100"));
        QCOMPARE(m_ref.CellText(1, RefCol::Remark), QStringLiteral("remark"));
    }

    void fromDataKeepingNameAndTags() {
        const QString src = CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("new.mp3"));
        const QString old = CopyFixture(QStringLiteral("tone.mp3"), m_refFolder, QStringLiteral("old.mp3"));
        QVERIFY(SetV2(src, QStringLiteral("New title"), QStringLiteral("New artist")));
        QVERIFY(SetV2(old, QStringLiteral("Old title"), QStringLiteral("Old artist")));
        {
            // A picture and a comment are part of the whole tag that is kept.
            TagEngine e;
            QVERIFY(e.OpenFile(old) != 0);
            e.SetV2Album(QStringLiteral("Old album"));
            QVERIFY(e.SaveV2(old) != 0);
        }
        AddData(QStringLiteral("new.mp3"));
        AddRef(QStringLiteral("old.mp3"));
        SelectPair(1, 1);
        ReplaceOptions o;
        o.keepFilename = true;
        o.keepTags = true;
        o.noMsg = true;
        const ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(r.done);
        QVERIFY(!r.failed);
        QCOMPARE(m_prompt.shown.size(), size_t(0));
        QCOMPARE(r.newPath, old);
        TagEngine e;
        QVERIFY(e.OpenFile(old) == 1);
        QCOMPARE(e.V2Title(), QStringLiteral("Old title"));
        QCOMPARE(e.V2Artist(), QStringLiteral("Old artist"));
        QCOMPARE(e.V2Album(), QStringLiteral("Old album"));
        QVERIFY(!QFile::exists(m_refFolder + QStringLiteral("/new.mp3")));
        QCOMPARE(m_ref.CellText(1, RefCol::FileName), QStringLiteral("old.mp3"));
        QVERIFY(AudioUnchanged(old, QStringLiteral("tone.mp3"), 1));
        // An independent reader sees the kept tag.
        const QString py = MutagenPython();
        if (!py.isEmpty()) {
            const QString script = QString::fromUtf8(
                ReadAll(SourceDir() + QStringLiteral("/tests/support/mutagen_dump_id3.py")));
            const QString dump = RunPython(script, {old});
            if (!dump.startsWith(QLatin1String("ERROR")))
                QVERIFY2(dump.contains(QStringLiteral("Old title")), qPrintable(dump));
        }
    }

    void fromDataKeepsTheTypicalFieldsOfFlac() {
        const QString src =
            CopyFixture(QStringLiteral("tone.flac"), m_dataFolder, QStringLiteral("new.flac"));
        const QString old = CopyFixture(QStringLiteral("tone.flac"), m_refFolder, QStringLiteral("old.flac"));
        {
            TagEngine e;
            QVERIFY(e.OpenFile(old) == 4);
            e.SetFlacTitle(QStringLiteral("Kept title"));
            QVERIFY(e.SaveFlac(old) != 0);
            QVERIFY(e.OpenFile(src) == 4);
            e.SetFlacTitle(QStringLiteral("Source title"));
            QVERIFY(e.SaveFlac(src) != 0);
        }
        AddData(QStringLiteral("new.flac"), QStringLiteral("FLAC"));
        AddRef(QStringLiteral("old.flac"));
        SelectPair(1, 1);
        ReplaceOptions o;
        o.keepTags = true;
        o.noMsg = true;
        const ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(r.done && !r.failed);
        QCOMPARE(r.newPath, m_refFolder + QStringLiteral("/new.flac"));
        TagEngine e;
        QVERIFY(e.OpenFile(r.newPath) == 4);
        QCOMPARE(e.FlacTitle(), QStringLiteral("Kept title"));
        QCOMPARE(m_ref.CellText(1, RefCol::Type), QStringLiteral("FLAC"));
    }

    void fromDataRestoresAFileThatIsGone() {
        CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("back.mp3"));
        AddData(QStringLiteral("back.mp3"));
        AddRef(QStringLiteral("back.mp3"));
        SelectPair(1, 1);
        ReplaceOptions o;
        o.noMsg = true;
        o.keepTags = true;
        const ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(r.done && !r.failed);
        QVERIFY(QFile::exists(m_refFolder + QStringLiteral("/back.mp3")));
        QCOMPARE(m_ref.CellText(1, RefCol::TF), Caption(CapStatusFound));
    }

    void aTakenNameGetsTheNextNumber() {
        CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("song.mp3"));
        CopyFixture(QStringLiteral("tone.mp3"), m_refFolder, QStringLiteral("old.mp3"));
        CopyFixture(QStringLiteral("tone.mp3"), m_refFolder, QStringLiteral("song.mp3")); // another file
        AddData(QStringLiteral("song.mp3"));
        AddRef(QStringLiteral("old.mp3"));
        SelectPair(1, 1);
        ReplaceOptions o;
        o.noMsg = true;
        const ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(r.done);
        QCOMPARE(m_ref.CellText(1, RefCol::FileName), QStringLiteral("song (2).mp3"));
        QVERIFY(QFile::exists(m_refFolder + QStringLiteral("/song.mp3")));
    }

    // ---- reference replaces data -------------------------------------------------------
    void fromReferenceWithAndWithoutKeepingTags() {
        for (const bool keep : {false, true}) {
            init();
            const QString src =
                CopyFixture(QStringLiteral("tone.mp3"), m_refFolder, QStringLiteral("ref.mp3"));
            const QString old =
                CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("data.mp3"));
            QVERIFY(SetV2(src, QStringLiteral("Ref title"), QStringLiteral("A")));
            QVERIFY(SetV2(old, QStringLiteral("Data title"), QStringLiteral("B")));
            AddData(QStringLiteral("data.mp3"));
            AddRef(QStringLiteral("ref.mp3"), QStringLiteral("yes"));
            SelectPair(1, 1);
            ReplaceOptions o;
            o.direction = ReplaceDirection::FromReference;
            o.keepTags = keep;
            const ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
            QVERIFY(r.done && !r.failed);
            QCOMPARE(m_prompt.LastText(), Caption(CapOneFileCopied));
            QVERIFY(!QFile::exists(old));
            QCOMPARE(r.newPath, m_dataFolder + QStringLiteral("/ref.mp3"));
            QCOMPARE(V2Title(r.newPath), keep ? QStringLiteral("Data title") : QStringLiteral("Ref title"));
            // The data row takes the reference row's name and values.
            QCOMPARE(m_input.CellText(1, InCol::FileName), QStringLiteral("ref.mp3"));
            QCOMPARE(m_input.CellText(1, InCol::Type), QStringLiteral("OGG"));
            QCOMPARE(m_input.CellText(1, InCol::DurationS), QStringLiteral("9"));
            QCOMPARE(m_input.CellText(1, InCol::Frequency), QStringLiteral("22050"));
            QVERIFY(QFile::exists(src));
        }
    }

    void fromReferenceKeepingTheName() {
        CopyFixture(QStringLiteral("tone.mp3"), m_refFolder, QStringLiteral("ref.mp3"));
        const QString old = CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("data.mp3"));
        AddData(QStringLiteral("data.mp3"));
        AddRef(QStringLiteral("ref.mp3"));
        SelectPair(1, 1);
        ReplaceOptions o;
        o.direction = ReplaceDirection::FromReference;
        o.keepFilename = true;
        o.noMsg = true;
        const ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
        QVERIFY(r.done);
        QCOMPARE(r.newPath, old);
        QCOMPARE(m_input.CellText(1, InCol::FileName), QStringLiteral("data.mp3"));
        QVERIFY(QFile::exists(old));
    }

    void aFailedRemovalSetsTheFailedFlagAndChangesNothing() {
        if (::geteuid() == 0)
            QSKIP("root may write into a read-only folder");
        CopyFixture(QStringLiteral("tone.mp3"), m_refFolder, QStringLiteral("ref.mp3"));
        const QString old = CopyFixture(QStringLiteral("tone.mp3"), m_dataFolder, QStringLiteral("data.mp3"));
        AddData(QStringLiteral("data.mp3"));
        AddRef(QStringLiteral("ref.mp3"));
        SelectPair(1, 1);
        const QByteArray before = ReadAll(old);
        // A folder that may not be written: the file can't be removed from it.
        QVERIFY(::chmod(QFile::encodeName(m_dataFolder).constData(), 0555) == 0);
        for (const bool paperbin : {false, true}) {
            m_prompt.shown.clear();
            ReplaceOptions o;
            o.direction = ReplaceDirection::FromReference;
            o.paperbin = paperbin;
            const ReplaceResult r = RefReplace(m_input, m_ref, o, m_prompt);
            QVERIFY(!r.done);
            QVERIFY(r.failed);
            QVERIFY(!m_prompt.shown.empty());
            QVERIFY(m_prompt.LastText() != Caption(CapOneFileCopied));
        }
        ::chmod(QFile::encodeName(m_dataFolder).constData(), 0755);
        QCOMPARE(ReadAll(old), before);
        QCOMPARE(m_input.CellText(1, InCol::FileName), QStringLiteral("data.mp3"));
        QCOMPARE(m_input.CellText(1, InCol::Type), QStringLiteral("MP3"));
    }

    // ---- other commands ----------------------------------------------------------------
    void highlightFoundSelectsTheFoundRows() {
        AddRef(QStringLiteral("a.mp3"), Caption(CapStatusFound));
        AddRef(QStringLiteral("b.mp3"), Caption(CapStatusMissing));
        AddRef(QStringLiteral("c.mp3"), Caption(CapStatusFound));
        m_ref.SetSelected(2, true);
        QCOMPARE(RefHighlightFound(m_ref), 2);
        QCOMPARE(m_ref.SelectedRows(), (std::vector<int>{1, 3}));
    }

    void markColumnShownAndHidden() {
        QVERIFY(RefMarkColumnShown(m_ref));
        ShowRefMarkColumn(m_ref, false);
        QVERIFY(!m_ref.Column(RefCol::FTag).visible);
        QVERIFY(!RefMarkColumnShown(m_ref));
        ShowRefMarkColumn(m_ref, true);
        QVERIFY(RefMarkColumnShown(m_ref));
    }

    void exportsInAllFiveFormats() {
        AddRef(QStringLiteral("Ä song.mp3"), Caption(CapStatusFound));
        AddRef(QStringLiteral("b.mp3"));
        DataGrid& settings = Settings();
        for (const char* ext : {"xls", "txt", "csv", "xml", "htm"}) {
            m_prompt.shown.clear();
            const QString path = m_dir.path() + QStringLiteral("/out/ref.") + QLatin1String(ext);
            QDir().mkpath(QFileInfo(path).absolutePath());
            QVERIFY2(ExportRefList(m_ref, path, settings, false, m_prompt), ext);
            QCOMPARE(m_prompt.LastText(), Caption(CapListExported));
            QVERIFY(QFileInfo(path).size() > 0);
            if (QLatin1String(ext) != QLatin1String("xls"))
                QVERIFY2(QString::fromUtf8(ReadAll(path)).contains(QStringLiteral("Ä song.mp3")), ext);
        }
        QCOMPARE(Setting(85, 2), m_dir.path() + QStringLiteral("/out"));
        // Another ending writes nothing.
        QVERIFY(
            !ExportRefList(m_ref, m_dir.path() + QStringLiteral("/out/ref.doc"), settings, true, m_prompt));
        QVERIFY(!QFile::exists(m_dir.path() + QStringLiteral("/out/ref.doc")));
    }
};

QTEST_GUILESS_MAIN(TestRefReplace)
#include "test_refreplace.moc"

// The texts area without a window: text files (reading with the link line, the cut at
// 20,001 lines, the code page), the searches for text files and for lyric entries, saving
// a lyric with its language question, deleting entries, links between texts and songs,
// the hand-over to the synchronising editor, the direct edit, and the command-line verb.
// Lyric entries are read back with the engine and with python3-mutagen.

#include "InstalledCaptions.h"
#include "ProgramFolder.h"
#include "TagTestUtil.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "platform/PosixFile.h"
#include "tag/TagEngine.h"
#include "text/TexteColumns.h"
#include "text/modTexte.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>
#include <cstdio>

using namespace tagtest;

namespace {

const char kUsltDump[] = "import sys, json\n"
                         "from mutagen.id3 import ID3\n"
                         "t = ID3(sys.argv[1])\n"
                         "print(json.dumps([{'lang': f.lang, 'desc': f.desc, 'text': f.text}\n"
                         "                  for f in t.getall('USLT')]))\n";

} // namespace

class TestTexte : public QObject {
    Q_OBJECT

    ProgramFolder program;
    QString root;
    ScriptedPrompt prompt;
    TagEngine engine;
    DataGrid txt, lyrics, settings;

    TexteEnv Env() {
        TexteEnv env(prompt, engine, txt, lyrics);
        env.settings = &settings;
        env.saveSettingsFile = false;
        return env;
    }
    QString Write(const QString& rel, const QByteArray& bytes) {
        const QString path = root + u'/' + rel;
        QDir().mkpath(QFileInfo(path).absolutePath());
        if (!WriteAll(path, bytes))
            qFatal("cannot write");
        return path;
    }
    QString Song(const QString& rel, const char* fixture = "tone.mp3") {
        const QString path = root + u'/' + rel;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile::remove(path);
        if (!QFile::copy(FixtureDir() + u'/' + QLatin1String(fixture), path))
            qFatal("cannot copy");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        return path;
    }
    void AddLyrics(const QString& path, const QStringList& texts) {
        QVERIFY(engine.OpenFile(path) > 0);
        for (int i = 0; i < texts.size(); ++i)
            QVERIFY(
                engine.SetLyric(i + 1, QStringLiteral("ENG"), QStringLiteral("d%1").arg(i + 1), texts[i]));
        QVERIFY(engine.SaveV2(path));
    }
    QJsonArray MutagenLyrics(const QString& path) {
        const QString out = RunPython(QString::fromLatin1(kUsltDump), {path});
        if (out.startsWith(QLatin1String("ERROR")))
            qWarning("%s", qPrintable(out));
        return QJsonDocument::fromJson(out.toUtf8()).array();
    }
    QStringList Column(const DataGrid& g, int col) {
        QStringList c;
        for (int r = 1; r <= g.Rows(); ++r)
            c << g.CellText(r, col);
        return c;
    }

private slots:
    void initTestCase() {
        QVERIFY(LoadInstalledCaptions(kLanguageEnglish));
        root = QDir(program.path()).canonicalPath();
        QDir().mkpath(root + "/temp");
        for (int c = 1; c <= 8; ++c)
            settings.AddColumn(QStringLiteral("C%1").arg(c), QString());
        for (int r = 1; r <= 1000; ++r)
            settings.AddRow({});
    }
    void init() {
        prompt = ScriptedPrompt();
        txt.Clear();
        lyrics.Clear();
        DefineTxtColumns(txt);
        DefineLyricsColumns(lyrics);
    }

    // ---- the boxes and the steps ------------------------------------------------------------
    void targetBox() {
        TextPair b;
        b.box2Shown = false;
        QCOMPARE(ChooseTargetBox(b, false), 1); // box 1 empty
        b.text[0] = "one";
        QCOMPARE(ChooseTargetBox(b, true), 1); // only box 1 wanted: emptied and taken
        QVERIFY(b.text[0].isEmpty());
        b.text[0] = "one";
        QCOMPARE(ChooseTargetBox(b, false), 2); // box 2 hidden: shown and taken
        QVERIFY(b.box2Shown);
        QCOMPARE(b.active, 2);
        b.text[1] = "two";
        b.active = 1;
        QCOMPARE(ChooseTargetBox(b, false), 1); // both full: the active one
        QCOMPARE(b.text[1], QStringLiteral("two"));
        b.text[0] = "one";
        b.text[1].clear();
        QCOMPARE(ChooseTargetBox(b, false), 2); // box 2 empty
    }

    void progressSteps() {
        QVERIFY(ProgressStep(1, 5));
        QVERIFY(ProgressStep(95, 105)); // 10 left
        QVERIFY(!ProgressStep(94, 105));
        QVERIFY(ProgressStep(50, 1000));
        QVERIFY(!ProgressStep(51, 1000));
        QVERIFY(ProgressStep(100, 5000));
        QVERIFY(!ProgressStep(150, 5000));
        QCOMPARE(ProgressText(3, 7), QStringLiteral("File 3 of 7"));
    }

    // ---- reading texts --------------------------------------------------------------------
    void textOf20002LinesShows20001() {
        QByteArray b;
        for (int i = 1; i <= 20002; ++i)
            b += "line " + QByteArray::number(i) + "\r\n";
        const QString path = Write("long.txt", b);
        QString text;
        QVERIFY(ReadTextForBox(path, text));
        const QStringList lines = SplitTextLines(text);
        QCOMPARE(lines.size(), 20001);
        QCOMPARE(lines.last(), QStringLiteral("line 20001"));
        QVERIFY(text.endsWith(QLatin1String("line 20001\r\n")));
    }

    void missingLinkedSongIsMarked() {
        const QString path = Write("missing.txt", "/no/such/song.mp3  \r\nwords\r\n");
        QString text, song;
        QVERIFY(ReadTextForBox(path, text, &song));
        QCOMPARE(text, QStringLiteral("/no/such/song.mp3_#-/->\r\nwords\r\n"));
        QVERIFY(song.isEmpty());
        QVERIFY(LinksInText(text).isEmpty());
    }

    void leadingBlankIsNoLink() {
        // the link must begin in the first column; a blank in front makes it words
        const QString path = Write("blank.txt", " /no/such/song.mp3\r\n");
        QString text;
        QVERIFY(ReadTextForBox(path, text));
        QCOMPARE(text, QStringLiteral(" /no/such/song.mp3\r\n"));
    }

    void existingLinkedSongIsTrimmed() {
        const QString s = Song("linked/a.mp3");
        const QString path = Write("ok.txt", (s + "   \nla la\n").toUtf8());
        QString text, song;
        QVERIFY(ReadTextForBox(path, text, &song));
        QCOMPARE(text, s + QStringLiteral("\r\nla la\r\n"));
        QCOMPARE(song, s);
        QCOMPARE(LinksInText(text), QStringList{s});
    }

    void firstLineOfTwoCharactersIsNoLink() {
        const QString path = Write("two.txt", "/a\r\nb\r\n");
        QString text;
        QVERIFY(ReadTextForBox(path, text));
        QCOMPARE(text, QStringLiteral("/a\r\nb\r\n"));
        QVERIFY(!IsSongLinkLine("/a"));
        QVERIFY(IsSongLinkLine("/ab"));
    }

    void codePages() {
        QString text;
        QVERIFY(ReadTextForBox(Write("utf8.txt", "Grüße\r\n"), text));
        QCOMPARE(text, QStringLiteral("Grüße\r\n"));
        QVERIFY(ReadTextForBox(Write("1252.txt", "Gr\xfc\xdf"
                                                 "e\n"),
                               text));
        QCOMPARE(text, QStringLiteral("Grüße\r\n"));
        QVERIFY(!ReadTextForBox(root + "/none.txt", text));
        QVERIFY(text.isEmpty());
        QCOMPARE(TextFileBytes("a\nb\r\nc"), QByteArray("a\r\nb\r\nc"));
        QCOMPARE(WithCrLf("a\rb\n\nc"), QStringLiteral("a\r\nb\r\n\r\nc"));
    }

    void readerSurvivesMutations() {
        QByteArray base = "/x/y.mp3\r\nGrüße\r\n[00:01.00]la\r\n";
        QRandomGenerator rng(7);
        for (int i = 0; i < 300; ++i) {
            QByteArray b = base.left(rng.bounded(base.size() + 1));
            for (int k = 0; k < 4 && !b.isEmpty(); ++k)
                b[rng.bounded(b.size())] = char(rng.bounded(256));
            QString text;
            QVERIFY(ReadTextForBox(Write("fuzz.txt", b), text));
            QVERIFY(SplitTextLines(text).size() <= 4);
        }
    }

    // ---- searches ---------------------------------------------------------------------------
    void findTextFiles() {
        Write("find/a.txt", "a");
        Write("find/B.TXT", "b");
        Write("find/c.lrc", "c");
        Write("find/sub/d.txt", "d");
        Write("find/System/e.txt", "e");
        TexteEnv env = Env();
        QCOMPARE(FindTextFilesIn(env, root + "/find"), 2);
        QCOMPARE(txt.FooterText(TxtCol::FileName), QStringLiteral("2"));
        env.withSubFolderTxt = true;
        QCOMPARE(FindTextFilesIn(env, root + "/find"), 3);
        QCOMPARE(txt.Rows(), 3);
        QVERIFY(!Column(txt, TxtCol::FileName).contains("e.txt")); // "system" is skipped
        QCOMPARE(TxtRowPath(txt, txt.FindRow("d.txt", TxtCol::FileName)), root + "/find/sub/d.txt");
        env.attachTxt = true;
        env.withSubFolderTxt = false;
        FindTextFilesIn(env, root + "/find");
        QCOMPARE(txt.Rows(), 5);
        // the dialogue: cancel does nothing, a folder is stored
        env.chooseFolder = [](const QString&) { return QString(); };
        QCOMPARE(FindTextFiles(env), -1);
        env.attachTxt = false;
        env.chooseFolder = [&](const QString&) { return root + "/find"; };
        QCOMPARE(FindTextFiles(env), 2);
        QCOMPARE(settings.CellText(Ini::PathTexte, Ini::Col2), root + "/find");
    }

    void namesThatAreNoUtf8() {
        // a text file from an old disk: its name keeps its bytes through search, read and rename
        QDir().mkpath(root + "/raw");
        const QByteArray native = QFile::encodeName(root) + "/raw/caf\xe9.txt";
        FILE* f = std::fopen(native.constData(), "wb");
        QVERIFY(f);
        std::fputs("Grüße\r\n", f);
        std::fclose(f);
        TexteEnv env = Env();
        QCOMPARE(FindTextFilesIn(env, root + "/raw"), 1);
        const QString path = TxtRowPath(txt, 1);
        QCOMPARE(PosixFile::Native(path), native);
        QString text;
        QVERIFY(ReadTextForBox(path, text));
        QCOMPARE(text, QStringLiteral("Grüße\r\n"));
        QVERIFY(RenameTextFile(env, 1, "cafe.txt"));
        QVERIFY(QFile::exists(root + "/raw/cafe.txt"));
    }

    void findLyricsPassesOverTypes() {
        const QString a = Song("ly/a.mp3");
        AddLyrics(a, {"first", "second"});
        Song("ly/b.mp3");
        Song("ly/c.wav", "tone.wav");
        Song("ly/d.wma", "tone.wma");
        Song("ly/e.m4a", "tone.m4a");
        Write("ly/f.txt", "no song");
        const QString g = Song("ly/g.flac", "tone.flac");
        TexteEnv env = Env();
        QCOMPARE(FindLyricsIn(env, root + "/ly"), 4); // two entries, b.mp3 and g.flac without
        QCOMPARE(Column(lyrics, LyrCol::FileName), (QStringList{"a.mp3", "a.mp3", "b.mp3", "g.flac"}));
        QCOMPARE(Column(lyrics, LyrCol::Index), (QStringList{"1", "2", "", ""}));
        QCOMPARE(lyrics.CellText(2, LyrCol::Language), QStringLiteral("ENG"));
        QCOMPARE(lyrics.CellText(2, LyrCol::Description), QStringLiteral("d2"));
        QCOMPARE(lyrics.CellText(1, LyrCol::Folder), root + "/ly");
        QCOMPARE(lyrics.FooterText(LyrCol::FileName), QStringLiteral("4"));
        env.withLyricsOnly = true;
        QCOMPARE(FindLyricsIn(env, root + "/ly"), 2);
        QCOMPARE(lyrics.Rows(), 2);
        // the header sort: column 1 by "1,2"
        SortLyricsByHeader(lyrics, LyrCol::Index);
        QCOMPARE(lyrics.CellText(1, LyrCol::Index), QStringLiteral("1"));
        (void)g;
    }

    void findLyricsCancel() {
        for (int i = 0; i < 30; ++i)
            Song(QStringLiteral("many/s%1.mp3").arg(i, 2, 10, QLatin1Char('0')));
        TexteEnv env = Env();
        bool cancel = false;
        int pumped = 0;
        env.cancel = &cancel;
        env.pump = [&] {
            if (++pumped == 3)
                cancel = true;
        };
        const int n = FindLyricsIn(env, root + "/many");
        QVERIFY(n > 0 && n < 30);
        QCOMPARE(lyrics.FooterText(LyrCol::FileName), QString::number(n));
    }

    // ---- saving a lyric -----------------------------------------------------------------------
    void languageOfTwoOrFourLettersIsRefused() {
        const QString s = Song("new/a.mp3");
        const QByteArray before = ReadAll(s);
        TexteEnv env = Env();
        env.newFile = true;
        env.chooseSongFile = [&](const QString&) { return s; };
        TextPair b;
        b.text[0] = "la la";
        prompt.inputs = {QStringLiteral("GE"), QStringLiteral("GERM"), QString()};
        QVERIFY(!SaveLyric(env, b));
        QCOMPARE(prompt.Count("input"), 3);
        QCOMPARE(prompt.Count("tell"), 2);
        QCOMPARE(prompt.shown[1].text, Caption(CapLanguageCodeLength));
        QCOMPARE(ReadAll(s), before); // nothing written
        QCOMPARE(settings.CellText(Ini::TexteSongFolder, Ini::Col1), root + "/new");
    }

    void saveNewFileEntry() {
        const QString s = Song("new/b.mp3");
        TexteEnv env = Env();
        env.newFile = true;
        env.chooseSongFile = [&](const QString&) { return s; };
        TextPair b;
        b.text[1] = QStringLiteral("Zeile eins\r\nZeile zwei ✓\r\n");
        b.active = 2;
        prompt.inputs = {QStringLiteral("ger"), QStringLiteral("Übersetzung")};
        QVERIFY(SaveLyric(env, b));
        QCOMPARE(prompt.LastText(), Caption(CapLyricSaved));
        QCOMPARE(lyrics.Rows(), 1);
        QCOMPARE(lyrics.RowCells(1), (QStringList{"1", "b.mp3", "GER", "Übersetzung", root + "/new"}));
        QCOMPARE(engine.OpenFile(s), 1);
        QCOMPARE(engine.LyricCount(), 1);
        QCOMPARE(engine.LyricText(1), b.text[1]);
        // a second one is appended; the default answer "GER" is taken as it stands
        prompt = ScriptedPrompt();
        prompt.inputs = {std::optional<QString>(QStringLiteral("GER")), QString()};
        env.noMsg = true;
        b.text[1] = "zwei";
        QVERIFY(SaveLyric(env, b));
        QCOMPARE(prompt.Count("tell"), 0);
        QCOMPARE(lyrics.CellText(2, LyrCol::Index), QStringLiteral("2"));
        if (MutagenPython().isEmpty())
            QSKIP("python3-mutagen is not installed");
        const QJsonArray m = MutagenLyrics(s);
        QCOMPARE(m.size(), 2);
        QCOMPARE(m[0].toObject().value("lang").toString(), QStringLiteral("GER"));
        QCOMPARE(m[0].toObject().value("desc").toString(), QStringLiteral("Übersetzung"));
        QCOMPARE(m[0].toObject().value("text").toString(), QStringLiteral("Zeile eins\r\nZeile zwei ✓\r\n"));
        QCOMPARE(m[1].toObject().value("text").toString(), QStringLiteral("zwei"));
    }

    void saveOnRowAsksLanguage() {
        const QString s = Song("row/a.mp3");
        lyrics.AddRow({QString(), "a.mp3", QString(), QString(), root + "/row"});
        lyrics.SetCurRow(1);
        TexteEnv env = Env();
        TextPair b;
        b.text[0] = "words";
        prompt.answers = {false};
        QVERIFY(!SaveLyric(env, b));
        QCOMPARE(prompt.shown[0].kind, QStringLiteral("okcancel"));
        QVERIFY(prompt.shown[0].text.contains(Caption(CapLyricNoLanguage)));
        QVERIFY(lyrics.CellText(1, LyrCol::Language).isEmpty());
        prompt.answers = {true};
        QVERIFY(SaveLyric(env, b));
        QCOMPARE(lyrics.RowCells(1),
                 (QStringList{"1", "a.mp3", Caption(CapDefaultLanguage), "", root + "/row"}));
        // the row's entry is replaced; with "as a new entry" one is added
        b.text[0] = "better\nwords";
        QVERIFY(SaveLyric(env, b));
        QCOMPARE(engine.OpenFile(s), 1);
        QCOMPARE(engine.LyricCount(), 1);
        QCOMPARE(engine.LyricText(1), QStringLiteral("better\r\nwords")); // line ends as the files have them
        env.saveNew = true;
        QVERIFY(SaveLyric(env, b));
        QCOMPARE(engine.OpenFile(s), 1);
        QCOMPARE(engine.LyricCount(), 2);
        QCOMPARE(lyrics.Rows(), 2);
        QCOMPARE(lyrics.CellText(2, LyrCol::Index), QStringLiteral("2"));
    }

    void saveGuardsAndFailure() {
        TexteEnv env = Env();
        TextPair b;
        QVERIFY(!SaveLyric(env, b));
        QCOMPARE(prompt.LastText(), Caption(CapNoTextToSave));
        b.text[0] = "x";
        lyrics.AddRow({"1", "gone.mp3", "ENG", "", root + "/nowhere"});
        lyrics.SetCurRow(1);
        QVERIFY(!SaveLyric(env, b));
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Critical);
        QCOMPARE(lyrics.RowCells(1), (QStringList{"1", "gone.mp3", "ENG", "", root + "/nowhere"}));
    }

    void saveAsText() {
        TexteEnv env = Env();
        TextPair b;
        QVERIFY(!SaveAsText(env, b));
        QCOMPARE(prompt.LastText(), Caption(CapTextBoxEmpty));
        b.text[0] = QStringLiteral("Grüße\nzwei");
        env.chooseTextSave = [&](const QString&) { return root + "/saved/out.txt"; };
        QDir().mkpath(root + "/saved");
        QVERIFY(SaveAsText(env, b));
        QCOMPARE(ReadAll(root + "/saved/out.txt"), QByteArray("Gr\xc3\xbc\xc3\x9f"
                                                              "e\r\nzwei"));
        QCOMPARE(prompt.LastText(), Caption(CapTextSaved));
        QCOMPARE(settings.CellText(Ini::LastDialogFolder, Ini::Col1), root + "/saved");
        // a folder that is not there: a clear failure, nothing half written
        env.chooseTextSave = [&](const QString&) { return root + "/no/such/folder/out.txt"; };
        QVERIFY(!SaveAsText(env, b));
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Critical);
        QVERIFY(prompt.LastText().startsWith(Caption(CapFileSaveFailed)));
    }

    // ---- deleting -------------------------------------------------------------------------------
    void deleteOneAndAll() {
        const QString s = Song("del/a.mp3");
        AddLyrics(s, {"one", "two", "three"});
        TexteEnv env = Env();
        FindLyricsIn(env, root + "/del");
        QCOMPARE(lyrics.Rows(), 3);
        lyrics.SetCurRow(2);
        prompt.answers = {false};
        QVERIFY(!DeleteLyrics(env));
        QCOMPARE(engine.OpenFile(s), 1);
        QCOMPARE(engine.LyricCount(), 3);
        prompt.answers = {true};
        QVERIFY(DeleteLyrics(env));
        QCOMPARE(engine.OpenFile(s), 1);
        QCOMPARE(engine.LyricCount(), 2);
        QCOMPARE(engine.LyricText(2), QStringLiteral("three"));
        QCOMPARE(Column(lyrics, LyrCol::Index), (QStringList{"1", "", "2"}));
        // a row without an entry
        prompt = ScriptedPrompt();
        QVERIFY(!DeleteLyrics(env));
        QCOMPARE(prompt.LastText(), Caption(CapNoLyricEntry));
        env.deleteAll = true;
        lyrics.SetCurRow(3);
        QVERIFY(DeleteLyrics(env));
        QCOMPARE(engine.OpenFile(s), 1);
        QCOMPARE(engine.LyricCount(), 0);
        QCOMPARE(Column(lyrics, LyrCol::Index), (QStringList{"", "", ""}));
        QCOMPARE(Column(lyrics, LyrCol::Language), (QStringList{"", "", ""}));
    }

    void deleteTextFile() {
        Write("dt/a.txt", "a");
        TexteEnv env = Env();
        FindTextFilesIn(env, root + "/dt");
        QVERIFY(!DeleteTextFile(env, false));
        QCOMPARE(prompt.LastText(), Caption(CapNoRowSelected));
        txt.SetSelected(1, true);
        prompt.answers = {true};
        QVERIFY(DeleteTextFile(env, false));
        QVERIFY(!QFile::exists(root + "/dt/a.txt"));
        QCOMPARE(txt.Rows(), 0);
        QCOMPARE(txt.FooterText(TxtCol::FileName), QStringLiteral("0"));
    }

    // ---- links ------------------------------------------------------------------------------------
    void linkTextToSong() {
        const QString s = Song("link/a.mp3");
        Write("link/t.txt", "words");
        TexteEnv env = Env();
        FindTextFilesIn(env, root + "/link");
        txt.SetSelected(1, true);
        env.chooseSongFile = [&](const QString&) { return s; };
        QVERIFY(engine.OpenFile(s));
        engine.SetV2AudFileUrl("taken");
        QVERIFY(engine.SaveV2(s));
        QVERIFY(LinkTextToSong(env));
        QCOMPARE(prompt.LastText(), Caption(CapLinkSaved));
        QCOMPARE(engine.OpenFile(s), 1);
        QCOMPARE(engine.V2AudFileUrl(), QStringLiteral("taken"));
        QCOMPARE(engine.V2PublisherUrl(), root + "/link/t.txt");
        QCOMPARE(LinkFieldNames().size(), 8);
    }

    void allEightLinkFieldsFull() {
        const QString s = Song("link8/a.mp3");
        Write("link8/t.txt", "words");
        QVERIFY(engine.OpenFile(s));
        for (const QString& f : LinkFieldNames())
            engine.SetField(TagFieldFromName(f, nullptr), "full " + f);
        QVERIFY(engine.SaveV2(s));
        const QByteArray before = ReadAll(s);
        TexteEnv env = Env();
        FindTextFilesIn(env, root + "/link8");
        txt.SetSelected(1, true);
        env.chooseSongFile = [&](const QString&) { return s; };
        QVERIFY(!LinkTextToSong(env));
        QCOMPARE(prompt.LastText(), Caption(CapLinkFieldsFull));
        QCOMPARE(ReadAll(s), before);
        // a type without room for a link
        const QString w = Song("link8/b.wav", "tone.wav");
        env.chooseSongFile = [&](const QString&) { return w; };
        QVERIFY(!LinkTextToSong(env));
        QCOMPARE(prompt.LastText(), Caption(CapLinkTypeNotSupported));
        // a file that can't be read: asked first, No ends, Yes ends in the engine's reason
        const QString bad = root + "/link8/t.txt";
        env.chooseSongFile = [&](const QString&) { return bad; };
        prompt.answers = {false};
        QVERIFY(!LinkTextToSong(env));
        QCOMPARE(prompt.LastText(), Caption(CapFileUnreadableContinue));
        prompt.answers = {true};
        QVERIFY(!LinkTextToSong(env));
        QVERIFY(prompt.LastText().startsWith(Caption(CapLinkSaveFailed)));
        QCOMPARE(ReadAll(bad), QByteArray("words"));
    }

    void copyAndMoveLinks() {
        const QString a = Song("lk/a.mp3");
        const QString b = Song("lk/b.mp3");
        const QString text = a + "\r\nwords\r\n" + b + "\r\n/gone/c.mp3\r\n";
        const QStringList links = LinksInText(text);
        QCOMPARE(links, (QStringList{a, b}));
        TexteEnv env = Env();
        env.chooseTargetDir = [&](const QString&) { return root + "/lkcopy"; };
        QCOMPARE(CopyOrMoveLinks(env, links, false), 2);
        QCOMPARE(prompt.LastText(), Caption(CapFilesCopied) + "2");
        QVERIFY(QFile::exists(root + "/lkcopy/a.mp3") && QFile::exists(a));
        env.chooseTargetDir = [&](const QString&) { return root + "/lkmove"; };
        QCOMPARE(CopyOrMoveLinks(env, links, true), 2);
        QVERIFY(QFile::exists(root + "/lkmove/b.mp3") && !QFile::exists(b));
        QCOMPARE(settings.CellText(Ini::PathTexteLinks, Ini::Col2), root + "/lkmove");
        // a link put in front of the box
        TextPair boxes;
        boxes.text[0] = "words\r\n";
        env.chooseAnyFile = [&](const QString&) { return root + "/lkmove/b.mp3"; };
        QVERIFY(InsertLinkIntoText(env, boxes));
        QCOMPARE(boxes.text[0], root + "/lkmove/b.mp3\r\nwords\r\n");
    }

    // ---- to the editor ------------------------------------------------------------------------------
    void handOverThroughSyncTemp() {
        TexteEnv env = Env();
        TextPair b;
        b.text[0] = "eins";
        b.text[1] = QStringLiteral("Grüße\nzwei\n");
        b.active = 2;
        QByteArray seen;
        QString seenPath;
        QVERIFY(HandTextToEditor(env, b, [&](const QString& path) {
            seenPath = path;
            seen = ReadAll(path);
        }));
        QCOMPARE(seenPath, root + "/temp/synctemp.txt");
        QCOMPARE(seen, QByteArray("Gr\xc3\xbc\xc3\x9f"
                                  "e\r\nzwei\r\n"));
        QVERIFY(!QFile::exists(seenPath)); // deleted afterwards
        b.active = 1;
        b.text[0].clear();
        QVERIFY(!HandTextToEditor(env, b, [](const QString&) {}));
        QCOMPARE(prompt.LastText(), Caption(CapNoTextToSave));
    }

    // ---- direct edit ----------------------------------------------------------------------------------
    void directEditLyricCells() {
        const QString s = Song("edit/a.mp3");
        AddLyrics(s, {"the words"});
        Song("edit/b.mp3");
        TexteEnv env = Env();
        FindLyricsIn(env, root + "/edit");
        QVERIFY(!EditLyricCell(env, 2, LyrCol::Language, "GER")); // no entry
        QCOMPARE(prompt.LastText(), Caption(CapLanguageCodePrompt));
        QVERIFY(!EditLyricCell(env, 1, LyrCol::FileName, "x.mp3")); // not an editable column
        QVERIFY(!EditLyricCell(env, 1, LyrCol::Language, "GE"));
        QVERIFY(EditLyricCell(env, 1, LyrCol::Language, "FRA"));
        QVERIFY(EditLyricCell(env, 1, LyrCol::Description, "neu"));
        QCOMPARE(engine.OpenFile(s), 1);
        QCOMPARE(engine.LyricLanguage(1), QStringLiteral("FRA"));
        QCOMPARE(engine.LyricDescription(1), QStringLiteral("neu"));
        QCOMPARE(engine.LyricText(1), QStringLiteral("the words"));
        QCOMPARE(lyrics.CellText(1, LyrCol::Description), QStringLiteral("neu"));
    }

    void renameTextFiles() {
        Write("ren/a.txt", "a");
        Write("ren/b.txt", "b");
        TexteEnv env = Env();
        FindTextFilesIn(env, root + "/ren");
        QVERIFY(RenameTextFile(env, 1, "c.txt"));
        QVERIFY(QFile::exists(root + "/ren/c.txt"));
        QCOMPARE(txt.CellText(1, TxtCol::FileName), QStringLiteral("c.txt"));
        QVERIFY(!RenameTextFile(env, 2, "x/y.txt"));
        QCOMPARE(prompt.LastText(), Caption(CapRenameFailed));
        QCOMPARE(txt.CellText(2, TxtCol::FileName), QStringLiteral("b.txt"));
    }

    // ---- opening ------------------------------------------------------------------------------------------
    void openTextAndLyric() {
        const QString s = Song("open/a.mp3");
        AddLyrics(s, {"sung words"});
        Write("open/t.txt", (s + "\r\nwords\r\n").toUtf8());
        TexteEnv env = Env();
        QStringList played;
        env.playSong = [&](const QString& p) { played << p; };
        TextPair b;
        QVERIFY(!OpenTextFile(env, b));
        QCOMPARE(prompt.LastText(), Caption(CapListEmpty));
        FindTextFilesIn(env, root + "/open");
        QVERIFY(!OpenTextFile(env, b));
        QCOMPARE(prompt.LastText(), Caption(CapNoRowSelected));
        env.openPlayTxt = true;
        QVERIFY(OpenTextFile(env, b, true)); // the click takes row 1
        QCOMPARE(b.text[0], s + "\r\nwords\r\n");
        QCOMPARE(played, QStringList{s});
        FindLyricsIn(env, root + "/open");
        lyrics.SetSelected(1, true);
        QVERIFY(OpenLyric(env, b));
        QCOMPARE(b.active, 2);
        QCOMPARE(b.text[1], QStringLiteral("sung words"));
    }

    // ---- the command line
    // ----------------------------------------------------------------------------------
    void cliLyrics() {
        const QString s = Song("cli/a.mp3");
        AddLyrics(s, {"eins\r\nzwei", "drei"});
        QProcess p;
        p.start(ProgramDir() + "/quillotune-cli", {"lyrics", s, "--json"});
        QVERIFY(p.waitForFinished(30000));
        QCOMPARE(p.exitCode(), 0);
        const QJsonArray a = QJsonDocument::fromJson(p.readAllStandardOutput()).array();
        QCOMPARE(a.size(), 2);
        QCOMPARE(a[0].toObject().value("index").toInt(), 1);
        QCOMPARE(a[0].toObject().value("language").toString(), QStringLiteral("ENG"));
        QCOMPARE(a[0].toObject().value("description").toString(), QStringLiteral("d1"));
        QCOMPARE(a[0].toObject().value("text").toString(), QStringLiteral("eins\r\nzwei"));
        p.start(ProgramDir() + "/quillotune-cli", {"lyrics", s});
        QVERIFY(p.waitForFinished(30000));
        QCOMPARE(QString::fromUtf8(p.readAllStandardOutput()),
                 QStringLiteral("1\tENG\td1\n\teins\n\tzwei\n\n2\tENG\td2\n\tdrei\n\n"));
        p.start(ProgramDir() + "/quillotune-cli", {"lyrics", root + "/none.mp3"});
        QVERIFY(p.waitForFinished(30000));
        QCOMPARE(p.exitCode(), 1);
        // a type without lyric entries lists none
        p.start(ProgramDir() + "/quillotune-cli", {"lyrics", Song("cli/b.wav", "tone.wav"), "--json"});
        QVERIFY(p.waitForFinished(30000));
        QCOMPARE(p.exitCode(), 0);
        QCOMPARE(p.readAllStandardOutput().trimmed(), QByteArray("[\n]"));
    }
};

QTEST_GUILESS_MAIN(TestTexte)
#include "test_texte.moc"

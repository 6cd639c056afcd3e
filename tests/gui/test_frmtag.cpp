// Window tests of FrmTag: every control under its name, the enabled rule of the boxes,
// the V1 genre list, the update options in the settings, and a batch started by its
// button with a scripted prompt.

#include "GuiProgram.h"
#include "TagUiFixture.h"

#include "app/InputDataPage.h"
#include "app/Mnemonics.h"

#include "app/FrmTag.h"
#include "app/FrmTagSetPanel.h"
#include "app/UiCaptions.h"
#include "core/CaptionRows.h"
#include "core/SettingRows.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

class TestFrmTag : public QObject {
    Q_OBJECT

    template <typename T> static T* Named(QWidget& w, const QString& name) {
        T* c = w.findChild<T*>(name);
        if (!c)
            qWarning() << "missing" << name;
        return c;
    }

private slots:
    void initTestCase() { LoadUiCaptionTables(); }

    void everyControlHasItsName() {
        TagUiFixture f;
        FrmTag w(&f.input, &f.prompt);
        auto has = [&](const QString& n) { return w.findChild<QWidget*>(n) != nullptr; };
        for (int i = 0; i <= 6; ++i)
            QVERIFY2(has(QStringLiteral("chbTab2_V1(%1)").arg(i)), qPrintable(QString::number(i)));
        for (int i = 1; i <= 6; ++i)
            QVERIFY(has(QStringLiteral("txtTab2_V1(%1)").arg(i)));
        for (int i = 0; i <= 14; ++i) {
            QVERIFY(has(QStringLiteral("txtTab2_V2(%1)").arg(i)));
            QVERIFY(has(QStringLiteral("chbTab2_V2(%1)").arg(i)));
            QVERIFY(has(QStringLiteral("cmbTab2_FilterV2(%1)").arg(i)));
            QVERIFY(has(QStringLiteral("txtTab2_Typical(%1)").arg(i)));
            QVERIFY(has(QStringLiteral("lblTab2_Typical(%1)").arg(i)));
        }
        for (int i = 0; i <= 15; ++i)
            QVERIFY(has(QStringLiteral("chbTab2_Typical(%1)").arg(i)));
        for (int i = 0; i <= 6; ++i) {
            QVERIFY(has(QStringLiteral("txtTab2_APE(%1)").arg(i)));
            QVERIFY(has(QStringLiteral("txtTab2_Lyrics(%1)").arg(i)));
        }
        for (int i = 0; i <= 7; ++i) {
            QVERIFY(has(QStringLiteral("chbTab2_APE(%1)").arg(i)));
            QVERIFY(has(QStringLiteral("chbTab2_Lyrics(%1)").arg(i)));
        }
        for (const char* n : {"LbxTag",
                              "SSTabFields",
                              "cmbTab2_GenreV1",
                              "CmbTab2_GenreV2",
                              "chbTab2_GenreV2",
                              "cmbTab2_GenreAPE",
                              "cmbTab2_GenreLyrics",
                              "cmbTab2_GenreTypical",
                              "cmbTab2_FilterV2Genre",
                              "btnTab2_CheckTrue_V1",
                              "btnTab2_CheckFalse_V1",
                              "btnTab2_CheckTrue_V2",
                              "btnTab2_CheckFalse_V2",
                              "btnTab2_APECheckTrue",
                              "btnTab2_APECheckFalse",
                              "btnTab2_CheckTrueLyrics",
                              "btnTab2_CheckFalseLyrics",
                              "btnTab2_CheckTrueTypical",
                              "btnTab2_CheckFalseTypical",
                              "cmbTab2_LfdNr",
                              "txtTab2_Language",
                              "txtTab2_Description",
                              "txtTab2_Comment",
                              "lblTab2_HasComment",
                              "btnTab2_UpdateComment",
                              "btnTab2_DeleteComment",
                              "btnTab2_DeleteAllComments",
                              "btnTab2_V1V2",
                              "btnTab2_V2V1",
                              "btnTab2_TransferGenreV2",
                              "btnTab2_FilterOnOff",
                              "btnTab2_Filter",
                              "chbTab2_MatchComplete",
                              "chbTab2_KeepMark",
                              "btnTab2_TransferToDatalist",
                              "btnTab2_AttachLinkTxt",
                              "btnTab2_ShowLink",
                              "OptTab2_UpdateV1",
                              "OptTab2_UpdateV2",
                              "OptTab2_UpdateAPE",
                              "OptTab2_UpdateLyrics",
                              "OptTab2_UpdateTypical",
                              "chbTab2_NoMsg",
                              "txtTab2_FTag",
                              "btnTab2_UpdateTag",
                              "btnTab2_DeleteTag",
                              "cmbTab2_TagToTag",
                              "btnTab2_TagToTag",
                              "chbTab2_TagToTag",
                              "btnTab2_FilenameToTag",
                              "chbTab2_NameToTagWithTrack",
                              "btnTab2_TagToFilename",
                              "chbTab2_TagToNameWithTrack",
                              "btnTab2_SetFTagActRow",
                              "btnTab2_ClearFtag",
                              "btnTab2_SetFtagBlue",
                              "btnTab2_RemoveFTag",
                              "btnTag_HighlightAll",
                              "btnTab2_InvertHighlight",
                              "btnTab2_DeleteEntries",
                              "btnTab2_CopyToPlaylist",
                              "mnuRateMood",
                              "mnuTextbox"})
            QVERIFY2(w.findChild<QObject*>(QString::fromLatin1(n)), n);
        QVERIFY(Named<QPushButton>(w, "btnTab2_CopyToPlaylist")->isEnabled());
        QCOMPARE(Named<QComboBox>(w, "cmbTab2_TagToTag")->count(), 20);
        QCOMPARE(WithoutMnemonic(Named<QPushButton>(w, "btnTab2_UpdateTag")->text()), Caption(371));
    }

    void checkBoxEnablesItsBox() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        FrmTag w(&f.input, &f.prompt);
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("MP3"));
        auto* chk = Named<QCheckBox>(w, "chbTab2_V2(13)");
        auto* box = Named<QLineEdit>(w, "txtTab2_V2(13)");
        QWidget* panel = w.panel(1);
        QVERIFY(!box->isEnabledTo(panel));
        const QColor off = box->palette().color(QPalette::Disabled, QPalette::Base);
        QCOMPARE(off, QGuiApplication::palette().color(QPalette::Active, QPalette::Button));
        chk->setChecked(true);
        QVERIFY(box->isEnabledTo(panel));
        QCOMPARE(box->palette().color(QPalette::Active, QPalette::Base),
                 QGuiApplication::palette().color(QPalette::Active, QPalette::Base));
        Named<QPushButton>(w, "btnTab2_CheckFalse_V2")->click();
        QVERIFY(!box->isEnabledTo(panel));
        Named<QPushButton>(w, "btnTab2_APECheckTrue")->click();
        QVERIFY(Named<QLineEdit>(w, "txtTab2_APE(6)")->isEnabledTo(w.panel(2)));
        QVERIFY(Named<QComboBox>(w, "cmbTab2_GenreAPE")->isEnabledTo(w.panel(2)));
    }

    void v1GenreList() {
        TagUiFixture f;
        FrmTag w(&f.input, &f.prompt);
        auto* g = Named<QComboBox>(w, "cmbTab2_GenreV1");
        QCOMPARE(g->itemText(0), Caption(CapNoGenre));
        QCOMPARE(g->itemData(0).toInt(), 255);
        QCOMPARE(g->itemData(1).toInt(), 0);
        QCOMPARE(g->count(), f.engine.GenreCount() + 1);
    }

    void tabsAndOptions() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        f.AddFile("flac", "B.flac");
        FrmTag w(&f.input, &f.prompt);
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("FLAC"));
        auto* tabs = Named<QTabWidget>(w, "SSTabFields");
        QVERIFY(tabs->isTabEnabled(0));
        QVERIFY(!tabs->isTabEnabled(3));
        QVERIFY(tabs->isTabEnabled(4));
        QCOMPARE(tabs->tabText(4), QStringLiteral("FLAC"));
        QVERIFY(!Named<QRadioButton>(w, "OptTab2_UpdateLyrics")->isEnabled());
        QCOMPARE(Named<QLabel>(w, "lblTab2_Typical(7)")->text(), Caption(770));
        Named<QRadioButton>(w, "OptTab2_UpdateTypical")->setChecked(true);
        QCOMPARE(Setting(Ini::TagUpdateOption, Ini::Col1), QStringLiteral("00001"));
        Named<QRadioButton>(w, "OptTab2_UpdateV2")->setChecked(true);
        QCOMPARE(Setting(Ini::TagUpdateOption, Ini::Col1), QStringLiteral("01000"));
        QVERIFY(!Named<QRadioButton>(w, "OptTab2_UpdateTypical")->isChecked());
        // typical comes back set on the next load
        Named<QRadioButton>(w, "OptTab2_UpdateTypical")->setChecked(true);
        w.SetTabsForType("OGG");
        QVERIFY(Named<QRadioButton>(w, "OptTab2_UpdateTypical")->isChecked());
        // the quiet switch lives in the settings
        Named<QCheckBox>(w, "chbTab2_NoMsg")->setChecked(true);
        QCOMPARE(Setting(Ini::TagNoMsg, Ini::Col1), QStringLiteral("1"));
    }

    // MP4 files: the item list is the typical tab, written by the update button; the data
    // list's typical columns follow.
    void mp4TypicalTab() {
        TagUiFixture f;
        const QString a = f.AddFile("m4a", "A.m4a");
        const QString b = f.AddFile("m4a", "B.m4a");
        FrmTag w(&f.input, &f.prompt);
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("MP4"));
        auto* tabs = Named<QTabWidget>(w, "SSTabFields");
        for (int i = 0; i < 4; ++i)
            QVERIFY(!tabs->isTabEnabled(i));
        QVERIFY(tabs->isTabEnabled(4));
        QCOMPARE(tabs->tabText(4), QStringLiteral("MP4"));
        QVERIFY(!Named<QRadioButton>(w, "OptTab2_UpdateV2")->isEnabled());
        QCOMPARE(Named<QLabel>(w, "lblTab2_Typical(7)")->text(), Caption(CapWmaLabel + 7));
        QCOMPARE(Named<QLabel>(w, "lblTab2_Typical(8)")->text(), Caption(CapMp4Encoder));
        QCOMPARE(Named<QLabel>(w, "lblTab2_Typical(12)")->text(), Caption(CapMp4Disc));
        QCOMPARE(Named<QLineEdit>(w, "txtTab2_Typical(8)")->text(), QStringLiteral("Lavf59.27.100"));
        Named<QRadioButton>(w, "OptTab2_UpdateTypical")->setChecked(true);
        Named<QCheckBox>(w, "chbTab2_Typical(3)")->setChecked(true);
        Named<QLineEdit>(w, "txtTab2_Typical(2)")->setText("M4A Artist ✓");
        Named<QCheckBox>(w, "chbTab2_Typical(0)")->setChecked(true);
        Named<QComboBox>(w, "cmbTab2_GenreTypical")->setEditText("Jazz");
        w.lbxTag().SelectAll();
        f.prompt.answers = {true};
        Named<QPushButton>(w, "btnTab2_UpdateTag")->click();
        QCOMPARE(f.prompt.shown.back().text, Caption(CapFilesUpdated) + "2");
        for (const QString& p : {a, b}) {
            QCOMPARE(f.engine.OpenFile(p), 9);
            QCOMPARE(f.engine.Mp4Artist(), QStringLiteral("M4A Artist ✓"));
            QCOMPARE(f.engine.Mp4Genre(), QStringLiteral("Jazz"));
            QCOMPARE(f.engine.Mp4Encoder(), QStringLiteral("Lavf59.27.100"));
        }
        QCOMPARE(f.input.CellText(1, InCol::TagTypArtist), QStringLiteral("M4A Artist ✓"));
        QCOMPARE(f.input.CellText(1, InCol::TagTypGenre), QStringLiteral("Jazz"));
        QCOMPARE(f.input.CellText(1, InCol::HasTag), QStringLiteral("mp4"));
    }

    // WAV files: the "id3 " chunk is the V2 tab, the INFO list the typical one.
    void wavTabs() {
        TagUiFixture f;
        const QString a = f.AddFile("wav", "A.wav");
        FrmTag w(&f.input, &f.prompt);
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("WAV"));
        auto* tabs = Named<QTabWidget>(w, "SSTabFields");
        QVERIFY(!tabs->isTabEnabled(0));
        QVERIFY(tabs->isTabEnabled(1));
        QVERIFY(tabs->isTabEnabled(4));
        QCOMPARE(tabs->tabText(4), QStringLiteral("WAV"));
        QCOMPARE(Named<QLabel>(w, "lblTab2_Typical(7)")->text(), Caption(CapWavEngineer));
        QCOMPARE(Named<QLineEdit>(w, "txtTab2_Typical(8)")->text(), QStringLiteral("Lavf59.27.100"));
        Named<QRadioButton>(w, "OptTab2_UpdateV2")->setChecked(true);
        Named<QCheckBox>(w, "chbTab2_V2(3)")->setChecked(true);
        Named<QLineEdit>(w, "txtTab2_V2(3)")->setText("WAV Titel");
        w.lbxTag().SelectAll();
        f.prompt.answers = {true};
        Named<QPushButton>(w, "btnTab2_UpdateTag")->click();
        QCOMPARE(f.engine.OpenFile(a), 5);
        QCOMPARE(f.engine.V2Title(), QStringLiteral("WAV Titel"));
        QCOMPARE(f.engine.WavSoftware(), QStringLiteral("Lavf59.27.100"));
        QCOMPARE(f.input.CellText(1, InCol::TagTitle), QStringLiteral("WAV Titel"));
        QCOMPARE(f.input.CellText(1, InCol::HasTag), QStringLiteral("id3v2.3, riff info"));
    }

    void updateByButton() {
        TagUiFixture f;
        const QString a = f.AddFile("mp3", "A.mp3");
        const QString b = f.AddFile("mp3", "B.mp3");
        FrmTag w(&f.input, &f.prompt);
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("MP3"));
        QCOMPARE(w.lbxTag().Rows(), 2);
        Named<QRadioButton>(w, "OptTab2_UpdateV2")->setChecked(true);
        Named<QCheckBox>(w, "chbTab2_V2(2)")->setChecked(true);
        Named<QLineEdit>(w, "txtTab2_V2(2)")->setText("Button Artist");
        Named<QLineEdit>(w, "txtTab2_V2(3)")->setText("not written");
        Named<QCheckBox>(w, "chbTab2_V2(13)")->setChecked(true);
        Named<QLineEdit>(w, "txtTab2_V2(13)")->setText("***");
        w.lbxTag().SelectAll();
        f.prompt.answers = {true};
        QVERIFY(Named<QPushButton>(w, "btnTab2_UpdateTag")->isEnabled());
        QCOMPARE(w.ChosenSet(), UpdateSet::V2);
        Named<QPushButton>(w, "btnTab2_UpdateTag")->click();
        QCOMPARE(f.prompt.shown.size(), size_t(2));
        QCOMPARE(f.prompt.shown[0].text, Caption(CapUpdateTagsQuestion));
        QCOMPARE(f.prompt.shown[1].text, Caption(CapFilesUpdated) + "2");
        for (const QString& p : {a, b}) {
            QVERIFY(f.engine.OpenFile(p));
            QCOMPARE(f.engine.V2Artist(), QStringLiteral("Button Artist"));
            QCOMPARE(f.engine.V2Title(), QString());
            QCOMPARE(f.engine.V2Rating(), QStringLiteral("***"));
        }
        QVERIFY(!w.busy());
        // the row is read again: the boxes show the file
        QCOMPARE(Named<QLineEdit>(w, "txtTab2_V2(2)")->text(), QStringLiteral("Button Artist"));
        QCOMPARE(Named<QLineEdit>(w, "txtTab2_V2(3)")->text(), QString());
        QCOMPARE(f.input.CellText(1, InCol::TagArtist), QStringLiteral("Button Artist"));
        // moving to another row reads it
        w.lbxTag().SetCurRow(2);
        QCOMPARE(Named<QLineEdit>(w, "txtTab2_V2(13)")->text(), QStringLiteral("***"));
    }

    // A warning or a No ends the command without a write: what the user typed stays.
    void warningsKeepWhatWasTyped() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        f.AddFile("mp3", "B.mp3");
        FrmTag w(&f.input, &f.prompt);
        w.show();
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("MP3"));
        w.lbxTag().SelectAll();
        for (QRadioButton* o : w.findChildren<QRadioButton*>())
            o->setAutoExclusive(false), o->setChecked(false);
        QCOMPARE(w.ChosenSet(), UpdateSet::None);
        QTest::mouseClick(Named<QCheckBox>(w, "chbTab2_V2(2)"), Qt::LeftButton);
        QLineEdit* artist = Named<QLineEdit>(w, "txtTab2_V2(2)");
        QVERIFY(artist->isEnabled());
        QTest::keyClicks(artist, "Typed Artist");
        QTest::mouseClick(Named<QCheckBox>(w, "chbTab2_V2(3)"), Qt::LeftButton);
        QTest::keyClicks(Named<QLineEdit>(w, "txtTab2_V2(3)"), "Typed Title");
        // No set chosen: the warning.
        QTest::mouseClick(Named<QPushButton>(w, "btnTab2_UpdateTag"), Qt::LeftButton);
        QCOMPARE(f.prompt.LastText(), Caption(CapNoTagChosenToUpdate));
        QCOMPARE(artist->text(), QStringLiteral("Typed Artist"));
        // No at the question.
        QTest::mouseClick(Named<QRadioButton>(w, "OptTab2_UpdateV2"), Qt::LeftButton);
        f.prompt.answers = {false};
        QTest::mouseClick(Named<QPushButton>(w, "btnTab2_UpdateTag"), Qt::LeftButton);
        QCOMPARE(f.prompt.shown.back().kind, QStringLiteral("yesno"));
        QCOMPARE(artist->text(), QStringLiteral("Typed Artist"));
        // Yes at the question, No at the warning about one title for many files.
        f.prompt.answers = {true, false};
        QTest::mouseClick(Named<QPushButton>(w, "btnTab2_UpdateTag"), Qt::LeftButton);
        QVERIFY(f.prompt.shown.back().text.startsWith(Caption(CapSameTrackTitleWarning)));
        QCOMPARE(artist->text(), QStringLiteral("Typed Artist"));
        QCOMPARE(Named<QLineEdit>(w, "txtTab2_V2(3)")->text(), QStringLiteral("Typed Title"));
        QVERIFY(f.engine.OpenFile(TagRowPath(w.lbxTag(), 1)));
        QCOMPARE(f.engine.V2Artist(), QString());
    }

    // No at the question of the filter: the rows stay, with their marks cleared.
    void filterNoClearsTheMarks() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        FrmTag w(&f.input, &f.prompt);
        w.show();
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("MP3"));
        w.lbxTag().SetCellText(1, TagCol::FTag, "mine");
        f.prompt.answers = {false};
        QTest::mouseClick(Named<QPushButton>(w, "btnTab2_FilterOnOff"), Qt::LeftButton);
        QCOMPARE(w.lbxTag().Rows(), 1);
        QCOMPARE(w.lbxTag().CellText(1, TagCol::FTag), QString());
        QVERIFY(Named<QComboBox>(w, "cmbTab2_FilterV2(2)")->isHidden());
    }

    void noMsgLeavesOnlyTheFailureReport() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        const QString b = f.AddFile("mp3", "B.mp3");
        FrmTag w(&f.input, &f.prompt);
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("MP3"));
        QFile::remove(b);
        Named<QCheckBox>(w, "chbTab2_NoMsg")->setChecked(true);
        Named<QRadioButton>(w, "OptTab2_UpdateV1")->setChecked(true);
        Named<QCheckBox>(w, "chbTab2_V1(5)")->setChecked(true);
        Named<QLineEdit>(w, "txtTab2_V1(5)")->setText("Album");
        w.lbxTag().SelectAll();
        Named<QPushButton>(w, "btnTab2_UpdateTag")->click();
        QCOMPARE(f.prompt.shown.size(), size_t(1));
        QCOMPARE(f.prompt.shown[0].icon, Prompt::Icon::Critical);
        QCOMPARE(w.lbxTag().CellText(1, TagCol::FTag), QStringLiteral("_#-/->"));
    }

    void filterButtons() {
        TagUiFixture f;
        const QString a = f.AddFile("mp3", "A.mp3");
        f.AddFile("mp3", "B.mp3");
        QVERIFY(f.engine.OpenFile(a));
        f.engine.SetV2Artist("Only");
        QVERIFY(f.engine.SaveV2(a));
        FrmTag w(&f.input, &f.prompt);
        w.show();
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("MP3"));
        f.prompt.answers = {true};
        Named<QPushButton>(w, "btnTab2_FilterOnOff")->click();
        QCOMPARE(w.lbxTag().Rows(), 1);
        QVERIFY(!Named<QComboBox>(w, "cmbTab2_FilterV2(2)")->isHidden());
        QVERIFY(Named<QLineEdit>(w, "txtTab2_V2(2)")->isHidden());
        QCOMPARE(Named<QComboBox>(w, "cmbTab2_FilterV2(2)")->count(), 2);
        QCOMPARE(Named<QPushButton>(w, "btnTab2_FilterOnOff")->text(), Caption(CapFilterTurnOff));
        Named<QComboBox>(w, "cmbTab2_FilterV2(2)")->setCurrentIndex(1);
        Named<QPushButton>(w, "btnTab2_Filter")->click();
        QCOMPARE(w.lbxTag().CellText(1, TagCol::FTag), QStringLiteral("_#-->"));
        bool shown = false;
        w.showDataList = [&] { shown = true; };
        Named<QCheckBox>(w, "chbTab2_NoMsg")->setChecked(true);
        Named<QPushButton>(w, "btnTab2_TransferToDatalist")->click();
        QVERIFY(shown);
        QCOMPARE(f.input.CellText(1, InCol::FTag), QStringLiteral("_#TAGFILTER"));
        Named<QPushButton>(w, "btnTab2_FilterOnOff")->click();
        QVERIFY(!Named<QLineEdit>(w, "txtTab2_V2(2)")->isHidden());
    }

    void fromTheMainWindowsDataList() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir dir;
        DataGrid& input = Grids::LbxInput();
        TagEngine engine;
        for (const QString& name :
             {QStringLiteral("a.mp3"), QStringLiteral("b.flac"), QStringLiteral("c.flac")}) {
            QVERIFY(QFile::copy(TagUiFixture::Sample(QFileInfo(name).suffix()), dir.filePath(name)));
            QStringList cells(InCol::Count);
            cells[InCol::FileName - 1] = name;
            cells[InCol::Type - 1] = FileTypeName(engine.OpenFile(dir.filePath(name)));
            cells[InCol::Path - 1] = dir.path();
            input.AddRow(cells);
        }
        input.SetCellText(3, InCol::FTag, "m");
        input.SelectAll();
        input.SetCurRow(2);
        g.window->pageData->txtTab1_FTag->setText("m");
        FrmTag* tag = g.window->frmTag;
        QVERIFY(tag);
        auto* take = tag->findChild<QPushButton*>("btnTab2_TakeFromDataList");
        QVERIFY(take);
        QVERIFY(!take->text().isEmpty());
        take->click();
        QCOMPARE(g.window->TabInput->currentWidget(), tag);
        QCOMPARE(tag->lbxTag().Rows(), 1);
        QCOMPARE(tag->lbxTag().CellText(1, TagCol::FileName), QStringLiteral("c.flac"));
        QCOMPARE(tag->lbxTag().CellText(1, TagCol::KeyInput), input.RowKey(3));
        // the result of a batch goes back into the data list row
        tag->findChild<QRadioButton*>("OptTab2_UpdateV2")->setChecked(true);
        tag->findChild<QCheckBox*>("chbTab2_V2(2)")->setChecked(true);
        tag->findChild<QLineEdit*>("txtTab2_V2(2)")->setText("Main");
        tag->lbxTag().SelectAll();
        g.prompt.answers = {true};
        tag->findChild<QPushButton*>("btnTab2_UpdateTag")->click();
        QCOMPARE(input.CellText(3, InCol::TagArtist), QStringLiteral("Main"));
        input.Clear();
    }

    void marksOfTheList() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        f.AddFile("mp3", "B.mp3");
        f.AddFile("mp3", "C.mp3");
        FrmTag w(&f.input, &f.prompt);
        f.input.SelectAll();
        QVERIFY(w.LoadTagList("MP3"));
        DataGrid& g = w.lbxTag();
        Named<QLineEdit>(w, "txtTab2_FTag")->setText("x");
        g.SetCurRow(2);
        Named<QPushButton>(w, "btnTab2_SetFTagActRow")->click();
        QCOMPARE(g.CellText(2, TagCol::FTag), QStringLiteral("x"));
        Named<QPushButton>(w, "btnTab2_ClearFtag")->click();
        QCOMPARE(g.CellText(2, TagCol::FTag), QString());
        Named<QPushButton>(w, "btnTag_HighlightAll")->click();
        QCOMPARE(g.SelCount(), 3);
        Named<QPushButton>(w, "btnTab2_InvertHighlight")->click();
        QCOMPARE(g.SelCount(), 0);
        g.SetSelected(3, true);
        Named<QPushButton>(w, "btnTab2_SetFtagBlue")->click();
        QCOMPARE(g.CellText(3, TagCol::FTag), QStringLiteral("_#-->"));
        Named<QPushButton>(w, "btnTab2_RemoveFTag")->click();
        QCOMPARE(g.CellText(3, TagCol::FTag), QString());
        Named<QLineEdit>(w, "txtTab2_FTag")->clear();
        Named<QPushButton>(w, "btnTab2_DeleteEntries")->click();
        QCOMPARE(g.Rows(), 2);
        QCOMPARE(f.input.Rows(), 3);
    }
};

QTEST_MAIN(TestFrmTag)
#include "test_frmtag.moc"

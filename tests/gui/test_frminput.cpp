// The main window: the seven areas and F1 to F7, the data list's columns, the sums
// label, the language change, tool tips and the closing questions.

#include "GuiProgram.h"
#include "app/DataGridView.h"
#include "app/InputDataPage.h"
#include "app/Mnemonics.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>

class TestFrmInput : public QObject {
    Q_OBJECT

    template <typename T> static T* Find(QWidget* w, const char* name) {
        T* c = w->findChild<T*>(QString::fromLatin1(name));
        if (!c)
            qWarning("no control %s", name);
        return c;
    }

private slots:
    void startsWithTheDataArea() {
        GuiProgram g;
        QVERIFY(g.Start());
        QVERIFY(g.window->isVisible());
        auto* tabs = Find<QTabWidget>(g.window.get(), "TabInput");
        QVERIFY(tabs);
        QCOMPARE(tabs->count(), 7);
        QCOMPARE(tabs->currentIndex(), 0);
        const QStringList pages = {"pagInput_Data", "FrmTag",   "FrmTexte",      "FrmPlaylist",
                                   "FrmPictures",   "FrmSText", "FrmPreferences"};
        for (int i = 0; i < 7; ++i)
            QCOMPARE(tabs->widget(i)->objectName(), pages[i]);
        QCOMPARE(tabs->tabText(0), Caption(101));
        QVERIFY(!tabs->tabText(0).isEmpty());
        QCOMPARE(tabs->tabText(6), Caption(111));
        QCOMPARE(WithoutMnemonic(Find<QPushButton>(g.window.get(), "btn2Tab1_ClosePrg")->text()),
                 Caption(154));
        QVERIFY(g.prompt.shown.empty());
    }

    void functionKeysSwitchAreas() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* tabs = Find<QTabWidget>(g.window.get(), "TabInput");
        g.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(g.window.get()));
        for (int i = 6; i >= 0; --i) {
            QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : g.window.get(),
                            Qt::Key(Qt::Key_F1 + i));
            QCOMPARE(tabs->currentIndex(), i);
        }
        QTest::keyClick(g.window.get(), Qt::Key_F4);
        QCOMPARE(tabs->currentIndex(), 3);
        QTest::keyClick(g.window.get(), Qt::Key_F8); // no area of its own
        QCOMPARE(tabs->currentIndex(), 3);
    }

    void dataListColumns() {
        GuiProgram g;
        QVERIFY(g.Start());
        const DataGrid& list = Grids::LbxInput();
        QCOMPARE(list.Cols(), InCol::Count);
        QVERIFY(!list.Column(InCol::No).visible);
        QVERIFY(list.Column(InCol::FTag).visible);
        QCOMPARE(list.Column(InCol::FileName).key, QStringLiteral("FileName"));
        QCOMPARE(list.Column(InCol::FileName).caption, CaptionTable().CellText(3, kLanguageGerman));
        QCOMPARE(list.Column(InCol::DurationS).align, Align::Center);
        QCOMPARE(list.Column(InCol::SizeByte).sortType, SortType::Number);
        QCOMPARE(list.Column(InCol::DateTime).sortType, SortType::Date);
        QCOMPARE(list.Column(InCol::DurationS).headerColor, BgrColor(0xFF0000));
        QCOMPARE(list.Column(InCol::Tg1Genre).headerColor, BgrColor(0x0080FF));
        QCOMPARE(list.Column(InCol::TagAnzPic).headerColor, BgrColor(0x0040C0));
        QCOMPARE(list.Column(InCol::TagApeGenre).headerColor, BgrColor(0xFF00FF));
        QCOMPARE(list.Column(InCol::TagLyricsLyric).headerColor, BgrColor(0x008000));
        QCOMPARE(list.Column(InCol::TagTypGenre).headerColor, kNoColor);
        QCOMPARE(list.highlightColor, BgrColor(0xC0FFFF));
        QVERIFY(list.Column(InCol::FileName).minWidth > 0);
    }

    void columnWidthsAreKeptPerUser() {
        {
            GuiProgram g;
            QVERIFY(g.Start());
            Grids::LbxInput().SetColumnWidth(InCol::Artist, 4500);
            auto* page = g.window->findChild<InputDataPage*>();
            QVERIFY(page);
            page->SaveColumnWidths();
        }
        GuiProgram g;
        QVERIFY(g.Start());
        QCOMPARE(Grids::LbxInput().Column(InCol::Artist).width, 4500);
        Grids::LbxInput().SetColumnWidth(InCol::Artist, 3000);
        g.window->findChild<InputDataPage*>()->SaveColumnWidths();
    }

    void sumsFollowTheSelectionAndTheMark() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* label = Find<QLabel>(g.window.get(), "lblTab1_TimeSizeMarkedData");
        QVERIFY(label->text().startsWith(QStringLiteral("(0)  00:00 mm:ss / ")));
        DataGrid& list = Grids::LbxInput();
        for (int i = 0; i < 3; ++i) {
            QStringList cells(InCol::Count);
            cells[InCol::FTag - 1] = i == 0 ? QStringLiteral("gold") : QString();
            cells[InCol::DurationS - 1] = QStringLiteral("60");
            cells[InCol::SizeByte - 1] = QStringLiteral("1048576");
            list.AddRow(cells);
        }
        list.SelectAll();
        QVERIFY(label->text().startsWith(QStringLiteral("(3)  03:00 mm:ss / ")));
        Find<QLineEdit>(g.window.get(), "txtTab1_FTag")->setText(QStringLiteral("GOLD"));
        QVERIFY(label->text().startsWith(QStringLiteral("(1)  01:00 mm:ss / ")));
        auto* sums = Find<QCheckBox>(g.window.get(), "chbTab1_TimeSizeData");
        sums->setChecked(false);
        QVERIFY(label->isHidden());
        QCOMPARE(Setting(Ini::TimeSizeData, Ini::Col2), QStringLiteral("0"));
    }

    void noMsgSwitchIsASetting() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::NoMsg, 1}, QStringLiteral("1")}}));
        auto* box = Find<QCheckBox>(g.window.get(), "chbTab1_NoMsg");
        QVERIFY(box->isChecked());
        box->setChecked(false);
        QCOMPARE(Setting(Ini::NoMsg, 1), QStringLiteral("0"));
    }

    void languageChangeRelabels() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* combo = Find<QComboBox>(g.window.get(), "cmbPref_Language");
        QCOMPARE(combo->count(), 2);
        QCOMPARE(combo->currentText(), QStringLiteral("Deutsch"));
        combo->setCurrentIndex(1);
        QTest::mouseClick(Find<QPushButton>(g.window.get(), "btnPref_Lng"), Qt::LeftButton);
        QCOMPARE(LanguageColumn(), kLanguageEnglish);
        QCOMPARE(Setting(Ini::Language, 1), QStringLiteral("4"));
        DataGrid onDisk;
        QVERIFY(onDisk.LoadFile(g.folder.file("qlt.ini")));
        QCOMPARE(onDisk.CellText(Ini::Language, 1), QStringLiteral("4")); // written at once
        auto* tabs = Find<QTabWidget>(g.window.get(), "TabInput");
        QCOMPARE(tabs->tabText(0), CaptionTable().CellText(101, kLanguageEnglish));
        QCOMPARE(WithoutMnemonic(Find<QPushButton>(g.window.get(), "btn2Tab1_ClosePrg")->text()),
                 CaptionTable().CellText(154, kLanguageEnglish));
        QCOMPARE(Grids::LbxInput().Column(InCol::FileName).caption,
                 CaptionTable().CellText(3, kLanguageEnglish));
        QVERIFY(CaptionTable().CellText(3, kLanguageEnglish) != CaptionTable().CellText(3, kLanguageGerman));
        QCOMPARE(CaptionTable().Column(1).caption, CaptionTable().CellText(1, kLanguageEnglish));
        QCOMPARE(Find<QLabel>(g.window.get(), "lblTab1_FTag")->text(), QStringLiteral("&Mark:"));
        // Qt's own texts speak English now.
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
        // And back.
        combo->setCurrentIndex(0);
        QTest::mouseClick(Find<QPushButton>(g.window.get(), "btnPref_Lng"), Qt::LeftButton);
        QCOMPARE(Grids::LbxInput().Column(InCol::FileName).caption,
                 CaptionTable().CellText(3, kLanguageGerman));
        // Qt's own texts (file dialogs, standard buttons) follow into German where Qt's
        // translations are installed.
        if (QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) +
                          QStringLiteral("/qtbase_de.qm")))
            QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
    }

    void toolTipsOnlyWhenSwitchedOn() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* close = Find<QPushButton>(g.window.get(), "btn2Tab1_ClosePrg");
        QVERIFY(close->toolTip().isEmpty());
        Find<QCheckBox>(g.window.get(), "chbPref_TTText")->setChecked(true);
        QCOMPARE(Setting(Ini::ToolTips, 1), QStringLiteral("1"));
        QCOMPARE(close->toolTip(), Caption(155));
        QVERIFY(!close->toolTip().isEmpty());
        Find<QCheckBox>(g.window.get(), "chbPref_TTText")->setChecked(false);
        QVERIFY(close->toolTip().isEmpty());
    }

    void noCaptionWalkWhileEventsAreSuppressed() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* close = Find<QPushButton>(g.window.get(), "btn2Tab1_ClosePrg");
        close->setText(QStringLiteral("x"));
        State().SuppressEvents = true;
        SetCaptions();
        QCOMPARE(WithoutMnemonic(close->text()), QStringLiteral("x"));
        State().SuppressEvents = false;
        SetCaptions();
        QCOMPARE(WithoutMnemonic(close->text()), Caption(154));
    }

    void digitsOfTrackNumbers() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* two = Find<QAbstractButton>(g.window.get(), "optPref_AnzNum(0)");
        auto* three = Find<QAbstractButton>(g.window.get(), "optPref_AnzNum(1)");
        QVERIFY(two->isChecked()); // row 27 was empty: the first option, written back
        QCOMPARE(Setting(Ini::NumberDigits, 1), QStringLiteral("1"));
        three->click();
        QCOMPARE(Setting(Ini::NumberDigits, 1), QStringLiteral("2"));
    }

    void closeButtonAsksAndNoKeepsEverything() {
        GuiProgram g;
        QVERIFY(g.Start());
        const QByteArray before = g.folder.Read("qlt.ini");
        SetSetting(Ini::NoMsg, 1, QStringLiteral("1"));
        g.prompt.answers = {false};
        QTest::mouseClick(Find<QPushButton>(g.window.get(), "btn2Tab1_ClosePrg"), Qt::LeftButton);
        QCOMPARE(g.prompt.Count("yesno"), 1);
        QCOMPARE(g.prompt.LastText(), Caption(CapQuitQuestion));
        QVERIFY(g.window->isVisible());
        QVERIFY(!State().SuppressEvents); // the controls work again
        QCOMPARE(g.folder.Read("qlt.ini"), before);
    }

    void closeButtonClosesInOrder() {
        GuiProgram g;
        QVERIFY(g.Start());
        SetSetting(Ini::NoMsg, 1, QStringLiteral("1"));
        Grids::LbxSText().Tag = QStringLiteral("edited");
        g.prompt.answers = {true, true};
        QTest::mouseClick(Find<QPushButton>(g.window.get(), "btn2Tab1_ClosePrg"), Qt::LeftButton);
        QCOMPARE(g.prompt.Count("yesno"), 2);
        QVERIFY(!g.window->isVisible());
        QVERIFY(State().SuppressEvents);
        DataGrid onDisk;
        QVERIFY(onDisk.LoadFile(g.folder.file("qlt.ini")));
        QCOMPARE(onDisk.CellText(Ini::NoMsg, 1), QStringLiteral("1"));
        QVERIFY(QFile::exists(g.folder.file("lnkpic.qlt")));
    }

    // With the purge switch set, closing drops the links of songs that are gone.
    void closingPurgesTheLinkList() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::PurgeLinklist, Ini::Col1}, "1"}}));
        const QString present = g.folder.file("present.mp3");
        QFile f(present);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.close();
        DataGrid& links = Grids::LbxPic_LinkToPic();
        links.Clear();
        while (links.Cols() < 2)
            links.AddColumn(QStringLiteral("C%1").arg(links.Cols() + 1), QString());
        links.AddRow({present, "a.jpg"});
        links.AddRow({g.folder.file("gone.mp3"), "b.jpg"});
        g.prompt.answers = {true};
        QTest::mouseClick(Find<QPushButton>(g.window.get(), "btn2Tab1_ClosePrg"), Qt::LeftButton);
        DataGrid onDisk;
        QVERIFY(onDisk.LoadFile(g.folder.file("lnkpic.qlt")));
        QCOMPARE(onDisk.Rows(), 1);
        QCOMPARE(onDisk.CellText(1, 1), present);
        links.Clear();
    }

    void cornerCloseAsksOnce() {
        GuiProgram g;
        QVERIFY(g.Start());
        const QByteArray before = g.folder.Read("qlt.ini");
        SetSetting(Ini::NoMsg, 1, QStringLiteral("1"));
        g.prompt.answers = {false};
        QVERIFY(!g.window->FormQueryUnload(0));
        QCOMPARE(g.prompt.Count("yesno"), 1);
        QCOMPARE(g.folder.Read("qlt.ini"), before);
        QVERIFY(g.window->isVisible());
        g.prompt.answers = {true};
        QVERIFY(g.window->FormQueryUnload(0));
        QCOMPARE(g.prompt.Count("yesno"), 2); // the closing routine does not ask again
        DataGrid onDisk;
        QVERIFY(onDisk.LoadFile(g.folder.file("qlt.ini")));
        QCOMPARE(onDisk.CellText(Ini::NoMsg, 1), QStringLiteral("1"));
    }

    void systemCloseAsksNothing() {
        GuiProgram g;
        QVERIFY(g.Start());
        QVERIFY(g.window->FormQueryUnload(1));
        QVERIFY(g.prompt.shown.empty());
    }

    void closedByCodeAsksNothing() {
        GuiProgram g;
        QVERIFY(g.Start());
        const QByteArray before = g.folder.Read("qlt.ini");
        g.window->close();
        QVERIFY(g.prompt.shown.empty());
        QCOMPARE(g.folder.Read("qlt.ini"), before);
    }
};

QTEST_MAIN(TestFrmInput)
#include "test_frminput.moc"

// The translators' window: every command by its control.

#include "GuiProgram.h"
#include "app/DataGridView.h"
#include "app/FrmCap.h"
#include "app/Mnemonics.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/modLanguage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QtTest>

class TestFrmCap : public QObject {
    Q_OBJECT

    template <typename T> static T* Find(QWidget* w, const char* name) {
        T* c = w->findChild<T*>(QString::fromLatin1(name));
        if (!c)
            qWarning("no control %s", name);
        return c;
    }
    static void Click(QWidget* w, const char* name) {
        auto* b = Find<QAbstractButton>(w, name);
        QVERIFY(b);
        QTest::mouseClick(b, Qt::LeftButton);
    }

    // Opens the window the way the user does: from the preferences.
    static FrmCap* Open(GuiProgram& g) {
        SetCaptionTableChanged(false);
        auto* b = g.window->findChild<QPushButton*>(QStringLiteral("btnPref_PrepCaption"));
        b->click();
        return g.window->findChild<FrmCap*>();
    }

private slots:
    void opensFromThePreferences() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmCap* cap = Open(g);
        QVERIFY(cap);
        QVERIFY(cap->isVisible());
        auto* lng = Find<QComboBox>(cap, "cmbFrmCap_Lng");
        QCOMPARE(lng->count(), 2);
        QCOMPARE(cap->ChosenColumn(), kLanguageGerman);
        QCOMPARE(cap->ReferenceColumn(), kLanguageEnglish);
        QCOMPARE(WithoutMnemonic(Find<QPushButton>(cap, "btnFrmCap_Save")->text()), Caption(461));
        QCOMPARE(WithoutMnemonic(Find<QRadioButton>(cap, "optFrmCap_Lng(5)")->text()), Caption(616));
        QVERIFY(CaptionTable().Column(1).visible);
        QVERIFY(CaptionTable().Column(3).visible);
        QVERIFY(CaptionTable().Column(4).visible);
        QVERIFY(!CaptionTable().Column(5).visible);
    }

    void importIntoSlotFive() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmCap* cap = Open(g);
        const QString file = g.folder.file("language/qlt_Svenska.lng");
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("Nr\r\nMärkning\r\n");
        f.close();
        QString askedTitle, askedFilter;
        cap->pickFile = [&](const QString& title, const QString&, const QString& filter, bool save) {
            askedTitle = title;
            askedFilter = filter;
            return save ? QString() : file;
        };
        const QString german1 = CaptionTable().CellText(1, 3), english2 = CaptionTable().CellText(2, 4);
        Click(cap, "btnFrmCap_LngImport");
        QCOMPARE(askedFilter, QStringLiteral("qlt_*.lng (qlt_*.lng)"));
        QCOMPARE(CaptionTable().CellText(2, 5), QStringLiteral("Märkning"));
        QCOMPARE(CaptionTable().CellText(1, 3), german1);
        QCOMPARE(CaptionTable().CellText(2, 4), english2);
        QCOMPARE(WithoutMnemonic(Find<QRadioButton>(cap, "optFrmCap_Lng(5)")->text()),
                 QStringLiteral("Svenska"));
        QCOMPARE(Setting(Ini::CaptionImportSlot5, 1), QStringLiteral("1"));
        QCOMPARE(Find<QComboBox>(cap, "cmbFrmCap_Lng")->count(), 3);
        QCOMPARE(Find<QComboBox>(g.window.get(), "cmbPref_Language")->count(), 3); // refilled too
    }

    void exportNeedsALanguageAndWritesTheFile() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmCap* cap = Open(g);
        cap->pickFile = [](const QString&, const QString&, const QString&, bool) {
            return QStringLiteral("Mine");
        };
        auto* lng = Find<QComboBox>(cap, "cmbFrmCap_Lng");
        lng->setCurrentIndex(-1);
        Click(cap, "btnFrmCap_LngExport");
        QCOMPARE(g.prompt.Count("tell"), 1);
        QVERIFY(!QFile::exists(g.folder.file("language/qlt_Mine.lng")));
        lng->setCurrentIndex(1);
        Click(cap, "btnFrmCap_LngExport");
        QVERIFY(QFile::exists(g.folder.file("language/qlt_Mine.lng")));
        QVERIFY(g.folder.Read("language/qlt_Mine.lng")
                    .startsWith(CaptionTable().CellText(1, 4).toUtf8() + "\r\n"));
        QVERIFY(g.prompt.LastText().startsWith(Caption(CapTextSaved)));
    }

    void eraseAsksFirst() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmCap* cap = Open(g);
        CaptionTable().SetCellText(7, 6, QStringLiteral("sju"));
        Find<QRadioButton>(cap, "optFrmCap_Lng(6)")->setChecked(true);
        const QString german60 = CaptionTable().CellText(60, 3);
        g.prompt.answers = {false};
        Click(cap, "btnFrmCap_EraseTranslation");
        QCOMPARE(CaptionTable().CellText(7, 6), QStringLiteral("sju"));
        g.prompt.answers = {true};
        Click(cap, "btnFrmCap_EraseTranslation");
        QVERIFY(CaptionTable().CellText(7, 6).isEmpty());
        QCOMPARE(g.prompt.LastText(), Caption(CapTranslationErased));
        QCOMPARE(CaptionTable().CellText(60, 3), german60);
    }

    void editFindSaveAndClose() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmCap* cap = Open(g);
        auto* find = Find<QLineEdit>(cap, "txtCap_Find");
        CaptionTable().SetCellText(96, 3, QStringLiteral("Zebrastreifen am Fluss"));
        find->setText(QStringLiteral("ZEBRASTREIFEN"));
        Click(cap, "btnFrmCap_Find");
        QCOMPARE(CaptionTable().CurRow(), 96);
        find->setText(QStringLiteral("nowhere"));
        Click(cap, "btnFrmCap_Find");
        QCOMPARE(CaptionTable().CurRow(), 96); // nothing found: stays
        CaptionTable().SetCellText(97, 2, QStringLiteral("note"));
        Click(cap, "btnFrmCap_FindFree");
        QCOMPARE(CaptionTable().CurRow(), 98);
        // A row with a text in one language only is not free either.
        CaptionTable().SetCurRow(50);
        CaptionTable().SetCellText(51, 4, QStringLiteral("only English"));
        for (int r = 51; r <= 60; ++r)
            if (r != 51 && r != 52)
                CaptionTable().SetCellText(r, 2, QStringLiteral("taken"));
        Click(cap, "btnFrmCap_FindFree");
        QCOMPARE(CaptionTable().CurRow(), 52);

        // The note of the current row is typed into its box.
        auto* note = Find<QLineEdit>(cap, "txtCap_Note");
        QVERIFY(note->isEnabled());
        note->clear();
        QTest::keyClicks(note, QStringLiteral("kept for the player"));
        QTest::keyClick(note, Qt::Key_Return);
        QCOMPARE(CaptionTable().CellText(52, 2), QStringLiteral("kept for the player"));
        QVERIFY(CaptionTableChanged());
        CaptionTable().SetCurRow(51);
        QVERIFY(note->text().isEmpty());
        CaptionTable().SetCurRow(52);
        QCOMPARE(note->text(), QStringLiteral("kept for the player"));

        // The text of the current row in the chosen language; the row number stays.
        CaptionTable().SetCurRow(5);
        auto* text = Find<QLineEdit>(cap, "txtCap_Text");
        text->setText(QStringLiteral("Titel (neu)"));
        QMetaObject::invokeMethod(text, "editingFinished");
        QCOMPARE(CaptionTable().CellText(5, 3), QStringLiteral("Titel (neu)"));
        QCOMPARE(CaptionTable().CellText(5, 1), QStringLiteral("5"));
        QVERIFY(CaptionTableChanged());

        Click(cap, "btnFrmCap_Save");
        QCOMPARE(g.prompt.LastText(), Caption(CapTextSaved));
        QVERIFY(!CaptionTableChanged());
        DataGrid onDisk;
        QVERIFY(onDisk.LoadFile(g.folder.file("Caption.qlt")));
        QCOMPARE(onDisk.CellText(5, 3), QStringLiteral("Titel (neu)"));

        // Close with a change asks to save.
        CaptionTable().SetCurRow(6);
        text->setText(QStringLiteral("Typ (neu)"));
        QMetaObject::invokeMethod(text, "editingFinished");
        g.prompt.shown.clear();
        g.prompt.answers = {true};
        Click(cap, "btnFrmCap_Close");
        QCOMPARE(g.prompt.shown.front().text, Caption(CapCaptionsSaveQuestion));
        QVERIFY(!cap->isVisible());
        QVERIFY(onDisk.LoadFile(g.folder.file("Caption.qlt")));
        QCOMPARE(onDisk.CellText(6, 3), QStringLiteral("Typ (neu)"));
    }

    void closeWithoutChangesAsksNothing() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmCap* cap = Open(g);
        Click(cap, "btnFrmCap_Close");
        QVERIFY(g.prompt.shown.empty());
        QVERIFY(!cap->isVisible());
    }

    void hideReferenceColumn() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmCap* cap = Open(g);
        auto* hide = Find<QCheckBox>(cap, "ChbCap_ColumnHide");
        hide->setChecked(true);
        QVERIFY(!CaptionTable().Column(4).visible);
        QVERIFY(CaptionTable().Column(3).visible);
        QCOMPARE(Setting(Ini::CapColumnHide, 1), QStringLiteral("1"));
        hide->setChecked(false);
        QVERIFY(CaptionTable().Column(4).visible);
        QCOMPARE(Setting(Ini::CapColumnHide, 1), QStringLiteral("0"));
    }

    // The row number is the caption row: a header click must never reorder the table.
    void aHeaderClickNeverSorts() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmCap* cap = Open(g);
        auto* view = Find<DataGridView>(cap, "LbxCap");
        QVERIFY(view);
        QHeaderView* header = view->table()->horizontalHeader();
        const QString row5 = CaptionTable().CellText(5, kLanguageGerman);
        const QString row60 = CaptionTable().CellText(60, kLanguageGerman);
        for (int section : {kLanguageGerman - 1, 0, kLanguageEnglish - 1}) {
            const int x = header->sectionViewportPosition(section) + header->sectionSize(section) / 2;
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
        }
        QCOMPARE(CaptionTable().CellText(5, kLanguageGerman), row5);
        QCOMPARE(CaptionTable().CellText(60, kLanguageGerman), row60);
        for (int r = 1; r <= CaptionTable().Rows(); ++r)
            QCOMPARE(CaptionTable().CellText(r, 1), QString::number(r));
        QVERIFY(!CaptionTableChanged());
    }
};

QTEST_MAIN(TestFrmCap)
#include "test_frmcap.moc"

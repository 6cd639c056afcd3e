// The preferences as a user works them: the lists filled from the settings and edited
// in their cells (written back at once, also to qlt.ini), the switches and folders, the
// external programs added, started and removed, a stored link deleted with its question.

#include "ListWindowFixture.h"
#include "app/DataGridView.h"
#include "app/FrmPreferences.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>

class TestPreferences : public QObject {
    Q_OBJECT

    QTemporaryDir dir;

    static FrmPreferences* Page(GuiProgram& g, int tab) {
        g.window->TabInput->setCurrentWidget(g.window->frmPreferences);
        auto* tabs = Control<QTabWidget>(g.window->frmPreferences, QStringLiteral("TabPrefPages"));
        tabs->setCurrentIndex(tab);
        return g.window->frmPreferences;
    }
    static void Click(QWidget* root, const char* name) {
        auto* b = Control<QAbstractButton>(root, QString::fromLatin1(name));
        QVERIFY2(b && b->isEnabled() && b->isVisible(), name);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    static DataGridView* View(QWidget* root, const char* name) {
        return root->findChild<DataGridView*>(QString::fromLatin1(name));
    }
    static void ClickCell(DataGridView* v, int row, int col) {
        QTableView* t = v->table();
        QTest::mouseClick(t->viewport(), Qt::LeftButton, Qt::NoModifier,
                          t->visualRect(t->model()->index(row - 1, col - 1)).center());
    }
    static void EditCell(DataGridView* v, int row, int col, const QString& text) {
        QTableView* t = v->table();
        const QModelIndex cell = t->model()->index(row - 1, col - 1);
        t->scrollTo(cell);
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, t->visualRect(cell).center());
        QLineEdit* editor = t->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    static QString IniFileText(GuiProgram& g) {
        QFile f(g.folder.file(QStringLiteral("qlt.ini")));
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }

private slots:
    void listsComeFromTheSettings() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPreferences* p = Page(g, 1);
        for (const char* n : {"lbxSign", "lbxRating", "lbxMood", "LbxGenre", "LbxFindChr", "LbxNegative",
                              "LbxPictureType", "lbxPrg_Extern", "lbxLink"}) {
            QVERIFY2(View(p, n), n);
            QVERIFY2(p->List(QString::fromLatin1(n)), n);
        }
        DataGrid* sign = p->List(QStringLiteral("lbxSign"));
        QCOMPARE(sign->Rows(), 10);
        QCOMPARE(sign->CellText(1, 1), QStringLiteral("0"));
        QCOMPARE(sign->CellText(1, 2), Setting(Ini::SignFirst, Ini::SignCol));
        QCOMPARE(p->List(QStringLiteral("lbxPrg_Extern"))->Rows(), kTen);
        QCOMPARE(p->List(QStringLiteral("LbxFindChr"))->CellText(1, 1),
                 Setting(Ini::FindChrFirst, Ini::FindChrCol1));
        QCOMPARE(p->List(QStringLiteral("LbxGenre"))->Rows(), Ini::GenreLast - Ini::GenreFirst + 1);
        QCOMPARE(p->List(QStringLiteral("lbxRating")), &Grids::lbxRating()); // the list the others read
    }

    void editedCellsGoBackAtOnce() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPreferences* p = Page(g, 1);
        EditCell(View(p, "lbxSign"), 3, 2, QStringLiteral("top"));
        QCOMPARE(Setting(Ini::SignFirst + 2, Ini::SignCol), QStringLiteral("top"));
        QVERIFY(IniFileText(g).contains(QStringLiteral("top")));
        EditCell(View(p, "lbxMood"), 2, 1, QStringLiteral("Wistful"));
        QCOMPARE(Setting(Ini::MoodFirst + 1, Ini::MoodCol), QStringLiteral("Wistful"));
        EditCell(View(p, "lbxRating"), 1, 1, QStringLiteral("poor"));
        QCOMPARE(Setting(Ini::RatingFirst, Ini::RatingCol), QStringLiteral("poor"));
        QCOMPARE(Grids::lbxRating().CellText(1, 1), QStringLiteral("poor"));
        Page(g, 2);
        EditCell(View(p, "LbxFindChr"), 8, 3, QStringLiteral("bonus"));
        QCOMPARE(Setting(Ini::FindChrFirst + 7, Ini::FindChrCol2), QStringLiteral("bonus"));
        EditCell(View(p, "LbxNegative"), 40, 1, QStringLiteral("  remaster  "));
        QCOMPARE(Setting(Ini::NegativeFirst + 39, Ini::NegativeCol), QStringLiteral("remaster"));
        EditCell(View(p, "LbxGenre"), 1, 1, QStringLiteral("Chanson"));
        QCOMPARE(Setting(Ini::GenreFirst, Ini::GenreCol), QStringLiteral("Chanson"));
        // the published picture type names show in the program's language
        const DataGrid* types = View(p, "LbxPictureType")->grid();
        QCOMPARE(types->CellText(4, 1), Caption(CapPictureTypeName0 + 3));
        QVERIFY(!types->CellText(4, 1).isEmpty());
        EditCell(View(p, "LbxPictureType"), 4, 1, QStringLiteral("Front"));
        QCOMPARE(Setting(Ini::PictureTypeFirst + 3, Ini::PictureTypeCol), QStringLiteral("Front"));
        // the number column stays as it is
        QTableView* t = View(p, "lbxSign")->table();
        QVERIFY(!(t->model()->flags(t->model()->index(0, 0)) & Qt::ItemIsEditable));
    }

    void switchesAndFolders() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPreferences* p = Page(g, 0);
        const std::pair<const char*, std::pair<int, int>> boxes[] = {
            {"chbPref_Paperbin", {Ini::Paperbin, Ini::Col2}},
            {"chbPref_PurgeLinklist", {Ini::PurgeLinklist, Ini::Col1}},
            {"chbPref_ConfirmLinkDelete", {Ini::ConfirmLinkDelete, Ini::Col1}},
            {"chbPref_PresetSubfolder", {Ini::PresetSubfolder, Ini::Col1}},
            {"chbPref_RenamePreview", {Ini::RenamePreview, Ini::Col1}},
            {"chbPref_OptimalColumnWidth", {Ini::OptimalColumnWidth, Ini::Col1}},
            {"chbPref_Picformat", {Ini::Picformat, Ini::Col1}},
            {"chbPref_ScanOneThread", {Ini::ScanOneThread, Ini::Col1}},
            {"chbPref_TTText", {Ini::ToolTips, Ini::Col1}}};
        for (const auto& [name, cell] : boxes) {
            auto* box = Control<QCheckBox>(p, QString::fromLatin1(name));
            QVERIFY2(box, name);
            const bool was = box->isChecked();
            QCOMPARE(SettingOn(cell.first, cell.second), was);
            Click(p, name);
            QVERIFY2(SettingOn(cell.first, cell.second) == !was, name);
        }
        auto* drive = Control<QLineEdit>(p, QStringLiteral("txtPref_Drive_Preset"));
        drive->setFocus();
        QTest::keyClicks(drive, QStringLiteral("/media/music/"));
        QTest::keyClick(drive, Qt::Key_Return);
        QCOMPARE(Setting(Ini::DrivePreset, Ini::Col1), QStringLiteral("/media/music"));
        p->chooseFolder = [](const QString&) { return QStringLiteral("/srv/export"); };
        Click(p, "btnPref_PathExport");
        QCOMPARE(Setting(Ini::PresetPathExport, Ini::Col1), QStringLiteral("/srv/export"));
        QCOMPARE(Control<QLineEdit>(p, QStringLiteral("txtPref_PresetPathExport"))->text(),
                 QStringLiteral("/srv/export"));
    }

    void externalPrograms() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPreferences* p = Page(g, 3);
        DataGrid* prg = p->List(QStringLiteral("lbxPrg_Extern"));
        for (int r = 1; r <= prg->Rows(); ++r)
            QVERIFY(prg->CellText(r, 3).isEmpty());
        // a program that leaves a mark when it runs
        const QString mark = dir.filePath(QStringLiteral("ran"));
        const QString script = dir.filePath(QStringLiteral("my tool.sh"));
        QFile f(script);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("#!/bin/sh\ntouch \"" + mark.toUtf8() + "\"\n");
        f.close();
        f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        p->chooseProgram = [&] { return script; };
        Click(p, "btnPref_AddPrgExtern");
        QCOMPARE(prg->CellText(1, 2), QStringLiteral("my tool.sh"));
        QCOMPARE(Setting(Ini::PrgExternFirst, Ini::PrgExternPathCol), script);
        Click(p, "btnPref_OpenPrgExtern"); // no row chosen
        QCOMPARE(g.prompt.shown.back().text, Caption(CapNothingChosen));
        ClickCell(View(p, "lbxPrg_Extern"), 1, 2);
        Click(p, "btnPref_OpenPrgExtern");
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(mark), 5000);
        // a program that is gone gives a message
        EditCell(View(p, "lbxPrg_Extern"), 1, 3, dir.filePath(QStringLiteral("gone")));
        Click(p, "btnPref_OpenPrgExtern");
        QVERIFY(g.prompt.shown.back().text.startsWith(Caption(CapProgramNotStarted)));
        Click(p, "btnPref_RemovePrgExtern");
        QVERIFY(Setting(Ini::PrgExternFirst, Ini::PrgExternPathCol).isEmpty());
        QVERIFY(prg->CellText(1, 2).isEmpty());
    }

    void linkDeleteAsks() {
        GuiProgram g;
        QVERIFY(g.Start());
        Grids::lbxLink().AddRow({QStringLiteral("home"), QStringLiteral("/home/me")});
        Grids::lbxLink().AddRow({QStringLiteral("work"), QStringLiteral("/srv/work")});
        FrmPreferences* p = Page(g, 3);
        SetSettingOn(Ini::ConfirmLinkDelete, Ini::Col1, true);
        ClickCell(View(p, "lbxLink"), 1, 1);
        g.prompt.answers = {false};
        Click(p, "btnPref_LinkDelete");
        QCOMPARE(g.prompt.shown.back().text, Caption(CapDeleteLinkQuestion));
        QCOMPARE(Grids::lbxLink().Rows(), 2);
        g.prompt.answers = {true};
        Click(p, "btnPref_LinkDelete");
        QCOMPARE(Grids::lbxLink().Rows(), 1);
        QCOMPARE(Setting(Ini::LinkFirst, Ini::LinkCol1), QStringLiteral("work"));
        QVERIFY(Setting(Ini::LinkFirst + 1, Ini::LinkCol1).isEmpty());
    }

private:
    static constexpr int kTen = 10;
};

QTEST_MAIN(TestPreferences)
#include "test_preferences.moc"

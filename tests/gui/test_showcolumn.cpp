// FrmShowColumn and FrmShowColumnRef: boxes that mirror the columns, the ten patterns in
// the settings (save, apply, delete), the group switches, and the pattern in use
// applied again at start.

#include "ListWindowFixture.h"
#include "app/FrmShowColumn.h"
#include "app/FrmShowColumnRef.h"
#include "app/Mnemonics.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

class TestShowColumn : public QObject {
    Q_OBJECT

    static FrmShowColumn* Open(GuiProgram& g) {
        Control<QPushButton>(g.window.get(), "btnTab1_ShowColumns")->click();
        auto* w = g.window->findChild<FrmShowColumn*>();
        if (w && !w->isVisible())
            qWarning("FrmShowColumn not shown");
        return w;
    }
    static QCheckBox* Box(FrmShowColumn* w, int i) {
        return Control<QCheckBox>(w, QStringLiteral("chbCol(%1)").arg(i));
    }
    static QRadioButton* Option(FrmShowColumn* w, int p) {
        return Control<QRadioButton>(w, QStringLiteral("optShowCol_Pattern(%1)").arg(p));
    }
    static QString IniOnDisk(GuiProgram& g, int row, int col) {
        DataGrid onDisk;
        if (!onDisk.LoadFile(g.folder.file(QStringLiteral("qlt.ini"))))
            return QStringLiteral("<unreadable>");
        return onDisk.CellText(row, col);
    }

private slots:
    void boxesMirrorTheColumns() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmShowColumn* w = Open(g);
        QVERIFY(w);
        QCOMPARE(w->findChildren<QCheckBox*>().size(), InCol::Count);
        const DataGrid& list = Grids::LbxInput();
        QCOMPARE(WithoutMnemonic(Box(w, InCol::Artist - 1)->text()), list.Column(InCol::Artist).caption);
        QVERIFY(!Box(w, InCol::No - 1)->isChecked());
        QVERIFY(Box(w, InCol::Artist - 1)->isChecked());
        Box(w, InCol::Artist - 1)->click();
        QVERIFY(!list.Column(InCol::Artist).visible);
        QCOMPARE(Setting(Ini::ActivePattern, Ini::Col2), QString()); // a box leaves row 87 alone
        // Free slots show the default caption with their number.
        QCOMPARE(WithoutMnemonic(Option(w, 4)->text()), Caption(CapPatternDefault) + QStringLiteral("5"));
        QCOMPARE(w->windowTitle(), Caption(618));
    }

    void saveApplyAndDeleteAPattern() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmShowColumn* w = Open(g);
        QVERIFY(w);
        auto* name = Control<QLineEdit>(w, "txtShowCol_Pattern");
        // No name: the message.
        Control<QPushButton>(w, "btnShowCol_SavePattern")->click();
        QCOMPARE(g.prompt.LastText(), Caption(CapNoPatternName));
        // No slot chosen.
        name->setText(QStringLiteral("Short"));
        Control<QPushButton>(w, "btnShowCol_SavePattern")->click();
        QCOMPARE(g.prompt.LastText(), Caption(CapNoPatternSlot));

        Control<QPushButton>(w, "btnShowCol_DeActivateAll")->click();
        const DataGrid& list = Grids::LbxInput();
        QVERIFY(list.Column(InCol::FileName).visible); // the file name stays
        QVERIFY(!list.Column(InCol::Artist).visible);
        QVERIFY(!Box(w, InCol::Artist - 1)->isChecked());
        Box(w, InCol::Title - 1)->click();
        Option(w, 2)->click();
        // Choosing a free slot changes no column.
        QVERIFY(list.Column(InCol::Title).visible);
        name->setText(QStringLiteral("Short"));
        Control<QPushButton>(w, "btnShowCol_SavePattern")->click();
        QCOMPARE(WithoutMnemonic(Option(w, 2)->text()), QStringLiteral("Short"));
        QString expected(InCol::Count, QLatin1Char('0'));
        expected[InCol::FileName - 1] = QLatin1Char('1');
        expected[InCol::Title - 1] = QLatin1Char('1');
        QCOMPARE(Setting(Ini::PatternFirst + 2, Ini::PatternNameCol), QStringLiteral("Short"));
        QCOMPARE(Setting(Ini::PatternFirst + 2, Ini::PatternTextCol), expected);
        QCOMPARE(Setting(Ini::ActivePattern, Ini::Col2), QStringLiteral("2"));
        // Written to qlt.ini at once.
        QCOMPARE(IniOnDisk(g, Ini::PatternFirst + 2, Ini::PatternTextCol), expected);

        // Everything on, then the pattern again.
        Control<QPushButton>(w, "btnShowCol_ActivateAll")->click();
        QVERIFY(list.Column(InCol::Artist).visible);
        Option(w, 0)->click();
        Option(w, 2)->click();
        QVERIFY(!list.Column(InCol::Artist).visible);
        QVERIFY(list.Column(InCol::Title).visible);
        QVERIFY(!Box(w, InCol::Artist - 1)->isChecked());
        QCOMPARE(name->text(), QStringLiteral("Short"));

        // Tag fields on and off together.
        Control<QPushButton>(w, "BtnFrmShow_SetTFOn")->click();
        QVERIFY(list.Column(InCol::Tg1Genre).visible && list.Column(InCol::Mood).visible);
        QVERIFY(Box(w, InCol::TagArtist - 1)->isChecked());
        QVERIFY(!list.Column(InCol::DateTime).visible);
        Control<QPushButton>(w, "BtnFrmShow_SetTFOff")->click();
        QVERIFY(!list.Column(InCol::TagArtist).visible);

        // Delete: No keeps it, Yes frees the slot; the columns stay as they are.
        g.prompt.answers = {false};
        Control<QPushButton>(w, "btnShowCol_DeletePattern")->click();
        QCOMPARE(Setting(Ini::PatternFirst + 2, Ini::PatternNameCol), QStringLiteral("Short"));
        g.prompt.answers = {true};
        Control<QPushButton>(w, "btnShowCol_DeletePattern")->click();
        QCOMPARE(Setting(Ini::PatternFirst + 2, Ini::PatternNameCol), QString());
        QCOMPARE(Setting(Ini::PatternFirst + 2, Ini::PatternTextCol), QString());
        QCOMPARE(Setting(Ini::ActivePattern, Ini::Col2), QString());
        QCOMPARE(WithoutMnemonic(Option(w, 2)->text()), Caption(CapPatternDefault) + QStringLiteral("3"));
        QCOMPARE(IniOnDisk(g, Ini::PatternFirst + 2, Ini::PatternNameCol), QString());
        QVERIFY(list.Column(InCol::Title).visible);

        Control<QPushButton>(w, "btnShowCol_Close")->click();
        QVERIFY(!w->isVisible());
    }

    void patternInUseIsAppliedAtStart() {
        QString text(InCol::Count, QLatin1Char('1'));
        text[InCol::Artist - 1] = QLatin1Char('0');
        text.chop(3); // a short text leaves the last columns hidden
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::PatternFirst + 5, Ini::PatternNameCol}, QStringLiteral("Mine")},
                         {{Ini::PatternFirst + 5, Ini::PatternTextCol}, text},
                         {{Ini::ActivePattern, Ini::Col2}, QStringLiteral("5")}}));
        const DataGrid& list = Grids::LbxInput();
        QVERIFY(!list.Column(InCol::Artist).visible);
        QVERIFY(list.Column(InCol::Title).visible);
        QVERIFY(!list.Column(InCol::DateTime).visible);
        FrmShowColumn* w = Open(g);
        QVERIFY(Option(w, 5)->isChecked());
        QCOMPARE(WithoutMnemonic(Option(w, 5)->text()), QStringLiteral("Mine"));
        QCOMPARE(Control<QLineEdit>(w, "txtShowCol_Pattern")->text(), QStringLiteral("Mine"));
    }

    void savingIntoAUsedSlotOverwritesIt() {
        QMap<QPair<int, int>, QString> ini;
        for (int p = 0; p < 10; ++p) {
            ini[{Ini::PatternFirst + p, Ini::PatternNameCol}] = QStringLiteral("P%1").arg(p);
            ini[{Ini::PatternFirst + p, Ini::PatternTextCol}] = QString(InCol::Count, QLatin1Char('1'));
        }
        GuiProgram g;
        QVERIFY(g.Start(ini));
        FrmShowColumn* w = Open(g);
        QCOMPARE(WithoutMnemonic(Option(w, 9)->text()), QStringLiteral("P9"));
        Option(w, 7)->click();
        Box(w, InCol::Artist - 1)->click();
        Control<QLineEdit>(w, "txtShowCol_Pattern")->setText(QStringLiteral("New"));
        const std::size_t asked = g.prompt.shown.size();
        Control<QPushButton>(w, "btnShowCol_SavePattern")->click();
        QCOMPARE(g.prompt.shown.size(), asked); // no question
        QCOMPARE(Setting(Ini::PatternFirst + 7, Ini::PatternNameCol), QStringLiteral("New"));
        QCOMPARE(Setting(Ini::PatternFirst + 7, Ini::PatternTextCol).at(InCol::Artist - 1), QLatin1Char('0'));
        QCOMPARE(WithoutMnemonic(Option(w, 7)->text()), QStringLiteral("New"));
    }

    void referenceColumnsWindowWorksOnAnyList() {
        GuiProgram g;
        QVERIFY(g.Start());
        DataGrid ref;
        fixture::DefineColumns(ref, 5);
        FrmShowColumnRef w(ref, g.window.get());
        w.Open();
        QCOMPARE(w.findChildren<QCheckBox*>().size(), 5);
        QCOMPARE(WithoutMnemonic(Control<QCheckBox>(&w, "chbColRef(1)")->text()), QStringLiteral("R2"));
        Control<QCheckBox>(&w, "chbColRef(1)")->click();
        QVERIFY(!ref.Column(2).visible);
        Control<QPushButton>(&w, "btnShowColRef_Save")->click();
        QCOMPARE(Setting(Ini::ShowColumnRefPattern, Ini::Col1), QStringLiteral("10111"));
        QCOMPARE(g.prompt.LastText(), Caption(CapColumnChoiceSaved));
        Control<QPushButton>(&w, "btnShowColRef_Close")->click();
        QVERIFY(!w.isVisible());
    }
};

QTEST_MAIN(TestShowColumn)
#include "test_showcolumn.moc"

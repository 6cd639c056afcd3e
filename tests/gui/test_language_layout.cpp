// The main window in German and in English: a change of language re-labels every text
// of every page (also the texts that the reading of a file puts in), and the window
// fits a 1280x800 screen in both languages; at 1024x700 its panels scroll and no
// button is cut.

#include "GuiProgram.h"
#include "TestPaths.h"
#include "app/DataGridView.h"
#include "app/FrmPreferences.h"
#include "app/FrmTag.h"
#include "app/InputDataPage.h"
#include "app/MessageBoxPrompt.h"
#include "app/Mnemonics.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "tag/TagEngine.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

namespace {

struct Seen {
    QString where;
    QString text;
};

// Every text a widget of `root` shows or can show: labels, button and group texts, tab
// titles, items of combo boxes, hints of text boxes, column headers of the lists.
std::vector<Seen> TextsOf(QWidget* root) {
    std::vector<Seen> out;
    auto add = [&](const QWidget* w, const QString& text) {
        if (!text.trimmed().isEmpty())
            out.push_back({w->objectName().isEmpty() ? QString::fromLatin1(w->metaObject()->className())
                                                     : w->objectName(),
                           text});
    };
    QList<QWidget*> all = root->findChildren<QWidget*>();
    all.prepend(root);
    for (QWidget* w : std::as_const(all)) {
        // Compared as shown: without the "&" of an Alt key.
        if (auto* b = qobject_cast<QAbstractButton*>(w))
            add(w, WithoutMnemonic(b->text()));
        else if (auto* l = qobject_cast<QLabel*>(w))
            add(w, WithoutMnemonic(l->text()));
        else if (auto* g = qobject_cast<QGroupBox*>(w))
            add(w, WithoutMnemonic(g->title()));
        if (auto* t = qobject_cast<QTabWidget*>(w))
            for (int i = 0; i < t->count(); ++i)
                add(w, t->tabText(i));
        if (auto* c = qobject_cast<QComboBox*>(w)) {
            if (c->objectName() != QLatin1String("Drive1"))
                for (int i = 0; i < c->count(); ++i)
                    add(w, c->itemText(i));
            add(w, c->placeholderText());
        }
        if (auto* e = qobject_cast<QLineEdit*>(w))
            add(w, e->placeholderText());
        if (auto* v = qobject_cast<QTableView*>(w); v && v->model())
            for (int c = 0; c < v->model()->columnCount(); ++c)
                add(w, v->model()->headerData(c, Qt::Horizontal).toString());
    }
    return out;
}

QSet<QString> ColumnTexts(int col) {
    QSet<QString> s;
    const DataGrid& t = CaptionTable();
    for (int r = 1; r <= t.Rows(); ++r)
        if (const QString x = t.CellText(r, col); !x.isEmpty())
            s.insert(WithoutMnemonic(x));
    return s;
}

// Texts that belong to the other language only.
QStringList Foreign(QWidget* root, int language) {
    const int other = language == kLanguageGerman ? kLanguageEnglish : kLanguageGerman;
    const QSet<QString> mine = ColumnTexts(language);
    const QSet<QString> theirs = ColumnTexts(other);
    QStringList bad;
    for (const Seen& s : TextsOf(root))
        if (s.where != QLatin1String("lblCap_Reference") && // shows the other language by design
            theirs.contains(s.text) && !mine.contains(s.text))
            bad << s.where + ": " + s.text;
    bad.removeDuplicates();
    return bad;
}

bool CopyWithComment(const QString& target) {
    if (!QFile::copy(FixtureDir() + "/tone.mp3", target))
        return false;
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    TagEngine e;
    if (e.OpenFile(target) != 1)
        return false;
    e.SetV2Artist("Artist");
    e.SetComment(1, "eng", "", "a comment");
    return e.SaveV2(target) != 0;
}

// The language chooser of the preferences and its button, as the user would use them.
void ChooseLanguage(FrmInput* w, int column) {
    auto* box = w->findChild<QComboBox*>("cmbPref_Language");
    QVERIFY(box);
    const int i = box->findData(column);
    QVERIFY(i >= 0);
    w->TabInput->setCurrentWidget(w->frmPreferences);
    box->setCurrentIndex(i);
    QTest::mouseClick(w->findChild<QPushButton*>("btnPref_Lng"), Qt::LeftButton);
    QCOMPARE(LanguageColumn(), column);
}

// Shows every page and every sub-tab once, so that each has been laid out.
void VisitPages(FrmInput* w) {
    for (int i = 0; i < w->TabInput->count(); ++i) {
        w->TabInput->setCurrentIndex(i);
        QCoreApplication::processEvents();
    }
    w->TabInput->setCurrentIndex(0);
    for (QTabWidget* strip : {w->pageData->TabInput1_Sub1, w->pageData->TabInput1_Sub2})
        for (int i = 0; i < strip->count(); ++i) {
            strip->setCurrentIndex(i);
            QCoreApplication::processEvents();
        }
}

// The least size the window can take, as its layout allows.
QSize MinimumSize(QWidget* w) {
    w->layout()->activate();
    return w->minimumSizeHint().expandedTo(w->minimumSize());
}

// Buttons of the shown page whose text does not fit.
QStringList CutButtons(QWidget* root) {
    QStringList cut;
    for (QPushButton* b : root->findChildren<QPushButton*>()) {
        if (!b->isVisible() || b->text().isEmpty())
            continue;
        const int need = b->fontMetrics().horizontalAdvance(QString(b->text()).remove(u'&'));
        if (b->width() < need + 8)
            cut << b->objectName() + QStringLiteral(" (%1 < %2)").arg(b->width()).arg(need + 8);
    }
    return cut;
}

// Named buttons, check boxes and options without a text (and without a picture).
QStringList Unlabelled(QWidget* root) {
    QStringList out;
    for (QAbstractButton* b : root->findChildren<QAbstractButton*>()) {
        const bool kind =
            qobject_cast<QPushButton*>(b) || qobject_cast<QCheckBox*>(b) || qobject_cast<QRadioButton*>(b);
        // The typical set's boxes are named by the labels beside them (by file type).
        if (b->objectName().startsWith(QLatin1String("chbTab2_Typical(")))
            continue;
        if (kind && !b->objectName().isEmpty() && b->text().trimmed().isEmpty() && b->icon().isNull())
            out << b->objectName();
    }
    return out;
}

} // namespace

class TestLanguageLayout : public QObject {
    Q_OBJECT
private slots:
    void everyTextFollowsTheLanguage() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmInput* w = g.window.get();
        w->resize(1280, 800);
        QCOMPARE(LanguageColumn(), kLanguageGerman);
        // A song with a comment in the tag window: the texts of a read file take part.
        QTemporaryDir dir;
        QVERIFY(CopyWithComment(dir.filePath("a.mp3")));
        DataGrid& input = Grids::LbxInput();
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = "a.mp3";
        cells[InCol::Type - 1] = "MP3";
        cells[InCol::Path - 1] = dir.path();
        input.AddRow(cells);
        input.SelectAll();
        input.SetCurRow(1);
        QTest::mouseClick(w->findChild<QPushButton*>("btnTab2_TakeFromDataList"), Qt::LeftButton);
        QCOMPARE(w->frmTag->lbxTag().Rows(), 1);
        QCOMPARE(w->findChild<QLabel*>("lblTab2_HasComment")->text(), Caption(417));
        w->Cap(); // the translators' window takes part as well
        VisitPages(w);
        QStringList bad = Foreign(w, kLanguageGerman);
        QVERIFY2(bad.isEmpty(), qPrintable(bad.join("\n")));
        // Every control carries its caption.
        const QStringList bare = Unlabelled(w);
        QVERIFY2(bare.isEmpty(), qPrintable(bare.join(", ")));

        ChooseLanguage(w, kLanguageEnglish);
        VisitPages(w);
        bad = Foreign(w, kLanguageEnglish);
        QVERIFY2(bad.isEmpty(), qPrintable(bad.join("\n")));
        QCOMPARE(w->findChild<QLabel*>("lblTab2_HasComment")->text(), QString("Has a comment"));
        QCOMPARE(w->TabInput->tabText(0), CaptionTable().CellText(101, kLanguageEnglish));
        QCOMPARE(input.Column(InCol::FileName).caption, CaptionTable().CellText(3, kLanguageEnglish));
        // The sums under the list are written again in the new language's numbers.
        auto* sums = w->findChild<QLabel*>("lblTab1_TimeSizeMarkedData");
        QVERIFY(sums);
        QVERIFY2(sums->text().contains(QLatin1String("0.0")) && !sums->text().contains(u','),
                 qPrintable(sums->text()));

        ChooseLanguage(w, kLanguageGerman);
        VisitPages(w);
        bad = Foreign(w, kLanguageGerman);
        QVERIFY2(bad.isEmpty(), qPrintable(bad.join("\n")));
        QCOMPARE(w->findChild<QLabel*>("lblTab2_HasComment")->text(), QString("Kommentar vorhanden"));
        QVERIFY2(sums->text().contains(QLatin1String("0,0")), qPrintable(sums->text()));
        input.Clear();
    }

    void fitsTheScreenInGerman() { Fits(kLanguageGerman); }
    void fitsTheScreenInEnglish() { Fits(kLanguageEnglish); }

    // A short message still shows its whole title: the box has a minimum width.
    void messageBoxesAreWideEnough() {
        MessageBoxPrompt boxes;
        int width = 0;
        QString title;
        QTimer::singleShot(0, this, [&] {
            if (QWidget* box = QApplication::activeModalWidget()) {
                width = box->width();
                title = box->windowTitle();
                box->close();
            }
        });
        boxes.Tell("OK.", Prompt::Icon::Information);
        QVERIFY2(width >= 320, qPrintable(QString::number(width)));
        QCOMPARE(title, Prompt::Title());
        // The engine's own failure text comes without a title.
        QTimer::singleShot(0, this, [&] {
            if (QWidget* box = QApplication::activeModalWidget()) {
                title = box->windowTitle();
                box->close();
            }
        });
        boxes.TellUntitled("engine text", Prompt::Icon::None);
        QVERIFY(title.isEmpty());
    }

    // The random choice lives on the player's tab and is labelled in the language.
    void randomButtonOnThePlayerTab() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* random = g.window->findChild<QPushButton*>("btnTab1_Random");
        QVERIFY(random);
        QVERIFY(!random->text().isEmpty());
        QVERIFY(g.window->findChild<QWidget*>("pagTab1_Player")->isAncestorOf(random));
    }

private:
    void Fits(int language) {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::Language, Ini::Col1}, QString::number(language)}}));
        FrmInput* w = g.window.get();
        QCOMPARE(LanguageColumn(), language);
        VisitPages(w);
        for (int i = 0; i < w->TabInput->count(); ++i) {
            w->TabInput->setCurrentIndex(i);
            const QSize min = MinimumSize(w);
            const QString page = w->TabInput->widget(i)->objectName();
            // The screen of 1280x800 less a title bar and a panel; the window works down
            // to 1024x700.
            QVERIFY2(min.width() <= 1024 && min.height() <= 700,
                     qPrintable(QStringLiteral("%1: %2x%3").arg(page).arg(min.width()).arg(min.height())));
        }
        for (const QSize size : {QSize(1280, 760), QSize(1024, 700)}) {
            w->resize(size);
            for (int i = 0; i < w->TabInput->count(); ++i) {
                w->TabInput->setCurrentIndex(i);
                QTabWidget* subs[] = {w->pageData->TabInput1_Sub1, w->pageData->TabInput1_Sub2};
                const int n1 = i == 0 ? subs[0]->count() : 1;
                for (int a = 0; a < n1; ++a) {
                    if (i == 0)
                        subs[0]->setCurrentIndex(a);
                    const int n2 = i == 0 ? subs[1]->count() : 1;
                    for (int b = 0; b < n2; ++b) {
                        if (i == 0)
                            subs[1]->setCurrentIndex(b);
                        QCoreApplication::processEvents();
                        w->layout()->activate();
                        const QStringList cut = CutButtons(w);
                        QVERIFY2(cut.isEmpty(), qPrintable(QStringLiteral("%1x%2 page %3: ")
                                                               .arg(size.width())
                                                               .arg(size.height())
                                                               .arg(i) +
                                                           cut.join(", ")));
                    }
                }
            }
        }
    }
};

QTEST_MAIN(TestLanguageLayout)
#include "test_language_layout.moc"

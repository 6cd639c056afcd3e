// The keyboard in every window: on each page (every combination of shown tabs) no two
// controls share an Alt key and the Tab key reaches every button, in German and in
// English; an Alt key presses its button; Ctrl+Q closes through the closing questions
// (but not on the pictures area, whose own key it is); the column button of the
// preferences opens the column window of the chosen list.

#include "GuiProgram.h"
#include "app/FolderPanel.h"
#include "app/FrmCap.h"
#include "app/FrmPageMargins.h"
#include "app/FrmPictures.h"
#include "app/FrmPreferences.h"
#include "app/FrmPreview.h"
#include "app/FrmScrollSettings.h"
#include "app/FrmShowColumn.h"
#include "app/FrmShowColumnRef.h"
#include "app/FrmSongtext.h"
#include "app/Mnemonics.h"
#include "app/ScanPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QtTest>
#include <functional>

namespace {

QString Name(const QWidget* w) {
    return w->objectName().isEmpty() ? QString::fromLatin1(w->metaObject()->className()) : w->objectName();
}

// The Alt key that a shown control answers to, or a null character.
QChar KeyOf(const QWidget* w) {
    if (auto* b = qobject_cast<const QAbstractButton*>(w))
        return MnemonicOf(b->text());
    if (auto* l = qobject_cast<const QLabel*>(w); l && l->buddy())
        return MnemonicOf(l->text());
    if (auto* g = qobject_cast<const QGroupBox*>(w))
        return MnemonicOf(g->title());
    return QChar();
}

QList<QWidget*> Shown(QWidget* window) {
    QList<QWidget*> out;
    for (QWidget* w : window->findChildren<QWidget*>())
        if (w->window() == window && w->isVisible())
            out << w;
    return out;
}

// Alt keys that more than one shown control of the window answers to.
QStringList DoubleKeys(QWidget* window) {
    QMap<QChar, QStringList> byKey;
    for (QWidget* w : Shown(window))
        if (const QChar k = KeyOf(w); !k.isNull())
            byKey[k] << Name(w);
    QStringList out;
    for (auto it = byKey.cbegin(); it != byKey.cend(); ++it)
        if (it.value().size() > 1)
            out << QStringLiteral("Alt+%1: %2").arg(it.key()).arg(it.value().join(u' '));
    return out;
}

// Shown, enabled buttons that pressing Tab again and again never reaches.
QStringList Unreached(QWidget* window) {
    QSet<QWidget*> wanted;
    int stops = 0;
    for (QWidget* w : Shown(window)) {
        if ((w->focusPolicy() & Qt::TabFocus) == Qt::TabFocus)
            ++stops;
        // Buttons, switches and options, but not the inner buttons of other controls nor
        // an indicator that takes no clicks.
        if (qobject_cast<QAbstractButton*>(w) && w->isEnabled() &&
            !qobject_cast<QTabBar*>(w->parentWidget()) && !qobject_cast<QLineEdit*>(w->parentWidget()) &&
            !w->testAttribute(Qt::WA_TransparentForMouseEvents))
            wanted.insert(w);
    }
    QSet<QWidget*> reached;
    for (int i = 0; i < stops + 4; ++i) {
        QWidget* at = window->focusWidget();
        QTest::keyClick(at && at->isVisible() ? at : window, Qt::Key_Tab);
        if (QWidget* now = window->focusWidget())
            reached.insert(now);
    }
    // Tab stops at the chosen option of a group; the arrow keys go on from there.
    auto groupOf = [](QWidget* w) -> const QObject* {
        auto* o = qobject_cast<QRadioButton*>(w);
        if (!o || !o->autoExclusive())
            return w;
        return o->group() ? static_cast<const QObject*>(o->group()) : o->parentWidget();
    };
    QSet<const QObject*> reachedGroups;
    for (QWidget* w : std::as_const(reached))
        reachedGroups.insert(groupOf(w));
    QStringList out;
    for (QWidget* w : std::as_const(wanted))
        if (!reachedGroups.contains(groupOf(w)))
            out << Name(w);
    out.sort();
    return out;
}

// Shows every combination of pages of the window, page within page, and runs `check`
// on each; `where` names the tabs.
void EveryPage(QWidget* window, const std::function<void(const QString& where)>& check,
               QSet<QStackedWidget*> fixed = {}, const QString& where = QString()) {
    for (QStackedWidget* s : window->findChildren<QStackedWidget*>()) {
        if (fixed.contains(s) || !s->isVisible() || s->window() != window || s->count() < 2)
            continue;
        fixed.insert(s);
        auto* strip = qobject_cast<QTabWidget*>(s->parentWidget());
        const int keep = s->currentIndex();
        for (int i = 0; i < s->count(); ++i) {
            if (strip && (!strip->isTabEnabled(i) || !strip->isTabVisible(i)))
                continue;
            if (strip)
                strip->setCurrentIndex(i);
            else
                s->setCurrentIndex(i);
            QCoreApplication::processEvents();
            EveryPage(window, check, fixed, where + u'/' + Name(s->widget(i)));
        }
        if (strip)
            strip->setCurrentIndex(keep);
        else
            s->setCurrentIndex(keep);
        return;
    }
    check(Name(window) + where);
}

template <typename T> T* Find(QObject* root, const char* name) {
    T* w = root->findChild<T*>(QLatin1String(name));
    if (!w)
        qWarning("missing %s", name);
    return w;
}

void ChooseLanguage(FrmInput* w, int column) {
    auto* box = Find<QComboBox>(w, "cmbPref_Language");
    w->TabInput->setCurrentWidget(w->frmPreferences);
    box->setCurrentIndex(box->findData(column));
    QTest::mouseClick(Find<QPushButton>(w, "btnPref_Lng"), Qt::LeftButton);
    QCoreApplication::processEvents();
}

// Every window of the program, shown.
QList<QWidget*> OpenAllWindows(FrmInput* w) {
    QList<QWidget*> out{w};
    FrmCap* cap = w->Cap();
    cap->show();
    out << cap;
    w->TabInput->setCurrentWidget(w->frmPreferences);
    Find<QRadioButton>(w, "optPref_ColInput")->click();
    QTest::mouseClick(Find<QPushButton>(w, "btnPref_Columns"), Qt::LeftButton);
    Find<QRadioButton>(w, "optPref_ColRef")->click();
    QTest::mouseClick(Find<QPushButton>(w, "btnPref_Columns"), Qt::LeftButton);
    out << w->findChild<FrmShowColumn*>() << w->findChild<FrmShowColumnRef*>();
    QTest::mouseClick(Find<QPushButton>(w, "btnPref_PageMargins"), Qt::LeftButton);
    out << w->findChild<FrmPageMargins*>();
    auto* scroll = new FrmScrollSettings(w);
    scroll->show();
    out << scroll;
    auto* preview = new FrmPreview(w);
    preview->show();
    out << preview;
    w->frmSongtext->show();
    out << w->frmSongtext;
    w->TabInput->setCurrentIndex(0);
    QCoreApplication::processEvents();
    return out;
}

} // namespace

class TestKeyboard : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QTest::qWait(0); }

    // No page of any window has two controls on one Alt key, and Tab reaches every
    // button of it, in both languages.
    void everyPageInBothLanguages() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmInput* w = g.window.get();
        w->resize(1280, 800);
        const QList<QWidget*> windows = OpenAllWindows(w);
        for (QWidget* window : windows)
            QVERIFY2(window && window->isVisible(), window ? qPrintable(Name(window)) : "missing window");
        for (const int language : {kLanguageGerman, kLanguageEnglish}) {
            ChooseLanguage(w, language);
            QCOMPARE(LanguageColumn(), language);
            int pages = 0;
            for (QWidget* window : windows) {
                window->activateWindow();
                EveryPage(window, [&](const QString& where) {
                    ++pages;
                    const QStringList doubled = DoubleKeys(window);
                    QVERIFY2(doubled.isEmpty(), qPrintable(where + ": " + doubled.join(u"; ")));
                    if (qEnvironmentVariableIsSet("KB_DEBUG"))
                        for (QWidget* x : Shown(window))
                            if (qobject_cast<QAbstractButton*>(x) && KeyOf(x).isNull() &&
                                !WithoutMnemonic(static_cast<QAbstractButton*>(x)->text()).isEmpty())
                                qInfo() << "no key:" << where << Name(x)
                                        << static_cast<QAbstractButton*>(x)->text();
                    const QStringList missed = Unreached(window);
                    QVERIFY2(missed.isEmpty(),
                             qPrintable(where + ": not reached by Tab: " + missed.join(u' ')));
                });
                if (QTest::currentTestFailed())
                    return;
            }
            QVERIFY2(pages > 20, qPrintable(QString::number(pages)));
            if (qEnvironmentVariableIsSet("KB_DEBUG"))
                qInfo() << "pages" << pages;
        }
    }

    // The keys follow a language switch: the caption rows stay free of them, and the
    // shown texts are the captions but for the "&".
    void keysLeaveTheCaptionsAlone() {
        GuiProgram g;
        QVERIFY(g.Start());
        auto* close = Find<QPushButton>(g.window.get(), "btn2Tab1_ClosePrg");
        QCOMPARE(WithoutMnemonic(close->text()), Caption(154));
        QVERIFY(!MnemonicOf(close->text()).isNull());
        QVERIFY(!Caption(154).contains(u'&'));
        // A label that brings its own key keeps it: "&Markierung:".
        auto* mark = Find<QLabel>(g.window.get(), "lblTab1_FTag");
        QCOMPARE(mark->text(), Caption(872));
        ChooseLanguage(g.window.get(), kLanguageEnglish);
        QCOMPARE(WithoutMnemonic(close->text()), CaptionTable().CellText(154, kLanguageEnglish));
        QVERIFY(!MnemonicOf(close->text()).isNull());
        QCOMPARE(mark->text(), QStringLiteral("&Mark:"));
        // The keys are made from the text every time anew, not piled up.
        QCOMPARE(close->text().count(u'&'), 1);
    }

    // Alt with the underlined letter presses the button, as a click would.
    void altKeyPressesItsButton() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmInput* w = g.window.get();
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w));
        w->TabInput->setCurrentWidget(w->frmPreferences);
        auto* pages = Find<QTabWidget>(w, "TabPrefPages");
        pages->setCurrentIndex(0);
        QCoreApplication::processEvents();
        auto* tips = Find<QCheckBox>(w, "chbPref_TTText");
        const bool before = tips->isChecked();
        const QChar key = MnemonicOf(tips->text());
        QVERIFY(!key.isNull());
        QTest::keyClick(w, key.toLower().toLatin1(), Qt::AltModifier);
        QTRY_COMPARE(tips->isChecked(), !before); // a key press shows the click first
        QCOMPARE(SettingOn(Ini::ToolTips, Ini::Col1), !before);
        // A push button: the closing question comes.
        w->TabInput->setCurrentIndex(0);
        QCoreApplication::processEvents();
        auto* close = Find<QPushButton>(w, "btn2Tab1_ClosePrg");
        g.prompt.answers = {false};
        QTest::keyClick(w, MnemonicOf(close->text()).toLower().toLatin1(), Qt::AltModifier);
        QTRY_COMPARE(g.prompt.Count("yesno"), 1);
        QCOMPARE(g.prompt.LastText(), Caption(CapQuitQuestion));
        QVERIFY(w->isVisible());
        // A label moves the focus to its field.
        auto* mark = Find<QLabel>(w, "lblTab1_FTag");
        QTest::keyClick(w, MnemonicOf(mark->text()).toLower().toLatin1(), Qt::AltModifier);
        QCOMPARE(QApplication::focusWidget(), mark->buddy());
    }

    // Ctrl+Q asks the closing questions of the close button; No keeps the program.
    void ctrlQAsksAndNoStays() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmInput* w = g.window.get();
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w));
        const QByteArray before = g.folder.Read("qlt.ini");
        g.prompt.answers = {false};
        QTest::keyClick(w, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(g.prompt.Count("yesno"), 1);
        QCOMPARE(g.prompt.LastText(), Caption(CapQuitQuestion));
        QVERIFY(w->isVisible());
        QVERIFY(!State().SuppressEvents);
        QCOMPARE(g.folder.Read("qlt.ini"), before);
        // Yes to quitting, but No to dropping the unsaved time-stamped text.
        Grids::LbxSText().Tag = QStringLiteral("edited");
        g.prompt.answers = {true, false};
        QTest::keyClick(w, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(g.prompt.Count("yesno"), 3);
        QVERIFY(g.prompt.LastText().startsWith(Caption(CapSyncTextUnsaved)));
        QVERIFY(w->isVisible());
        QCOMPARE(g.folder.Read("qlt.ini"), before);
        // From the tag area as well, and Yes to everything closes and writes qlt.ini.
        w->TabInput->setCurrentIndex(1);
        SetSetting(Ini::NoMsg, Ini::Col1, QStringLiteral("1"));
        g.prompt.answers = {true, true};
        QTest::keyClick(w, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(g.prompt.Count("yesno"), 5);
        QVERIFY(!w->isVisible());
        DataGrid onDisk;
        QVERIFY(onDisk.LoadFile(g.folder.file("qlt.ini")));
        QCOMPARE(onDisk.CellText(Ini::NoMsg, Ini::Col1), QStringLiteral("1"));
    }

    // On the pictures area Ctrl+Q is the picture's key: no closing question.
    void ctrlQOnThePicturesAreaDoesNotQuit() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmInput* w = g.window.get();
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w));
        w->TabInput->setCurrentWidget(w->frmPictures);
        QCoreApplication::processEvents();
        auto* quit = Find<QShortcut>(w, "scQuit");
        QVERIFY(!quit->isEnabled());
        g.prompt.answers = {true, true, true};
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : w, Qt::Key_Q,
                        Qt::ControlModifier);
        QCOMPARE(g.prompt.Count("yesno"), 0);
        QVERIFY(w->isVisible());
        // Back on another area the key quits again.
        w->TabInput->setCurrentIndex(0);
        QVERIFY(quit->isEnabled());
    }

    // The column button of the preferences opens the window of the chosen list.
    void columnButtonOpensTheChosenWindow() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmInput* w = g.window.get();
        w->TabInput->setCurrentWidget(w->frmPreferences);
        QVERIFY(!w->findChild<FrmShowColumn*>());
        QVERIFY(Find<QRadioButton>(w, "optPref_ColInput")->isChecked());
        QTest::mouseClick(Find<QPushButton>(w, "btnPref_Columns"), Qt::LeftButton);
        auto* data = w->findChild<FrmShowColumn*>();
        QVERIFY(data && data->isVisible());
        QVERIFY(!w->findChild<FrmShowColumnRef*>());
        data->close();
        QTest::mouseClick(Find<QRadioButton>(w, "optPref_ColRef"), Qt::LeftButton);
        QVERIFY(Find<QRadioButton>(w, "optPref_ColRef")->isChecked());
        QTest::mouseClick(Find<QPushButton>(w, "btnPref_Columns"), Qt::LeftButton);
        auto* ref = w->findChild<FrmShowColumnRef*>();
        QVERIFY(ref && ref->isVisible());
        QVERIFY(!data->isVisible());
    }

    // "Close the folder tree after reading" lives in the preferences; the switch beside
    // the folder pane is the same setting.
    void closeFolderViewSwitchesStayInStep() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmInput* w = g.window.get();
        QCOMPARE(w->findChildren<QCheckBox*>(QStringLiteral("chbPref_CloseFolderView")).size(), 1);
        auto* pref = Find<QCheckBox>(w->frmPreferences, "chbPref_CloseFolderView");
        QCheckBox* pane = w->scanPanel->folders->chbTab1_CloseFolderView;
        QVERIFY(!pref->isChecked() && !pane->isChecked());
        w->TabInput->setCurrentWidget(w->frmPreferences);
        QTest::mouseClick(pref, Qt::LeftButton);
        QVERIFY(pane->isChecked());
        QVERIFY(SettingOn(Ini::CloseFolderView, Ini::Col1));
        DataGrid onDisk; // the preferences write at once
        QVERIFY(onDisk.LoadFile(g.folder.file("qlt.ini")));
        QCOMPARE(onDisk.CellText(Ini::CloseFolderView, Ini::Col1), QStringLiteral("1"));
        w->TabInput->setCurrentIndex(0);
        QCoreApplication::processEvents();
        pane->click();
        QVERIFY(!pref->isChecked());
        QVERIFY(!SettingOn(Ini::CloseFolderView, Ini::Col1));
    }
};

QTEST_MAIN(TestKeyboard)
#include "test_keyboard.moc"

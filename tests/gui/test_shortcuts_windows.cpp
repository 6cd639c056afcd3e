// The keys of the tool areas, sent as a user presses them: every row of the key tables
// of the tag list, the playlist and the pictures, the keys F1 to F7 from several places
// in the main window (the area's own key does nothing), and the player's keys beside the
// data list's.

#include "ListWindowFixture.h"
#include "app/DataGridView.h"
#include "app/FrmPictures.h"
#include "app/FrmPlaylist.h"
#include "app/FrmPreferences.h"
#include "app/FrmSText.h"
#include "app/FrmTag.h"
#include "app/FrmTagSetPanel.h"
#include "app/FrmTexte.h"
#include "app/InputDataPage.h"
#include "app/PictureView.h"
#include "app/PlayerPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "list/Marks.h"
#include "picture/PictureColumns.h"
#include "platform/Shell.h"
#include "playlist/PlaylistColumns.h"
#include "tag/modTagList.h"

#include <QCheckBox>
#include <QImageWriter>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>

namespace {

constexpr auto kCtrl = Qt::ControlModifier;
constexpr auto kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;
constexpr auto kCtrlAlt = Qt::ControlModifier | Qt::AltModifier;
constexpr auto kPad = Qt::KeypadModifier;

enum Area { DataArea, TagArea, TextArea, PlaylistArea, PictureArea, SyncArea, PrefArea };

QMap<QPair<int, int>, QString> StartIni() {
    QMap<QPair<int, int>, QString> ini;
    ini[{Ini::SignFirst, Ini::SignCol}] = QStringLiteral("one");
    ini[{Ini::SignFirst + 1, Ini::SignCol}] = QStringLiteral("two");
    ini[{Ini::SignLast, Ini::SignCol}] = QStringLiteral("ten");
    ini[{Ini::MoodFirst, Ini::MoodCol}] = QStringLiteral("calm");
    ini[{Ini::MoodLast, Ini::MoodCol}] = QStringLiteral("wild");
    return ini;
}

QTableView* TableOf(QWidget* root, const char* name) {
    return Control<DataGridView>(root, QString::fromLatin1(name))->table();
}

QString Picture(const QString& path, int w, int h) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QImage img(w, h, QImage::Format_RGB32);
    img.fill(Qt::darkCyan);
    QImageWriter(path).write(img);
    return path;
}

} // namespace

class TestShortcutsWindows : public QObject {
    Q_OBJECT

    std::unique_ptr<GuiProgram> m_g;
    std::unique_ptr<ScriptedShell> m_shell;

    GuiProgram& Start() {
        m_g = std::make_unique<GuiProgram>();
        if (!m_g->Start(StartIni()))
            qFatal("start failed");
        m_g->window->show();
        // the window is active, as the player's keys ask for
        m_g->window->activateWindow();
        if (!QTest::qWaitForWindowActive(m_g->window.get()))
            qFatal("window not active");
        FillSampleRows();
        return *m_g;
    }
    QTabWidget* Main() { return m_g->window->TabInput; }
    void ShowArea(int area) {
        QTabBar* bar = Main()->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(area).center());
        QCOMPARE(Main()->currentIndex(), area);
    }
    bool Told(CaptionRow row) const {
        for (const auto& s : m_g->prompt.shown)
            if (s.text.contains(Caption(row)))
                return true;
        return false;
    }

    // The tag list with the three MP3 rows of the data list, then FLAC boxes for the
    // typical set; the focus on the list.
    QTableView* TagList() {
        Grids::LbxInput().SetSelected(1, true);
        Grids::LbxInput().SetSelected(2, true);
        Grids::LbxInput().SetSelected(5, true);
        QTest::mouseClick(Control<QRadioButton>(m_g->window.get(), "optTab1_CopyToTaglist"), Qt::LeftButton);
        QTest::mouseClick(Control<QPushButton>(m_g->window.get(), "btnTab1_Sub2_1_OK"), Qt::LeftButton);
        if (Main()->currentIndex() != TagArea)
            qFatal("tag list not loaded");
        m_g->window->frmTag->SetTabsForType(QStringLiteral("FLAC"));
        QTableView* t = TableOf(m_g->window->frmTag, "LbxTag");
        t->setFocus();
        return t;
    }
    DataGrid& Tags() { return m_g->window->frmTag->lbxTag(); }
    QLineEdit* TagBox(const char* name) {
        return Control<QLineEdit>(m_g->window->frmTag, QString::fromLatin1(name));
    }

    // The playlist with four rows of the data list; the focus on it.
    QTableView* Playlist() {
        DataGrid& input = Grids::LbxInput();
        for (int r : {1, 3, 5, 6})
            input.SetSelected(r, true);
        m_g->prompt.answers = {true};
        QTest::mouseClick(Control<QRadioButton>(m_g->window.get(), "optTab1_CopyToPlaylist"), Qt::LeftButton);
        QTest::mouseClick(Control<QPushButton>(m_g->window.get(), "btnTab1_Sub2_1_OK"), Qt::LeftButton);
        if (m_g->window->frmPlaylist->lbxPlaylist().Rows() != 4)
            qFatal("playlist not filled");
        QTableView* t = TableOf(m_g->window->frmPlaylist, "LbxPlaylist");
        t->setFocus();
        return t;
    }
    DataGrid& Songs() { return m_g->window->frmPlaylist->lbxPlaylist(); }

    // Three large pictures found on disk, the first one on show.
    QTableView* Pictures() {
        const QString folder = m_g->folder.file(QStringLiteral("pics"));
        for (const char* n : {"a.png", "b.png", "c.png"})
            Picture(folder + u'/' + QLatin1String(n), 1600, 1200);
        ShowArea(PictureArea);
        FrmPictures* p = m_g->window->frmPictures;
        p->chooseFolder = [folder](const QString&) { return folder; };
        QTest::mouseClick(Control<QPushButton>(p, "btnpic_FindPic"), Qt::LeftButton);
        if (p->lbxExtern().Rows() != 3)
            qFatal("pictures not found");
        QTableView* t = TableOf(p, "LbxPic_Extern");
        const QRect r = t->visualRect(t->model()->index(0, PicCol::Picfile - 1));
        QTest::mouseClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
        t->setFocus();
        return t;
    }
    QScrollBar* Zoom() { return Control<QScrollBar>(m_g->window->frmPictures, "HScrollPic_Zoom"); }
    int ShownZoom() { return m_g->window->frmPictures->pictureView()->zoom(); }

private slots:
    void init() {
        m_shell = std::make_unique<ScriptedShell>();
        SetShell(m_shell.get());
    }
    void cleanup() {
        m_g.reset();
        SetShell(nullptr);
        m_shell.reset();
    }

    // ---- F1 to F7 ---------------------------------------------------------------------

    void functionKeysFromEveryArea() {
        Start();
        FrmInput* w = m_g->window.get();
        // one place of each area that holds the focus: a list or a box
        const QList<QPair<int, QWidget*>> places = {
            {DataArea, w->pageData->LbxInput->table()},
            {DataArea, w->pageData->txtTab1_FTag},
            {TagArea, TableOf(w->frmTag, "LbxTag")},
            {TagArea, Control<QLineEdit>(w->frmTag, "txtTab2_V2(3)")},
            {TextArea, w->frmTexte},
            {PlaylistArea, TableOf(w->frmPlaylist, "LbxPlaylist")},
            {PlaylistArea, Control<QLineEdit>(w->frmPlaylist, "txtPlaylist_FTag")},
            {PictureArea, Control<QPlainTextEdit>(w->frmPictures, "txtPic_TextToSizedPic")},
            {PictureArea, TableOf(w->frmPictures, "LbxPic_Extern")},
            {SyncArea, w->frmSText},
            {PrefArea, w->frmPreferences},
        };
        for (const auto& [area, place] : places) {
            for (int target = 0; target < 7; ++target) {
                ShowArea(area);
                QTest::keyClick(place, Qt::Key(Qt::Key_F1 + target));
                const QString where = QStringLiteral("%1 F%2").arg(place->objectName()).arg(target + 1);
                QVERIFY2(Main()->currentIndex() == target, qPrintable(where));
            }
        }
        QVERIFY(m_g->prompt.shown.empty());
    }

    void functionKeyWithModifierIsNoAreaKey() {
        Start();
        QTableView* t = TagList();
        auto* fields = Control<QTabWidget>(m_g->window->frmTag, "SSTabFields");
        QTest::keyClick(t, Qt::Key_F2, Qt::ShiftModifier);
        QCOMPARE(Main()->currentIndex(), int(TagArea));
        QCOMPARE(fields->currentIndex(), 1);
        QTest::keyClick(t, Qt::Key_F3, kCtrl);
        QTest::keyClick(t, Qt::Key_F8);
        QCOMPARE(Main()->currentIndex(), int(TagArea));
    }

    // In direct edit the data list refuses its keys, F keys too; elsewhere in the area
    // they still change the area.
    void functionKeysInDirectEdit() {
        Start();
        QTest::mouseClick(Control<QCheckBox>(m_g->window.get(), "chbTab1_DirectEdit"), Qt::LeftButton);
        QVERIFY(Control<QCheckBox>(m_g->window.get(), "chbTab1_DirectEdit")->isChecked());
        QTest::keyClick(m_g->window->pageData->LbxInput->table(), Qt::Key_F4);
        QCOMPARE(Main()->currentIndex(), int(DataArea));
        QCOMPARE(int(m_g->prompt.shown.size()), 1);
        QTest::keyClick(Control<QCheckBox>(m_g->window.get(), "chbTab1_DirectEdit"), Qt::Key_F4);
        QCOMPARE(Main()->currentIndex(), int(PlaylistArea));
        QCOMPARE(int(m_g->prompt.shown.size()), 1);
    }

    void functionKeysFromTheReferenceList() {
        Start();
        QTest::mouseClick(Control<QPushButton>(m_g->window.get(), "btnTab1_ToggleRef"), Qt::LeftButton);
        QTableView* ref = TableOf(m_g->window.get(), "LbxRef");
        QTest::keyClick(ref, Qt::Key_F1);
        QCOMPARE(Main()->currentIndex(), int(DataArea));
        QTest::keyClick(ref, Qt::Key_F7);
        QCOMPARE(Main()->currentIndex(), int(PrefArea));
    }

    // ---- the tag list -----------------------------------------------------------------

    void tagDigitWritesTheSign() {
        Start();
        QTableView* t = TagList();
        Tags().SetSelected(1, true);
        Tags().SetSelected(3, true);
        QTest::keyClick(t, Qt::Key_2);
        QCOMPARE(Tags().CellText(1, TagCol::FTag), QStringLiteral("two"));
        QCOMPARE(Tags().CellText(3, TagCol::FTag), QStringLiteral("two"));
        QCOMPARE(Tags().CellText(2, TagCol::FTag), QString());
        QTest::keyClick(t, Qt::Key_0);
        QCOMPARE(Tags().CellText(1, TagCol::FTag), QStringLiteral("ten"));
    }

    void tagShiftFunctionKeysChooseTheFieldSet() {
        Start();
        QTableView* t = TagList();
        auto* fields = Control<QTabWidget>(m_g->window->frmTag, "SSTabFields");
        QTest::keyClick(t, Qt::Key_F2, Qt::ShiftModifier);
        QCOMPARE(fields->currentIndex(), 1);
        QTest::keyClick(t, Qt::Key_F5, Qt::ShiftModifier);
        QCOMPARE(fields->currentIndex(), 4);
        QTest::keyClick(t, Qt::Key_F1, Qt::ShiftModifier);
        QCOMPARE(fields->currentIndex(), 0);
        QCOMPARE(Main()->currentIndex(), int(TagArea));
    }

    void tagCtrlEnterOpensTheFile() {
        Start();
        QTableView* t = TagList();
        Tags().SetCurRow(2);
        QTest::keyClick(t, Qt::Key_Return, kCtrl);
        QCOMPARE(m_shell->opened, QStringList{TagRowPath(Tags(), 2)});
    }

    void tagCtrlDigitTogglesTheMarkBox() {
        Start();
        QTableView* t = TagList();
        QTest::keyClick(t, Qt::Key_1, kCtrl);
        QCOMPARE(TagBox("txtTab2_FTag")->text(), QStringLiteral("one"));
        QTest::keyClick(t, Qt::Key_1, kCtrl);
        QCOMPARE(TagBox("txtTab2_FTag")->text(), QString());
    }

    void tagCtrlAHighlightsAllAndCtrlIInverts() {
        Start();
        QTableView* t = TagList();
        QTest::keyClick(t, Qt::Key_A, kCtrl);
        QCOMPARE(Tags().SelCount(), 3);
        QTest::keyClick(t, Qt::Key_I, kCtrl);
        QCOMPARE(Tags().SelCount(), 0);
    }

    void tagCtrlFTurnsTheFilterOn() {
        Start();
        QTableView* t = TagList();
        // the files have no V2 tag: the filter asks to drop them, and No keeps it off
        m_g->prompt.answers = {false};
        QTest::keyClick(t, Qt::Key_F, kCtrl);
        QVERIFY(Told(CaptionRow(471)));
        QCOMPARE(Tags().Rows(), 3);
    }

    void tagCtrlLFiltersAndWantsAValue() {
        Start();
        QTableView* t = TagList();
        QTest::keyClick(t, Qt::Key_L, kCtrl);
        QVERIFY(Told(CaptionRow(231)));
    }

    void tagCtrlMMarksTheHighlightedRows() {
        Start();
        QTableView* t = TagList();
        QTest::keyClicks(TagBox("txtTab2_FTag"), QStringLiteral("Best"));
        Tags().SetSelected(2, true);
        QTest::keyClick(t, Qt::Key_M, kCtrl);
        QCOMPARE(Tags().CellText(2, TagCol::FTag), QStringLiteral("Best"));
        QCOMPARE(Tags().CellText(1, TagCol::FTag), QString());
    }

    void tagCtrlPCopiesToThePlaylist() {
        Start();
        QTableView* t = TagList();
        Tags().SetSelected(1, true);
        Tags().SetSelected(3, true);
        m_g->prompt.answers = {true};
        QTest::keyClick(t, Qt::Key_P, kCtrl);
        QCOMPARE(Songs().Rows(), 2);
        QCOMPARE(Main()->currentIndex(), int(PlaylistArea));
    }

    void tagCtrlShiftDigitTogglesTheRating() {
        Start();
        QTableView* t = TagList();
        const QString first = Grids::lbxRating().CellText(1, 1), third = Grids::lbxRating().CellText(3, 1);
        QVERIFY(!first.isEmpty());
        QTest::keyClick(t, Qt::Key_1, kCtrlShift);
        QCOMPARE(TagBox("txtTab2_V2(13)")->text(), first);
        QTest::keyClick(t, Qt::Key_3, kCtrlShift);
        QCOMPARE(TagBox("txtTab2_V2(13)")->text(), third);
        QTest::keyClick(t, Qt::Key_3, kCtrlShift);
        QCOMPARE(TagBox("txtTab2_V2(13)")->text(), QString());
        QTest::keyClick(t, Qt::Key_7, kCtrlShift); // six ratings only
        QCOMPARE(TagBox("txtTab2_V2(13)")->text(), QString());
        // on the typical set the typical rating box
        QTest::keyClick(t, Qt::Key_F5, Qt::ShiftModifier);
        QTest::keyClick(t, Qt::Key_1, kCtrlShift);
        QCOMPARE(TagBox("txtTab2_Typical(13)")->text(), first);
        QCOMPARE(TagBox("txtTab2_V2(13)")->text(), QString());
    }

    void tagCtrlAltDigitTogglesTheMood() {
        Start();
        QTableView* t = TagList();
        QTest::keyClick(t, Qt::Key_1, kCtrlAlt);
        QCOMPARE(TagBox("txtTab2_V2(14)")->text(), QStringLiteral("calm"));
        QTest::keyClick(t, Qt::Key_0, kCtrlAlt);
        QCOMPARE(TagBox("txtTab2_V2(14)")->text(), QStringLiteral("wild"));
        QTest::keyClick(t, Qt::Key_0, kCtrlAlt);
        QCOMPARE(TagBox("txtTab2_V2(14)")->text(), QString());
        QTest::keyClick(t, Qt::Key_F5, Qt::ShiftModifier);
        QTest::keyClick(t, Qt::Key_1, kCtrlAlt);
        QCOMPARE(TagBox("txtTab2_Typical(14)")->text(), QStringLiteral("calm"));
    }

    void tagCtrlShiftMHighlightsByMarkAndCtrlShiftRRemoves() {
        Start();
        QTableView* t = TagList();
        Control<QCheckBox>(m_g->window->frmTag, "chbTab2_NoMsg")->setChecked(true);
        Tags().SetCellText(1, TagCol::FTag, QStringLiteral("x"));
        Tags().SetCellText(3, TagCol::FTag, QStringLiteral("x"));
        TagBox("txtTab2_FTag")->setText(QStringLiteral("x"));
        QTest::keyClick(t, Qt::Key_M, kCtrlShift);
        QCOMPARE(Tags().SelectedRows(), (std::vector<int>{1, 3}));
        Tags().SetSelected(3, false);
        QTest::keyClick(t, Qt::Key_R, kCtrlShift);
        QCOMPARE(Tags().CellText(1, TagCol::FTag), QString());
        QCOMPARE(Tags().CellText(3, TagCol::FTag), QStringLiteral("x"));
    }

    void tagOwnAreaKeyDoesNothing() {
        Start();
        QTableView* t = TagList();
        Control<QTabWidget>(m_g->window->frmTag, "SSTabFields")->setCurrentIndex(2);
        QTest::keyClick(t, Qt::Key_F2);
        QCOMPARE(Main()->currentIndex(), int(TagArea));
        QCOMPARE(Control<QTabWidget>(m_g->window->frmTag, "SSTabFields")->currentIndex(), 2);
        QVERIFY(m_g->prompt.shown.empty());
    }

    // ---- the playlist -----------------------------------------------------------------

    void playlistDigitWritesTheSign() {
        Start();
        QTableView* t = Playlist();
        Songs().SelectRange(1, Songs().Rows(), false);
        Songs().SetSelected(2, true);
        QTest::keyClick(t, Qt::Key_1);
        QCOMPARE(Songs().CellText(2, PlCol::FTag), QStringLiteral("one"));
        QTest::keyClick(t, Qt::Key_0);
        QCOMPARE(Songs().CellText(2, PlCol::FTag), QStringLiteral("ten"));
        QCOMPARE(Songs().CellText(1, PlCol::FTag), QString());
    }

    void playlistCtrlEnterOpensTheSong() {
        Start();
        QTableView* t = Playlist();
        Songs().SetCurRow(3);
        QTest::keyClick(t, Qt::Key_Enter, kCtrl | kPad);
        QCOMPARE(m_shell->opened, QStringList{QStringLiteral("/m/d/Doors - Helpless.mp3")});
    }

    void playlistCtrlDigitTogglesTheMarkBox() {
        Start();
        QTableView* t = Playlist();
        auto* box = Control<QLineEdit>(m_g->window->frmPlaylist, "txtPlaylist_FTag");
        QTest::keyClick(t, Qt::Key_2, kCtrl);
        QCOMPARE(box->text(), QStringLiteral("two"));
        QTest::keyClick(t, Qt::Key_1, kCtrl);
        QCOMPARE(box->text(), QStringLiteral("one"));
        QTest::keyClick(t, Qt::Key_1, kCtrl);
        QCOMPARE(box->text(), QString());
    }

    void playlistCtrlAHighlightsAllAndCtrlIInverts() {
        Start();
        QTableView* t = Playlist();
        Songs().SelectRange(1, Songs().Rows(), false);
        Songs().SetSelected(1, true);
        QTest::keyClick(t, Qt::Key_I, kCtrl);
        QCOMPARE(Songs().SelectedRows(), (std::vector<int>{2, 3, 4}));
        QTest::keyClick(t, Qt::Key_A, kCtrl);
        QCOMPARE(Songs().SelCount(), 4);
    }

    void playlistCtrlMMarksTheHighlightedRows() {
        Start();
        QTableView* t = Playlist();
        Songs().SelectRange(1, Songs().Rows(), false);
        Songs().SetSelected(3, true);
        Songs().SetSelected(4, true);
        QTest::keyClicks(Control<QLineEdit>(m_g->window->frmPlaylist, "txtPlaylist_FTag"),
                         QStringLiteral("Party"));
        QTest::keyClick(t, Qt::Key_M, kCtrl);
        QCOMPARE(Songs().CellText(3, PlCol::FTag), QStringLiteral("Party"));
        QCOMPARE(Songs().CellText(4, PlCol::FTag), QStringLiteral("Party"));
        QCOMPARE(Songs().CellText(1, PlCol::FTag), QString());
    }

    void playlistCtrlShiftDAndUMoveTheBlock() {
        Start();
        QTableView* t = Playlist();
        Songs().SelectRange(1, Songs().Rows(), false);
        Songs().SetSelected(2, true);
        const QString second = Songs().CellText(2, PlCol::FileName);
        QTest::keyClick(t, Qt::Key_D, kCtrlShift);
        QCOMPARE(Songs().CellText(3, PlCol::FileName), second);
        QTest::keyClick(t, Qt::Key_U, kCtrlShift);
        QTest::keyClick(t, Qt::Key_U, kCtrlShift);
        QCOMPARE(Songs().CellText(1, PlCol::FileName), second);
    }

    void playlistCtrlShiftMAndR() {
        Start();
        QTableView* t = Playlist();
        Songs().SetCellText(1, PlCol::FTag, QStringLiteral("a"));
        Songs().SetCellText(2, PlCol::FTag, QStringLiteral("b"));
        Songs().SetCellText(4, PlCol::FTag, QStringLiteral("a"));
        Control<QLineEdit>(m_g->window->frmPlaylist, "txtPlaylist_FTag")->setText(QStringLiteral("a"));
        QTest::keyClick(t, Qt::Key_A, kCtrl);
        // Ctrl+Shift+M keeps the highlight of the rows with the mark only
        QTest::keyClick(t, Qt::Key_M, kCtrlShift);
        QCOMPARE(Songs().SelectedRows(), (std::vector<int>{1, 4}));
        // Ctrl+Shift+R empties their marks
        QTest::keyClick(t, Qt::Key_R, kCtrlShift);
        QCOMPARE(Songs().CellText(1, PlCol::FTag), QString());
        QCOMPARE(Songs().CellText(4, PlCol::FTag), QString());
        QCOMPARE(Songs().CellText(2, PlCol::FTag), QStringLiteral("b"));
    }

    // ---- the pictures -----------------------------------------------------------------

    void pictureShiftFunctionKeysChooseTheTabs() {
        Start();
        QTableView* t = Pictures();
        FrmPictures* p = m_g->window->frmPictures;
        auto* files = Control<QTabWidget>(p, "SSTabPic_Files");
        auto* shown = Control<QTabWidget>(p, "SSTabPic_Pictures");
        QTest::keyClick(t, Qt::Key_F5, Qt::ShiftModifier);
        QCOMPARE(shown->currentIndex(), 1);
        QTest::keyClick(t, Qt::Key_F4, Qt::ShiftModifier);
        QCOMPARE(shown->currentIndex(), 0);
        QTest::keyClick(t, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(files->currentIndex(), 2);
        QTest::keyClick(p->thumbnails(), Qt::Key_F2, Qt::ShiftModifier);
        QCOMPARE(files->currentIndex(), 1);
        QTest::keyClick(TableOf(p, "LbxPic_Intern"), Qt::Key_F1, Qt::ShiftModifier);
        QCOMPARE(files->currentIndex(), 0);
        QCOMPARE(Main()->currentIndex(), int(PictureArea));
    }

    void pictureZoomKeys() {
        Start();
        QTableView* t = Pictures();
        QCOMPARE(ShownZoom(), 0);
        QTest::keyClick(t, Qt::Key_Plus, kCtrl | kPad);
        QCOMPARE(ShownZoom(), 10);
        QTest::keyClick(t, Qt::Key_Plus, kCtrl); // the main plus is not the pad's
        QCOMPARE(ShownZoom(), 10);
        QTest::keyClick(t, Qt::Key_Minus, kCtrl | kPad);
        QTest::keyClick(t, Qt::Key_Minus, kCtrl | kPad);
        QCOMPARE(ShownZoom(), -10);
        QTest::keyClick(t, Qt::Key_0, kCtrl);
        QCOMPARE(ShownZoom(), 0);
        Zoom()->setValue(30);
        QTest::keyClick(t, Qt::Key_M, kCtrl);
        QCOMPARE(ShownZoom(), 0);
    }

    void pictureCtrlFFitsAndCtrlZSwitchesToFullSize() {
        Start();
        QTableView* t = Pictures();
        QTest::keyClick(t, Qt::Key_F, kCtrl);
        const int fitted = ShownZoom();
        QVERIFY(fitted < 0); // 1600 x 1200 is larger than the pane
        QTest::keyClick(t, Qt::Key_Z, kCtrl);
        QCOMPARE(ShownZoom(), 0);
        QTest::keyClick(t, Qt::Key_Z, kCtrl);
        QCOMPARE(ShownZoom(), fitted);
    }

    void pictureCtrlQStepsThroughTheSizes() {
        Start();
        QTableView* t = Pictures();
        QTest::keyClick(t, Qt::Key_Q, kCtrl);
        QVERIFY(ShownZoom() < 0);
        QTest::keyClick(t, Qt::Key_Q, kCtrl);
        QCOMPARE(ShownZoom(), 100);
        QTest::keyClick(t, Qt::Key_Q, kCtrl);
        QCOMPARE(ShownZoom(), 0);
        QVERIFY(m_g->window->frmPictures->updatesEnabled());
    }

    void pictureCtrlLShowsTheLeftUpperCorner() {
        Start();
        QTableView* t = Pictures();
        PictureView* view = m_g->window->frmPictures->pictureView();
        QTest::keyClick(t, Qt::Key_Q, kCtrl);
        QTest::keyClick(t, Qt::Key_Q, kCtrl); // twice the size
        QVERIFY(view->horizontalScrollBar()->maximum() > 0);
        view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->maximum());
        view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum());
        QTest::keyClick(view, Qt::Key_L, kCtrl);
        QCOMPARE(view->horizontalScrollBar()->value(), 0);
        QCOMPARE(view->verticalScrollBar()->value(), 0);
    }

    void pictureCtrlNAndRStep() {
        Start();
        QTableView* t = Pictures();
        DataGrid& list = m_g->window->frmPictures->lbxExtern();
        QTest::keyClick(t, Qt::Key_N, kCtrl);
        QCOMPARE(list.CurRow(), 2);
        QVERIFY(m_g->window->frmPictures->pictureView()->path().endsWith(QStringLiteral("/b.png")));
        QTest::keyClick(t, Qt::Key_N, kCtrl);
        QTest::keyClick(t, Qt::Key_R, kCtrl);
        QCOMPARE(list.CurRow(), 2);
    }

    void pictureCtrlPOpensTheLinkedText() {
        Start();
        QTableView* t = Pictures();
        DataGrid& list = m_g->window->frmPictures->lbxExtern();
        const QString text = m_g->folder.file(QStringLiteral("pics/a.txt"));
        QFile f(text);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("scan\r\n");
        f.close();
        list.SetCellText(1, PicCol::Textfile, QStringLiteral("a.txt"));
        list.SetCellText(1, PicCol::PathTxt, m_g->folder.file(QStringLiteral("pics")));
        list.SetCellText(1, PicCol::HasTextlink, Caption(CapStatusFound));
        QTest::keyClick(t, Qt::Key_P, kCtrl);
        QCOMPARE(m_shell->opened, QStringList{text});
    }

    void pictureCtrlCAndCtrlTWorkTheTextBox() {
        Start();
        QTableView* t = Pictures();
        FrmPictures* p = m_g->window->frmPictures;
        auto* shown = Control<QTabWidget>(p, "SSTabPic_Pictures");
        auto* text = Control<QPlainTextEdit>(p, "txtPic_TextToSizedPic");
        QTest::keyClick(t, Qt::Key_C, kCtrl);
        QCOMPARE(shown->currentIndex(), 1);
        QTest::keyClick(t, Qt::Key_C, kCtrl);
        QCOMPARE(shown->currentIndex(), 0);
        const qreal normal = text->font().pointSizeF();
        QTest::keyClick(t, Qt::Key_T, kCtrl);
        QCOMPARE(shown->currentIndex(), 1);
        QVERIFY(text->font().pointSizeF() > normal);
        QTest::keyClick(t, Qt::Key_T, kCtrl);
        QCOMPARE(text->font().pointSizeF(), normal);
        // in the text box itself Ctrl+C copies and leaves the tabs alone
        text->setPlainText(QStringLiteral("scan"));
        text->selectAll();
        QTest::keyClick(text, Qt::Key_C, kCtrl);
        QCOMPARE(shown->currentIndex(), 1);
    }

    void pictureOwnAreaKeyDoesNothing() {
        Start();
        QTableView* t = Pictures();
        QTest::keyClick(t, Qt::Key_F5);
        QCOMPARE(Main()->currentIndex(), int(PictureArea));
        QVERIFY(m_g->prompt.shown.empty());
    }

    // ---- the player beside the keys of the data list ----------------------------------

    void ctrlPPlaysOnThePlayerTabAndCopiesElsewhere() {
        Start();
        FrmInput* w = m_g->window.get();
        QTableView* t = w->pageData->LbxInput->table();
        t->setFocus();
        Grids::LbxInput().SetSelected(1, true);
        QTest::keyClick(t, Qt::Key_F8, Qt::ShiftModifier); // the player tab
        QSignalSpy played(Control<QAbstractButton>(w, "MMC_Play"), &QAbstractButton::clicked);
        QTest::keyClick(t, Qt::Key_P, kCtrl);
        QCOMPARE(played.count(), 1);
        QCOMPARE(w->frmPlaylist->lbxPlaylist().Rows(), 0);
        QTest::keyClick(t, Qt::Key_F4, Qt::ShiftModifier); // the marks tab
        m_g->prompt.answers = {true};
        QTest::keyClick(t, Qt::Key_P, kCtrl);
        QCOMPARE(played.count(), 1);
        QCOMPARE(w->frmPlaylist->lbxPlaylist().Rows(), 1);
    }
};

QTEST_MAIN(TestShortcutsWindows)
#include "test_shortcuts_windows.moc"

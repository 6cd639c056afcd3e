#include "app/WindowShortcuts.h"

#include "app/DataGridView.h"
#include "app/FrmInput.h"
#include "app/FrmPictures.h"
#include "app/FrmPlaylist.h"
#include "app/FrmTag.h"
#include "app/FrmTagSetPanel.h"
#include "app/InputDataPage.h"
#include "app/MessageBoxPrompt.h"
#include "app/PictureView.h"
#include "app/RefPanel.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/modContextMenu.h"
#include "list/modMarks.h"
#include "list/modShortcuts.h"
#include "platform/Shell.h"
#include "playlist/modPlaylistPlay.h"
#include "tag/modTagList.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>

#include <iterator>

namespace {

constexpr int kRatingCount = 6;
constexpr int kTagTypicalPanel = 4;
constexpr int kDoubleSize = 100; // zoom of the third size step

// Hands the keys of the widgets it watches to HandleShortcut under one list name; a key
// that runs a command goes no further.
class KeyRoute : public QObject {
public:
    KeyRoute(const QString& list, QObject* parent) : QObject(parent), m_list(list) {}

    void Watch(QWidget* w) {
        if (w)
            w->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const auto* k = static_cast<QKeyEvent*>(event);
        const int mask = ShortcutMask(k->modifiers().toInt());
        const int key = ShortcutKeyCode(k->key(), k->modifiers() & Qt::KeypadModifier, mask & KeyMask::Shift);
        return HandleShortcut(m_list, key, mask);
    }

private:
    QString m_list;
};

QTableView* TableOf(QWidget* root, const char* name) {
    auto* view = root->findChild<DataGridView*>(QString::fromLatin1(name));
    return view ? view->table() : nullptr;
}

QStringList SettingRows(int first, int last, int col) {
    QStringList rows;
    for (int r = first; r <= last; ++r)
        rows << Setting(r, col);
    return rows;
}

void ClickIn(QWidget* root, const char* name) {
    if (auto* b = root->findChild<QPushButton*>(QString::fromLatin1(name)))
        b->click();
}

} // namespace

void InstallWindowShortcuts(FrmInput* window) {
    new MainTabKeys(window);
    new TagShortcuts(window);
    new PlaylistShortcuts(window);
    new PictureShortcuts(window);
}

// ---- F1 to F7 ------------------------------------------------------------------------

MainTabKeys::MainTabKeys(FrmInput* window) : QObject(window), m_window(window) {
    SetMainTabShortcuts(this);
    qApp->installEventFilter(this);
}

MainTabKeys::~MainTabKeys() {
    SetMainTabShortcuts(nullptr);
}

void MainTabKeys::SelectMainTab(int index) {
    m_window->TabInput->setCurrentIndex(index);
}

QString MainTabKeys::ActiveList(const QWidget* focus) const {
    static const char* const kAreas[] = {"Input",    "Tagging",  "Texte",      "Playlisten",
                                         "Pictures", "STextAll", "Preferences"};
    const int area = m_window->TabInput->currentIndex();
    if (area < 0 || area >= int(std::size(kAreas)))
        return QString();
    if (area == 0) {
        const QWidget* ref = m_window->refPanel->LbxRef;
        if (focus && (focus == ref || ref->isAncestorOf(focus)))
            return QStringLiteral("Ref");
    }
    return QString::fromLatin1(kAreas[area]);
}

bool MainTabKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    const auto* k = static_cast<QKeyEvent*>(event);
    if (k->key() < Qt::Key_F1 || k->key() > Qt::Key_F7 || ShortcutMask(k->modifiers().toInt()) != 0)
        return QObject::eventFilter(watched, event);
    auto* w = static_cast<QWidget*>(watched);
    if (w->window() != m_window)
        return QObject::eventFilter(watched, event);
    const QString list = ActiveList(w);
    const int keyCode = ShortcutKeyCode(k->key(), false, false);
    // Only the data list itself hands its keys to its table (with the refusal of direct
    // edit); the other controls of the data area just change the area.
    const QWidget* input = m_window->pageData->LbxInput;
    if (list == QLatin1String("Input") && w != input && !input->isAncestorOf(w))
        return MainTabShortcut(list, keyCode, KeyMask::None);
    return HandleShortcut(list, keyCode, KeyMask::None);
}

// ---- the tag list --------------------------------------------------------------------

TagShortcuts::TagShortcuts(FrmInput* window) : QObject(window), m_window(window) {
    SetTagShortcuts(this);
    auto* route = new KeyRoute(QStringLiteral("Tagging"), this);
    route->Watch(TableOf(window->frmTag, "LbxTag"));
}

TagShortcuts::~TagShortcuts() {
    SetTagShortcuts(nullptr);
}

void TagShortcuts::Click(const char* name) {
    ClickIn(m_window->frmTag, name);
}

QStringList TagShortcuts::Signs() const {
    return SettingRows(Ini::SignFirst, Ini::SignLast, Ini::SignCol);
}

QStringList TagShortcuts::Ratings() const {
    QStringList rows;
    const DataGrid& rating = Grids::lbxRating();
    for (int r = 1; r <= kRatingCount; ++r)
        rows << (r <= rating.Rows() ? rating.CellText(r, 1) : QString());
    return rows;
}

QStringList TagShortcuts::Moods() const {
    return SettingRows(Ini::MoodFirst, Ini::MoodLast, Ini::MoodCol);
}

void TagShortcuts::WriteMarkToHighlighted(const QString& mark) {
    WriteMarkToSelected(m_window->frmTag->lbxTag(), TagCol::FTag, mark);
}

int TagShortcuts::FieldTab() const {
    return m_window->frmTag->findChild<QTabWidget*>(QStringLiteral("SSTabFields"))->currentIndex();
}

void TagShortcuts::SelectFieldTab(int index) {
    auto* tabs = m_window->frmTag->findChild<QTabWidget*>(QStringLiteral("SSTabFields"));
    if (tabs->isTabEnabled(index))
        tabs->setCurrentIndex(index);
}

void TagShortcuts::OpenCurrentFile() {
    const DataGrid& list = m_window->frmTag->lbxTag();
    const int r = list.CurRow();
    if (r >= 1 && r <= list.Rows())
        TheShell().Open(TagRowPath(list, r));
}

QString TagShortcuts::MarkBox() const {
    return m_window->frmTag->findChild<QLineEdit*>(QStringLiteral("txtTab2_FTag"))->text();
}

void TagShortcuts::SetMarkBox(const QString& text) {
    m_window->frmTag->findChild<QLineEdit*>(QStringLiteral("txtTab2_FTag"))->setText(text);
}

void TagShortcuts::HighlightAll() {
    Click("btnTag_HighlightAll");
}

void TagShortcuts::InvertHighlight() {
    Click("btnTab2_InvertHighlight");
}

void TagShortcuts::FilterOnOff() {
    Click("btnTab2_FilterOnOff");
}

void TagShortcuts::Filter() {
    Click("btnTab2_Filter");
}

void TagShortcuts::CopyToPlaylist() {
    Click("btnTab2_CopyToPlaylist");
}

void TagShortcuts::HighlightByMark() {
    const auto* noMsg = m_window->frmTag->findChild<QCheckBox*>(QStringLiteral("chbTab2_NoMsg"));
    btnTab1_FTagBlue(m_window->frmTag->lbxTag(), MarkBox(), noMsg && noMsg->isChecked(), ListEnv(AppPrompt()),
                     QString());
}

void TagShortcuts::RemoveMarks() {
    Click("btnTab2_RemoveFTag");
}

QString TagShortcuts::FieldBox(int index, bool typical) const {
    return m_window->frmTag->panel(typical ? kTagTypicalPanel : 1)->text(index);
}

void TagShortcuts::SetFieldBox(int index, bool typical, const QString& text) {
    m_window->frmTag->panel(typical ? kTagTypicalPanel : 1)->setText(index, text);
}

// ---- the playlist --------------------------------------------------------------------

PlaylistShortcuts::PlaylistShortcuts(FrmInput* window) : QObject(window), m_window(window) {
    SetPlaylistShortcuts(this);
    auto* route = new KeyRoute(QStringLiteral("Playlisten"), this);
    route->Watch(TableOf(window->frmPlaylist, "LbxPlaylist"));
}

PlaylistShortcuts::~PlaylistShortcuts() {
    SetPlaylistShortcuts(nullptr);
}

void PlaylistShortcuts::Click(const char* name) {
    ClickIn(m_window->frmPlaylist, name);
}

QStringList PlaylistShortcuts::Signs() const {
    return SettingRows(Ini::SignFirst, Ini::SignLast, Ini::SignCol);
}

void PlaylistShortcuts::WriteMarkToHighlighted(const QString& mark) {
    m_window->frmPlaylist->WriteMarkToHighlighted(mark);
}

void PlaylistShortcuts::OpenCurrentFile() {
    const DataGrid& list = m_window->frmPlaylist->lbxPlaylist();
    const int r = list.CurRow();
    if (r >= 1 && r <= list.Rows())
        PlayPlaylistSong(list, r, AppPrompt());
}

QString PlaylistShortcuts::MarkBox() const {
    return m_window->frmPlaylist->findChild<QLineEdit*>(QStringLiteral("txtPlaylist_FTag"))->text();
}

void PlaylistShortcuts::SetMarkBox(const QString& text) {
    m_window->frmPlaylist->findChild<QLineEdit*>(QStringLiteral("txtPlaylist_FTag"))->setText(text);
}

void PlaylistShortcuts::HighlightAll() {
    Click("btnPlaylist_HighlightAll");
}

void PlaylistShortcuts::InvertHighlight() {
    Click("btnPlaylist_InvertHighlight");
}

void PlaylistShortcuts::MarkHighlighted() {
    Click("btnPlaylist_SetFTagActRow");
}

void PlaylistShortcuts::MoveDown() {
    Click("btnPlaylist_Down");
}

void PlaylistShortcuts::MoveUp() {
    Click("btnPlaylist_Up");
}

void PlaylistShortcuts::HighlightByMark() {
    Click("btnPlaylist_FTagBlue");
}

void PlaylistShortcuts::RemoveMarks() {
    Click("btnPlaylist_RemoveFTag");
}

// ---- the pictures --------------------------------------------------------------------

PictureShortcuts::PictureShortcuts(FrmInput* window) : QObject(window), m_window(window) {
    SetPictureShortcuts(this);
    // The lists, the picture and the thumbnails; the text boxes keep their keys.
    FrmPictures* pictures = window->frmPictures;
    auto* route = new KeyRoute(QStringLiteral("Pictures"), this);
    route->Watch(TableOf(pictures, "LbxPic_Extern"));
    route->Watch(TableOf(pictures, "LbxPic_Intern"));
    route->Watch(pictures->pictureView());
    route->Watch(pictures->pictureView()->viewport());
    route->Watch(pictures->thumbnails());
    route->Watch(pictures->findChild<QScrollBar*>(QStringLiteral("HScrollPic_Zoom")));
}

PictureShortcuts::~PictureShortcuts() {
    SetPictureShortcuts(nullptr);
}

void PictureShortcuts::Click(const char* name) {
    ClickIn(m_window->frmPictures, name);
}

void PictureShortcuts::SelectFilesTab(int index) {
    m_window->frmPictures->findChild<QTabWidget*>(QStringLiteral("SSTabPic_Files"))->setCurrentIndex(index);
}

void PictureShortcuts::SelectPicturesTab(int index) {
    m_window->frmPictures->findChild<QTabWidget*>(QStringLiteral("SSTabPic_Pictures"))
        ->setCurrentIndex(index);
}

void PictureShortcuts::ZoomOriginal() {
    Click("btnPic_Zoom_0");
}

void PictureShortcuts::ToggleTextbox() {
    Click("btnPic_HideTextbox");
}

void PictureShortcuts::Fit() {
    Click("btnPic_Adjust");
}

void PictureShortcuts::LeftCorner() {
    if (auto* a = m_window->frmPictures->findChild<QAction*>(QStringLiteral("mnuZoom_LeftCorner")))
        a->trigger();
}

void PictureShortcuts::NextPicture() {
    Click("btnPic_NextPic");
}

void PictureShortcuts::PreviousPicture() {
    Click("btnPic_PreviousPic");
}

void PictureShortcuts::OpenLink() {
    Click("btnPic_OpenLink");
}

void PictureShortcuts::NextSizeStep() {
    // Own size, fitted into the pane, twice the own size, and round again; the area is
    // redrawn once at the end.
    FrmPictures* pictures = m_window->frmPictures;
    pictures->setUpdatesEnabled(false);
    auto* zoom = pictures->findChild<QScrollBar*>(QStringLiteral("HScrollPic_Zoom"));
    if (ShownAtFullSize() && m_sizeStep != 1) {
        Fit();
        m_sizeStep = 1;
    } else if (m_sizeStep == 1) {
        zoom->setValue(kDoubleSize);
        m_sizeStep = 2;
    } else {
        zoom->setValue(0);
        m_sizeStep = 0;
    }
    pictures->setUpdatesEnabled(true);
}

void PictureShortcuts::StretchTextbox() {
    Click("btnPic_StretchTextbox");
}

bool PictureShortcuts::ShownAtFullSize() const {
    return m_window->frmPictures->pictureView()->zoom() == 0;
}

void PictureShortcuts::FullSize() {
    m_window->frmPictures->findChild<QScrollBar*>(QStringLiteral("HScrollPic_Zoom"))->setValue(0);
}

void PictureShortcuts::ZoomIn() {
    Click("btnPic_ZoomIncrease");
}

void PictureShortcuts::ZoomOut() {
    Click("btnPic_ZoomDecrease");
}

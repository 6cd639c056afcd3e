#include "app/FolderPanel.h"

#include "app/ContextMenuView.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/modFolderRows.h"
#include "platform/FolderWalk.h"
#include "platform/Volumes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr int kPathRole = Qt::UserRole;
constexpr int kFilledRole = Qt::UserRole + 1;
constexpr int kFavoriteRole = Qt::UserRole + 2; // an entry of Drive1 that is a favourite folder
} // namespace

FolderPanel::FolderPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("fraTab1_Folders"));
    auto* v = new QVBoxLayout(this);
    // a little air towards the splitter handle and the list beside it
    v->setContentsMargins(0, 0, 4, 0);
    v->setSpacing(4);
    Drive1 = new QComboBox(this);
    Drive1->setObjectName(QStringLiteral("Drive1"));
    Folderview = new QTreeWidget(this);
    Folderview->setObjectName(QStringLiteral("Folderview"));
    Folderview->setHeaderHidden(true);
    Folderview->setColumnCount(1);
    Folderview->setUniformRowHeights(true);
    Folderview->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    Folderview->header()->setStretchLastSection(false);
    btnTab1_CloseFolderview = new QPushButton(this);
    btnTab1_CloseFolderview->setObjectName(QStringLiteral("btnTab1_CloseFolderview"));
    chbTab1_CloseFolderView = new QCheckBox(this);
    chbTab1_CloseFolderView->setObjectName(QStringLiteral("chbTab1_CloseFolderView"));
    v->addWidget(Drive1);
    v->addWidget(Folderview, 1);
    auto* row = new QHBoxLayout;
    row->addWidget(chbTab1_CloseFolderView, 1);
    row->addWidget(btnTab1_CloseFolderview);
    v->addLayout(row);

    // Each expansion reads the folder again: what was made meanwhile shows.
    connect(Folderview, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        if (item->data(0, kFilledRole).toBool())
            RefreshNode(item);
        else
            FillChildren(item);
    });
    // One click chooses the folder, whether or not it was current before.
    connect(Folderview, &QTreeWidget::itemPressed, this, [this](QTreeWidgetItem* item) { Choose(item); });
    connect(Folderview, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { Choose(item); });
    connect(Folderview, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (State().SuppressEvents)
            return;
        if (item)
            Choose(item);
        else
            m_clicked.clear(); // no node chosen: nothing to read
    });
    Folderview->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(Folderview, &QWidget::customContextMenuRequested, this, &FolderPanel::ShowMenu);
    connect(Drive1, &QComboBox::activated, this, [this](int i) { SetDrive(Drive1->itemData(i).toString()); });
    connect(btnTab1_CloseFolderview, &QPushButton::clicked, this, &FolderPanel::closeRequested);
    connect(chbTab1_CloseFolderView, &QCheckBox::toggled, this, [](bool on) {
        if (!State().SuppressEvents)
            SetSettingOn(Ini::CloseFolderView, Ini::Col1, on);
    });
}

void FolderPanel::Choose(QTreeWidgetItem* item) {
    if (!item)
        return;
    const QString path = item->data(0, kPathRole).toString();
    if (path == m_clicked)
        return;
    m_clicked = path;
    SetSetting(Ini::TreeFolder, Ini::Col2, m_clicked);
    emit folderChosen(m_clicked);
}

FolderMenuState FolderPanel::MenuState(QTreeWidgetItem* item) const {
    FolderMenuState st;
    QTreeWidgetItem* node = item ? item : Folderview->currentItem();
    if (node)
        st.folder = node->data(0, kPathRole).toString();
    st.favorite = IsFavoriteFolder(Settings(), st.folder);
    st.favoritesFull = FavoriteFolders(Settings()).size() >= kMaxFavoriteFolders;
    st.rowsOfFolder = rowsOfFolder && !st.folder.isEmpty() ? rowsOfFolder(st.folder) : 0;
    return st;
}

void FolderPanel::ShowMenu(const QPoint& at) {
    QTreeWidgetItem* item = Folderview->itemAt(at);
    const ContextMenuEntries entries = BuildFolderMenu(MenuState(item), &FolderMenuCaption);
    const QString key = ExecContextMenu(Folderview, entries, Folderview->viewport()->mapToGlobal(at),
                                        QStringLiteral("mnuFolder"));
    RunMenuKey(key, item);
}

void FolderPanel::RunMenuKey(const QString& key, QTreeWidgetItem* item) {
    QTreeWidgetItem* node = item ? item : Folderview->currentItem();
    const QString folder = node ? node->data(0, kPathRole).toString() : QString();
    if (key == QLatin1String("UpdateDrivelist")) {
        const QString keep = SelectedFolder();
        FillDrives();
        if (!keep.isEmpty())
            ShowFolder(keep);
    } else if (key == QLatin1String("UpdateFolders")) {
        if (node)
            RefreshNode(node);
        else if (Folderview->topLevelItemCount() > 0)
            RefreshNode(Folderview->topLevelItem(0));
    } else if (key == QLatin1String("AddToFavorite") || key == QLatin1String("RemFromFavorite")) {
        const bool changed = key == QLatin1String("AddToFavorite") ? AddFavoriteFolder(Settings(), folder)
                                                                   : RemoveFavoriteFolder(Settings(), folder);
        if (changed)
            FillFavorites();
        // The tree of a favourite that is gone gives way to the tree of its volume.
        if (changed && Folderview->topLevelItemCount() > 0 && !IsFavoriteFolder(Settings(), folder) &&
            Folderview->topLevelItem(0)->data(0, kPathRole).toString() == folder)
            ShowFolder(folder);
    } else if (key == QLatin1String("DirUpdate") && node) {
        Folderview->setCurrentItem(node);
        Choose(node);
        emit readFolderRequested(folder);
    } else if (key == QLatin1String("DirRem") && !folder.isEmpty()) {
        emit removeRowsRequested(folder);
    } else if (key == QLatin1String("DirUpd") && !folder.isEmpty()) {
        emit rereadRowsRequested(folder);
    }
}

void FolderPanel::FillFavorites() {
    // The favourites follow the volumes; the entry shown stays chosen.
    const QString keep = CurrentDrive();
    for (int i = Drive1->count() - 1; i >= 0; --i)
        if (Drive1->itemData(i, kFavoriteRole).toBool())
            Drive1->removeItem(i);
    for (const QString& f : FavoriteFolders(Settings())) {
        Drive1->addItem(Caption(CapFavoriteDrive) + f, f);
        Drive1->setItemData(Drive1->count() - 1, true, kFavoriteRole);
    }
    const int i = Drive1->findData(keep);
    if (i >= 0)
        Drive1->setCurrentIndex(i);
}

QString FolderPanel::DriveText(const QString& rootPath, const QString& name) {
    return rootPath + QStringLiteral(" (") + name + QLatin1Char(')');
}

void FolderPanel::FillDrives() {
    const QString keep = CurrentDrive();
    Drive1->clear();
    for (const Volume& v : MountedVolumes()) {
        if (v.rootPath.startsWith(QLatin1String("//")))
            continue; // network shares by path are not offered for a tree
        Drive1->addItem(DriveText(v.rootPath, v.name), v.rootPath);
    }
    if (Drive1->count() == 0)
        Drive1->addItem(DriveText(QStringLiteral("/"), QStringLiteral("/")), QStringLiteral("/"));
    FillFavorites();
    const int i = Drive1->findData(keep);
    Drive1->setCurrentIndex(i >= 0 ? i : 0);
}

QString FolderPanel::CurrentDrive() const {
    return Drive1->currentData().toString();
}

QTreeWidgetItem* FolderPanel::MakeNode(const QString& path, const QString& text) {
    auto* item = new QTreeWidgetItem(QStringList(text));
    item->setData(0, kPathRole, path);
    item->setData(0, kFilledRole, false);
    // Children are read on expansion; until then every node offers an expander.
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    return item;
}

bool FolderPanel::SetDrive(const QString& rootPath) {
    const int i = Drive1->findData(rootPath);
    if (i < 0)
        return false;
    Drive1->setCurrentIndex(i);
    Folderview->clear();
    m_clicked.clear();
    // A favourite's tree starts with its folder as it is.
    const bool favorite = Drive1->itemData(i, kFavoriteRole).toBool();
    QTreeWidgetItem* root = MakeNode(rootPath, favorite ? rootPath : Drive1->itemText(i));
    Folderview->addTopLevelItem(root);
    root->setExpanded(true);
    return true;
}

void FolderPanel::FillChildren(QTreeWidgetItem* item) {
    if (item->data(0, kFilledRole).toBool())
        return;
    item->setData(0, kFilledRole, true);
    const QString path = item->data(0, kPathRole).toString();
    const QString prefix = path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
    QList<QTreeWidgetItem*> children;
    for (const QString& name : ListSubfolders(path))
        children.append(MakeNode(prefix + name, name));
    if (children.isEmpty())
        item->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicator);
    item->addChildren(children);
}

void FolderPanel::RefreshNode(QTreeWidgetItem* item) {
    if (!item)
        return;
    if (!item->data(0, kFilledRole).toBool()) {
        FillChildren(item);
        return;
    }
    const QString path = item->data(0, kPathRole).toString();
    const QString prefix = path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
    const std::vector<QString> names = ListSubfolders(path);
    // Keep the nodes that remain (with their open branches), in the new order.
    QHash<QString, QTreeWidgetItem*> old;
    QList<QTreeWidgetItem*> wasOpen;
    for (int i = 0; i < item->childCount(); ++i)
        if (item->child(i)->isExpanded())
            wasOpen.append(item->child(i)); // read while the nodes are in the tree
    for (QTreeWidgetItem* child : item->takeChildren())
        old.insert(child->text(0), child);
    QList<QTreeWidgetItem*> children;
    for (const QString& name : names) {
        QTreeWidgetItem* child = old.take(name);
        children.append(child ? child : MakeNode(prefix + name, name));
    }
    const bool currentGone = [&] {
        for (QTreeWidgetItem* gone : std::as_const(old))
            if (gone->data(0, kPathRole).toString() == m_clicked)
                return true;
        return false;
    }();
    qDeleteAll(old);
    if (currentGone)
        m_clicked.clear();
    item->setChildIndicatorPolicy(children.isEmpty() ? QTreeWidgetItem::DontShowIndicator
                                                     : QTreeWidgetItem::ShowIndicator);
    item->addChildren(children);
    // A branch that was open opens again, and its expansion reads it anew.
    for (QTreeWidgetItem* child : std::as_const(wasOpen))
        if (children.contains(child))
            child->setExpanded(true);
}

void FolderPanel::ScrollToStart() {
    QTreeWidgetItem* node = Folderview->currentItem();
    if (!node && !m_startFolder.isEmpty()) {
        const auto hits = Folderview->findItems(QStringLiteral("*"), Qt::MatchWildcard | Qt::MatchRecursive);
        for (QTreeWidgetItem* i : hits)
            if (i->data(0, kPathRole).toString() == m_startFolder)
                node = i;
    }
    if (node)
        Folderview->scrollToItem(node, QAbstractItemView::PositionAtCenter);
}

bool FolderPanel::ShowFolder(const QString& folder) {
    const QString clean = QDir::cleanPath(folder);
    if (!QFileInfo(clean).isDir())
        return false;
    // The volume whose root is the longest prefix of the folder.
    QString best;
    for (int i = 0; i < Drive1->count(); ++i) {
        // A favourite holds the folder only while its own tree is shown.
        if (Drive1->itemData(i, kFavoriteRole).toBool() && i != Drive1->currentIndex())
            continue;
        const QString r = Drive1->itemData(i).toString();
        const bool under = clean == r || r == QLatin1String("/") || clean.startsWith(r + QLatin1Char('/'));
        if (under && r.size() > best.size())
            best = r;
    }
    if (best.isEmpty() || !SetDrive(best))
        return false;
    QTreeWidgetItem* node = Folderview->topLevelItem(0);
    const QString rest = clean.mid(best.size());
    for (const QString& part : rest.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        FillChildren(node);
        node->setExpanded(true);
        QTreeWidgetItem* next = nullptr;
        for (int c = 0; c < node->childCount(); ++c) {
            if (node->child(c)->text(0) == part) {
                next = node->child(c);
                break;
            }
        }
        if (!next)
            break;
        node = next;
    }
    Folderview->setCurrentItem(node);
    Folderview->scrollToItem(node);
    m_clicked = node->data(0, kPathRole).toString();
    return true;
}

QString FolderPanel::SelectedFolder() const {
    if (!m_clicked.isEmpty())
        return m_clicked;
    if (QTreeWidgetItem* item = Folderview->currentItem())
        return item->data(0, kPathRole).toString();
    return QString();
}

void FolderPanel::ApplySettings(Prompt& prompt) {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    chbTab1_CloseFolderView->setChecked(SettingOn(Ini::CloseFolderView, Ini::Col1));
    FillDrives();
    const QString preset = Setting(Ini::DrivePreset, Ini::Col1);
    bool shown = false;
    if (!preset.isEmpty()) {
        if (SetDrive(preset))
            shown = true;
        else
            SetSetting(Ini::DrivePreset, Ini::Col1, QString());
    }
    const QString last = Setting(Ini::TreeFolder, Ini::Col2);
    m_startFolder.clear();
    if (!last.isEmpty()) {
        if (ShowFolder(last)) {
            shown = true;
            m_startFolder = m_clicked;
        } else {
            // The folder of the last close is gone (an unplugged stick, a removed folder).
            prompt.Tell(Caption(CapTreeFolderMissing) + last, Prompt::Icon::Critical);
            SetSetting(Ini::DrivePreset, Ini::Col1, QString());
            shown = false;
        }
    }
    if (!shown) {
        // The user's home folder, chosen and open, never the bare root of the volume.
        if (ShowFolder(QDir::homePath())) {
            m_startFolder = m_clicked;
            if (QTreeWidgetItem* home = Folderview->currentItem())
                home->setExpanded(true);
        } else {
            SetDrive(CurrentDrive());
        }
    }
    State().SuppressEvents = quiet;
}
#include "app/FolderPanel.h"

#include "core/AppState.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
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
    chbPref_CloseFolderView = new QCheckBox(this);
    chbPref_CloseFolderView->setObjectName(QStringLiteral("chbPref_CloseFolderView"));
    v->addWidget(Drive1);
    v->addWidget(Folderview, 1);
    auto* row = new QHBoxLayout;
    row->addWidget(chbPref_CloseFolderView, 1);
    row->addWidget(btnTab1_CloseFolderview);
    v->addLayout(row);

    connect(Folderview, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem* item) { FillChildren(item); });
    connect(Folderview, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        m_clicked = item->data(0, kPathRole).toString();
        emit folderChosen(m_clicked);
    });
    connect(Folderview, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item && !State().SuppressEvents) {
            m_clicked = item->data(0, kPathRole).toString();
            SetSetting(Ini::TreeFolder, 2, m_clicked);
        }
    });
    connect(Drive1, &QComboBox::activated, this, [this](int i) { SetDrive(Drive1->itemData(i).toString()); });
    connect(btnTab1_CloseFolderview, &QPushButton::clicked, this, &FolderPanel::closeRequested);
    connect(chbPref_CloseFolderView, &QCheckBox::toggled, this, [](bool on) {
        if (!State().SuppressEvents)
            SetSettingOn(Ini::CloseFolderView, Ini::Col1, on);
    });
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
    QTreeWidgetItem* root = MakeNode(rootPath, Drive1->itemText(i));
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

bool FolderPanel::ShowFolder(const QString& folder) {
    const QString clean = QDir::cleanPath(folder);
    if (!QFileInfo(clean).isDir())
        return false;
    // The volume whose root is the longest prefix of the folder.
    QString best;
    for (int i = 0; i < Drive1->count(); ++i) {
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

void FolderPanel::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    chbPref_CloseFolderView->setChecked(SettingOn(Ini::CloseFolderView, Ini::Col1));
    FillDrives();
    const QString preset = Setting(Ini::DrivePreset, Ini::Col1);
    bool shown = false;
    if (!preset.isEmpty()) {
        if (SetDrive(preset))
            shown = true;
        else
            SetSetting(Ini::DrivePreset, Ini::Col1, QString());
    }
    const QString last = Setting(Ini::TreeFolder, 2);
    if (!last.isEmpty())
        shown = ShowFolder(last) || shown;
    if (!shown) {
        // The volume of the home folder.
        if (!ShowFolder(QDir::homePath()))
            SetDrive(CurrentDrive());
        m_clicked.clear();
        Folderview->setCurrentItem(nullptr);
    }
    State().SuppressEvents = quiet;
}

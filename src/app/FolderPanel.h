#pragma once
// The folder pane of the data area: the volume list Drive1 and the folder tree
// Folderview of the chosen volume. The tree lists folders only, sorted by their
// upper-cased names, and reads a folder's children each time it is expanded, so that
// folders made while the program runs appear. The favourite folders stand in Drive1
// behind the volumes, each showing its own tree. The context menu refreshes the volumes
// and the folders, keeps the favourites, reads the folder under the mouse, and removes or
// reads again the rows of the data list that lie in it.

#include <QString>
#include <QWidget>
#include <functional>

class Prompt;
struct FolderMenuState;
class QCheckBox;
class QComboBox;
class QMenu;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

class FolderPanel : public QWidget {
    Q_OBJECT
public:
    explicit FolderPanel(QWidget* parent = nullptr);

    QComboBox* Drive1;
    QTreeWidget* Folderview;
    QPushButton* btnTab1_CloseFolderview;
    // Close the pane after a scan (settings row 22): the switch of the preferences, at hand
    // beside the pane; the main window keeps the two in step.
    QCheckBox* chbTab1_CloseFolderView;

    // The folder of the last click in the tree; else the selected node; else empty.
    QString SelectedFolder() const;
    // Fills Drive1 with the mounted volumes: root path + " (" + volume name + ")".
    void FillDrives();
    // Shows the tree of the volume with this root path; false when it is not listed.
    bool SetDrive(const QString& rootPath);
    QString CurrentDrive() const;
    // Chooses the volume of `folder`, opens the tree down to it and selects it.
    bool ShowFolder(const QString& folder);
    // Start: the preset volume (settings row 7) and the last folder (row 86, column 2);
    // without them the user's home folder. A stored folder that no longer exists is
    // told (critical) and row 7 is cleared.
    void ApplySettings(Prompt& prompt);
    // Reads the children of a node again: new folders appear, vanished ones go, the
    // open branches that remain stay open.
    void RefreshNode(QTreeWidgetItem* item);
    // The folder shown at the start (the stored one or home): visible when the pane opens.
    void ScrollToStart();

    // The context menu of the tree for the node `item` (may be null): what it is built
    // from, and the command of a chosen key.
    FolderMenuState MenuState(QTreeWidgetItem* item) const;
    void RunMenuKey(const QString& key, QTreeWidgetItem* item);
    // The rows of the data list in a folder (the scan panel answers); unset: none.
    std::function<int(const QString& folder)> rowsOfFolder;

    // The favourite folders behind the volumes of Drive1 (again after a change of language).
    void FillFavorites();

    // The display text of a volume in Drive1.
    static QString DriveText(const QString& rootPath, const QString& name);

signals:
    void folderChosen(const QString& path);
    void closeRequested();
    // "Read folder" of the context menu: the folder is to be scanned at once.
    void readFolderRequested(const QString& path);
    // The rows of the folder are to leave the data list, or to be read again.
    void removeRowsRequested(const QString& path);
    void rereadRowsRequested(const QString& path);

private:
    void FillChildren(QTreeWidgetItem* item);
    QTreeWidgetItem* MakeNode(const QString& path, const QString& text);
    void Choose(QTreeWidgetItem* item);
    void ShowMenu(const QPoint& at);
    QString m_clicked;
    QString m_startFolder;
};

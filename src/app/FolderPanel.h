#pragma once
// The folder pane of the data area: the volume list Drive1 and the folder tree
// Folderview of the chosen volume. The tree lists folders only, sorted by their
// upper-cased names, and reads a folder's children only when it is expanded.

#include <QString>
#include <QWidget>

class QCheckBox;
class QComboBox;
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
    QCheckBox* chbPref_CloseFolderView; // close the pane after a scan (settings row 22)

    // The folder of the last click in the tree; else the selected node; else empty.
    QString SelectedFolder() const;
    // Fills Drive1 with the mounted volumes: root path + " (" + volume name + ")".
    void FillDrives();
    // Shows the tree of the volume with this root path; false when it is not listed.
    bool SetDrive(const QString& rootPath);
    QString CurrentDrive() const;
    // Chooses the volume of `folder`, opens the tree down to it and selects it.
    bool ShowFolder(const QString& folder);
    // Start: the preset volume (settings row 7) and the last folder (row 86, column 2).
    void ApplySettings();

    // The display text of a volume in Drive1.
    static QString DriveText(const QString& rootPath, const QString& name);

signals:
    void folderChosen(const QString& path);
    void closeRequested();

private:
    void FillChildren(QTreeWidgetItem* item);
    QTreeWidgetItem* MakeNode(const QString& path, const QString& text);
    QString m_clicked;
};

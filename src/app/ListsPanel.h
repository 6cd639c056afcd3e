#pragma once
// The tab "Lists" of the data area (TabInput1_Sub2, place 0): what happens to the
// selected rows as a list: export to a file, to the playlist, the reference list or the
// tag list, or removal from the data list. btnTab1_Sub2_1_OK runs the chosen option.

#include <QWidget>
#include <functional>

class InputDataPage;
class ListProgress;
class QPushButton;
class QRadioButton;

class ListsPanel : public QWidget {
    Q_OBJECT
public:
    ListsPanel(InputDataPage* page, ListProgress* progress, QWidget* parent = nullptr);
    static ListsPanel* Install(InputDataPage* page, ListProgress* progress);

    QRadioButton* optTab1_FileExport;
    QRadioButton* optTab1_CopyToPlaylist;
    QRadioButton* optTab1_CopyToReflist;
    QRadioButton* optTab1_CopyToTaglist;
    QRadioButton* optTab1_RemoveEntry;
    QPushButton* btnTab1_Sub2_1_OK;

    // The save dialogue of the export: returns the chosen path, empty when cancelled.
    // It opens in the preset export folder, else in the one used last. Tests replace it.
    std::function<QString()> chooseExportFile;

public slots:
    // The dispatch of btnTab1_Sub2_1_OK (also run by the shortcuts Ctrl+E, Ctrl+P, Ctrl+R,
    // Ctrl+T and Ctrl+Delete once they choose an option).
    void btnTab1_Sub2_1_OK_Click();
    void ExportList();
    void RemoveEntries();
    void CopyToTaglist();

signals:
    // The selected rows go to the tag list; typeText is the Type of the current row.
    void copyToTaglistRequested(const QString& typeText);
    // The selected rows go to the playlist (FrmPlaylist takes them with its questions).
    void copyToPlaylistRequested();
    // The selected rows go to the reference list (optTab1_CopyToReflist).
    void copyToReflistRequested();

private:
    QString DefaultChooseExportFile();

    InputDataPage* m_page;
    ListProgress* m_progress;
};

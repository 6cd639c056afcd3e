#pragma once
// The tab "Files" of the data area (TabInput1_Sub2, place 1): copy, move, rename and
// delete of the files of the selected rows, started by btnTab1_Sub2_2_OK with the chosen
// option. The rename option runs the two replace commands (new artist, replace text),
// with or without the preview.

#include <QWidget>
#include <functional>

class InputDataPage;
class ListProgress;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class RenamePanel;

class FilesPanel : public QWidget {
    Q_OBJECT
public:
    FilesPanel(InputDataPage* page, ListProgress* progress, RenamePanel* rename, QWidget* parent = nullptr);
    static FilesPanel* Install(InputDataPage* page, ListProgress* progress, RenamePanel* rename);

    QRadioButton* optTab1_FileCopy;
    QRadioButton* optTab1_FileMove;
    QRadioButton* optTab1_FileRename;
    QRadioButton* optTab1_FileDelete;
    QCheckBox* chbTab1_CopyLinkedFiles;
    QCheckBox* chbTab1_EraseTagsByCopy;
    QCheckBox* chbTab1_FileReplaceArtist;
    QCheckBox* chbTab1_FileReplaceString;
    QCheckBox* chbTab1_FileReplacePreview;
    QLineEdit* txtTab1_ArtistFind;
    QLineEdit* txtTab1_2_Replace;
    QPushButton* btnTab1_Sub2_2_OK;

    // The folder picker of copy and move (title row, start folder); tests replace it.
    std::function<QString(int titleRow, const QString& start)> chooseFolder;

public slots:
    void btnTab1_Sub2_2_OK_Click();

private:
    void Replace();
    // A box's text counts once it was taken with Enter: then it turns red.
    static bool Taken(const QLineEdit* box);

    InputDataPage* m_page;
    ListProgress* m_progress;
    RenamePanel* m_rename;
};

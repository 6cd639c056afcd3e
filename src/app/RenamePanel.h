#pragma once
// The tab "Rename" of the data area (TabInput1_Sub2, place 2): the rename commands of the
// data list, started by btnTab1_Sub2_3_OK with the chosen option, the preview switch and
// the undo of the last batch. The window reads the controls into a RenameRequest and
// calls the rename engine.

#include "file/modRename.h"

#include <QWidget>
#include <array>
#include <functional>

class FrmPreview;
class InputDataPage;
class ListProgress;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollArea;

// A tab page that scrolls its panel when the window is narrower than the panel.
QScrollArea* ScrollingPage(QWidget* panel);

class RenamePanel : public QWidget {
    Q_OBJECT
public:
    RenamePanel(InputDataPage* page, ListProgress* progress, QWidget* parent = nullptr);
    static RenamePanel* Install(InputDataPage* page, ListProgress* progress);

    QRadioButton* optTab1_FileChangeArtTit;
    QRadioButton* optTab1_Num_Ext;
    QRadioButton* optTab1_Num_Int;
    QRadioButton* optTab1_NumFromTrack;
    QCheckBox* chbTab1_Num_Int;
    QRadioButton* optTab1_RemoveNumInt;
    QRadioButton* optTab1_FileRenameSpecial;
    QCheckBox* chbTab1_SetSpecialMark;
    QCheckBox* chbTab1_RemoveSpecialMark;
    QRadioButton* optTab1_FileCut;
    QCheckBox* chbTab1_CutFromRight;
    std::array<QLineEdit*, 2> txtTab1_FileCut;
    QPushButton* btnTab1_FileCut;
    QRadioButton* optTab1_TagToFilename;
    QRadioButton* optTab1_FilenameToTag;
    QCheckBox* chbTab1_TrackToNum;
    QCheckBox* chbTab1_NumToTrack;
    QRadioButton* optTab1_SetTextInTag;
    QComboBox* cmbTab1_TextInTag;
    QRadioButton* optTab1_RemoveInvalidLinks;
    QPushButton* btnTab1_Sub2_3_OK;
    QCheckBox* chbTab1_RenamePreview;
    QPushButton* btnTab1_Undo;
    QCheckBox* chbTab1_DirectEdit; // cells of the data list are edited in place

    // The tag set chosen in the tag window (UpdateSet) for optTab1_TagToFilename; the
    // main window sets it. Unset or 0: V2.
    std::function<int()> tagSetOfTagWindow;

    // The preview switch from settings row 25; the column list of cmbTab1_TextInTag.
    void ApplySettings();
    void FillTextInTag(); // the tag columns under their headers in the current language
    // The options read into a request (the command None when no option is set).
    RenameRequest Request() const;
    // Runs a request as the buttons do: with the preview switch the plan goes to
    // FrmPreview first.
    void Run(const RenameRequest& request, bool preview);
    FrmPreview* Preview(); // created at first use

public slots:
    void btnTab1_Sub2_3_OK_Click();
    void btnTab1_FileCut_Click();
    void btnTab1_Undo_Click();
    void chbTab1_DirectEdit_Click(bool on);
    void SetTextInTag();
    void RemoveInvalidLinks();
    // optTab1_FilenameToTag on the highlighted rows, into the set of the tag window.
    void FilenameToTag();

public:
    // Asks for a text (`question`, proposing `initial`) and writes it into `column` of the
    // highlighted rows' files; an empty text clears the field after a second question.
    void SetTextInColumn(int column, const QString& question, const QString& initial = QString());
    // The tag set of the tag window (UpdateSet as a number), V2 when none is chosen.
    int TagSet() const;

private:
    InputDataPage* m_page;
    ListProgress* m_progress;
    FrmPreview* m_preview = nullptr;
};

#pragma once
// The compare sub-tab of the data area and the reference list LbxRef beside the data
// list: show and hide the list, fill it from the data list, check its paths, mark the
// matches of the two lists, and the .ref file actions of btnTab1_HandleFileInput.

#include <QWidget>
#include <functional>

class DataGridView;
class InputDataPage;
class ListProgress;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSplitter;

struct RefMenuState;

class RefPanel : public QWidget {
    Q_OBJECT
public:
    // Builds the panel into the compare tab and puts LbxRef beside LbxInput.
    static RefPanel* Install(InputDataPage* page, ListProgress* progress);
    RefPanel(InputDataPage* page, ListProgress* progress, QWidget* parent = nullptr);

    QSplitter* splTab1_Lists;
    QWidget* fraTab1_Ref;
    DataGridView* LbxRef;
    QLineEdit* txtTab1_FTagRef;
    QLabel* lblTab1_TimeSizeMarkedRef;
    QPushButton* btnTab1_ToggleRef;
    QPushButton* btnTab1_RefCheckPath;
    QPushButton* btnTab1_MarkMatches;
    QRadioButton* optTab1_Match_R_D;
    QRadioButton* optTab1_Match_D_R;
    QCheckBox* chbTab1_RefD;
    QPushButton* btnTab1_RefRemoveRemark;
    QPushButton* btnTab1_DeleteRefRows;
    QPushButton* btnTab1_ClearReflist;
    QPushButton* btnTab1_RefOK;
    QRadioButton* optTab1_R_D;
    QRadioButton* optTab1_D_R;
    QCheckBox* chbTab1_KeepFilename;
    QCheckBox* chbTab1_KeepTags;
    QPushButton* btnTab1_RefFTagBlue;
    QPushButton* btnTab1_RemoveRefFtag;
    QPushButton* btnTab1_RefHighlight_T;
    QCheckBox* chbTab1_RefFTag;
    QPushButton* btnTab1_RefExport;

    void DefineColumns(); // the sixteen columns and the user's widths
    void SaveColumnWidths() const;
    void SetColumnCaptions(); // after a change of language
    void ShowRefList(bool shown);
    bool RefListShown() const;
    void ShowSums();

    // optTab1_CopyToReflist of btnTab1_Sub2_1_OK.
    void CopyToReflist();
    // Items 3 to 5 of btnTab1_HandleFileInput: save, load, delete a reference list.
    void HandleFileCommand(int item);
    // The file picker of those items; tests replace it.
    std::function<QString(int item)> chooseFile;
    // The save dialog of btnTab1_RefExport; tests replace it.
    std::function<QString(const QString& startFolder)> chooseExportFile;
    // FrmShowColumnRef, made at first use (the list's menu entry "Columns").
    class FrmShowColumnRef* ShowColumnWindow();
    // The direct edit switch of the data area: while it is on, remark and mark of the
    // rows are edited in place. The window hands it over.
    void SetDirectEditBox(QCheckBox* box);
    // The menu keys whose commands the window runs (the file commands); true when run.
    std::function<bool(const QString& key)> windowMenuKey;
    // btnTab1_RefExport; the key Ctrl+E of the list runs it too.
    void ExportClick();

private:
    QString DefaultChooseFile(int item);
    void RefCheckPathClick();
    void MarkMatchesClick();
    void RefOKClick();
    void ShowListMenu(const QPoint& at);
    void RunMenuKey(const QString& key, const RefMenuState& state);

    InputDataPage* m_page;
    ListProgress* m_progress;
    class FrmShowColumnRef* m_showColumn = nullptr;
    class QHBoxLayout* m_refStatus = nullptr;
    QCheckBox* m_directEdit = nullptr;
};

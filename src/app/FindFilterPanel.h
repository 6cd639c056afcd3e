#pragma once
// The tab "Find and filter" of the data area (TabInput1_Sub1, place 1): the find over
// one or all columns with its history, the filter by a column's value, rating and mood,
// and the window of visible columns (FrmShowColumn).

#include <QWidget>

class InputDataPage;
class ListProgress;
class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class FrmShowColumn;

class FindFilterPanel : public QWidget {
    Q_OBJECT
public:
    FindFilterPanel(InputDataPage* page, ListProgress* progress, QWidget* parent = nullptr);
    // Creates the panel and adds it as its tab of the data area.
    static FindFilterPanel* Install(InputDataPage* page, ListProgress* progress);

    QComboBox* cmbTab1_Find;
    QComboBox* cmbTab1_FindInColumn;
    QCheckBox* chbTab1_Find[3];
    QPushButton* btnTab1_M_Find;
    QComboBox* cmbTab1_Filter[4]; // 0 column, 1 value, 2 rating, 3 mood
    QLabel* lblTab1_CmbFilter1_Count;
    QLabel* lblTab1_CmbFilter2_Count;
    QLabel* lblTab1_CmbQualityCount;
    QCheckBox* chbTab1_AddFilter;
    QPushButton* btnTab1_FilterMarkChoosen;
    QPushButton* btnTab1_ShowColumns;
    QPushButton* btnTab1_PlaySelection; // the rows of the filter's column and value to the player

    FrmShowColumn* ShowColumnWindow(); // created at first use

public slots:
    void btnTab1_M_Find_Click();
    void btnTab1_FilterMarkChoosen_Click();
    void btnTab1_PlaySelection_Click();
    void cmbTab1_Filter_Change(int index);
    // The value lists of rating and mood from the rows of the list; the scan and the
    // load of a list call it when they have filled the list.
    void RebuildQualityLists();
    // The value lists of rating and mood as the scan, the update or the load built them;
    // the value chosen before stays chosen when it is still there.
    void SetQualityLists(const QStringList& ratings, const QStringList& moods);
    // The list has been filled anew (scan, update, load): with rows the main filter box
    // goes to its first entry and its value list follows, the list being unfiltered.
    void ListRefilled();

private:
    void RebuildColumnEntries();
    void FillValues(QComboBox* box, const QStringList& values);
    bool NoMsg() const;

    InputDataPage* m_page;
    ListProgress* m_progress;
    FrmShowColumn* m_showColumn = nullptr;
};

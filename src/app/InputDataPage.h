#pragma once
// The data area of FrmInput (tab F1): the data list LbxInput with its sums, the mark box
// and the two sub-tab strips TabInput1_Sub1 and TabInput1_Sub2 under it.

#include "app/AreaPage.h"

class DataGridView;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

// The fixed places of the sub-tabs: Shift+F1 to F3 and Shift+F4 to F8 address them by
// number, whatever order the panels are built in.
namespace SubTab {
enum Sub1 : int { Read = 0, FindFilter = 1, Compare = 2 };
enum Sub2 : int { Lists = 0, Files = 1, Rename = 2, Marks = 3, Player = 4 };
} // namespace SubTab

class InputDataPage : public AreaPage {
    Q_OBJECT
public:
    explicit InputDataPage(QWidget* parent = nullptr);

    DataGridView* LbxInput;
    QTabWidget* TabInput1_Sub1;
    QTabWidget* TabInput1_Sub2;
    QLineEdit* txtTab1_FTag;
    QCheckBox* chbTab1_NoMsg;
    QCheckBox* chbTab1_TimeSizeData;
    QLabel* lblTab1_TimeSizeMarkedData;
    QPushButton* btn2Tab1_ClosePrg;

    // Defines the 71 columns, restores the user's column widths and sets the minimum
    // widths from the captions.
    void DefineColumns();
    void SaveColumnWidths() const;
    void ApplySettings();
    // The sums of the selection or of the marked rows, as the mark box decides.
    void ShowSums();
    // Adds a tab to a sub-tab strip; a strip with no tabs stays hidden. `index` is the
    // tab's fixed place in its strip (captions and Shift+F1..F8 address tabs by it): the
    // tab goes before every tab of a higher place, whatever the order of the calls.
    // -1 appends. Returns the position the tab took.
    int AddSubTab(QTabWidget* strip, QWidget* page, const QString& objectName, int index = -1);
    // Makes the tab of fixed place `index` current; false when the strip has none.
    static bool SelectSubTab(QTabWidget* strip, int index);

private:
    void UpdateSubTabVisibility();
};

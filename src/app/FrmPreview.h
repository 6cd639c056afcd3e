#pragma once
// FrmPreview: the proposed renames of a command before anything moves. LbxPreview holds
// one row per file: the new name (column 1), the old name, the folder, the reason when
// the row would fail, and the number of its row in the data list (column 5).
// btnPreview_Rename carries the plan out; btnPreview_Close closes without action.

#include "file/modRename.h"

#include <QDialog>
#include <functional>

class DataGrid;
class DataGridView;
class QLabel;
class QPushButton;

class FrmPreview : public QDialog {
    Q_OBJECT
public:
    explicit FrmPreview(QWidget* parent = nullptr);
    ~FrmPreview() override;

    // Shows the plan of `command` for the rows of `list`. `finish` runs after the
    // renames (sort, report).
    void ShowPlan(DataGrid* list, const RenamePlan& plan, std::function<void(const RenameOutcome&)> finish);

    DataGrid& LbxPreview();
    DataGridView* LbxPreviewView;
    QLabel* lblPreview_Count;
    QPushButton* btnPreview_Rename;
    QPushButton* btnPreview_Close;

    void btnPreview_Rename_Click();

private:
    DataGrid* m_grid;
    DataGrid* m_list = nullptr;
    RenamePlan m_plan;
    std::function<void(const RenameOutcome&)> m_finish;
};

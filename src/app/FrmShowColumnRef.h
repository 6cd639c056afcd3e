#pragma once
// FrmShowColumnRef: which columns of the reference list are visible, one box per
// column (chbColRef), and the one saved choice (settings row 77). It works on whatever
// list it is given; the reference list opens it.

#include <QWidget>

class DataGrid;
class QCheckBox;
class QPushButton;

class FrmShowColumnRef : public QWidget {
    Q_OBJECT
public:
    explicit FrmShowColumnRef(DataGrid& lbxRef, QWidget* parent = nullptr);
    ~FrmShowColumnRef() override;

    void Open();
    void LoadFromGrid();

    QCheckBox* chbColRef(int i) const { return m_boxes.at(i); } // column i + 1
    QPushButton* btnShowColRef_Save;
    QPushButton* btnShowColRef_Close;

private:
    void BuildBoxes();

    DataGrid& m_grid;
    QWidget* m_boxArea;
    QList<QCheckBox*> m_boxes;
    bool m_loading = false;
};

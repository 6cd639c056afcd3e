#pragma once
// FrmShowColumn: which columns of the data list are visible. One box per column
// (chbCol), ten named patterns kept in the settings (optShowCol_Pattern), and commands
// to save, delete and switch whole groups of columns. The boxes always mirror the
// grid: every command changes the grid, then the boxes are read back from it.

#include <QWidget>

class DataGrid;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

class FrmShowColumn : public QWidget {
    Q_OBJECT
public:
    explicit FrmShowColumn(DataGrid& lbxInput, QWidget* parent = nullptr);
    ~FrmShowColumn() override;

    // Opening: captions and values of the boxes from the grid, captions of the patterns
    // from the settings; shows and raises the window.
    void Open();
    void LoadFromGrid();

    QCheckBox* chbCol(int i) const { return m_boxes.at(i); } // column i + 1
    QRadioButton* optShowCol_Pattern(int p) const { return m_options.at(p); }
    QLineEdit* txtShowCol_Pattern;
    QPushButton* btnShowCol_SavePattern;
    QPushButton* btnShowCol_DeletePattern;
    QPushButton* btnShowCol_ActivateAll;
    QPushButton* btnShowCol_DeActivateAll;
    QPushButton* BtnFrmShow_SetTFOn;
    QPushButton* BtnFrmShow_SetTFOff;
    QPushButton* btnShowCol_Close;

private:
    int ChosenPattern() const;
    void RefreshPatternCaptions();

    DataGrid& m_grid;
    QList<QCheckBox*> m_boxes;
    QList<QRadioButton*> m_options;
    bool m_loading = false;
};

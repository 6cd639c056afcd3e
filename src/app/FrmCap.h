#pragma once
// FrmCap: the translators' window over the caption table LbxCap. It shows the row
// number, the note, the chosen language and a reference language side by side; the
// text of the current row is edited in the line below the list (the row number itself
// can't be changed). Commands: import and export of one language (qlt_*.lng), erase a
// translation, save, find, find the next free row, hide the reference column, close.

#include <QWidget>
#include <functional>

class DataGridView;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

class FrmCap : public QWidget {
    Q_OBJECT
public:
    explicit FrmCap(QWidget* parent = nullptr);

    // The file pickers: (title, start folder, filter, save?) -> chosen file or empty.
    // Window tests put their own in.
    std::function<QString(const QString&, const QString&, const QString&, bool)> pickFile;

    void SetCmbLanguages(); // refills cmbFrmCap_Lng
    void ApplySlotNames();  // after a caption walk: the slots show their languages
    int ChosenColumn() const;
    int ReferenceColumn() const;
    int ChosenSlot() const; // 5 or 6 by optFrmCap_Lng, 0 when none is set

    // The commands, as their buttons run them.
    void LngImport();
    void LngExport();
    void EraseTranslation();
    void Save();
    void Find();
    void FindFree();
    void CloseWindow();

signals:
    void languagesChanged(); // an import or erase changed the list of languages

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void ShowColumns();
    void ShowCurrentRow();
    void CommitEdit();
    void ApplySettings();

    DataGridView* LbxCap;
    QComboBox* cmbFrmCap_Lng;
    QLineEdit* txtCap_Find;
    QPushButton* btnFrmCap_Find;
    QPushButton* btnFrmCap_FindFree;
    QCheckBox* ChbCap_ColumnHide;
    QLabel* lblCap_Reference;
    QLineEdit* txtCap_Text;
    QLineEdit* txtCap_Note; // the translator's note of the current row (column 2)
    QRadioButton* optFrmCap_Lng[2];
    QPushButton* btnFrmCap_LngImport;
    QPushButton* btnFrmCap_EraseTranslation;
    QPushButton* btnFrmCap_LngExport;
    QPushButton* btnFrmCap_Save;
    QPushButton* btnFrmCap_Close;
    bool m_closing = false;
};

#pragma once
// FrmPreferences: the area of options (tab F7), on four pages: general switches and
// folders, the marks with rating and mood, the word lists, and the external programs
// with the stored links. Every change is written to qlt.ini at once.

#include "app/AreaPage.h"
#include "core/Startup.h"

#include <functional>
#include <memory>
#include <vector>

class DataGrid;
class DataGridView;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

class FrmPreferences : public AreaPage {
    Q_OBJECT
public:
    explicit FrmPreferences(QWidget* parent = nullptr);
    ~FrmPreferences() override;

    // SetCmbLanguages: refills cmbPref_Language from the languages of the caption table
    // and selects the current one.
    void SetCmbLanguages(const std::vector<LanguageEntry>& languages);
    // Puts the settings into the switches and rebuilds the lists (part of ApplySettings).
    void ApplySettings();
    // The grids of the lists, by objectName (lbxSign, LbxGenre, ...); null when unknown.
    DataGrid* List(const QString& name) const;

    // Folder dialogue of btnPref_PathExport: start folder in, chosen folder out (empty:
    // cancelled). Tests replace it.
    std::function<QString(const QString&)> chooseFolder;
    // File dialogue of btnPref_AddPrgExtern: the program chosen, empty when cancelled.
    std::function<QString()> chooseProgram;

signals:
    void languageChanged();       // after btnPref_Lng has switched the language
    void captionToolsRequested(); // btnPref_PrepCaption
    // btnPref_Columns: the window of visible columns of the reference list (true) or of
    // the data list (false), as optPref_ColRef and optPref_ColInput choose.
    void columnsRequested(bool referenceList);

protected:
    void changeEvent(QEvent* event) override;

private:
    QWidget* buildGeneralPage();
    QWidget* buildMarksPage();
    QWidget* buildListsPage();
    QWidget* buildProgramsPage();
    QWidget* listBox(const char* groupName, const QString& listName, QWidget* extra = nullptr);
    void ChangeLanguage();
    void SetHeaders();
    void AddProgram();
    void RemoveProgram();
    void OpenProgram();

    QTabWidget* TabPrefPages;
    QComboBox* cmbPref_Language;
    QPushButton* btnPref_Lng;
    QPushButton* btnPref_PrepCaption;
    QCheckBox* chbPref_TTText;
    QLineEdit* txtPref_Drive_Preset;
    QLineEdit* txtPref_PresetPathExport;
    std::vector<QRadioButton*> optPref_AnzNum;
    std::vector<std::pair<QCheckBox*, std::pair<int, int>>> m_switches; // box, settings cell
    std::vector<std::unique_ptr<DataGrid>> m_lists;                     // the lists held here
};

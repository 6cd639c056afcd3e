#pragma once
// FrmPreferences: the area of options (tab F7). Holds the language choice and the
// switches whose settings take effect already; every change is written to qlt.ini at
// once.

#include "app/AreaPage.h"
#include "core/Startup.h"

#include <vector>

class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;

class FrmPreferences : public AreaPage {
    Q_OBJECT
public:
    explicit FrmPreferences(QWidget* parent = nullptr);

    // SetCmbLanguages: refills cmbPref_Language from the languages of the caption table
    // and selects the current one.
    void SetCmbLanguages(const std::vector<LanguageEntry>& languages);
    // Puts the settings into the switches (part of ApplySettings).
    void ApplySettings();

signals:
    void languageChanged();       // after btnPref_Lng has switched the language
    void captionToolsRequested(); // btnPref_PrepCaption

private:
    void ChangeLanguage();

    QComboBox* cmbPref_Language;
    QPushButton* btnPref_Lng;
    QPushButton* btnPref_PrepCaption;
    QCheckBox* chbPref_TTText;
    std::vector<QRadioButton*> optPref_AnzNum;
};

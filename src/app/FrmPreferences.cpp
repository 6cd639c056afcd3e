#include "app/FrmPreferences.h"

#include "app/FrmPageMargins.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

FrmPreferences::FrmPreferences(QWidget* parent) : AreaPage(QStringLiteral("FrmPreferences"), parent) {
    auto* columns = new QHBoxLayout;
    columns->setSpacing(12);
    body()->addLayout(columns);

    // Language and captions.
    auto* grpLanguage = new QGroupBox(this);
    grpLanguage->setObjectName(QStringLiteral("grpPref_Language"));
    auto* lg = new QGridLayout(grpLanguage);
    cmbPref_Language = new QComboBox(grpLanguage);
    cmbPref_Language->setObjectName(QStringLiteral("cmbPref_Language"));
    cmbPref_Language->setMinimumWidth(180);
    btnPref_Lng = new QPushButton(grpLanguage);
    btnPref_Lng->setObjectName(QStringLiteral("btnPref_Lng"));
    btnPref_PrepCaption = new QPushButton(grpLanguage);
    btnPref_PrepCaption->setObjectName(QStringLiteral("btnPref_PrepCaption"));
    lg->addWidget(cmbPref_Language, 0, 0);
    lg->addWidget(btnPref_Lng, 0, 1);
    lg->addWidget(btnPref_PrepCaption, 1, 0, 1, 2, Qt::AlignLeft);
    lg->setColumnStretch(0, 1);
    columns->addWidget(grpLanguage, 0, Qt::AlignTop);

    // Display.
    auto* grpDisplay = new QGroupBox(this);
    grpDisplay->setObjectName(QStringLiteral("grpPref_Display"));
    auto* dg = new QVBoxLayout(grpDisplay);
    chbPref_TTText = new QCheckBox(grpDisplay);
    chbPref_TTText->setObjectName(QStringLiteral("chbPref_TTText"));
    dg->addWidget(chbPref_TTText);
    columns->addWidget(grpDisplay, 0, Qt::AlignTop);

    // Digits of track numbers.
    auto* grpDigits = new QGroupBox(this);
    grpDigits->setObjectName(QStringLiteral("grpPref_AnzNum"));
    auto* ng = new QVBoxLayout(grpDigits);
    for (std::size_t i = 0; i < std::size(kNumberDigitChoices); ++i) {
        auto* o = new QRadioButton(grpDigits);
        o->setObjectName(QStringLiteral("optPref_AnzNum(%1)").arg(i));
        ng->addWidget(o);
        optPref_AnzNum.push_back(o);
        const int digits = kNumberDigitChoices[i];
        connect(o, &QRadioButton::toggled, this, [digits](bool on) {
            if (!on || State().SuppressEvents)
                return;
            SetSetting(Ini::NumberDigits, Ini::Col1, QString::number(digits));
            SaveSettings();
        });
    }
    columns->addWidget(grpDigits, 0, Qt::AlignTop);

    // Printing.
    auto* grpPrint = new QGroupBox(this);
    grpPrint->setObjectName(QStringLiteral("grpPref_Print"));
    auto* pl = new QVBoxLayout(grpPrint);
    auto* btnPref_PageMargins = new QPushButton(grpPrint);
    btnPref_PageMargins->setObjectName(QStringLiteral("btnPref_PageMargins"));
    pl->addWidget(btnPref_PageMargins);
    columns->addWidget(grpPrint, 0, Qt::AlignTop);
    columns->addStretch(1);
    body()->addStretch(1);

    connect(btnPref_PageMargins, &QPushButton::clicked, this, [this] {
        auto* dialog = new FrmPageMargins(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
    });
    connect(btnPref_Lng, &QPushButton::clicked, this, &FrmPreferences::ChangeLanguage);
    connect(btnPref_PrepCaption, &QPushButton::clicked, this, &FrmPreferences::captionToolsRequested);
    connect(chbPref_TTText, &QCheckBox::toggled, this, [](bool on) {
        if (State().SuppressEvents)
            return;
        SetSettingOn(Ini::ToolTips, Ini::Col1, on);
        SaveSettings();
        SetCaptions(); // tool tips on or off
    });
}

void FrmPreferences::SetCmbLanguages(const std::vector<LanguageEntry>& languages) {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    cmbPref_Language->clear();
    for (const LanguageEntry& l : languages) {
        cmbPref_Language->addItem(l.name, l.column);
        if (l.column == LanguageColumn())
            cmbPref_Language->setCurrentIndex(cmbPref_Language->count() - 1);
    }
    State().SuppressEvents = quiet;
}

void FrmPreferences::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    chbPref_TTText->setChecked(SettingOn(Ini::ToolTips, Ini::Col1));
    const int digits = NumberDigits();
    for (std::size_t i = 0; i < optPref_AnzNum.size(); ++i)
        optPref_AnzNum[i]->setChecked(kNumberDigitChoices[i] == digits);
    State().SuppressEvents = quiet;
}

void FrmPreferences::ChangeLanguage() {
    if (State().SuppressEvents || cmbPref_Language->currentIndex() < 0)
        return;
    const int column = cmbPref_Language->currentData().toInt();
    if (column < kLanguageGerman)
        return;
    SetLanguageColumn(column);
    SetSetting(Ini::Language, Ini::Col1, QString::number(column));
    SaveSettings();
    emit languageChanged();
}

#include "app/FrmPreferences.h"

#include "app/DataGridView.h"
#include "app/FrmPageMargins.h"
#include "app/MessageBoxPrompt.h"
#include "app/PrefLists.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "prefs/modExtPrg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

namespace {

QGroupBox* Group(QWidget* parent, const char* name) {
    auto* g = new QGroupBox(parent);
    g->setObjectName(QLatin1String(name));
    return g;
}

template <typename T> T* Named(QWidget* parent, const char* name) {
    auto* w = new T(parent);
    w->setObjectName(QLatin1String(name));
    return w;
}

// The switches of the general page and their settings cells.
struct SwitchSpec {
    const char* name;
    int row, col;
};
constexpr SwitchSpec kSwitches[] = {
    {"chbPref_Paperbin", Ini::Paperbin, Ini::Col2},
    {"chbPref_PurgeLinklist", Ini::PurgeLinklist, Ini::Col1},
    {"chbPref_ConfirmLinkDelete", Ini::ConfirmLinkDelete, Ini::Col1},
    {"chbPref_CloseFolderView", Ini::CloseFolderView, Ini::Col1},
    {"chbPref_PresetSubfolder", Ini::PresetSubfolder, Ini::Col1},
    {"chbPref_RenamePreview", Ini::RenamePreview, Ini::Col1},
    {"chbPref_OptimalColumnWidth", Ini::OptimalColumnWidth, Ini::Col1},
    {"chbPref_Picformat", Ini::Picformat, Ini::Col1},
    {"chbPref_ScanOneThread", Ini::ScanOneThread, Ini::Col1},
};

} // namespace

FrmPreferences::FrmPreferences(QWidget* parent) : AreaPage(QStringLiteral("FrmPreferences"), parent) {
    chooseFolder = [this](const QString& start) {
        return QFileDialog::getExistingDirectory(window(), UiText(QStringLiteral("btnPref_PathExport")),
                                                 start);
    };
    chooseProgram = [this] {
        return QFileDialog::getOpenFileName(window(), UiText(QStringLiteral("btnPref_AddPrgExtern")));
    };
    TabPrefPages = Named<QTabWidget>(this, "TabPrefPages");
    TabPrefPages->addTab(buildGeneralPage(), QString());
    TabPrefPages->addTab(buildMarksPage(), QString());
    TabPrefPages->addTab(buildListsPage(), QString());
    TabPrefPages->addTab(buildProgramsPage(), QString());
    body()->addWidget(TabPrefPages, 1);
}

FrmPreferences::~FrmPreferences() = default;

QWidget* FrmPreferences::buildGeneralPage() {
    auto* page = new QWidget(this);
    auto* grid = new QGridLayout(page);
    grid->setSpacing(12);

    // Language and captions.
    auto* grpLanguage = Group(page, "grpPref_Language");
    auto* lg = new QGridLayout(grpLanguage);
    cmbPref_Language = Named<QComboBox>(grpLanguage, "cmbPref_Language");
    cmbPref_Language->setMinimumWidth(180);
    btnPref_Lng = Named<QPushButton>(grpLanguage, "btnPref_Lng");
    btnPref_PrepCaption = Named<QPushButton>(grpLanguage, "btnPref_PrepCaption");
    lg->addWidget(cmbPref_Language, 0, 0);
    lg->addWidget(btnPref_Lng, 0, 1);
    lg->addWidget(btnPref_PrepCaption, 1, 0, 1, 2, Qt::AlignLeft);
    lg->setColumnStretch(0, 1);
    grid->addWidget(grpLanguage, 0, 0, Qt::AlignTop);

    // Display.
    auto* grpDisplay = Group(page, "grpPref_Display");
    auto* dg = new QVBoxLayout(grpDisplay);
    chbPref_TTText = Named<QCheckBox>(grpDisplay, "chbPref_TTText");
    dg->addWidget(chbPref_TTText);
    auto* optimal = Named<QCheckBox>(grpDisplay, "chbPref_OptimalColumnWidth");
    dg->addWidget(optimal);
    // The window of visible columns, for the data list or the reference list.
    auto* columns = new QHBoxLayout;
    auto* optColInput = Named<QRadioButton>(grpDisplay, "optPref_ColInput");
    auto* optColRef = Named<QRadioButton>(grpDisplay, "optPref_ColRef");
    auto* btnPref_Columns = Named<QPushButton>(grpDisplay, "btnPref_Columns");
    optColInput->setChecked(true);
    columns->addWidget(optColInput);
    columns->addWidget(optColRef);
    columns->addWidget(btnPref_Columns);
    columns->addStretch(1);
    dg->addLayout(columns);
    connect(btnPref_Columns, &QPushButton::clicked, this,
            [this, optColRef] { emit columnsRequested(optColRef->isChecked()); });
    dg->addStretch(1);
    grid->addWidget(grpDisplay, 0, 1);

    // Digits of track numbers.
    auto* grpDigits = Group(page, "grpPref_AnzNum");
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
    grid->addWidget(grpDigits, 0, 2);

    // Files and folders.
    auto* grpFiles = Group(page, "grpPref_Files");
    auto* fg = new QGridLayout(grpFiles);
    int row = 0;
    for (const SwitchSpec& s : kSwitches) {
        QCheckBox* box = s.row == Ini::OptimalColumnWidth ? optimal : Named<QCheckBox>(grpFiles, s.name);
        if (box != optimal)
            fg->addWidget(box, row++, 0, 1, 3, Qt::AlignLeft);
        m_switches.push_back({box, {s.row, s.col}});
        connect(box, &QCheckBox::toggled, this, [r = s.row, c = s.col](bool on) {
            if (State().SuppressEvents)
                return;
            SetSettingOn(r, c, on);
            SaveSettings();
        });
    }
    auto folderField = [&](const char* label, const char* name, int settingRow) {
        auto* l = Named<QLabel>(grpFiles, label);
        auto* e = Named<QLineEdit>(grpFiles, name);
        l->setBuddy(e);
        fg->addWidget(l, row, 0);
        fg->addWidget(e, row, 1);
        connect(e, &QLineEdit::editingFinished, this, [e, settingRow] {
            QString path = e->text().trimmed();
            while (path.size() > 1 && path.endsWith(u'/'))
                path.chop(1); // folder cells never end in "/"
            if (path == Setting(settingRow, Ini::Col1))
                return;
            SetSetting(settingRow, Ini::Col1, path);
            SaveSettings();
        });
        return e;
    };
    txtPref_Drive_Preset = folderField("lblPref_Drive_Preset", "txtPref_Drive_Preset", Ini::DrivePreset);
    ++row;
    txtPref_PresetPathExport =
        folderField("lblPref_PresetPathExport", "txtPref_PresetPathExport", Ini::PresetPathExport);
    auto* btnPref_PathExport = Named<QPushButton>(grpFiles, "btnPref_PathExport");
    fg->addWidget(btnPref_PathExport, row, 2);
    fg->setColumnStretch(1, 1);
    grid->addWidget(grpFiles, 1, 0, 1, 2);

    // Printing.
    auto* grpPrint = Group(page, "grpPref_Print");
    auto* pl = new QVBoxLayout(grpPrint);
    auto* btnPref_PageMargins = Named<QPushButton>(grpPrint, "btnPref_PageMargins");
    pl->addWidget(btnPref_PageMargins);
    pl->addStretch(1);
    grid->addWidget(grpPrint, 1, 2, Qt::AlignTop);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(3, 1);

    connect(btnPref_PathExport, &QPushButton::clicked, this, [this] {
        const QString folder = chooseFolder ? chooseFolder(txtPref_PresetPathExport->text()) : QString();
        if (folder.isEmpty())
            return;
        txtPref_PresetPathExport->setText(folder);
        emit txtPref_PresetPathExport->editingFinished();
    });
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
    return page;
}

QWidget* FrmPreferences::listBox(const char* groupName, const QString& listName, QWidget* extra) {
    auto* group = Group(nullptr, groupName);
    auto* l = new QVBoxLayout(group);
    DataGridView* view = nullptr;
    for (const PrefListShape& shape : PrefListShapes())
        if (listName == QLatin1String(shape.name)) {
            m_lists.push_back(std::make_unique<DataGrid>());
            BuildPrefList(*m_lists.back(), shape);
            view = MakePrefListView(*m_lists.back(), shape, group);
        }
    if (!view) { // the lists that other windows share
        DataGrid* grid = listName == QLatin1String("lbxRating") ? &Grids::lbxRating() : &Grids::lbxLink();
        view = new DataGridView(grid, group);
        view->setObjectName(listName);
        view->SetHeaderSort(listName == QLatin1String("lbxLink"));
        const bool rating = listName == QLatin1String("lbxRating");
        view->SetCellEditing([](int, int) { return true; },
                             [rating](int row, int col, QString& text) {
                                 text = text.trimmed();
                                 if (rating) {
                                     SetSetting(Ini::RatingFirst + row - 1, Ini::RatingCol, text);
                                 } else {
                                     Grids::lbxLink().SetCellText(row, col, text);
                                     WriteLinkListToSettings();
                                 }
                                 SaveSettings();
                                 return true;
                             });
    }
    l->addWidget(view, 1);
    if (extra)
        l->addWidget(extra);
    return group;
}

QWidget* FrmPreferences::buildMarksPage() {
    auto* page = new QWidget(this);
    auto* row = new QHBoxLayout(page);
    row->addWidget(listBox("grpPref_Sign", QStringLiteral("lbxSign")));
    row->addWidget(listBox("grpPref_Rating", QStringLiteral("lbxRating")));
    row->addWidget(listBox("grpPref_Mood", QStringLiteral("lbxMood")));
    return page;
}

QWidget* FrmPreferences::buildListsPage() {
    auto* page = new QWidget(this);
    auto* grid = new QGridLayout(page);
    grid->addWidget(listBox("grpPref_Genre", QStringLiteral("LbxGenre")), 0, 0);
    grid->addWidget(listBox("grpPref_FindChr", QStringLiteral("LbxFindChr")), 0, 1);
    grid->addWidget(listBox("grpPref_Negative", QStringLiteral("LbxNegative")), 0, 2);
    grid->addWidget(listBox("grpPref_PictureType", QStringLiteral("LbxPictureType")), 0, 3);
    grid->setColumnStretch(1, 2);
    return page;
}

QWidget* FrmPreferences::buildProgramsPage() {
    auto* page = new QWidget(this);
    auto* row = new QHBoxLayout(page);

    auto* prgButtons = new QWidget;
    auto* pb = new QHBoxLayout(prgButtons);
    pb->setContentsMargins(0, 0, 0, 0);
    auto* btnAdd = Named<QPushButton>(prgButtons, "btnPref_AddPrgExtern");
    auto* btnRemove = Named<QPushButton>(prgButtons, "btnPref_RemovePrgExtern");
    auto* btnOpen = Named<QPushButton>(prgButtons, "btnPref_OpenPrgExtern");
    pb->addWidget(btnAdd);
    pb->addWidget(btnRemove);
    pb->addWidget(btnOpen);
    pb->addStretch(1);
    row->addWidget(listBox("grpPref_PrgExtern", QStringLiteral("lbxPrg_Extern"), prgButtons), 3);

    auto* linkButtons = new QWidget;
    auto* lb = new QHBoxLayout(linkButtons);
    lb->setContentsMargins(0, 0, 0, 0);
    auto* btnLinkDelete = Named<QPushButton>(linkButtons, "btnPref_LinkDelete");
    lb->addWidget(btnLinkDelete);
    lb->addStretch(1);
    row->addWidget(listBox("grpPref_Link", QStringLiteral("lbxLink"), linkButtons), 2);

    connect(btnAdd, &QPushButton::clicked, this, &FrmPreferences::AddProgram);
    connect(btnRemove, &QPushButton::clicked, this, &FrmPreferences::RemoveProgram);
    connect(btnOpen, &QPushButton::clicked, this, &FrmPreferences::OpenProgram);
    connect(btnLinkDelete, &QPushButton::clicked, this, [] {
        DataGrid& links = Grids::lbxLink();
        const int r = links.CurRow();
        if (r < 1 || r > links.Rows()) {
            AppPrompt().Tell(Caption(CapNothingChosen), Prompt::Icon::Information);
            return;
        }
        if (SettingOn(Ini::ConfirmLinkDelete, Ini::Col1) &&
            !AppPrompt().AskYesNo(Caption(CapDeleteLinkQuestion)))
            return;
        links.DeleteRow(r);
        WriteLinkListToSettings();
        SaveSettings();
    });
    return page;
}

DataGrid* FrmPreferences::List(const QString& name) const {
    if (name == QLatin1String("lbxRating"))
        return &Grids::lbxRating();
    if (name == QLatin1String("lbxLink"))
        return &Grids::lbxLink();
    for (const auto& g : m_lists)
        if (g->objectName() == name)
            return g.get();
    return nullptr;
}

void FrmPreferences::SetHeaders() {
    for (const PrefListShape& shape : PrefListShapes())
        if (DataGrid* g = List(QString::fromLatin1(shape.name)))
            SetPrefListHeaders(*g, shape);
    if (Grids::lbxRating().Cols() >= 1)
        Grids::lbxRating().SetColumnCaption(1, Caption(CapRatingHeader));
    if (Grids::lbxLink().Cols() >= 2) {
        Grids::lbxLink().SetColumnCaption(1, Caption(CapHeaderLinkName));
        Grids::lbxLink().SetColumnCaption(2, Caption(CapHeaderLink));
    }
}

void FrmPreferences::changeEvent(QEvent* event) {
    AreaPage::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        SetHeaders();
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
    for (const auto& [box, cell] : m_switches)
        box->setChecked(SettingOn(cell.first, cell.second));
    txtPref_Drive_Preset->setText(Setting(Ini::DrivePreset, Ini::Col1));
    txtPref_PresetPathExport->setText(Setting(Ini::PresetPathExport, Ini::Col1));
    const int digits = NumberDigits();
    for (std::size_t i = 0; i < optPref_AnzNum.size(); ++i)
        optPref_AnzNum[i]->setChecked(kNumberDigitChoices[i] == digits);
    for (const PrefListShape& shape : PrefListShapes())
        if (DataGrid* g = List(QString::fromLatin1(shape.name)))
            BuildPrefList(*g, shape);
    SetHeaders();
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
    SetHeaders();
    emit languageChanged();
}

// ---- external programs: row n of lbxPrg_Extern is settings row n ------------------------

void FrmPreferences::AddProgram() {
    DataGrid* g = List(QStringLiteral("lbxPrg_Extern"));
    const QString path = chooseProgram ? chooseProgram() : QString();
    if (!g || path.isEmpty())
        return;
    int row = g->CurRow();
    for (int r = 1; row < 1 && r <= g->Rows(); ++r)
        if (g->CellText(r, 3).isEmpty())
            row = r; // the first free one of the ten rows
    if (row < 1) {
        AppPrompt().Tell(Caption(CapNothingChosen), Prompt::Icon::Information);
        return;
    }
    const QString name = path.section(QLatin1Char('/'), -1);
    g->SetCellText(row, 2, name);
    g->SetCellText(row, 3, path);
    SetSetting(Ini::PrgExternFirst + row - 1, Ini::PrgExternNameCol, name);
    SetSetting(Ini::PrgExternFirst + row - 1, Ini::PrgExternPathCol, path);
    SaveSettings();
}

void FrmPreferences::RemoveProgram() {
    DataGrid* g = List(QStringLiteral("lbxPrg_Extern"));
    const int row = g ? g->CurRow() : 0;
    if (row < 1) {
        AppPrompt().Tell(Caption(CapNothingChosen), Prompt::Icon::Information);
        return;
    }
    g->SetCellText(row, 2, QString());
    g->SetCellText(row, 3, QString());
    SetSetting(Ini::PrgExternFirst + row - 1, Ini::PrgExternNameCol, QString());
    SetSetting(Ini::PrgExternFirst + row - 1, Ini::PrgExternPathCol, QString());
    SaveSettings();
}

void FrmPreferences::OpenProgram() {
    DataGrid* g = List(QStringLiteral("lbxPrg_Extern"));
    const int row = g ? g->CurRow() : 0;
    if (row < 1 || g->CellText(row, 3).trimmed().isEmpty()) {
        AppPrompt().Tell(Caption(CapNothingChosen), Prompt::Icon::Information);
        return;
    }
    StartExternalProgram(g->CellText(row, 3), {}, AppPrompt());
}

#include "app/FrmCap.h"

#include "app/DataGridView.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "core/modLanguage.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {
QPushButton* Button(const char* name, QWidget* parent) {
    auto* b = new QPushButton(parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}
} // namespace

FrmCap::FrmCap(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("FrmCap"));
    resize(1000, 680);
    EnsureCaptionTableShape();

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(10, 10, 10, 10);
    outer->setSpacing(8);

    // Language, find and view options.
    auto* top = new QHBoxLayout;
    auto* lblLng = new QLabel(this);
    lblLng->setObjectName(QStringLiteral("lblFrmCap_Lng"));
    cmbFrmCap_Lng = new QComboBox(this);
    cmbFrmCap_Lng->setObjectName(QStringLiteral("cmbFrmCap_Lng"));
    cmbFrmCap_Lng->setMinimumWidth(160);
    txtCap_Find = new QLineEdit(this);
    txtCap_Find->setObjectName(QStringLiteral("txtCap_Find"));
    txtCap_Find->setMinimumWidth(220);
    btnFrmCap_Find = Button("btnFrmCap_Find", this);
    btnFrmCap_FindFree = Button("btnFrmCap_FindFree", this);
    ChbCap_ColumnHide = new QCheckBox(this);
    ChbCap_ColumnHide->setObjectName(QStringLiteral("ChbCap_ColumnHide"));
    top->addWidget(lblLng);
    top->addWidget(cmbFrmCap_Lng);
    top->addSpacing(16);
    top->addWidget(txtCap_Find, 1);
    top->addWidget(btnFrmCap_Find);
    top->addWidget(btnFrmCap_FindFree);
    top->addSpacing(16);
    top->addWidget(ChbCap_ColumnHide);
    outer->addLayout(top);

    LbxCap = new DataGridView(&CaptionTable(), this);
    LbxCap->setObjectName(QStringLiteral("LbxCap"));
    LbxCap->SetHeaderSort(false); // row number = caption row: never reordered
    outer->addWidget(LbxCap, 1);

    // The current row: reference text and the text of the chosen language.
    auto* edit = new QGridLayout;
    lblCap_Reference = new QLabel(this);
    lblCap_Reference->setObjectName(QStringLiteral("lblCap_Reference"));
    lblCap_Reference->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblCap_Reference->setWordWrap(true);
    lblCap_Reference->setFrameShape(QFrame::StyledPanel);
    lblCap_Reference->setMinimumHeight(28);
    txtCap_Text = new QLineEdit(this);
    txtCap_Text->setObjectName(QStringLiteral("txtCap_Text"));
    auto* lblRef = new QLabel(this);
    lblRef->setObjectName(QStringLiteral("lblCap_ReferenceTitle"));
    auto* lblText = new QLabel(this);
    lblText->setObjectName(QStringLiteral("lblCap_TextTitle"));
    lblText->setBuddy(txtCap_Text);
    edit->addWidget(lblRef, 0, 0);
    edit->addWidget(lblCap_Reference, 0, 1);
    edit->addWidget(lblText, 1, 0);
    edit->addWidget(txtCap_Text, 1, 1);
    txtCap_Note = new QLineEdit(this);
    txtCap_Note->setObjectName(QStringLiteral("txtCap_Note"));
    auto* lblNote = new QLabel(this);
    lblNote->setObjectName(QStringLiteral("lblCap_NoteTitle"));
    lblNote->setBuddy(txtCap_Note);
    edit->addWidget(lblNote, 2, 0);
    edit->addWidget(txtCap_Note, 2, 1);
    edit->setColumnStretch(1, 1);
    outer->addLayout(edit);

    // Import slots and file commands.
    auto* bottom = new QHBoxLayout;
    auto* grpImport = new QGroupBox(this);
    grpImport->setObjectName(QStringLiteral("grpFrmCap_Import"));
    auto* ig = new QHBoxLayout(grpImport);
    for (int i = 0; i < 2; ++i) {
        optFrmCap_Lng[i] = new QRadioButton(grpImport);
        optFrmCap_Lng[i]->setObjectName(QStringLiteral("optFrmCap_Lng(%1)").arg(kImportSlotFirst + i));
        ig->addWidget(optFrmCap_Lng[i]);
    }
    optFrmCap_Lng[0]->setChecked(true);
    btnFrmCap_LngImport = Button("btnFrmCap_LngImport", grpImport);
    btnFrmCap_EraseTranslation = Button("btnFrmCap_EraseTranslation", grpImport);
    ig->addWidget(btnFrmCap_LngImport);
    ig->addWidget(btnFrmCap_EraseTranslation);
    bottom->addWidget(grpImport);
    bottom->addStretch(1);
    btnFrmCap_LngExport = Button("btnFrmCap_LngExport", this);
    btnFrmCap_Save = Button("btnFrmCap_Save", this);
    btnFrmCap_Close = Button("btnFrmCap_Close", this);
    bottom->addWidget(btnFrmCap_LngExport, 0, Qt::AlignBottom);
    bottom->addWidget(btnFrmCap_Save, 0, Qt::AlignBottom);
    bottom->addWidget(btnFrmCap_Close, 0, Qt::AlignBottom);
    outer->addLayout(bottom);

    pickFile = [this](const QString& title, const QString& dir, const QString& filter, bool save) {
        return save ? QFileDialog::getSaveFileName(this, title, dir, filter)
                    : QFileDialog::getOpenFileName(this, title, dir, filter);
    };

    connect(btnFrmCap_LngImport, &QPushButton::clicked, this, &FrmCap::LngImport);
    connect(btnFrmCap_LngExport, &QPushButton::clicked, this, &FrmCap::LngExport);
    connect(btnFrmCap_EraseTranslation, &QPushButton::clicked, this, &FrmCap::EraseTranslation);
    connect(btnFrmCap_Save, &QPushButton::clicked, this, &FrmCap::Save);
    connect(btnFrmCap_Find, &QPushButton::clicked, this, &FrmCap::Find);
    connect(txtCap_Find, &QLineEdit::returnPressed, this, &FrmCap::Find);
    connect(btnFrmCap_FindFree, &QPushButton::clicked, this, &FrmCap::FindFree);
    connect(btnFrmCap_Close, &QPushButton::clicked, this, &FrmCap::CloseWindow);
    connect(ChbCap_ColumnHide, &QCheckBox::toggled, this, [this](bool on) {
        if (State().SuppressEvents)
            return;
        SetSettingOn(Ini::CapColumnHide, Ini::Col1, on);
        ShowColumns();
    });
    connect(cmbFrmCap_Lng, &QComboBox::currentIndexChanged, this, [this] {
        if (State().SuppressEvents)
            return;
        ShowColumns();
        ShowCurrentRow();
    });
    connect(&CaptionTable(), &DataGrid::currentRowChanged, this, [this] { ShowCurrentRow(); });
    connect(txtCap_Text, &QLineEdit::editingFinished, this, &FrmCap::CommitEdit);
    connect(txtCap_Note, &QLineEdit::editingFinished, this, &FrmCap::CommitEdit);

    ApplySettings();
    SetCmbLanguages();
    ShowColumns();
    ShowCurrentRow();
}

void FrmCap::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    ChbCap_ColumnHide->setChecked(SettingOn(Ini::CapColumnHide, Ini::Col1));
    State().SuppressEvents = quiet;
    ApplySlotNames();
}

void FrmCap::ApplySlotNames() {
    // A slot that holds an imported language shows its name instead of its caption.
    const DataGrid& t = CaptionTable();
    for (int i = 0; i < 2; ++i) {
        const int col = kImportSlotFirst + i;
        const QString name = col <= t.Cols() ? t.Column(col).caption : QString();
        if (!name.isEmpty())
            optFrmCap_Lng[i]->setText(name);
    }
}

void FrmCap::SetCmbLanguages() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    const int keep = ChosenColumn();
    cmbFrmCap_Lng->clear();
    for (const LanguageEntry& l : AvailableLanguages()) {
        cmbFrmCap_Lng->addItem(l.name, l.column);
        if (l.column == (keep ? keep : LanguageColumn()))
            cmbFrmCap_Lng->setCurrentIndex(cmbFrmCap_Lng->count() - 1);
    }
    State().SuppressEvents = quiet;
}

int FrmCap::ChosenColumn() const {
    return cmbFrmCap_Lng->currentIndex() < 0 ? 0 : cmbFrmCap_Lng->currentData().toInt();
}

int FrmCap::ReferenceColumn() const {
    const int chosen = ChosenColumn();
    if (chosen != LanguageColumn())
        return LanguageColumn();
    return chosen == kLanguageGerman ? kLanguageEnglish : kLanguageGerman;
}

int FrmCap::ChosenSlot() const {
    for (int i = 0; i < 2; ++i)
        if (optFrmCap_Lng[i]->isChecked())
            return kImportSlotFirst + i;
    return 0;
}

void FrmCap::ShowColumns() {
    DataGrid& t = CaptionTable();
    const int chosen = ChosenColumn(), ref = ReferenceColumn();
    const bool hideRef = ChbCap_ColumnHide->isChecked();
    t.LockUpdate(true);
    for (int c = 1; c <= t.Cols(); ++c)
        t.SetColumnVisible(c, c <= 2 || c == chosen || (c == ref && !hideRef));
    t.SetColumnWidth(1, 700);
    t.LockUpdate(false);
    lblCap_Reference->setVisible(!hideRef);
}

void FrmCap::ShowCurrentRow() {
    const DataGrid& t = CaptionTable();
    const int row = t.CurRow(), chosen = ChosenColumn(), ref = ReferenceColumn();
    const bool valid = row >= 1 && row <= t.Rows();
    txtCap_Text->setEnabled(valid && chosen >= kLanguageGerman);
    txtCap_Text->setText(valid && chosen >= 1 && chosen <= t.Cols() ? t.CellText(row, chosen) : QString());
    txtCap_Note->setEnabled(valid && t.Cols() >= 2);
    txtCap_Note->setText(valid && t.Cols() >= 2 ? t.CellText(row, 2) : QString());
    lblCap_Reference->setText(valid && ref <= t.Cols() ? t.CellText(row, ref) : QString());
}

void FrmCap::CommitEdit() {
    DataGrid& t = CaptionTable();
    const int row = t.CurRow(), chosen = ChosenColumn();
    // The text of the chosen language and the note take edits; the row number stays.
    if (row < 1 || row > t.Rows())
        return;
    if (t.Cols() >= 2 && t.CellText(row, 2) != txtCap_Note->text()) {
        t.SetCellText(row, 2, txtCap_Note->text());
        SetCaptionTableChanged(true);
    }
    if (chosen < kLanguageGerman || chosen > t.Cols() || t.CellText(row, chosen) == txtCap_Text->text())
        return;
    t.SetCellText(row, chosen, txtCap_Text->text());
    SetCaptionTableChanged(true);
}

void FrmCap::LngImport() {
    const int slot = ChosenSlot();
    if (slot == 0) {
        AppPrompt().Tell(Caption(CapChooseImportSlot), Prompt::Icon::Information);
        return;
    }
    const QString file = pickFile(Caption(CapImportLanguageTitle), AppFile(QStringLiteral("language")),
                                  QStringLiteral("qlt_*.lng (qlt_*.lng)"), false);
    if (file.isEmpty())
        return;
    const QString name = ImportLanguage(slot, file);
    if (name.isEmpty()) {
        AppPrompt().Tell(Caption(CapReadFailed) + u'\n' + QDir::toNativeSeparators(file),
                         Prompt::Icon::Critical);
        return;
    }
    optFrmCap_Lng[slot - kImportSlotFirst]->setText(name);
    SetCmbLanguages();
    ShowColumns();
    ShowCurrentRow();
    emit languagesChanged();
}

void FrmCap::LngExport() {
    const int col = ChosenColumn();
    if (col < kLanguageGerman) {
        AppPrompt().Tell(Caption(CapChooseLanguageFirst), Prompt::Icon::Information);
        return;
    }
    const QString chosen =
        pickFile(Caption(CapExportLanguageTitle), AppFile(QStringLiteral("language/*.lng")),
                 QStringLiteral("(*.lng) (*.lng)"), true);
    if (chosen.isEmpty())
        return;
    const QString path = LanguageExportPath(chosen);
    if (ExportLanguage(col, path))
        AppPrompt().Tell(Caption(CapTextSaved) + u'\n' + QDir::toNativeSeparators(path),
                         Prompt::Icon::Information);
    else
        AppPrompt().Tell(Caption(CapFileSaveFailed) + u'\n' + QDir::toNativeSeparators(path),
                         Prompt::Icon::Critical);
}

void FrmCap::EraseTranslation() {
    const int slot = ChosenSlot();
    if (slot == 0)
        return;
    if (!AppPrompt().AskYesNo(Caption(CapEraseTranslationQuestion), false, Prompt::Icon::Question))
        return;
    ::EraseTranslation(slot);
    AppPrompt().Tell(Caption(CapTranslationErased), Prompt::Icon::Information);
    SetCmbLanguages();
    ShowColumns();
    ShowCurrentRow();
    emit languagesChanged();
}

void FrmCap::Save() {
    CommitEdit();
    if (SaveCaptionTable())
        AppPrompt().Tell(Caption(CapTextSaved), Prompt::Icon::Information);
    else
        AppPrompt().Tell(Caption(CapFileSaveFailed) + u'\n' + QDir::toNativeSeparators(CaptionFilePath()),
                         Prompt::Icon::Critical);
}

void FrmCap::Find() {
    DataGrid& t = CaptionTable();
    const int col = ChosenColumn();
    if (const int r = FindCaptionText(txtCap_Find->text(), col, t.CurRow())) {
        t.ClearSelection();
        t.SetSelected(r, true);
        t.SetCurRow(r);
    }
}

void FrmCap::FindFree() {
    DataGrid& t = CaptionTable();
    if (const int r = FindFreeCaptionRow(t.CurRow())) {
        t.ClearSelection();
        t.SetSelected(r, true);
        t.SetCurRow(r);
    }
}

void FrmCap::CloseWindow() {
    CommitEdit();
    if (CaptionTableChanged() &&
        AppPrompt().AskYesNo(Caption(CapCaptionsSaveQuestion), true, Prompt::Icon::Question))
        Save();
    m_closing = true;
    close();
    m_closing = false;
}

void FrmCap::closeEvent(QCloseEvent* event) {
    if (!m_closing && !State().SuppressEvents) {
        // The corner of the window closes as the button does.
        event->ignore();
        CloseWindow();
        return;
    }
    event->accept();
}

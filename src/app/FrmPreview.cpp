#include "app/FrmPreview.h"

#include "app/DataGridView.h"
#include "app/UiCaptions.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "list/modListEnv.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
enum PreviewCol : int { NewName = 1, OldName = 2, Folder = 3, Reason = 4, InputRow = 5 };
} // namespace

FrmPreview::FrmPreview(QWidget* parent) : QDialog(parent), m_grid(new DataGrid(this)) {
    setObjectName(QStringLiteral("FrmPreview"));
    resize(1000, 560);
    m_grid->AddColumn(QStringLiteral("NewName"), QString(), 5000);
    m_grid->AddColumn(QStringLiteral("OldName"), QString(), 5000);
    m_grid->AddColumn(QStringLiteral("Folder"), QString(), 3000);
    m_grid->AddColumn(QStringLiteral("Reason"), QString(), 3000);
    m_grid->AddColumn(QStringLiteral("Row"), QString(), 700, Align::Right, true, SortType::Number);

    auto* layout = new QVBoxLayout(this);
    LbxPreviewView = new DataGridView(m_grid, this);
    LbxPreviewView->setObjectName(QStringLiteral("LbxPreview"));
    layout->addWidget(LbxPreviewView, 1);
    auto* buttons = new QHBoxLayout;
    lblPreview_Count = new QLabel(this);
    lblPreview_Count->setObjectName(QStringLiteral("lblPreview_Count"));
    btnPreview_Rename = new QPushButton(this);
    btnPreview_Rename->setObjectName(QStringLiteral("btnPreview_Rename"));
    btnPreview_Close = new QPushButton(this);
    btnPreview_Close->setObjectName(QStringLiteral("btnPreview_Close"));
    buttons->addWidget(lblPreview_Count, 1);
    buttons->addWidget(btnPreview_Rename);
    buttons->addWidget(btnPreview_Close);
    layout->addLayout(buttons);

    connect(btnPreview_Rename, &QPushButton::clicked, this, &FrmPreview::btnPreview_Rename_Click);
    connect(btnPreview_Close, &QPushButton::clicked, this, &QDialog::reject);
    RegisterCaptionRoot(this);
    SetCaptionsOf(this);
}

FrmPreview::~FrmPreview() {
    UnregisterCaptionRoot(this);
}

DataGrid& FrmPreview::LbxPreview() {
    return *m_grid;
}

void FrmPreview::ShowPlan(DataGrid* list, const RenamePlan& plan,
                          std::function<void(const RenameOutcome&)> finish) {
    m_list = list;
    m_plan = plan;
    m_finish = std::move(finish);
    m_grid->SetColumnCaption(NewName, Caption(CapPreviewNewName));
    m_grid->SetColumnCaption(OldName, Caption(CapPreviewOldName));
    m_grid->SetColumnCaption(Folder, Caption(CapPreviewFolder));
    m_grid->SetColumnCaption(Reason, Caption(CapPreviewReason));
    m_grid->SetColumnCaption(InputRow, Caption(CapPreviewRow));
    m_grid->Tag = plan.command == RenameCommand::ReplaceArtist   ? QStringLiteral("artist")
                  : plan.command == RenameCommand::ReplaceString ? QStringLiteral("string")
                                                                 : QString();
    m_grid->LockUpdate(true);
    m_grid->Clear();
    int failing = 0;
    for (const RenameStep& s : plan.steps) {
        m_grid->AddRow({s.newName, s.oldName, s.folder, s.reason, QString::number(s.row)});
        if (!s.reason.isEmpty())
            ++failing;
    }
    m_grid->LockUpdate(false);
    m_grid->Refresh();
    QString count = plan.steps.empty() ? Caption(CapPreviewNoChange)
                                       : CountText(CapPreviewCount, qint64(plan.steps.size()) - failing);
    if (failing)
        count += QStringLiteral("   ") + CountText(CapPreviewFailing, failing);
    lblPreview_Count->setText(count);
    btnPreview_Rename->setEnabled(plan.steps.size() > std::size_t(failing));
    show();
    raise();
    activateWindow();
}

void FrmPreview::btnPreview_Rename_Click() {
    if (!m_list)
        return;
    DataGrid* list = m_list;
    m_list = nullptr;
    list->LockUpdate(true);
    const RenameOutcome outcome = ApplyPlan(*list, m_plan, nullptr, RenameJournalPath());
    list->LockUpdate(false);
    list->Refresh();
    accept();
    if (m_finish)
        m_finish(outcome);
}

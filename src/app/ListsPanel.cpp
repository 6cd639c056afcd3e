#include "app/ListsPanel.h"

#include "app/ExportDialog.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/MessageBoxPrompt.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/modListRemove.h"
#include "output/modExport.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};
} // namespace

ListsPanel* ListsPanel::Install(InputDataPage* page, ListProgress* progress) {
    auto* panel = new ListsPanel(page, progress);
    page->AddSubTab(page->TabInput1_Sub2, panel, QStringLiteral("pagTab1_Lists"), SubTab::Lists);
    return panel;
}

ListsPanel::ListsPanel(InputDataPage* page, ListProgress* progress, QWidget* parent)
    : QWidget(parent), m_page(page), m_progress(progress) {
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->setHorizontalSpacing(16);
    layout->setVerticalSpacing(2);
    auto option = [this](const char* name) {
        auto* o = new QRadioButton(this);
        o->setObjectName(QString::fromLatin1(name));
        return o;
    };
    optTab1_FileExport = option("optTab1_FileExport");
    optTab1_CopyToPlaylist = option("optTab1_CopyToPlaylist");
    optTab1_CopyToReflist = option("optTab1_CopyToReflist");
    optTab1_CopyToTaglist = option("optTab1_CopyToTaglist");
    optTab1_RemoveEntry = option("optTab1_RemoveEntry");
    // The reference list does not exist in this program yet.
    optTab1_FileExport->setChecked(true);
    auto* group = new QButtonGroup(this);
    for (QRadioButton* o : {optTab1_FileExport, optTab1_CopyToPlaylist, optTab1_CopyToReflist,
                            optTab1_CopyToTaglist, optTab1_RemoveEntry})
        group->addButton(o);
    btnTab1_Sub2_1_OK = new QPushButton(this);
    btnTab1_Sub2_1_OK->setObjectName(QStringLiteral("btnTab1_Sub2_1_OK"));

    layout->addWidget(optTab1_FileExport, 0, 0);
    layout->addWidget(optTab1_RemoveEntry, 1, 0);
    layout->addWidget(optTab1_CopyToTaglist, 0, 1);
    layout->addWidget(optTab1_CopyToPlaylist, 1, 1);
    layout->addWidget(optTab1_CopyToReflist, 2, 1);
    layout->addWidget(btnTab1_Sub2_1_OK, 0, 2, Qt::AlignRight | Qt::AlignTop);
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(3, 1);

    chooseExportFile = [this] { return DefaultChooseExportFile(); };
    connect(btnTab1_Sub2_1_OK, &QPushButton::clicked, this, &ListsPanel::btnTab1_Sub2_1_OK_Click);
}

void ListsPanel::btnTab1_Sub2_1_OK_Click() {
    if (optTab1_FileExport->isChecked())
        ExportList();
    else if (optTab1_RemoveEntry->isChecked())
        RemoveEntries();
    else if (optTab1_CopyToTaglist->isChecked())
        CopyToTaglist();
    else if (optTab1_CopyToPlaylist->isChecked())
        emit copyToPlaylistRequested();
    else if (optTab1_CopyToReflist->isChecked())
        emit copyToReflistRequested();
    else
        AppPrompt().Tell(Caption(CapNoActionChosen), Prompt::Icon::Warning);
}

QString ListsPanel::DefaultChooseExportFile() {
    const QString preset = Setting(Ini::PresetPathExport, Ini::Col1);
    return RunExportDialog(window(), ExportStartFolder(Settings(), preset, ExportFolders::DataList));
}

void ListsPanel::ExportList() {
    const DataGrid& list = Grids::LbxInput();
    if (!CheckExportable(list, AppPrompt()))
        return;
    DataListExportOptions o;
    o.presetFolder = Setting(Ini::PresetPathExport, Ini::Col1);
    o.noMsg = m_page->chbTab1_NoMsg->isChecked();
    const QString path = chooseExportFile();
    if (path.isEmpty())
        return;
    WaitCursor wait;
    ExportDataList(list, path, Settings(), o, AppPrompt());
    Grids::LbxInput().LockUpdate(false);
    Grids::LbxInput().Refresh();
}

void ListsPanel::RemoveEntries() {
    ::optTab1_RemoveEntry(Grids::LbxInput(), InputListEnv(m_page, m_progress));
}

void ListsPanel::CopyToTaglist() {
    const DataGrid& list = Grids::LbxInput();
    const ListEnv env = InputListEnv(m_page, m_progress);
    if (!env.ListNotEmpty(list) || !env.AtLeastRowsSelected(list, 1))
        return;
    int row = list.CurRow();
    if (row < 1 || row > list.Rows())
        row = list.SelRow(1);
    emit copyToTaglistRequested(list.CellText(row, InCol::Type));
}

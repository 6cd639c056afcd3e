#include "app/FilesPanel.h"

#include "app/DataGridView.h"
#include "app/InputDataPage.h"
#include "app/InputListEnv.h"
#include "app/MessageBoxPrompt.h"
#include "app/RenamePanel.h"
#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Settings.h"
#include "file/ftcFileOps.h"
#include "file/modFileCommands.h"
#include "file/modRename.h"
#include "tag/TagEngine.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTableView>

namespace {
const QColor kTaken(255, 0, 0); // 0x0000FF as the colour table writes it: pure red
} // namespace

FilesPanel* FilesPanel::Install(InputDataPage* page, ListProgress* progress, RenamePanel* rename) {
    auto* panel = new FilesPanel(page, progress, rename);
    page->AddSubTab(page->TabInput1_Sub2, ScrollingPage(panel), QStringLiteral("pagTab1_Files"),
                    SubTab::Files);
    return panel;
}

FilesPanel::FilesPanel(InputDataPage* page, ListProgress* progress, RenamePanel* rename, QWidget* parent)
    : QWidget(parent), m_page(page), m_progress(progress), m_rename(rename) {
    auto option = [this](const char* name) {
        auto* o = new QRadioButton(this);
        o->setObjectName(QString::fromLatin1(name));
        return o;
    };
    auto check = [this](const char* name) {
        auto* c = new QCheckBox(this);
        c->setObjectName(QString::fromLatin1(name));
        return c;
    };
    auto box = [this](const char* name) {
        auto* b = new QLineEdit(this);
        b->setObjectName(QString::fromLatin1(name));
        b->setClearButtonEnabled(true);
        // Typing makes the text pending (black); Enter takes it (red).
        connect(b, &QLineEdit::textEdited, b, [b] {
            QPalette p = b->palette();
            p.setColor(QPalette::Text, QApplication::palette().color(QPalette::Text));
            b->setPalette(p);
        });
        connect(b, &QLineEdit::returnPressed, b, [b] {
            QPalette p = b->palette();
            p.setColor(QPalette::Text, kTaken);
            b->setPalette(p);
        });
        return b;
    };
    optTab1_FileCopy = option("optTab1_FileCopy");
    optTab1_FileMove = option("optTab1_FileMove");
    optTab1_FileRename = option("optTab1_FileRename");
    optTab1_FileDelete = option("optTab1_FileDelete");
    chbTab1_CopyLinkedFiles = check("chbTab1_CopyLinkedFiles");
    chbTab1_EraseTagsByCopy = check("chbTab1_EraseTagsByCopy");
    chbTab1_FileReplaceArtist = check("chbTab1_FileReplaceArtist");
    chbTab1_FileReplaceString = check("chbTab1_FileReplaceString");
    chbTab1_FileReplacePreview = check("chbTab1_FileReplacePreview");
    txtTab1_ArtistFind = box("txtTab1_ArtistFind");
    txtTab1_2_Replace = box("txtTab1_2_Replace");
    btnTab1_Sub2_2_OK = new QPushButton(this);
    btnTab1_Sub2_2_OK->setObjectName(QStringLiteral("btnTab1_Sub2_2_OK"));
    auto* group = new QButtonGroup(this);
    for (QRadioButton* o : {optTab1_FileCopy, optTab1_FileMove, optTab1_FileRename, optTab1_FileDelete})
        group->addButton(o);
    // One replace command at a time.
    connect(chbTab1_FileReplaceArtist, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            chbTab1_FileReplaceString->setChecked(false);
    });
    connect(chbTab1_FileReplaceString, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            chbTab1_FileReplaceArtist->setChecked(false);
    });

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->setHorizontalSpacing(12);
    layout->setVerticalSpacing(0);
    // The button comes first, so that it stays in sight when the tab scrolls.
    layout->addWidget(btnTab1_Sub2_2_OK, 0, 0, Qt::AlignTop);
    layout->addWidget(optTab1_FileCopy, 0, 1);
    layout->addWidget(optTab1_FileMove, 1, 1);
    layout->addWidget(optTab1_FileRename, 2, 1);
    layout->addWidget(optTab1_FileDelete, 3, 1);
    layout->addWidget(chbTab1_CopyLinkedFiles, 0, 2);
    layout->addWidget(chbTab1_EraseTagsByCopy, 1, 2);
    layout->addWidget(chbTab1_FileReplaceArtist, 2, 2);
    layout->addWidget(chbTab1_FileReplaceString, 3, 2);
    layout->addWidget(chbTab1_FileReplacePreview, 4, 2);
    layout->addWidget(txtTab1_ArtistFind, 2, 3);
    layout->addWidget(txtTab1_2_Replace, 3, 3);
    txtTab1_ArtistFind->setMinimumWidth(120);
    txtTab1_2_Replace->setMinimumWidth(120);
    layout->setColumnStretch(3, 1);
    layout->setRowStretch(5, 1);

    chooseFolder = [this](int titleRow, const QString& start) {
        return QFileDialog::getExistingDirectory(window(), Caption(titleRow), start);
    };
    connect(btnTab1_Sub2_2_OK, &QPushButton::clicked, this, &FilesPanel::btnTab1_Sub2_2_OK_Click);
}

bool FilesPanel::Taken(const QLineEdit* box) {
    return box->palette().color(QPalette::Text) == kTaken;
}

void FilesPanel::btnTab1_Sub2_2_OK_Click() {
    DataGrid& list = Grids::LbxInput();
    const ListEnv env = InputListEnv(m_page, m_progress);
    FileCommandOptions o;
    o.markFilter = m_page->txtTab1_FTag->text();
    o.noMsg = m_page->chbTab1_NoMsg->isChecked();
    o.copyLinkedFiles = chbTab1_CopyLinkedFiles->isChecked();
    o.eraseTagsByCopy = chbTab1_EraseTagsByCopy->isChecked();
    o.paperbin = PaperbinSetting(Settings());
    o.tempFolder = AppFile(QStringLiteral("temp"));
    o.chooseFolder = chooseFolder;
    o.journalPath = RenameJournalPath();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    if (optTab1_FileCopy->isChecked()) {
        CopyRows(list, o, env, &TagEngine::Shared());
    } else if (optTab1_FileMove->isChecked()) {
        MoveRows(list, o, env);
    } else if (optTab1_FileDelete->isChecked()) {
        DeleteRows(list, o, env);
    } else if (optTab1_FileRename->isChecked()) {
        QApplication::restoreOverrideCursor();
        Replace();
        return;
    } else {
        QApplication::restoreOverrideCursor();
        AppPrompt().Tell(Caption(CapNoActionChosen), Prompt::Icon::Warning);
        return;
    }
    QApplication::restoreOverrideCursor();
    m_page->LbxInput->table()->setFocus();
}

void FilesPanel::Replace() {
    const bool artist = chbTab1_FileReplaceArtist->isChecked();
    const bool text = chbTab1_FileReplaceString->isChecked();
    if (!artist && !text) {
        AppPrompt().Tell(Caption(CapReplaceNothingChosen) + u'\n' + Caption(CapReplaceChoiceHint),
                         Prompt::Icon::Information);
        return;
    }
    const QString find = txtTab1_ArtistFind->text();
    if (find.isEmpty()) {
        AppPrompt().Tell(Caption(artist ? CapNoNewArtist : CapNoReplaceFindText), Prompt::Icon::Warning);
        txtTab1_ArtistFind->setFocus();
        return;
    }
    for (QLineEdit* b : {txtTab1_ArtistFind, txtTab1_2_Replace}) {
        if ((b == txtTab1_ArtistFind || text) && !Taken(b)) {
            AppPrompt().Tell(Caption(CapConfirmBoxText), Prompt::Icon::Warning);
            b->setFocus();
            return;
        }
    }
    RenameRequest r = m_rename->Request();
    r.command = artist ? RenameCommand::ReplaceArtist : RenameCommand::ReplaceString;
    r.text = find;
    r.replacement = txtTab1_2_Replace->text();
    m_rename->Run(r, chbTab1_FileReplacePreview->isChecked() || m_rename->chbTab1_RenamePreview->isChecked());
}

// FrmPictures: the pictures inside songs and the thumbnails.
#include "app/DataGridView.h"
#include "app/FrmPictures.h"
#include "app/PictureView.h"
#include "app/UiCaptions.h"
#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "list/modScan.h"
#include "picture/PictureColumns.h"
#include "picture/image/ThumbnailLoader.h"
#include "picture/image/ftcPictureFile.h"
#include "picture/modEmbeddedPictures.h"
#include "picture/modExternPictures.h"
#include "platform/Shell.h"
#include "tag/TagEngine.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

QString AudioFileFilter(); // FrmPicturesExtern.cpp

namespace {

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

QString TempFolder() {
    return AppFile(QStringLiteral("temp"));
}

QString SongPath(const DataGrid& list, int row) {
    return list.CellText(row, IPicCol::Path) + u'/' + list.CellText(row, IPicCol::Filename);
}

QString PictureFilter() {
    const QString p = Caption(CapPictureFilter);
    return p +
           QStringLiteral(" (*.gif *.jpg *.jpeg *.bmp *.png *.tif *.tiff *.ico *.webp *.GIF *.JPG *.JPEG "
                          "*.BMP *.PNG *.TIF *.TIFF *.ICO *.WEBP);;") +
           p + QStringLiteral(" (*.gif);;") + p + QStringLiteral(" (*.jpg *.jpeg);;") + p +
           QStringLiteral(" (*.bmp);;") + p + QStringLiteral(" (*.png);;") + p +
           QStringLiteral(" (*.tif *.tiff);;") + p + QStringLiteral(" (*.ico)");
}

} // namespace

void FrmPictures::connectIntern() {
    auto on = [this](const char* name, auto fn) {
        connect(findChild<QPushButton*>(QString::fromLatin1(name)), &QPushButton::clicked, this, fn);
    };
    on("btnPic_FindiPic", [this] { cmdFindEmbedded(false); });
    on("btnPic_OpenSinglePicIntern", [this] { cmdFindEmbedded(true); });
    on("btnPic_CanceliPic", [this] { m_abort = true; });
    on("btnPic_OpeniPic", [this] { cmdShowEmbedded(); });
    on("btnPic_SaveiPic", [this] { cmdSaveIntoSong(); });
    on("btnPic_DeleteiPic", [this] { cmdDeleteEmbedded(); });
    connect(m_internMenu->findChild<QAction*>(QStringLiteral("mnuiPic_playTitle")), &QAction::triggered, this,
            [this] { cmdPlayInternSong(); });
    connect(m_internView, &DataGridView::rowDoubleClicked, this, [this] {
        if (!box("chbPic_DirectEditIntern")->isChecked())
            cmdShowEmbedded();
    });
    m_internView->SetCellEditing(
        [this](int row, int col) {
            return col == IPicCol::Description && box("chbPic_DirectEditIntern")->isChecked() &&
                   EmbeddedPictureIndex(*m_intern, row) > 0;
        },
        [this](int row, int, QString& text) { return descriptionEdited(row, text); });
}

void FrmPictures::cmdFindEmbedded(bool single) {
    if (m_busy)
        return;
    QStringList paths;
    if (single) {
        const QString song = chooseOpenFile(UiText(QStringLiteral("btnPic_OpenSinglePicIntern")),
                                            Setting(Ini::PicSongFolder, Ini::Col2), AudioFileFilter());
        if (song.isEmpty())
            return;
        SetSetting(Ini::PicSongFolder, Ini::Col2, song.left(song.lastIndexOf(u'/')));
        paths << song;
        m_filesTabs->setCurrentIndex(1);
    } else {
        const QString folder = chooseFolder(Setting(Ini::EmbeddedPicListOption, Ini::Col2));
        m_filesTabs->setCurrentIndex(1);
        if (folder.isEmpty())
            return;
        SetSetting(Ini::EmbeddedPicListOption, Ini::Col2, folder);
        int count = 0;
        FindFiles(folder, QStringLiteral("*"), paths, box("chbPic_WithSubFolderiPic")->isChecked(), count);
    }
    if (!box("chbPic_AttachiPic")->isChecked()) {
        m_intern->Clear();
        m_intern->SetFooterText(IPicCol::Filename, QString());
    }
    m_loader->Cancel();
    EmptyTempFolder();
    auto* cancel = findChild<QPushButton*>(QStringLiteral("btnPic_CanceliPic"));
    cancel->setEnabled(true);
    WaitCursor wait;
    m_busy = true;
    m_abort = false;
    EmbeddedSearch how;
    how.withPicturesOnly = box("chbPic_WithiPicOnly")->isChecked();
    how.pump = [] { QApplication::processEvents(); };
    how.aborted = [this] { return m_abort; };
    how.progress = [this](const QString& t) { m_intern->SetFooterText(IPicCol::Filename, t); };
    m_intern->LockUpdate(true);
    SearchEmbeddedPictures(*m_intern, TagEngine::Shared(), paths, how);
    for (int r = 1; r <= m_intern->Rows(); ++r)
        m_intern->SetRowKey(r, QString::number(r));
    m_intern->LockUpdate(false);
    m_intern->Refresh();
    m_abort = false;
    m_busy = false;
    cancel->setEnabled(false);
    m_intern->SetFooterText(IPicCol::Filename, QString::number(m_intern->Rows()));
    if (m_intern->Rows() > 0)
        m_intern->SetCurRow(1);
    m_thumbSource = 1;
    m_thumbsDirty = true;
    m_internView->table()->setFocus();
}

void FrmPictures::cmdShowEmbedded() {
    if (m_intern->Rows() == 0) {
        prompt().Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return;
    }
    const int row = m_intern->CurRow();
    const int i = EmbeddedPictureIndex(*m_intern, row);
    if (row < 1 || i == 0) {
        prompt().Tell(Caption(CapNoPictureRow), Prompt::Icon::Information);
        return;
    }
    m_text->clear();
    TagEngine& engine = TagEngine::Shared();
    if (engine.OpenFile(SongPath(*m_intern, row)) == 0) {
        prompt().TellUntitled(engine.LastError(), Prompt::Icon::Critical);
        return;
    }
    if (!m_intern->CellText(row, IPicCol::HasPic).isEmpty()) {
        QDir().mkpath(TempFolder());
        const QString temp =
            TempFolder() + QStringLiteral("/iPicTmp.") + PictureExtensionOfMime(engine.PictureMime(i));
        if (engine.ExportPicture(i, temp) == 0) {
            prompt().TellUntitled(engine.LastError(), Prompt::Icon::Critical);
            return;
        }
        showPictureFile(temp);
    } else {
        const QString linked = PictureLinkPath(engine.PictureMime(i));
        if (QFileInfo::exists(linked))
            showPictureFile(linked);
        else
            m_view->ShowPlaceholder();
    }
    m_iDescription->setText(engine.PictureDescription(i));
    m_iPicType->setCurrentIndex(engine.PictureType(i) < m_iPicType->count() ? engine.PictureType(i) : 0);
    m_picTabs->setCurrentIndex(0);
}

void FrmPictures::cmdSaveIntoSong() {
    if (m_intern->Rows() == 0) {
        prompt().Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return;
    }
    const int row = m_intern->CurRow();
    if (row < 1) {
        prompt().Tell(Caption(CapNoSongSelected), Prompt::Icon::Information);
        return;
    }
    const QString start = Setting(Ini::PicExportFolder2, Ini::Col2);
    const QString picture = chooseOpenFile(Caption(CapChoosePictureTitle), start, PictureFilter());
    if (picture.isEmpty())
        return;
    SetSetting(Ini::PicExportFolder2, Ini::Col2, picture.left(picture.lastIndexOf(u'/')));
    const bool asNew = box("chbPic_SaveiPicAsNew")->isChecked();
    const bool asLink = box("chbPic_SaveiPicAsLink")->isChecked();
    TagEngine& engine = TagEngine::Shared();
    const QString song = SongPath(*m_intern, row);
    if (engine.OpenFile(song) == 0) {
        prompt().TellUntitled(engine.LastError(), Prompt::Icon::Critical);
        return;
    }
    const int index = asNew ? engine.PictureCount() + 1 : EmbeddedPictureIndex(*m_intern, row);
    if (index == 0) {
        prompt().Tell(Caption(CapNoPictureRow), Prompt::Icon::Information);
        return;
    }
    QString error;
    WaitCursor wait;
    if (!StorePictureInSong(engine, song, picture, m_iDescription->text(),
                            qMax(0, m_iPicType->currentIndex()), index, asLink, &error)) {
        prompt().TellUntitled(error, Prompt::Icon::Critical);
        return;
    }
    const QString folder = m_intern->CellText(row, IPicCol::Path);
    const QString name = m_intern->CellText(row, IPicCol::Filename);
    const int first =
        RefreshSongRows(*m_intern, engine, folder, name, box("chbPic_WithiPicOnly")->isChecked());
    if (first > 0) {
        m_intern->SetCurRow(qMin(m_intern->Rows(), first + index - 1));
        cmdShowEmbedded();
    }
}

void FrmPictures::cmdDeleteEmbedded() {
    if (m_intern->Rows() == 0) {
        prompt().Tell(Caption(CapListEmpty), Prompt::Icon::Information);
        return;
    }
    const int row = m_intern->CurRow();
    const bool all = box("chbPic_DeleteAlliPic")->isChecked();
    const int index = EmbeddedPictureIndex(*m_intern, row);
    if (row < 1 || (!all && index == 0)) {
        prompt().Tell(Caption(CapNoPictureRow), Prompt::Icon::Information);
        return;
    }
    TagEngine& engine = TagEngine::Shared();
    QString error;
    if (!RemoveSongPictures(engine, SongPath(*m_intern, row), all ? 0 : index, &error)) {
        prompt().TellUntitled(error, Prompt::Icon::Critical);
        return;
    }
    const int first =
        RefreshSongRows(*m_intern, engine, m_intern->CellText(row, IPicCol::Path),
                        m_intern->CellText(row, IPicCol::Filename), box("chbPic_WithiPicOnly")->isChecked());
    if (m_intern->Rows() > 0)
        m_intern->SetCurRow(first > 0 ? first : qMin(row, m_intern->Rows()));
    m_view->Clear();
    m_intern->SetFooterText(IPicCol::Filename, QString::number(m_intern->Rows()));
}

bool FrmPictures::descriptionEdited(int row, QString& text) {
    const int i = EmbeddedPictureIndex(*m_intern, row);
    TagEngine& engine = TagEngine::Shared();
    const QString song = SongPath(*m_intern, row);
    if (i == 0 || engine.OpenFile(song) == 0)
        return false;
    // The description is rewritten through the picture roles: the picture goes out to a
    // temporary file and comes back in at its index with the new text.
    const QString mime = engine.PictureMime(i);
    QString source = PictureLinkPath(mime);
    if (!IsPictureLinkMime(mime)) {
        QDir().mkpath(TempFolder());
        source = TempFolder() + QStringLiteral("/iPicEdit.") + PictureExtensionOfMime(mime);
        if (engine.ExportPicture(i, source) == 0) {
            prompt().TellUntitled(engine.LastError(), Prompt::Icon::Critical);
            return false;
        }
    }
    const bool ok =
        engine.AddPicture(source, text, i, engine.PictureType(i), mime) != 0 && engine.SaveV2(song) != 0;
    if (!IsPictureLinkMime(mime))
        QFile::remove(source);
    if (!ok) {
        prompt().TellUntitled(engine.LastError(), Prompt::Icon::Critical);
        return false;
    }
    return true;
}

void FrmPictures::cmdPlayInternSong() {
    const int row = m_intern->CurRow();
    if (row >= 1)
        ShellOpen(SongPath(*m_intern, row));
}

// ---- thumbnails ------------------------------------------------------------------------

void FrmPictures::connectThumbs() {
    auto on = [this](const char* name, auto fn) {
        connect(findChild<QPushButton*>(QString::fromLatin1(name)), &QPushButton::clicked, this, fn);
    };
    on("btnPic_ShowThumbnail", [this] { refreshThumbnails(); });
    on("btnPic_TnWidthUp", [this] { stepThumbSize(true, 10); });
    on("btnPic_TnWidthDown", [this] { stepThumbSize(true, -10); });
    on("btnPic_TnHeightUp", [this] { stepThumbSize(false, 10); });
    on("btnPic_TnHeightDown", [this] { stepThumbSize(false, -10); });
    auto* later = new QTimer(this);
    later->setSingleShot(true);
    later->setInterval(300);
    connect(later, &QTimer::timeout, this, [this] {
        if (m_thumbs->count() > 0)
            refreshThumbnails();
    });
    for (QSlider* s : {m_tnWidth, m_tnHeight})
        connect(s, &QSlider::valueChanged, this, [this, later] {
            if (!State().SuppressEvents) {
                SetSetting(Ini::ThumbnailWidth, Ini::Col1, QString::number(m_tnWidth->value()));
                SetSetting(Ini::ThumbnailHeight, Ini::Col1, QString::number(m_tnHeight->value()));
            }
            later->start();
        });
    connect(m_loader, &ThumbnailLoader::thumbnailReady, this, &FrmPictures::takeThumbnail);
    connect(m_filesTabs, &QTabWidget::currentChanged, this, [this](int index) {
        if (index == 0 || index == 1) {
            if (m_thumbSource != index)
                m_thumbsDirty = true;
            m_thumbSource = index;
        } else if (index == 2 && m_thumbsDirty) {
            refreshThumbnails();
        }
    });
    connect(m_thumbs, &QListWidget::currentRowChanged, this, [this](int item) {
        if (item < 0 || item >= int(m_thumbRows.size()))
            return;
        const int row = m_thumbRows[size_t(item)];
        if (m_thumbSource == 0) {
            Grids::LbxPic_Extern().SetCurRow(row);
            showExternRow(row);
        } else {
            m_intern->SetCurRow(row);
            showPictureFile(m_thumbPaths[item]);
        }
    });
}

void FrmPictures::stepThumbSize(bool width, int delta) {
    QSlider* s = width ? m_tnWidth : m_tnHeight;
    s->setValue(s->value() + delta);
}

void FrmPictures::refreshThumbnails() {
    m_loader->Cancel();
    const QSignalBlocker quiet(m_thumbs); // refilling shows no picture
    m_thumbs->clear();
    m_thumbPaths.clear();
    m_thumbRows.clear();
    m_thumbsDirty = false;
    const bool all = box("chbPic_ShowThumbnailAll")->isChecked();
    const DataGrid& list = m_thumbSource == 0 ? Grids::LbxPic_Extern() : *m_intern;
    std::vector<int> rows;
    if (!all)
        rows = list.SelectedRows();
    if (rows.empty())
        for (int r = 1; r <= list.Rows(); ++r)
            rows.push_back(r);
    QStringList captions;
    TagEngine& engine = TagEngine::Shared();
    for (int r : rows) {
        QString path, name;
        if (m_thumbSource == 0) {
            path = RowPicturePath(list, r);
            name = list.CellText(r, PicCol::Picfile);
        } else {
            const int i = EmbeddedPictureIndex(list, r);
            if (i == 0)
                continue;
            name = list.CellText(r, IPicCol::Filename);
            if (!list.CellText(r, IPicCol::HasPicLink).isEmpty()) {
                path = list.CellText(r, IPicCol::Mime_Link);
            } else {
                // the engine writes only to files: one temporary file per picture
                if (engine.OpenFile(SongPath(list, r)) == 0)
                    continue;
                QDir().mkpath(TempFolder());
                path = TempFolder() + QStringLiteral("/PicTemp%1.").arg(++m_tempCounter) +
                       PictureExtensionOfMime(engine.PictureMime(i));
                if (engine.ExportPicture(i, path) == 0)
                    continue;
            }
        }
        if (path.isEmpty())
            continue;
        m_thumbPaths << path;
        m_thumbRows.push_back(r);
        captions << QStringLiteral("(%1) ").arg(r) + name;
    }
    const QSize box(m_tnWidth->value(), m_tnHeight->value());
    m_thumbs->setIconSize(box);
    m_thumbs->setGridSize(QSize(box.width() + 16, box.height() + 2 * fontMetrics().height() + 10));
    QPixmap blank(box);
    blank.fill(palette().color(QPalette::Base));
    const QIcon waiting(blank);
    m_thumbs->setUpdatesEnabled(false);
    for (const QString& c : captions)
        new QListWidgetItem(waiting, c, m_thumbs);
    m_thumbs->setUpdatesEnabled(true);
    if (!m_thumbPaths.isEmpty())
        m_loader->Start(m_thumbPaths, box);
}

void FrmPictures::takeThumbnail(int index, const QImage& image, const QString& error) {
    QListWidgetItem* item = m_thumbs->item(index);
    if (!item)
        return;
    if (!image.isNull()) {
        item->setIcon(QIcon(QPixmap::fromImage(image)));
        return;
    }
    const LoadedPicture none = LoadPictureScaled(PictureView::PlaceholderPath(), m_thumbs->iconSize());
    if (none.ok())
        item->setIcon(QIcon(QPixmap::fromImage(none.image)));
    item->setToolTip(Caption(CapPicNotShown) + u'\n' + error);
}

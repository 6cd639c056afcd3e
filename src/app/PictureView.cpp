#include "app/PictureView.h"

#include "core/AppPaths.h"
#include "picture/image/ftcPictureFile.h"

#include <QLabel>
#include <QPixmap>
#include <QScrollBar>

PictureView::PictureView(QWidget* parent) : QScrollArea(parent), m_label(new QLabel) {
    m_label->setObjectName(QStringLiteral("imgPic_SizedPic"));
    m_label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_label->setScaledContents(true);
    setWidget(m_label);
    setWidgetResizable(false);
    setAlignment(Qt::AlignCenter);
    setBackgroundRole(QPalette::Dark);
    horizontalScrollBar()->setObjectName(QStringLiteral("HScrollPic_Left"));
    verticalScrollBar()->setObjectName(QStringLiteral("VScrollPic_Up"));
}

QString PictureView::PlaceholderPath() {
    return AppFile(QStringLiteral("icons/NoPicture.jpg"));
}

bool PictureView::ShowFile(const QString& path) {
    LoadedPicture p = LoadPictureFile(path);
    if (!p.ok()) {
        m_error = p.error;
        ShowPlaceholder();
        return false;
    }
    m_error.clear();
    m_image = std::move(p.image);
    m_full = p.fullSize;
    m_path = path;
    Layout();
    return true;
}

void PictureView::ShowPlaceholder() {
    LoadedPicture p = LoadPictureFile(PlaceholderPath());
    m_image = p.ok() ? std::move(p.image) : QImage();
    m_full = m_image.size();
    m_path.clear();
    Layout();
}

void PictureView::Clear() {
    m_image = QImage();
    m_full = QSize();
    m_path.clear();
    m_error.clear();
    Layout();
}

void PictureView::SetZoom(int percent) {
    percent = qBound(-90, percent, 400);
    if (percent == m_zoom)
        return;
    m_zoom = percent;
    Layout();
    emit zoomChanged(m_zoom);
}

void PictureView::FitToPane() {
    if (m_full.isEmpty())
        return;
    const QSize pane = viewport()->size();
    const double f = std::min(double(pane.width()) / m_full.width(), double(pane.height()) / m_full.height());
    SetZoom(int(std::floor((f - 1.0) * 100.0)));
}

void PictureView::ToTopLeft() {
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
}

void PictureView::Layout() {
    if (m_image.isNull()) {
        m_label->clear();
        m_label->resize(0, 0);
        return;
    }
    const double factor = 1.0 + m_zoom / 100.0;
    const QSize shown(qMax(1, int(m_full.width() * factor)), qMax(1, int(m_full.height() * factor)));
    m_label->setPixmap(QPixmap::fromImage(m_image));
    m_label->resize(shown);
}

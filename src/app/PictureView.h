#pragma once
// PictureView: the picture on show in FrmPictures (imgPic_SizedPic in a scrolling pane),
// with the zoom of HScrollPic_Zoom: 0 is the picture's own size, a value v stretches it
// by 1 + v / 100 (negative values shrink it). The pane shows scroll bars when the
// picture is larger than the pane. A picture that can't be shown gives way to
// "NoPicture.jpg" from the folder icons beside the program.

#include <QImage>
#include <QScrollArea>
#include <QSize>

class QLabel;

class PictureView : public QScrollArea {
    Q_OBJECT
public:
    explicit PictureView(QWidget* parent = nullptr);

    // Shows the picture of `path`; false (and the placeholder) when it can't be loaded,
    // with the reason in LastError().
    bool ShowFile(const QString& path);
    void ShowPlaceholder();
    void Clear();

    const QImage& image() const { return m_image; }
    QString path() const { return m_path; } // empty for the placeholder
    QSize fullSize() const { return m_full; }
    QString LastError() const { return m_error; }

    int zoom() const { return m_zoom; }
    void SetZoom(int percent); // -90 .. 400
    // Fits the picture into the pane (mnuZoom_ImgSet, btnPic_Adjust).
    void FitToPane();
    void ToTopLeft();

    static QString PlaceholderPath();

signals:
    void zoomChanged(int percent);

private:
    void Layout();

    QLabel* m_label;
    QImage m_image;
    QSize m_full;
    QString m_path, m_error;
    int m_zoom = 0;
};

#pragma once
// AreaPage: the frame of one main area of the program (data list, tags, texts,
// playlists, pictures, time-stamped text, preferences). Each area is a window class of
// its own, hosted as a page of the tab strip TabInput, so that all areas feel like one
// program. An area shows its title on top; its controls go into body(), which scrolls
// when the window is smaller than the area needs (an area that scrolls parts of its own,
// as the data list does, asks for no scrolling).

#include <QWidget>

class QLabel;
class QVBoxLayout;

class AreaPage : public QWidget {
    Q_OBJECT
public:
    AreaPage(const QString& objectName, QWidget* parent = nullptr, bool scrolls = true);

    QVBoxLayout* body() const { return m_body; }
    QLabel* titleLabel() const { return m_title; }

protected:
    void changeEvent(QEvent* event) override;

private:
    QLabel* m_title;
    QVBoxLayout* m_body;
};

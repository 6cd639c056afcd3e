#pragma once
// The keys of the main window's areas: F1 to F7 from wherever the focus is in the main
// window, and the key tables of the tag list, the playlist and the picture area, whose
// commands run here on the controls of those areas.

#include "list/modShortcutsWindows.h"

#include <QObject>

class FrmInput;
class QWidget;

// Creates the handlers below for the main window; they live as long as the window.
void InstallWindowShortcuts(FrmInput* window);

// F1 to F7 without a modifier: a key filter over the whole application that hands the key
// to HandleShortcut under the name of the list or area that has the focus.
class MainTabKeys : public QObject, public MainTabShortcutCommands {
    Q_OBJECT
public:
    explicit MainTabKeys(FrmInput* window);
    ~MainTabKeys() override;

    void SelectMainTab(int index) override;
    // The list name under which a key of `focus` goes to HandleShortcut.
    QString ActiveList(const QWidget* focus) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FrmInput* m_window;
};

class TagShortcuts : public QObject, public TagShortcutCommands {
    Q_OBJECT
public:
    explicit TagShortcuts(FrmInput* window);
    ~TagShortcuts() override;

    QStringList Signs() const override;
    QStringList Ratings() const override;
    QStringList Moods() const override;
    void WriteMarkToHighlighted(const QString& mark) override;
    int FieldTab() const override;
    void SelectFieldTab(int index) override;
    void OpenCurrentFile() override;
    QString MarkBox() const override;
    void SetMarkBox(const QString& text) override;
    void HighlightAll() override;
    void InvertHighlight() override;
    void FilterOnOff() override;
    void Filter() override;
    void CopyToPlaylist() override;
    void HighlightByMark() override;
    void RemoveMarks() override;
    QString FieldBox(int index, bool typical) const override;
    void SetFieldBox(int index, bool typical, const QString& text) override;

private:
    void Click(const char* name);
    FrmInput* m_window;
};

class PlaylistShortcuts : public QObject, public PlaylistShortcutCommands {
    Q_OBJECT
public:
    explicit PlaylistShortcuts(FrmInput* window);
    ~PlaylistShortcuts() override;

    QStringList Signs() const override;
    void WriteMarkToHighlighted(const QString& mark) override;
    void OpenCurrentFile() override;
    QString MarkBox() const override;
    void SetMarkBox(const QString& text) override;
    void HighlightAll() override;
    void InvertHighlight() override;
    void MarkHighlighted() override;
    void MoveDown() override;
    void MoveUp() override;
    void HighlightByMark() override;
    void RemoveMarks() override;

private:
    void Click(const char* name);
    FrmInput* m_window;
};

class PictureShortcuts : public QObject, public PictureShortcutCommands {
    Q_OBJECT
public:
    explicit PictureShortcuts(FrmInput* window);
    ~PictureShortcuts() override;

    void SelectFilesTab(int index) override;
    void SelectPicturesTab(int index) override;
    void ZoomOriginal() override;
    void ToggleTextbox() override;
    void Fit() override;
    void LeftCorner() override;
    void NextPicture() override;
    void PreviousPicture() override;
    void OpenLink() override;
    void NextSizeStep() override;
    void StretchTextbox() override;
    bool ShownAtFullSize() const override;
    void FullSize() override;
    void ZoomIn() override;
    void ZoomOut() override;

private:
    void Click(const char* name);
    FrmInput* m_window;
    int m_sizeStep = 0; // the last size of Ctrl+Q: 0 own size, 1 fitted, 2 doubled
};

#pragma once
// FrmPictures: the area of pictures beside and inside the songs, a page of the main
// window's tab strip TabInput. On the left the strip SSTabPic_Files with the pictures
// found on disk (LbxPic_Extern, with the link list LbxPic_LinkToPic behind it), the
// pictures inside songs (LbxPic_Intern) and the thumbnails (ListViewPic); on the right
// the strip SSTabPic_Pictures with the picture on show (zoom, size, saving) and the text
// box of a picture's linked text. The window reads its controls and leaves the work to
// src/picture.

#include "app/AreaPage.h"

#include <QImage>
#include <functional>

class DataGrid;
class DataGridView;
class PictureView;
class Prompt;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QSlider;
class QTabWidget;
class QTimer;
class ThumbnailLoader;
struct PictureEnv;

class FrmPictures : public AreaPage {
    Q_OBJECT
public:
    // `prompt` null means the program's prompt.
    explicit FrmPictures(QWidget* parent = nullptr, Prompt* prompt = nullptr);
    ~FrmPictures() override;

    DataGrid& lbxExtern() const;
    DataGrid& lbxIntern() const { return *m_intern; }
    PictureView* pictureView() const { return m_view; }
    QListWidget* thumbnails() const { return m_thumbs; }
    bool thumbnailsBusy() const;

    void ApplySettings();
    void SetGridHeaders();
    // The list's title: the folder searched (or the rest text) with the row count.
    QString listTitle() const;

    // Dialogues; tests replace them. Empty result = cancelled.
    std::function<QString(const QString& startFolder)> chooseFolder;
    std::function<QString(const QString& title, const QString& start, const QString& filter)> chooseOpenFile;
    std::function<QString(const QString& title, const QString& start, const QString& filter)> chooseSaveFile;

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // FrmPictures.cpp: the window
    void buildUi();
    QWidget* buildExternTab();
    QWidget* buildInternTab();
    QWidget* buildThumbTab();
    QWidget* buildShowPane();
    void buildMenus();
    void connectCommon();
    void applyCaptions();
    Prompt& prompt() const;
    PictureEnv env();
    QPushButton* button(const char* name, QWidget* parent);
    QCheckBox* check(const char* name, QWidget* parent);
    QCheckBox* box(const char* name) const;
    void saveBox(int row, int col, bool on);
    void showTitle();
    void fillTypeCombos();
    void showZoom();
    void showSize();
    bool showPictureFile(const QString& path);
    void cmdSaveShownPicture();
    void cmdLaunchShownPicture();

    // FrmPicturesExtern.cpp: pictures on disk and the link list
    void connectExtern();
    void cmdFindPictures();
    void cmdShowLinkList();
    void cmdWriteLinkList();
    void cmdRemoveBrokenLinks();
    void cmdLinkText();
    void cmdLinkSong();
    void cmdLoadLinkedText();
    void cmdSaveText();
    void cmdDeleteText();
    void cmdRemoveLink(bool text, bool song);
    void cmdPlayLinkedSong();
    void cmdOpenLinkedText();
    void openLinked(QString (*pathOf)(const DataGrid&, int));
    int currentPictureRow(PictureEnv& e); // the current row after the guards, else 0
    void cmdDeletePicture();
    void cmdCopyPicture();
    void cmdExport();
    void cmdStep(int delta);
    void cmdSlideShow();
    void slideNext();
    void showExternRow(int row);
    void linkSongAfterEmbedding(const QString& picture, const QString& song);

    // FrmPicturesIntern.cpp: pictures inside songs, thumbnails
    void connectIntern();
    void cmdFindEmbedded(bool single);
    void cmdShowEmbedded();
    void cmdSaveIntoSong();
    void cmdDeleteEmbedded();
    void cmdEmbedShownExtern(bool asLink);
    void cmdPlayInternSong();
    bool descriptionEdited(int row, QString& text);
    void connectThumbs();
    void refreshThumbnails();
    void stepThumbSize(bool width, int delta);
    void takeThumbnail(int index, const QImage& image, const QString& error);

    Prompt* m_prompt;
    DataGrid* m_intern;
    DataGridView* m_externView = nullptr;
    DataGridView* m_internView = nullptr;
    PictureView* m_view = nullptr;
    QTabWidget* m_filesTabs = nullptr;
    QTabWidget* m_picTabs = nullptr;
    QLabel* m_title = nullptr;
    QLabel* m_zoomLabel = nullptr;
    QLabel* m_sizeLabel = nullptr;
    QLabel* m_delayLabel = nullptr;
    QLabel* m_statusLabel = nullptr;
    QScrollBar* m_zoom = nullptr;
    QScrollBar* m_delay = nullptr;
    QSlider* m_tnWidth = nullptr;
    QSlider* m_tnHeight = nullptr;
    QPlainTextEdit* m_text = nullptr;
    QLineEdit* m_description = nullptr;  // txtPic_Description
    QLineEdit* m_iDescription = nullptr; // txtPic_iPicDescription
    QComboBox* m_picType = nullptr;      // cmbPic_Pictype
    QComboBox* m_iPicType = nullptr;     // cmbPic_iPicType
    QRadioButton* m_cm = nullptr;
    QRadioButton* m_inch = nullptr;
    QListWidget* m_thumbs = nullptr;
    ThumbnailLoader* m_loader = nullptr;
    QMenu* m_externMenu = nullptr;
    QMenu* m_internMenu = nullptr;
    QMenu* m_zoomMenu = nullptr;
    QTimer* m_slideTimer = nullptr;
    QString m_folder; // the folder of the last search ("" at rest)
    bool m_showsLinkList = false;
    bool m_abort = false; // btnPic_CancelPic, btnPic_CanceliPic
    bool m_busy = false;
    int m_thumbSource = 0; // 0 pictures on disk, 1 pictures in songs
    bool m_thumbsDirty = true;
    QStringList m_thumbPaths;
    std::vector<int> m_thumbRows;
    int m_tempCounter = 0;
    bool m_largeText = false; // btnPic_StretchTextbox
};

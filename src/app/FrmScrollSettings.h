#pragma once
// FrmScrollSettings: edits a skin of the scrolling text window on a live preview. The
// preview (LbxScrollPreview) is the window's row view over a sample text of 18 rows with
// row 6 current (row 11 in mode 3); the boxes beside it choose the rows a colour goes to.
// Skins are saved to and opened from the folder "skin" beside the program.

#include "text/modScrollText.h"

#include <QWidget>

#include <functional>

class DataGrid;
class Prompt;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollArea;
class QSlider;
class ScrollTextView;

class FrmScrollSettings : public QWidget {
    Q_OBJECT
public:
    explicit FrmScrollSettings(QWidget* parent = nullptr, Prompt* prompt = nullptr);
    ~FrmScrollSettings() override;

    // The skin as the preview shows it; setting one fills every control.
    ScrollSkin Skin() const { return m_skin; }
    void SetSkin(const ScrollSkin& skin);

    // Dialogues; tests replace them. An invalid colour, an empty path or a false return
    // means cancelled.
    std::function<QColor(const QColor& start)> chooseColor;
    std::function<bool(QFont& font)> chooseFont;
    std::function<QString(const QString& folder, const QString& title)> chooseSkinFile;

    // The rows of the preview each box stands for in the current mode (0: none).
    int BoxRow(int box) const;

    static constexpr int RowBoxes = 11;
    static constexpr int PreviewRows = 18;

    QComboBox* cmbScrollPrev_Feature = nullptr;
    QGroupBox* FrameScrollPreview = nullptr;
    ScrollTextView* LbxScrollPreview = nullptr;
    QPushButton* btnScrollPrev_Font = nullptr;
    QSlider* SliderScrollPrev_Fontsize = nullptr;
    QLabel* lblScrollPrev_FontInfo = nullptr;
    QRadioButton* optScrollPrev_Left = nullptr;
    QRadioButton* optScrollPrev_Center = nullptr;
    QRadioButton* optScrollPrev_Uf = nullptr;
    QRadioButton* optScrollPrev_lbxBack = nullptr;
    QRadioButton* optScrollPrev_LbxFore = nullptr;
    QPushButton* btnScrollPrev_Color = nullptr;
    QCheckBox* chbScrollPrev_ColorRow[RowBoxes] = {};
    QRadioButton* optScrollPrev_RowBackColor = nullptr;
    QRadioButton* optScrollPrev_RowForeColor = nullptr;
    QPushButton* btnScrollPrev_ColorFloatingRow = nullptr;
    QCheckBox* chbScrollTextPrev_RowActBold = nullptr;
    QCheckBox* chbScrollTextPrev_RowTop1Bold = nullptr;
    QLineEdit* txtScrollPrev_Save = nullptr;
    QPushButton* btnScrollPrev_Save = nullptr;
    QPushButton* btnScrollPrev_OpenScs = nullptr;
    QPushButton* btnScrollPrev_Delete = nullptr;
    QPushButton* btnScrollPrev_Close = nullptr;

protected:
    void changeEvent(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    void buildUi();
    void TextInLbx();
    void SequencingLines();
    void EnDisableLines();
    void EnDisableForm();
    void SetBoldActRow(bool on);
    void SetBoldTop1(bool on);
    void showSkin();
    void placeBoxes();
    void colorItem();
    void colorRows();
    void save();
    void openScs();
    void deleteScs();
    QColor askColor(qint32 start);
    Prompt& prompt() const;

    Prompt* m_prompt;
    DataGrid* m_sample;
    ScrollSkin m_skin;
    QWidget* m_boxColumn = nullptr;
    QScrollArea* m_scroll = nullptr;
    bool m_filling = false;
};

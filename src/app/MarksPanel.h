#pragma once
// The tab "Marks" of the data area (TabInput1_Sub2, place 3): marking rows by hand and
// with the ten signs, removing marks, selecting by mark, marking rows by a rule (song
// texts, pictures, file type) and the doubles.

#include <QPushButton>
#include <QWidget>

class InputDataPage;
class ListProgress;
class QCheckBox;
class QComboBox;

// A sign button: its caption (the key digit) and, beside it, the sign it writes.
class SignButton : public QPushButton {
    Q_OBJECT
public:
    using QPushButton::QPushButton;
    void SetSign(const QString& sign);
    QString Sign() const { return m_sign; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString ShownText() const;
    QString m_sign;
};

class MarksPanel : public QWidget {
    Q_OBJECT
public:
    MarksPanel(InputDataPage* page, ListProgress* progress, QWidget* parent = nullptr);
    static MarksPanel* Install(InputDataPage* page, ListProgress* progress);

    // The signs of lbxSign (settings rows 1 to 10, column 4) onto the sign buttons.
    void ApplySettings();
    QStringList Signs() const;

    // The row of sign buttons: lent to the player tab while a mark run goes on.
    void LendSigns(class QBoxLayout* into);
    void TakeSignsBack();

    QWidget* fraTab1_Signs; // lblTab1_Sign0_9, the ten signs and btnTab1_SetFTagActRow
    QPushButton* btnTab1_SetFTagActRow;
    SignButton* btnTab1_Sign[10];
    QPushButton* btnTab1_SignNext; // objectName "btnTab1_Sign": cycles through the signs
    QCheckBox* chbTab1_SignPreviousRow;
    QPushButton* btnTab1_ClearFtag;
    QPushButton* btnTab1_RemoveFtag;
    QPushButton* btnTab1_HighlightAll;
    QPushButton* btnTab1_InvertHighlight;
    QPushButton* btnTab1_FTagBlue;
    QPushButton* btnTab1_MarkLrc;
    QPushButton* btnTab1_HighlightLyrics;
    QPushButton* btnTab1_HighlightiPic;
    QPushButton* btnTab1_HighlightLink;
    QComboBox* cmbTab1_FileType;
    QPushButton* btnTab1_MarkFileType;
    QPushButton* btnTab1_FindDouble;
    QPushButton* btnTab1_EraseDouble;

protected:
    void showEvent(QShowEvent* event) override;

private:
    bool NoMsg() const;
    void FocusList();

    InputDataPage* m_page;
    ListProgress* m_progress;
    class QGridLayout* m_rows;
};

#pragma once
// One tab of the tag window's field sets: an array of text boxes with check boxes of the
// same indices, a genre combo with its own check box, and the two buttons that tick or
// clear every check box. A ticked field has its box enabled on the window colour; an
// unticked one is disabled on the button-face colour, and only enabled boxes are written.

#include "tag/modTagUpdate.h"

#include <QString>
#include <QWidget>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QGridLayout;

struct TagSetPanelDef {
    QString textName;   // "txtTab2_V2": boxes are named "txtTab2_V2(i)"
    QString checkName;  // "chbTab2_V2"
    QString genreName;  // "CmbTab2_GenreV2"
    QString genreCheck; // "chbTab2_GenreV2" or "" when the genre is check box 0
    QString labelName;  // "lblTab2_Typical" or "" (the check boxes carry the names)
    QString checkAllName, checkNoneName;
    int firstBox = 0; // index of the first text box (V1: 1)
    int boxCount = 0;
    int checkOffset = 0;      // check box index of text box i is i + checkOffset
    bool genreByData = false; // the V1 genre: a fixed list with item data
    int multiLineBox = -1;    // a box that takes several lines (the lyric)
};

class FrmTagSetPanel : public QWidget {
    Q_OBJECT
public:
    FrmTagSetPanel(const TagSetPanelDef& def, QWidget* parent = nullptr);

    const TagSetPanelDef& def() const { return m_def; }
    int boxCount() const { return m_def.boxCount; }
    QLineEdit* box(int index) const;   // by the window's index (firstBox ..)
    QCheckBox* check(int index) const; // check box of a text box
    QCheckBox* genreCheck() const { return m_genreCheck; }
    QComboBox* genre() const { return m_genre; }
    QLabel* label(int index) const; // only with a labelName
    QPushButton* checkAll() const { return m_all; }
    QPushButton* checkNone() const { return m_none; }
    QGridLayout* grid() const { return m_grid; }

    QString text(int index) const;
    void setText(int index, const QString& text);
    TagBox boxValue(int index) const;
    TagBox genreValue() const; // free-text genres
    int genreData() const;     // item data of the V1 genre, -1 when none is selected
    bool genreEnabled() const;

    void clearBoxes(); // texts and genre; the check boxes stay
    void setAllChecks(bool checked);
    void setChecksEnabled(bool enabled); // the check boxes and the two buttons

    // Fills a free-text genre combo with the genres of the list, keeping its text.
    void setGenreItems(const QStringList& genres);
    // The V1 genre list: first item "no genre" with data 255, then the table with its codes.
    void setGenreTable(const QString& noGenre, const QStringList& names);

    // Applies the enabled rule to one box.
    static void ApplyEnabled(QWidget* box, bool enabled);

private:
    void checkToggled(int index, bool checked);

    TagSetPanelDef m_def;
    std::vector<QLineEdit*> m_boxes;
    std::vector<QCheckBox*> m_checks;
    std::vector<QLabel*> m_labels;
    QCheckBox* m_genreCheck = nullptr;
    QComboBox* m_genre = nullptr;
    QPushButton* m_all = nullptr;
    QPushButton* m_none = nullptr;
    QGridLayout* m_grid = nullptr;
};

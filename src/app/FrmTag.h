#pragma once
// FrmTag: the area of the tag list and the tag update, a page of the main window's tab
// strip TabInput. The tag list LbxTag on the left, the five field sets of SSTabFields on
// the right, under them the update options and the commands. The window reads its
// controls into plain values and leaves the work to the logic in src/tag.

#include "tag/modTagFilter.h"
#include "tag/modTagList.h"
#include "tag/modTagUpdate.h"

#include "app/AreaPage.h"

#include <array>
#include <functional>

class DataGrid;
class DataGridView;
class FrmTagSetPanel;
class Prompt;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QTextEdit;
class TagEngine;

class FrmTag : public AreaPage {
    Q_OBJECT
public:
    // The page of the main window: the data list LbxInput and the program's prompt.
    explicit FrmTag(QWidget* parent = nullptr);
    // `lbxInput` is the data list the rows come from and results go back to; `prompt`
    // null means the program's prompt.
    FrmTag(DataGrid* lbxInput, Prompt* prompt, QWidget* parent = nullptr);
    ~FrmTag() override;

    DataGrid& lbxTag();
    TagEngine& engine();

    // The road in: builds the list from the selected rows of the data list. `markFilter`
    // is txtTab1_FTag. Returns false when the command ended before loading (the old
    // list may still be shown when the user kept it).
    bool LoadTagList(const QString& typeText, const QString& markFilter = QString());
    // The hook of the data list: its selected rows of the type of its current row (or
    // of the first selected row), with its mark box; the tag page comes forward.
    bool LoadFromDataList();
    void ReadTagRow(int row);
    void SetTabsForType(const QString& typeText);

    // The boxes of all tabs as the logic wants them.
    TagBoxes ReadBoxes() const;
    UpdateSet ChosenSet() const;
    bool busy() const { return m_busy; }

    FrmTagSetPanel* panel(int tab) const { return m_panels[size_t(tab)]; }

    // Set when the filter has just been transferred: the data list should come forward.
    std::function<void()> showDataList;
    // Hands selected rows to the playlist (btnTab2_CopyToPlaylist).
    std::function<void()> copyToPlaylist;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void buildUi();
    QWidget* buildCommentArea();
    QWidget* buildFilterArea();
    QWidget* buildCommandArea();
    QWidget* buildListArea();
    void applyCaptions();
    void applyTypeCaptions();
    Prompt& prompt() const;
    void fillGenreLists();
    void connectCommands();
    void clearBoxes(bool v1v2Only);
    void showValues(const TagRowValues& v);
    void showComment(int item);
    TagBatch makeBatch();
    TagProgress progressPump();
    void afterBatch(bool ran);
    void setFilterMode(bool on);
    void saveOption(UpdateSet set);
    void showValueMenu(QLineEdit* box, const QStringList& values, const QPoint& at, QMenu* menu);

    // commands
    void cmdUpdateTag();
    void cmdDeleteTag();
    void cmdUpdateComment();
    void cmdDeleteComment(bool all);
    void cmdTagToTag();
    void cmdFilenameToTag();
    void cmdTagToFilename();
    void cmdTransferGenreV2();
    void cmdFilterOnOff();
    void cmdFilter();
    void cmdTransferToDatalist();
    void cmdV1V2(bool toV2);
    void cmdMark(const QString& which);

    DataGrid* m_input;
    Prompt* m_prompt;
    DataGrid* m_tag;
    TabsForType m_typeTabs; // what the last SetTabsForType gave
    DataGrid* m_genres;     // LbxGenre
    bool m_busy = false;
    bool m_filterOn = false;
    QString m_typeText;

    DataGridView* m_view = nullptr;
    QTabWidget* m_tabs = nullptr; // SSTabFields
    std::array<FrmTagSetPanel*, 5> m_panels{};
    // comment area
    QComboBox* m_lfdNr = nullptr;
    QLineEdit* m_language = nullptr;
    QLineEdit* m_description = nullptr;
    QTextEdit* m_comment = nullptr;
    QLabel* m_hasComment = nullptr;
    // filter
    std::array<QComboBox*, 15> m_filterCombos{};
    QComboBox* m_filterGenre = nullptr;
    QPushButton* m_filterOnOff = nullptr;
    QCheckBox* m_matchComplete = nullptr;
    QCheckBox* m_keepMark = nullptr;
    QPushButton* m_filterBtn = nullptr;
    QPushButton* m_transferToDatalist = nullptr;
    QPushButton* m_attachLink = nullptr;
    QPushButton* m_showLink = nullptr;
    // options and commands
    std::array<QRadioButton*, 5> m_options{};
    QCheckBox* m_noMsg = nullptr;
    QLineEdit* m_fTag = nullptr;
    QComboBox* m_tagToTag = nullptr;
    QCheckBox* m_tagToTagStrip = nullptr;
    QCheckBox* m_nameToTagWithTrack = nullptr;
    QCheckBox* m_tagToNameWithTrack = nullptr;
    QProgressBar* m_progress = nullptr;
    QMenu* m_mnuRateMood = nullptr;
    QMenu* m_mnuTextbox = nullptr;
    QList<QPushButton*> m_batchButtons;
};

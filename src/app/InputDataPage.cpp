#include "app/InputDataPage.h"

#include "app/DataGridView.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/modList.h"
#include "list/modListColumns.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QTabWidget>
#include <QTableView>

namespace {
// The sub-tab strips scroll sideways when the window is narrow, but always get their
// full height: the list above gives way instead.
class StripArea : public QScrollArea {
public:
    using QScrollArea::QScrollArea;
    QSize minimumSizeHint() const override {
        QSize s = QScrollArea::minimumSizeHint();
        if (const QWidget* w = widget()) {
            int h = w->sizeHint().height() + 2 * frameWidth();
            if (viewport()->width() < w->minimumSizeHint().width())
                h += horizontalScrollBar()->sizeHint().height();
            s.setHeight(std::max(s.height(), h));
        }
        return s;
    }
    QSize sizeHint() const override { return minimumSizeHint().expandedTo(QScrollArea::sizeHint()); }

protected:
    // A panel added or re-labelled changes the height the strips need: the page's
    // layout learns it (a scroll area does not pass that on by itself).
    bool eventFilter(QObject* o, QEvent* e) override {
        if (o == widget() && e->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(o, e);
    }
};

QSettings UserStore() {
    return QSettings(QStringLiteral("Quillotune"), QStringLiteral("Quillotune"));
}
} // namespace

InputDataPage::InputDataPage(QWidget* parent) : AreaPage(QStringLiteral("pagInput_Data"), parent, false) {
    titleLabel()->hide(); // the list wants the room; the tab says what this is
    layout()->setContentsMargins(6, 6, 6, 6);

    LbxInput = new DataGridView(&Grids::LbxInput(), this);
    LbxInput->setObjectName(QStringLiteral("LbxInput"));
    body()->addWidget(LbxInput, 1);

    // The sub-tab strips under the list; the commands of the data list fill them. A
    // strip without tabs stays hidden.
    auto* strips = new QHBoxLayout;
    strips->setSpacing(8);
    TabInput1_Sub1 = new QTabWidget(this);
    TabInput1_Sub1->setObjectName(QStringLiteral("TabInput1_Sub1"));
    TabInput1_Sub2 = new QTabWidget(this);
    TabInput1_Sub2->setObjectName(QStringLiteral("TabInput1_Sub2"));
    strips->addWidget(TabInput1_Sub1, 1);
    strips->addWidget(TabInput1_Sub2, 1);
    // The strips scroll when the window is narrower or lower than they need; the list
    // above keeps the rest of the room.
    auto* stripHost = new QWidget;
    stripHost->setObjectName(QStringLiteral("fraTab1_Strips"));
    strips->setContentsMargins(0, 0, 0, 0);
    stripHost->setLayout(strips);
    auto* stripArea = new StripArea(this);
    stripArea->setObjectName(QStringLiteral("scrTab1_Strips"));
    stripArea->setFrameShape(QFrame::NoFrame);
    stripArea->setWidgetResizable(true);
    stripArea->setWidget(stripHost);
    stripArea->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    body()->addWidget(stripArea);
    UpdateSubTabVisibility();

    // The row that stays under every sub-tab: the mark, the quiet switch, the sums and
    // the close button.
    auto* status = new QHBoxLayout;
    status->setContentsMargins(2, 0, 2, 0);
    status->setSpacing(8);
    auto* lblFTag = new QLabel(this);
    lblFTag->setObjectName(QStringLiteral("lblTab1_FTag"));
    txtTab1_FTag = new QLineEdit(this);
    txtTab1_FTag->setObjectName(QStringLiteral("txtTab1_FTag"));
    txtTab1_FTag->setMaximumWidth(180);
    txtTab1_FTag->setClearButtonEnabled(true);
    lblFTag->setBuddy(txtTab1_FTag);
    chbTab1_NoMsg = new QCheckBox(this);
    chbTab1_NoMsg->setObjectName(QStringLiteral("chbTab1_NoMsg"));
    chbTab1_TimeSizeData = new QCheckBox(this);
    chbTab1_TimeSizeData->setObjectName(QStringLiteral("chbTab1_TimeSizeData"));
    lblTab1_TimeSizeMarkedData = new QLabel(this);
    lblTab1_TimeSizeMarkedData->setObjectName(QStringLiteral("lblTab1_TimeSizeMarkedData"));
    lblTab1_TimeSizeMarkedData->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblTab1_TimeSizeMarkedData->setFrameShape(QFrame::StyledPanel);
    lblTab1_TimeSizeMarkedData->setMinimumWidth(260);
    btn2Tab1_ClosePrg = new QPushButton(this);
    btn2Tab1_ClosePrg->setObjectName(QStringLiteral("btn2Tab1_ClosePrg"));
    status->addWidget(lblFTag);
    status->addWidget(txtTab1_FTag);
    status->addSpacing(16);
    status->addWidget(chbTab1_NoMsg);
    status->addSpacing(16);
    status->addWidget(chbTab1_TimeSizeData);
    status->addWidget(lblTab1_TimeSizeMarkedData);
    status->addStretch(1);
    status->addWidget(btn2Tab1_ClosePrg);
    body()->addLayout(status);

    // The sums follow the selection and the mark box.
    SumTarget sums = DefaultSumTarget(QStringLiteral("Input"));
    sums.grid = &Grids::LbxInput();
    sums.markBox = [this] { return txtTab1_FTag->text(); };
    sums.setLabel = [this](const QString& text) { lblTab1_TimeSizeMarkedData->setText(text); };
    RegisterSumTarget(QStringLiteral("Input"), sums);
    connect(&Grids::LbxInput(), &DataGrid::selectionChanged, this, [this] {
        if (!State().SuppressEvents)
            ShowSums();
    });
    connect(txtTab1_FTag, &QLineEdit::textChanged, this, [this] {
        if (!State().SuppressEvents)
            ShowSums();
    });
    connect(chbTab1_NoMsg, &QCheckBox::toggled, this, [](bool on) {
        if (!State().SuppressEvents)
            SetSettingOn(Ini::NoMsg, Ini::Col1, on);
    });
    connect(chbTab1_TimeSizeData, &QCheckBox::toggled, this, [this](bool on) {
        lblTab1_TimeSizeMarkedData->setVisible(on);
        if (State().SuppressEvents)
            return;
        SetSettingOn(Ini::TimeSizeData, Ini::Col2, on);
        ShowSums();
    });
}

int InputDataPage::AddSubTab(QTabWidget* strip, QWidget* page, const QString& objectName, int index) {
    page->setObjectName(objectName);
    int pos = strip->count();
    if (index >= 0) {
        page->setProperty(kSubTabIndexProperty, index);
        pos = 0;
        while (pos < strip->count() && FixedTabIndex(strip, pos) < index)
            ++pos;
    }
    const int i = strip->insertTab(pos, page, QString());
    UpdateSubTabVisibility();
    return i;
}

bool InputDataPage::SelectSubTab(QTabWidget* strip, int index) {
    const int pos = TabPositionOf(strip, index);
    if (pos < 0)
        return false;
    strip->setCurrentIndex(pos);
    return true;
}

void InputDataPage::UpdateSubTabVisibility() {
    TabInput1_Sub1->setVisible(TabInput1_Sub1->count() > 0);
    TabInput1_Sub2->setVisible(TabInput1_Sub2->count() > 0);
}

void InputDataPage::DefineColumns() {
    DataGrid& g = Grids::LbxInput();
    DefineInputColumns(g);
    const QString widths = UserStore().value(QStringLiteral("LbxInput/ColWidths")).toString();
    if (!widths.isEmpty())
        LbxInput->SetColumnWidthsText(widths);
    LbxInput->SetMinWidthsFromCaptions(3);
}

void InputDataPage::SaveColumnWidths() const {
    QSettings s = UserStore();
    s.setValue(QStringLiteral("LbxInput/ColWidths"), LbxInput->ColumnWidthsText());
}

void InputDataPage::ApplySettings() {
    const bool quiet = State().SuppressEvents;
    State().SuppressEvents = true;
    chbTab1_NoMsg->setChecked(SettingOn(Ini::NoMsg, Ini::Col1));
    // The sums are shown unless switched off.
    const QString sums = Setting(Ini::TimeSizeData, Ini::Col2);
    chbTab1_TimeSizeData->setChecked(sums.isEmpty() || sums == u"1");
    lblTab1_TimeSizeMarkedData->setVisible(chbTab1_TimeSizeData->isChecked());
    State().SuppressEvents = quiet;
}

void InputDataPage::ShowSums() {
    if (!chbTab1_TimeSizeData->isChecked())
        return;
    if (txtTab1_FTag->text().isEmpty())
        ShowSelectionSum(QStringLiteral("Input"));
    else
        ShowMarkedSum(QStringLiteral("Input"));
}

#include "app/FrmPageMargins.h"

#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/Settings.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

QLineEdit* Field(QWidget* parent, const char* name) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(QLatin1String(name));
    e->setMaximumWidth(80);
    e->setAlignment(Qt::AlignRight);
    return e;
}

void AddRow(QGridLayout* grid, int row, const char* labelName, QLineEdit* field) {
    auto* label = new QLabel(grid->parentWidget());
    label->setObjectName(QLatin1String(labelName));
    label->setBuddy(field);
    grid->addWidget(label, row, 0);
    grid->addWidget(field, row, 1);
}

} // namespace

FrmPageMargins::FrmPageMargins(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FrmPageMargins"));
    auto* outer = new QVBoxLayout(this);

    auto* grpUnit = new QGroupBox(this);
    grpUnit->setObjectName(QStringLiteral("grpPrint_Unit"));
    auto* ul = new QHBoxLayout(grpUnit);
    optPrint_mm = new QRadioButton(grpUnit);
    optPrint_mm->setObjectName(QStringLiteral("optPrint_mm"));
    optPrint_Inch = new QRadioButton(grpUnit);
    optPrint_Inch->setObjectName(QStringLiteral("optPrint_Inch"));
    ul->addWidget(optPrint_mm);
    ul->addWidget(optPrint_Inch);
    ul->addStretch(1);
    outer->addWidget(grpUnit);

    auto* columns = new QHBoxLayout;
    outer->addLayout(columns);
    auto* grpMargins = new QGroupBox(this);
    grpMargins->setObjectName(QStringLiteral("grpPrint_Margins"));
    auto* mg = new QGridLayout(grpMargins);
    txtPrint_Left = Field(grpMargins, "txtPrint_Left");
    txtPrint_Right = Field(grpMargins, "txtPrint_Right");
    txtPrint_Top = Field(grpMargins, "txtPrint_Top");
    txtPrint_Bottom = Field(grpMargins, "txtPrint_Bottom");
    txtPrint_Header = Field(grpMargins, "txtPrint_Header");
    txtPrint_Footer = Field(grpMargins, "txtPrint_Footer");
    AddRow(mg, 0, "lblPrint_Left", txtPrint_Left);
    AddRow(mg, 1, "lblPrint_Right", txtPrint_Right);
    AddRow(mg, 2, "lblPrint_Top", txtPrint_Top);
    AddRow(mg, 3, "lblPrint_Bottom", txtPrint_Bottom);
    AddRow(mg, 4, "lblPrint_Header", txtPrint_Header);
    AddRow(mg, 5, "lblPrint_Footer", txtPrint_Footer);
    columns->addWidget(grpMargins);

    auto* grpPaper = new QGroupBox(this);
    grpPaper->setObjectName(QStringLiteral("grpPrint_Paper"));
    auto* pg = new QGridLayout(grpPaper);
    txtPrint_Height = Field(grpPaper, "txtPrint_Height");
    txtPrint_Width = Field(grpPaper, "txtPrint_Width");
    txtPrint_Fontsize = Field(grpPaper, "txtPrint_Fontsize");
    AddRow(pg, 0, "lblPrint_Height", txtPrint_Height);
    AddRow(pg, 1, "lblPrint_Width", txtPrint_Width);
    AddRow(pg, 2, "lblPrint_Fontsize", txtPrint_Fontsize);
    chbPrint_PageNo = new QCheckBox(grpPaper);
    chbPrint_PageNo->setObjectName(QStringLiteral("chbPrint_PageNo"));
    chbPrint_PathNo = new QCheckBox(grpPaper);
    chbPrint_PathNo->setObjectName(QStringLiteral("chbPrint_PathNo"));
    pg->addWidget(chbPrint_PageNo, 3, 0, 1, 2);
    pg->addWidget(chbPrint_PathNo, 4, 0, 1, 2);
    pg->setRowStretch(5, 1);
    columns->addWidget(grpPaper);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    auto* btnPrint_Get = new QPushButton(this);
    btnPrint_Get->setObjectName(QStringLiteral("btnPrint_Get"));
    btnPrint_Get->setDefault(true);
    auto* btnPrint_Cancel = new QPushButton(this);
    btnPrint_Cancel->setObjectName(QStringLiteral("btnPrint_Cancel"));
    buttons->addWidget(btnPrint_Get);
    buttons->addWidget(btnPrint_Cancel);
    outer->addLayout(buttons);

    ShowSetup(ReadPageSetup(Settings()));
    connect(optPrint_mm, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            ChangeUnit(false);
    });
    connect(optPrint_Inch, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            ChangeUnit(true);
    });
    connect(btnPrint_Get, &QPushButton::clicked, this, &FrmPageMargins::Store);
    connect(btnPrint_Cancel, &QPushButton::clicked, this, &QDialog::reject);
    SetCaptionsOf(this);
}

void FrmPageMargins::ShowSetup(const PageSetup& s) {
    m_inch = s.inch;
    const QSignalBlocker b1(optPrint_mm), b2(optPrint_Inch);
    optPrint_mm->setChecked(!s.inch);
    optPrint_Inch->setChecked(s.inch);
    txtPrint_Left->setText(FormatLength(s.left));
    txtPrint_Right->setText(FormatLength(s.right));
    txtPrint_Top->setText(FormatLength(s.top));
    txtPrint_Bottom->setText(FormatLength(s.bottom));
    txtPrint_Header->setText(FormatLength(s.header));
    txtPrint_Footer->setText(FormatLength(s.footer));
    txtPrint_Height->setText(FormatLength(s.height));
    txtPrint_Width->setText(FormatLength(s.width));
    txtPrint_Fontsize->setText(FormatLength(s.fontSize));
    chbPrint_PageNo->setChecked(s.noPageNo);
    chbPrint_PathNo->setChecked(s.noPath);
}

bool FrmPageMargins::ReadFields(PageSetup* s) const {
    s->inch = m_inch;
    const std::pair<QLineEdit*, double*> fields[] = {
        {txtPrint_Left, &s->left},     {txtPrint_Right, &s->right},   {txtPrint_Top, &s->top},
        {txtPrint_Bottom, &s->bottom}, {txtPrint_Header, &s->header}, {txtPrint_Footer, &s->footer},
        {txtPrint_Height, &s->height}, {txtPrint_Width, &s->width},   {txtPrint_Fontsize, &s->fontSize}};
    for (const auto& [edit, value] : fields)
        if (!ParseLength(edit->text(), value))
            return false;
    s->noPageNo = chbPrint_PageNo->isChecked();
    s->noPath = chbPrint_PathNo->isChecked();
    return true;
}

void FrmPageMargins::ChangeUnit(bool toInch) {
    if (toInch == m_inch)
        return;
    PageSetup s;
    if (!ReadFields(&s)) {
        // a field without a number can't be converted: the unit stays
        AppPrompt().Tell(Caption(CapPageSetupNotNumber), Prompt::Icon::Warning);
        const QSignalBlocker b1(optPrint_mm), b2(optPrint_Inch);
        optPrint_mm->setChecked(!m_inch);
        optPrint_Inch->setChecked(m_inch);
        return;
    }
    ShowSetup(ConvertPageSetup(s, toInch));
}

void FrmPageMargins::Store() {
    PageSetup s;
    if (!ReadFields(&s)) {
        AppPrompt().Tell(Caption(CapPageSetupNotNumber), Prompt::Icon::Warning);
        return;
    }
    WritePageSetup(Settings(), s);
    SaveSettings();
    accept();
}

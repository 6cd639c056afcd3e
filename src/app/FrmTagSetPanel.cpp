#include "app/FrmTagSetPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QVBoxLayout>

static QString Indexed(const QString& name, int i) {
    return name + QLatin1Char('(') + QString::number(i) + QLatin1Char(')');
}

FrmTagSetPanel::FrmTagSetPanel(const TagSetPanelDef& def, QWidget* parent) : QWidget(parent), m_def(def) {
    auto* outer = new QVBoxLayout(this);
    m_grid = new QGridLayout;
    outer->addLayout(m_grid);
    int row = 0;

    // genre
    m_genreCheck = new QCheckBox(this);
    m_genreCheck->setObjectName(def.genreCheck.isEmpty() ? Indexed(def.checkName, 0) : def.genreCheck);
    m_genre = new QComboBox(this);
    m_genre->setObjectName(def.genreName);
    m_genre->setEditable(!def.genreByData);
    m_genre->setMinimumContentsLength(20);
    // The genre check box carries its own text across the label column, so that the
    // field labels below start right beside their check boxes.
    m_grid->addWidget(m_genreCheck, row, 0, 1, 2);
    m_grid->addWidget(m_genre, row, 2);
    ++row;
    connect(m_genreCheck, &QCheckBox::toggled, this, [this](bool on) { ApplyEnabled(m_genre, on); });
    ApplyEnabled(m_genre, false);

    for (int k = 0; k < def.boxCount; ++k) {
        const int i = def.firstBox + k;
        auto* chk = new QCheckBox(this);
        chk->setObjectName(Indexed(def.checkName, i + def.checkOffset));
        auto* box = new QLineEdit(this);
        box->setObjectName(Indexed(def.textName, i));
        m_grid->addWidget(chk, row, 0);
        if (!def.labelName.isEmpty()) {
            auto* lbl = new QLabel(this);
            lbl->setObjectName(Indexed(def.labelName, i));
            m_grid->addWidget(lbl, row, 1);
            m_labels.push_back(lbl);
        }
        m_grid->addWidget(box, row, 2);
        ++row;
        m_boxes.push_back(box);
        m_checks.push_back(chk);
        connect(chk, &QCheckBox::toggled, this, [this, k](bool on) { checkToggled(k, on); });
        ApplyEnabled(box, false);
    }
    m_grid->setColumnStretch(2, 1);

    auto* buttons = new QHBoxLayout;
    m_all = new QPushButton(this);
    m_all->setObjectName(def.checkAllName);
    m_none = new QPushButton(this);
    m_none->setObjectName(def.checkNoneName);
    buttons->addWidget(m_all);
    buttons->addWidget(m_none);
    buttons->addStretch(1);
    outer->addLayout(buttons);
    outer->addStretch(1);
    connect(m_all, &QPushButton::clicked, this, [this] { setAllChecks(true); });
    connect(m_none, &QPushButton::clicked, this, [this] { setAllChecks(false); });
}

void FrmTagSetPanel::ApplyEnabled(QWidget* box, bool enabled) {
    box->setEnabled(enabled);
    // window colour when the field is written, button face when it is left alone
    const QPalette app = QGuiApplication::palette();
    QPalette pal = box->palette();
    pal.setColor(QPalette::All, QPalette::Base,
                 app.color(QPalette::Active, enabled ? QPalette::Base : QPalette::Button));
    box->setPalette(pal);
}

void FrmTagSetPanel::checkToggled(int k, bool checked) {
    ApplyEnabled(m_boxes[size_t(k)], checked);
}

QLineEdit* FrmTagSetPanel::box(int index) const {
    const int k = index - m_def.firstBox;
    return k >= 0 && k < int(m_boxes.size()) ? m_boxes[size_t(k)] : nullptr;
}

QCheckBox* FrmTagSetPanel::check(int index) const {
    const int k = index - m_def.firstBox;
    return k >= 0 && k < int(m_checks.size()) ? m_checks[size_t(k)] : nullptr;
}

QLabel* FrmTagSetPanel::label(int index) const {
    const int k = index - m_def.firstBox;
    return k >= 0 && k < int(m_labels.size()) ? m_labels[size_t(k)] : nullptr;
}

QString FrmTagSetPanel::text(int index) const {
    QLineEdit* b = box(index);
    return b ? b->text() : QString();
}

void FrmTagSetPanel::setText(int index, const QString& text) {
    if (QLineEdit* b = box(index))
        b->setText(text);
}

TagBox FrmTagSetPanel::boxValue(int index) const {
    QLineEdit* b = box(index);
    if (!b)
        return {};
    return {b->isEnabledTo(const_cast<FrmTagSetPanel*>(this)), b->text()};
}

TagBox FrmTagSetPanel::genreValue() const {
    return {m_genre->isEnabled(), m_genre->currentText()};
}

int FrmTagSetPanel::genreData() const {
    if (m_genre->currentIndex() < 0)
        return -1;
    bool ok = false;
    const int v = m_genre->currentData().toInt(&ok);
    return ok ? v : -1;
}

bool FrmTagSetPanel::genreEnabled() const {
    return m_genre->isEnabled();
}

void FrmTagSetPanel::clearBoxes() {
    for (QLineEdit* b : m_boxes)
        b->clear();
    if (m_def.genreByData)
        m_genre->setCurrentIndex(m_genre->count() > 0 ? 0 : -1);
    else
        m_genre->setEditText(QString());
}

void FrmTagSetPanel::setAllChecks(bool checked) {
    m_genreCheck->setChecked(checked);
    for (QCheckBox* c : m_checks)
        c->setChecked(checked);
}

void FrmTagSetPanel::setChecksEnabled(bool enabled) {
    m_genreCheck->setEnabled(enabled);
    for (QCheckBox* c : m_checks)
        c->setEnabled(enabled);
    m_all->setEnabled(enabled);
    m_none->setEnabled(enabled);
}

void FrmTagSetPanel::setGenreItems(const QStringList& genres) {
    const QString keep = m_genre->currentText();
    m_genre->clear();
    m_genre->addItems(genres);
    m_genre->setEditText(keep);
}

void FrmTagSetPanel::setGenreTable(const QString& noGenre, const QStringList& names) {
    m_genre->clear();
    m_genre->addItem(noGenre, 255);
    for (int i = 0; i < names.size(); ++i)
        m_genre->addItem(names[i], i);
    m_genre->setCurrentIndex(0);
}

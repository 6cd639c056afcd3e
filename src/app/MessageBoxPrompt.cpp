#include "app/MessageBoxPrompt.h"

#include "core/CaptionRows.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QSpacerItem>

namespace {
QMessageBox::Icon ToBoxIcon(Prompt::Icon icon) {
    switch (icon) {
    case Prompt::Icon::Information:
        return QMessageBox::Information;
    case Prompt::Icon::Warning:
        return QMessageBox::Warning;
    case Prompt::Icon::Critical:
        return QMessageBox::Critical;
    case Prompt::Icon::Question:
        return QMessageBox::Question;
    case Prompt::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QWidget* Parent(QWidget* given) {
    return given ? given : QApplication::activeWindow();
}

// The buttons speak the language of the program, not the one Qt was built with; a
// caption table without the rows keeps Qt's own texts.
void NameButton(QMessageBox& box, QMessageBox::StandardButton which, CaptionRow row) {
    const QString text = Caption(row);
    if (QAbstractButton* b = box.button(which); b && !text.isEmpty())
        b->setText(text);
}

// A short text makes a narrow box, and some window managers then cut the title to
// "Q…": every box is at least this wide.
constexpr int kMinBoxWidth = 320;

void KeepWide(QMessageBox& box) {
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(kMinBoxWidth, 0, QSizePolicy::Minimum, QSizePolicy::Expanding),
                      grid->rowCount(), 0, 1, grid->columnCount());
}

Prompt* g_override = nullptr;
} // namespace

void MessageBoxPrompt::Tell(const QString& text, Icon icon) {
    QMessageBox box(ToBoxIcon(icon), Title(), text, QMessageBox::Ok, Parent(m_parent));
    KeepWide(box);
    box.exec();
}

void MessageBoxPrompt::TellUntitled(const QString& text, Icon icon) {
    QMessageBox box(ToBoxIcon(icon), QString(), text, QMessageBox::Ok, Parent(m_parent));
    box.setObjectName(QStringLiteral("msgUntitled"));
    KeepWide(box);
    box.exec();
}

bool MessageBoxPrompt::AskYesNo(const QString& text, bool defaultYes, Icon icon) {
    QMessageBox box(ToBoxIcon(icon), Title(), text, QMessageBox::Yes | QMessageBox::No, Parent(m_parent));
    KeepWide(box);
    box.setDefaultButton(defaultYes ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    NameButton(box, QMessageBox::Yes, CapButtonYes);
    NameButton(box, QMessageBox::No, CapButtonNo);
    return box.exec() == QMessageBox::Yes;
}

bool MessageBoxPrompt::AskOkCancel(const QString& text, Icon icon) {
    QMessageBox box(ToBoxIcon(icon), Title(), text, QMessageBox::Ok | QMessageBox::Cancel, Parent(m_parent));
    KeepWide(box);
    box.setDefaultButton(QMessageBox::Ok);
    NameButton(box, QMessageBox::Cancel, CapButtonCancel);
    return box.exec() == QMessageBox::Ok;
}

std::optional<QString> MessageBoxPrompt::InputBox(const QString& text, const QString& initial) {
    return TitledInputBox(Title(), text, initial);
}

std::optional<QString> MessageBoxPrompt::TitledInputBox(const QString& title, const QString& text,
                                                        const QString& initial) {
    bool ok = false;
    const QString answer = QInputDialog::getText(Parent(m_parent), title.isEmpty() ? Title() : title, text,
                                                 QLineEdit::Normal, initial, &ok);
    if (!ok)
        return std::nullopt;
    return answer;
}

Prompt& AppPrompt() {
    static MessageBoxPrompt boxes;
    return g_override ? *g_override : boxes;
}

void SetAppPrompt(Prompt* prompt) {
    g_override = prompt;
}

#include "app/QuitKey.h"

#include "app/FrmInput.h"
#include "app/FrmPictures.h"

#include <QKeySequence>
#include <QShortcut>
#include <QTabWidget>

QShortcut* InstallQuitKey(FrmInput* window) {
    auto* quit = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), window);
    quit->setObjectName(QStringLiteral("scQuit"));
    quit->setContext(Qt::WindowShortcut);
    QObject::connect(quit, &QShortcut::activated, window, &FrmInput::ClosePrg);
    // The pictures area keeps the key for its own command: one shortcut of the window
    // on the same key would make both of them ambiguous, and neither would run.
    auto follow = [window, quit] {
        quit->setEnabled(window->TabInput->currentWidget() != window->frmPictures);
    };
    QObject::connect(window->TabInput, &QTabWidget::currentChanged, quit, follow);
    follow();
    return quit;
}

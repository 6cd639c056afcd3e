#pragma once
// The synchronising editor in the running main window, with the scripted media device and
// a scratch folder; shared by the tests of its menus and keys.

#include "GuiProgram.h"
#include "MenuTestUtil.h"
#include "TagTestUtil.h"
#include "app/DataGridView.h"
#include "app/FrmInput.h"
#include "app/FrmSText.h"
#include "app/FrmSongtext.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "player/FakeMediaDevice.h"
#include "player/modPlayer.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"
#include "text/modSText.h"
#include "text/modSTextFind.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

struct STextFixture {
    std::unique_ptr<QTemporaryDir> tmp; // a fresh folder for each start
    std::unique_ptr<GuiProgram> prg;
    FakeMediaDevice fake;
    QString nextFile; // what the next open or folder dialogue answers

    bool Start() {
        tmp = std::make_unique<QTemporaryDir>();
        fake.log.clear();
        fake.length = -1;
        SetMedia(&fake);
        prg = std::make_unique<GuiProgram>();
        if (!prg->Start())
            return false;
        prg->window->resize(1280, 800);
        prg->window->show();
        prg->window->TabInput->setCurrentWidget(&S());
        S().chooseOpenFile = [this](const QString&, const QString&, const QString&) { return nextFile; };
        S().chooseFolder = [this](const QString&, const QString&) { return nextFile; };
        return QTest::qWaitForWindowExposed(prg->window.get());
    }
    void Stop() {
        fake.Close();
        prg.reset();
        SetMedia(nullptr);
    }

    QTemporaryDir& Dir() { return *tmp; }
    FrmSText& S() { return *prg->window->frmSText; }
    FrmSongtext& W() { return *prg->window->frmSongtext; }
    DataGrid& L() { return Grids::LbxSText(); }
    DataGrid& Songs() { return *S().LbxSongWithLrc->grid(); }
    DataGrid& Files() { return *S().LbxTxtLrc->grid(); }
    QTabWidget* Sub() { return S().TabSText_Sub; }

    QString Write(const QString& name, const QByteArray& bytes) {
        const QString path = Dir().filePath(name);
        tagtest::WriteAll(path, bytes);
        return path;
    }
    // An MP3 whose tag carries `lrc` (none when empty).
    QString Song(const QString& name, const QString& lrc) {
        const QString song = tagtest::CopyFixture(QStringLiteral("tone.mp3"), Dir().path(), name);
        if (!lrc.isEmpty()) {
            TagEngine e;
            e.OpenFile(song);
            SetLrcFrame(e, lrc);
            e.SaveV2(song);
        }
        return song;
    }
    void Click(QAbstractButton* b) {
        if (qobject_cast<QCheckBox*>(b))
            QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(6, b->height() / 2));
        else
            QTest::mouseClick(b, Qt::LeftButton);
    }
    void Click(const char* name) { Click(S().findChild<QAbstractButton*>(QLatin1String(name))); }
    // Opens a text file with btnSText_OpenTxtLrC.
    void Open(const QString& path) {
        nextFile = path;
        Click("btnSText_OpenTxtLrC");
    }
    QRect CellRect(QTableView* t, int row, int col) {
        t->scrollTo(t->model()->index(row - 1, col - 1));
        return t->visualRect(t->model()->index(row - 1, col - 1));
    }
    void ClickCell(int row, int col) {
        QTest::mouseClick(S().LbxSText->table()->viewport(), Qt::LeftButton, {},
                          CellRect(S().LbxSText->table(), row, col).center());
    }
    // The search of the file list (all .txt and .lrc files of the scratch folder).
    void FindFiles() {
        Sub()->setCurrentIndex(2);
        Click("optSText_TxtLrc");
        Sub()->setCurrentIndex(1);
        nextFile = Dir().path();
        Click("btnSText_FindTxtLrc");
    }
    void FindSongs() {
        Sub()->setCurrentIndex(0);
        nextFile = Dir().path();
        Click("btnSText_FindSongWithLrc");
    }
};

// The press of the right button on a row of a list as the window system reports it.
inline void ContextClick(QTableView* table, int row) {
    const QPoint at(table->columnViewportPosition(0) + 5, table->rowViewportPosition(row - 1) + 3);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, table->viewport()->mapToGlobal(at));
    QApplication::sendEvent(table->viewport(), &event);
}

inline QAction* MenuEntry(QMenu* menu, const QString& key) {
    return menu->findChild<QAction*>(key);
}

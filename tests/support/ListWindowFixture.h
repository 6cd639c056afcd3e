#pragma once
// A started main window whose data list holds a few known rows, for the window tests
// of the list commands. Controls are reached by objectName.

#include "GuiProgram.h"
#include "InputGridFixture.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "list/InputColumns.h"

#include <QWidget>
#include <QtTest>

template <typename T> T* Control(QWidget* root, const QString& name) {
    T* c = root->findChild<T*>(name);
    if (!c)
        qWarning("no control %s", qPrintable(name));
    return c;
}

// Six rows: two doubles by name (different case), types MP3, FLAC, OGG; ratings and
// moods; one row with LRC, one with an embedded picture.
inline void FillSampleRows() {
    DataGrid& g = Grids::LbxInput();
    g.LockUpdate(true);
    g.Clear();
    using C = std::pair<int, QString>;
    fixture::AddInputRow(g,
                         {C{InCol::FileName, "Abba - Waterloo.mp3"}, C{InCol::Artist, "Abba"},
                          C{InCol::Title, "Waterloo"}, C{InCol::Type, "MP3"}, C{InCol::Path, "/m/a"},
                          C{InCol::DurationS, "180"}, C{InCol::SizeByte, "1048576"}, C{InCol::Rating, "***"},
                          C{InCol::Mood, "happy"}, C{InCol::TagAnzLyrics, "1 [Lrc]"}});
    fixture::AddInputRow(g, {C{InCol::FileName, "abba - waterloo.MP3"}, C{InCol::Artist, "Abba"},
                             C{InCol::Title, "Waterloo"}, C{InCol::Type, "MP3"}, C{InCol::Path, "/m/b"},
                             C{InCol::DurationS, "181"}, C{InCol::SizeByte, "2097152"}, C{InCol::Rating, "*"},
                             C{InCol::Mood, "happy"}});
    fixture::AddInputRow(g, {C{InCol::FileName, "Beatles - Help.flac"}, C{InCol::Artist, "Beatles"},
                             C{InCol::Title, "Help"}, C{InCol::Type, "FLAC"}, C{InCol::Path, "/m/c"},
                             C{InCol::DurationS, "140"}, C{InCol::SizeByte, "3145728"},
                             C{InCol::Rating, "***"}, C{InCol::Mood, "sad"}, C{InCol::TagAnzPic, "2"}});
    fixture::AddInputRow(g, {C{InCol::FileName, "Cream - Crossroads.ogg"}, C{InCol::Artist, "Cream"},
                             C{InCol::Title, "Crossroads"}, C{InCol::Type, "OGG"}, C{InCol::Path, "/m/c"},
                             C{InCol::DurationS, "250"}, C{InCol::SizeByte, "4194304"},
                             C{InCol::TagComment, "live at the Help concert."}});
    fixture::AddInputRow(g, {C{InCol::FileName, "Doors - Helpless.mp3"}, C{InCol::Artist, "Doors"},
                             C{InCol::Title, "Helpless"}, C{InCol::Type, "MP3"}, C{InCol::Path, "/m/d"},
                             C{InCol::DurationS, "200"}, C{InCol::SizeByte, "1048576"}});
    fixture::AddInputRow(g, {C{InCol::FileName, "Eagles - Desperado.mp3"}, C{InCol::Artist, "Eagles"},
                             C{InCol::Title, "Desperado"}, C{InCol::Type, "MP3"}, C{InCol::Path, "/m/e"},
                             C{InCol::DurationS, "210"}, C{InCol::SizeByte, "1048576"}});
    g.LockUpdate(false);
    g.Refresh();
}

// Rows of the data list whose mark column equals `mark`.
inline int RowsWithMark(const QString& mark) {
    const DataGrid& g = Grids::LbxInput();
    int n = 0;
    for (int r = 1; r <= g.Rows(); ++r)
        n += g.CellText(r, InCol::FTag) == mark;
    return n;
}

// The row of a file name, compared with regard to case; 0 when none.
inline int RowOfFile(const QString& name) {
    const DataGrid& g = Grids::LbxInput();
    for (int r = 1; r <= g.Rows(); ++r)
        if (g.CellText(r, InCol::FileName) == name)
            return r;
    return 0;
}

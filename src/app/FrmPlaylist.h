#pragma once
// FrmPlaylist: the area of the playlist editor, a page of the main window's tab strip TabInput.

#include "app/AreaPage.h"

class FrmPlaylist : public AreaPage {
    Q_OBJECT
public:
    explicit FrmPlaylist(QWidget* parent = nullptr);
};

#pragma once
// FrmPictures: the area of pictures beside and inside the songs, a page of the main window's tab strip
// TabInput.

#include "app/AreaPage.h"

class FrmPictures : public AreaPage {
    Q_OBJECT
public:
    explicit FrmPictures(QWidget* parent = nullptr);
};

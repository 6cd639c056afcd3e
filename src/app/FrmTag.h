#pragma once
// FrmTag: the area of the tag list and the tag update, a page of the main window's tab strip TabInput.

#include "app/AreaPage.h"

class FrmTag : public AreaPage {
    Q_OBJECT
public:
    explicit FrmTag(QWidget* parent = nullptr);
};

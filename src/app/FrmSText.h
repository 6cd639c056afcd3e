#pragma once
// FrmSText: the area of the synchronising editor of time-stamped text, a page of the main window's tab strip
// TabInput.

#include "app/AreaPage.h"

class FrmSText : public AreaPage {
    Q_OBJECT
public:
    explicit FrmSText(QWidget* parent = nullptr);
};

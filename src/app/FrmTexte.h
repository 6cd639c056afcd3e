#pragma once
// FrmTexte: the area of song texts and lyrics, a page of the main window's tab strip TabInput.

#include "app/AreaPage.h"

class FrmTexte : public AreaPage {
    Q_OBJECT
public:
    explicit FrmTexte(QWidget* parent = nullptr);
};

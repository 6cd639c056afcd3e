#include "app/FrmPictures.h"

FrmPictures::FrmPictures(QWidget* parent) : AreaPage(QStringLiteral("FrmPictures"), parent) {}

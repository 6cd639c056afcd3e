#include "app/FrmSText.h"

FrmSText::FrmSText(QWidget* parent) : AreaPage(QStringLiteral("FrmSText"), parent) {}

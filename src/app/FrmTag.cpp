#include "app/FrmTag.h"

FrmTag::FrmTag(QWidget* parent) : AreaPage(QStringLiteral("FrmTag"), parent) {}

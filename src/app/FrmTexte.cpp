#include "app/FrmTexte.h"

FrmTexte::FrmTexte(QWidget* parent) : AreaPage(QStringLiteral("FrmTexte"), parent) {}

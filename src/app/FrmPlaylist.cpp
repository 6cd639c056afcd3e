#include "app/FrmPlaylist.h"

FrmPlaylist::FrmPlaylist(QWidget* parent) : AreaPage(QStringLiteral("FrmPlaylist"), parent) {}

#pragma once
// FrmPageMargins: the page setup of printing (settings rows 1 and 10-20). The unit
// buttons convert the values shown; btnPrint_Get stores them and closes, a field that
// holds no number is refused and the window stays open.

#include "output/modPrint.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QRadioButton;

class FrmPageMargins : public QDialog {
    Q_OBJECT
public:
    explicit FrmPageMargins(QWidget* parent = nullptr);

private:
    void ShowSetup(const PageSetup& setup);
    // The values of the fields; false when one of them holds no number.
    bool ReadFields(PageSetup* setup) const;
    void ChangeUnit(bool toInch);
    void Store();

    QLineEdit *txtPrint_Left, *txtPrint_Right, *txtPrint_Top, *txtPrint_Bottom;
    QLineEdit *txtPrint_Header, *txtPrint_Footer, *txtPrint_Height, *txtPrint_Width, *txtPrint_Fontsize;
    QRadioButton *optPrint_mm, *optPrint_Inch;
    QCheckBox *chbPrint_PageNo, *chbPrint_PathNo;
    bool m_inch = false;
};

#pragma once
// The PrintDevice of the window program: a QPrinter painted with a QPainter. Lengths
// arrive in millimetres or inches and are turned into the printer's dots.

#include "output/PrintDevice.h"

#include <QFont>
#include <QPainter>

class QPrinter;

class QtPrintDevice : public PrintDevice {
public:
    explicit QtPrintDevice(QPrinter& printer) : m_printer(printer) {}
    ~QtPrintDevice() override;

    bool Begin(double pageWidth, double pageHeight, bool inch) override;
    void SetFont(const QString& family, double pointSize) override;
    double TextWidth(const QString& text) override;
    double TextHeight(const QString& text) override;
    void PrintAt(double x, double y, const QString& text) override;
    bool NewPage() override;
    bool EndDoc() override;
    QString ErrorText() const override { return m_error; }

private:
    double Dots(double length) const { return length * m_dotsPerUnit; }

    QPrinter& m_printer;
    QPainter m_painter;
    QFont m_font;
    double m_dotsPerUnit = 1;
    QString m_error;
};

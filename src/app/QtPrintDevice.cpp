#include "app/QtPrintDevice.h"

#include "output/modPrint.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>

QtPrintDevice::~QtPrintDevice() {
    if (m_painter.isActive())
        m_painter.end();
}

bool QtPrintDevice::Begin(double pageWidth, double pageHeight, bool inch) {
    const QPageSize size(QSizeF(pageWidth, pageHeight), inch ? QPageSize::Inch : QPageSize::Millimeter);
    m_printer.setPageLayout(QPageLayout(size, QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    m_printer.setFullPage(true);
    if (!m_painter.begin(&m_printer)) {
        // QPrinter keeps no text of its own; a file target can tell what went wrong
        if (m_printer.outputFormat() == QPrinter::PdfFormat && !m_printer.outputFileName().isEmpty()) {
            QFile probe(m_printer.outputFileName());
            if (!probe.open(QIODevice::WriteOnly | QIODevice::Append))
                m_error = probe.errorString();
        }
        if (m_error.isEmpty())
            m_error = m_printer.printerName();
        return false;
    }
    m_dotsPerUnit = m_printer.resolution() / (inch ? 1.0 : kMmPerInch);
    return true;
}

void QtPrintDevice::SetFont(const QString& family, double pointSize) {
    m_font = QFont(family);
    m_font.setPointSizeF(pointSize);
    m_painter.setFont(m_font);
}

double QtPrintDevice::TextWidth(const QString& text) {
    return QFontMetricsF(m_font, &m_printer).horizontalAdvance(text) / m_dotsPerUnit;
}

double QtPrintDevice::TextHeight(const QString& text) {
    Q_UNUSED(text); // a line's height, as for any one-line text
    return QFontMetricsF(m_font, &m_printer).height() / m_dotsPerUnit;
}

void QtPrintDevice::PrintAt(double x, double y, const QString& text) {
    const double ascent = QFontMetricsF(m_font, &m_printer).ascent();
    m_painter.drawText(QPointF(Dots(x), Dots(y) + ascent), text);
}

bool QtPrintDevice::NewPage() {
    if (m_printer.newPage())
        return true;
    m_error = m_printer.printerName();
    return false;
}

bool QtPrintDevice::EndDoc() {
    if (!m_painter.isActive() || m_painter.end())
        return true;
    m_error = m_printer.printerName();
    return false;
}

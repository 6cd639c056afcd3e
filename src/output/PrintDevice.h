#pragma once
// PrintDevice: what printing needs of a printer. Lengths are in the unit given to
// Begin (millimetres or inches); y is the top of a line. The window program puts a
// QPrinter behind it, the tests a recorder.

#include <QString>

class PrintDevice {
public:
    virtual ~PrintDevice() = default;
    // Page size and scale unit; false when the printer can't start (ErrorText says why).
    virtual bool Begin(double pageWidth, double pageHeight, bool inch) = 0;
    virtual void SetFont(const QString& family, double pointSize) = 0;
    virtual double TextWidth(const QString& text) = 0;
    virtual double TextHeight(const QString& text) = 0;
    virtual void PrintAt(double x, double y, const QString& text) = 0;
    virtual bool NewPage() = 0;
    virtual bool EndDoc() = 0;
    virtual QString ErrorText() const = 0;
};

#include "app/PrintUi.h"

#include "app/MessageBoxPrompt.h"
#include "app/QtPrintDevice.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/Settings.h"

#include <QPrintPreviewDialog>
#include <QPrinter>

namespace {

QString& PdfTarget() {
    static QString path;
    return path;
}

void PreparePrinter(QPrinter& printer) {
    if (PdfTarget().isEmpty())
        return;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(PdfTarget());
}

bool PrintOnto(Prompt& prompt, QPrinter& printer, const QString& path, const QString& text, bool tellDone) {
    QtPrintDevice device(printer);
    QString error;
    if (!PrintText(device, ReadPageSetup(Settings()), path, Caption(CapPage), text, &error)) {
        prompt.Tell(Caption(CapPrintFailed) + error, Prompt::Icon::Critical);
        return false;
    }
    if (tellDone)
        prompt.Tell(Caption(CapPrintDone), Prompt::Icon::Information);
    return true;
}

} // namespace

void SetPrintToPdf(const QString& pdfPath) {
    PdfTarget() = pdfPath;
}

bool PrintTextCommand(Prompt& prompt, const QString& path, const QString& text) {
    QPrinter printer(QPrinter::HighResolution);
    PreparePrinter(printer);
    return PrintOnto(prompt, printer, path, text, true);
}

void PrintGridCommand(QWidget* parent, Prompt& prompt, const DataGrid& grid, PrintRowChoice choice,
                      const QString& mark, const QString& title) {
    const QString text = GridRowsText(grid, PrintRows(grid, choice, mark));
    QPrinter printer(QPrinter::HighResolution);
    if (!PdfTarget().isEmpty()) {
        PreparePrinter(printer);
        PrintOnto(prompt, printer, title, text, false);
        return;
    }
    QPrintPreviewDialog preview(&printer, parent);
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&](QPrinter* p) { PrintOnto(prompt, *p, title, text, false); });
    preview.exec();
}

bool PrintMenuKey(QWidget* parent, const QString& key, const DataGrid& grid, const QString& mark) {
    PrintRowChoice choice;
    if (key == QLatin1String("PrintAll"))
        choice = PrintRowChoice::All;
    else if (key == QLatin1String("PrintHighlighted"))
        choice = PrintRowChoice::Highlighted;
    else if (key == QLatin1String("PrintFTag"))
        choice = PrintRowChoice::Marked;
    else
        return false;
    PrintGridCommand(parent, AppPrompt(), grid, choice, mark, grid.Tag);
    return true;
}

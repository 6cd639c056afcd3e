#include "app/ExportDialog.h"

#include "output/modExport.h"

#include <QFileDialog>
#include <memory>

QFileDialog* MakeExportDialog(QWidget* parent, const QString& startFolder) {
    auto* dialog = new QFileDialog(parent, QString(), startFolder);
    dialog->setObjectName(QStringLiteral("dlgExport"));
    // The dialogue of Qt itself everywhere: the ending must follow the filter.
    dialog->setOption(QFileDialog::DontUseNativeDialog, true);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    const QStringList filters = ExportFilters();
    dialog->setNameFilters(filters);
    dialog->setDefaultSuffix(ExportDefaultSuffix());
    for (const QString& f : filters)
        if (ExportSuffixOfFilter(f) == ExportDefaultSuffix())
            dialog->selectNameFilter(f);
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString& filter) {
        const QString suffix = ExportSuffixOfFilter(filter);
        dialog->setDefaultSuffix(suffix.isEmpty() ? ExportDefaultSuffix() : suffix);
    });
    return dialog;
}

QString RunExportDialog(QWidget* parent, const QString& startFolder) {
    std::unique_ptr<QFileDialog> dialog(MakeExportDialog(parent, startFolder));
    if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty())
        return QString();
    return dialog->selectedFiles().constFirst();
}

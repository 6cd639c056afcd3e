#pragma once
// A started main window in a program folder of the test's own, with scripted answers
// for every message box.

#include "ProgramFolder.h"
#include "app/FrmInput.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/AppState.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"

#include <QStandardPaths>
#include <memory>

struct GuiProgram {
    ProgramFolder folder;
    ScriptedPrompt prompt;
    std::unique_ptr<FrmInput> window;

    static QMap<int, QPair<QString, QString>> Captions() {
        auto c = ProgramFolder::StandardCaptions();
        c[2] = {QStringLiteral("Markierung"), QStringLiteral("Mark")};
        c[3] = {QStringLiteral("Dateiname"), QStringLiteral("File name")};
        c[8] = {QStringLiteral("Sek."), QStringLiteral("Sec.")};
        c[81] = {QStringLiteral("Änderungen speichern?"), QStringLiteral("Save the changes?")};
        c[82] = {QStringLiteral("Gespeichert."), QStringLiteral("Saved.")};
        c[1167] = {QStringLiteral("Übersetzung löschen?"), QStringLiteral("Erase the translation?")};
        c[1169] = {QStringLiteral("Übersetzung gelöscht."), QStringLiteral("Translation erased.")};
        return c;
    }

    // Returns false when the start failed.
    bool Start(const QMap<QPair<int, int>, QString>& ini = {}) {
        QStandardPaths::setTestModeEnabled(true);
        State() = AppState();
        Grids::LbxSText().Tag.clear();
        Grids::LbxPic_Extern().Tag.clear();
        Grids::LbxInput().Clear();
        QDir(folder.path()).mkpath(QStringLiteral("temp"));
        QDir(folder.path()).mkpath(QStringLiteral("language"));
        if (!folder.WriteIni(ini) || !folder.WriteCaptions(Captions(), QStringLiteral("Caption.qlt"), true))
            return false;
        LoadUiCaptionTables();
        SetAppPrompt(&prompt);
        window = std::make_unique<FrmInput>();
        return window->FormLoad(prompt) == StartCheck::Ok;
    }

    ~GuiProgram() {
        window.reset();
        SetAppPrompt(nullptr);
        State() = AppState();
    }
};

#pragma once
// A started main window in a program folder of the test's own, with scripted answers
// for every message box.

#include "ProgramFolder.h"
#include "TestPaths.h"
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

    // Returns false when the start failed.
    bool Start(const QMap<QPair<int, int>, QString>& ini = {}) {
        QStandardPaths::setTestModeEnabled(true);
        State() = AppState();
        Grids::LbxSText().Tag.clear();
        Grids::LbxPic_Extern().Tag.clear();
        Grids::LbxInput().Clear();
        Grids::LbxRef().Clear();
        Grids::LbxRef().Tag.clear();
        QDir(folder.path()).mkpath(QStringLiteral("temp"));
        QDir(folder.path()).mkpath(QStringLiteral("language"));
        // The texts the program ships with, built beside the program.
        if (!folder.WriteIni(ini) || !QFile::copy(ProgramDir() + QStringLiteral("/Caption.qlt"),
                                                  folder.file(QStringLiteral("Caption.qlt"))))
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

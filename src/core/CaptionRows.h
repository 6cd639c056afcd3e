#pragma once
// Caption rows of the messages, by meaning. Sorted by row number.

constexpr int CapQuitProgram = 60;            // is the program to be closed?
constexpr int CapSaveChangesAsk = 81;         // unsaved changes: save them?
constexpr int CapSaved = 82;                  // saved
constexpr int CapListEmpty = 96;              // the list is empty
constexpr int CapNoRowSelected = 102;         // no row is selected
constexpr int CapQuitAnyway = 1032;           // close anyway?
constexpr int CapLanguageExportTitle = 1071;  // file picker of the language export
constexpr int CapEraseTranslationAsk = 1167;  // erase the translation?
constexpr int CapEraseTranslationDone = 1169; // translation erased
constexpr int CapLanguageImportTitle = 1236;  // file picker of the language import
constexpr int CapSTextUnsaved = 1350;         // the time-stamped text is not saved
constexpr int CapSumsWorking = 1372;          // sums are being worked out
constexpr int CapPicLinksUnsaved = 1384;      // picture links are not saved

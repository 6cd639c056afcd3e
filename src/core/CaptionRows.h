#pragma once
// Caption rows of messages and texts that the code shows, named by meaning. The text of
// a row comes from Caption(row) (core/Captions.h). Keep the list sorted by row number.

#include "core/Captions.h"

constexpr CaptionRow CapSaved = 82;                // the choice has been saved
constexpr CaptionRow CapRemoveAllMarksAsk = 95;    // remove the marks of the selected rows?
constexpr CaptionRow CapNoEntries = 96;            // the list holds no (matching) entries
constexpr CaptionRow CapNoRowsSelected = 102;      // no rows are selected
constexpr CaptionRow CapRemoveMarkAsk1 = 147;      // remove the mark ... (the mark follows)
constexpr CaptionRow CapRemoveMarkAsk2 = 149;      // ... from the selected rows?
constexpr CaptionRow CapFindDoubleAsk1 = 152;      // first line of the doubles question
constexpr CaptionRow CapFindDoubleAsk2 = 153;      // all marks will be cleared: go on?
constexpr CaptionRow CapFindTextMissing = 161;     // enter a text to find
constexpr CaptionRow CapDoubleGroups = 164;        // number of double groups (the count follows)
constexpr CaptionRow CapCountEntries = 200;        // number of entries (the count follows)
constexpr CaptionRow CapFindFooter = 281;          // footer while finding (the text follows)
constexpr CaptionRow CapFilterNothingChosen = 628; // choose a value, rating or mood first
constexpr CaptionRow CapPatternDefaultName = 781;  // caption of an unnamed column pattern
constexpr CaptionRow CapPatternNoneChosen = 782;   // choose a pattern slot first
constexpr CaptionRow CapPatternNameMissing = 1282; // enter a name for the pattern
constexpr CaptionRow CapNoDoubleGroups = 1300;     // the list holds no double groups at its head
constexpr CaptionRow CapFindHint = 1341;           // hint text of the empty find box
constexpr CaptionRow CapSumsInProgress = 1372;     // footer while the selection sums are worked out

// Rows still to be assigned (listed in resources/pending/find.tsv under the given name);
// until then they read as empty text.
constexpr CaptionRow CapPatternDeleteAsk = 0; // msgShowCol_DeletePatternAsk: delete this column pattern?

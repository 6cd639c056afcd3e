#pragma once
// The map from a control's objectName to the caption row of its text, tool tip, window
// title, tab title or list item (resources/control_captions.tsv, one entry a line:
// objectName<TAB>row<TAB>kind, kind = text | tooltip | title | tab:N | item:N). The
// window program registers the table at start; logic that names a text by its control
// (a message of a window, say) looks it up here.

#include <QString>
#include <vector>

struct ControlCaption {
    QString objectName; // "btnTab1_Sign(0)" for an element of a control array
    int row = 0;
    QString kind;   // "text", "tooltip", "title", "tab", "item"
    int index = -1; // N of tab:N and item:N
};

// Parses the text of the table; malformed lines and comments ("#") are skipped.
std::vector<ControlCaption> ParseControlCaptions(const QString& tsv);

void SetControlCaptions(std::vector<ControlCaption> entries);
const std::vector<ControlCaption>& ControlCaptions();

// The caption of the first entry of `objectName` with that kind; empty when none.
QString NamedCaption(const QString& objectName, const QString& kind = QStringLiteral("text"));

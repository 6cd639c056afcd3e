#pragma once
// Puts the captions on the controls of all windows. Which control shows which caption
// row stands in resources/control_captions.tsv (embedded), by objectName and kind:
// text, tooltip (only with settings row 49 = "1"), title, tab:N, item:N.
// Controls whose rows are not assigned yet take their German or English text from
// resources/pending/*.tsv (objectName, kind, German, English), embedded as
// :/captions/pending_*.tsv.

#include <QString>

class QTabWidget;
class QWidget;

// Reads the embedded tables; called once at start (and by window tests).
void LoadUiCaptionTables();

// The windows that SetCaptions walks, in the order of their registration.
void RegisterCaptionRoot(QWidget* root);
void UnregisterCaptionRoot(QWidget* root);

// Walks every registered window and all its controls. Does nothing while
// SuppressEvents is set.
void SetCaptions();
// The same for one window (used when a window is created after the start).
void SetCaptionsOf(QWidget* root);

// Tabs of a strip whose pages carry this property (an int) are addressed by it, not by
// their position: a strip may lack some of its tabs, and the others keep their numbers.
inline constexpr char kSubTabIndexProperty[] = "subTabIndex";
// A page without the property keeps its position as its index.
int FixedTabIndex(const QTabWidget* strip, int position);
// Position of the tab with fixed index `index` in `strip`, or -1.
int TabPositionOf(const QTabWidget* strip, int index);

// The text of a control by its name and kind, from the caption table or, for rows not
// assigned yet, from the pending texts. Messages of a window use it too.
QString UiText(const QString& objectName, const QString& kind = QStringLiteral("text"));

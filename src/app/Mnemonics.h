#pragma once
// The keyboard side of every window: Alt keys (mnemonics) and the order of the Tab key.
//
// What a "page" is. A page is what the user sees at one time in one window: the controls
// of the window that lie on no tab page, together with the shown page of every tab strip
// (and of every other stack of pages) in it, page within page. Pages of one strip never
// show together, so they may use the same letters. Strips that stand side by side (the
// two strips under the data list) show one page each at the same time, so the pages of
// the second strip keep clear of the letters of all pages of the first. No page uses a
// letter of the controls around its strip. A dialogue is a window of its own and so has
// pages of its own. Hidden controls are counted all the same: what a command shows or
// hides while the page stays must not bring two equal keys together.
//
// Both routines run whenever the captions are put on a window (start, language switch,
// a window made later), through the caption walk.

#include <QList>
#include <QString>

class QWidget;

// Gives every button, check box, option and labelled field (a label with a buddy) of
// the window of `w` an Alt key that is unique on each of its pages. A "&" that the
// caption already carries stays when its letter is free; else a free letter of the text
// takes it: word starts (and digits that begin a word) first, and among equals a key that
// other pages use already, so that crowded pages side by side run short less often. The
// visible text does not change otherwise; a text without a free letter keeps no key.
// Controls on more pages come first, then buttons, then switches, then labels. Labels of input fields that
// stand right before their field in the layout and end with ":" get that field as their buddy.
void AssignMnemonics(QWidget* w);

// Orders the Tab chain of the window of `w` in reading order: the layouts from top to
// bottom and from left to right, every group to its end before the next one, a tab
// strip before its pages. Lists and text boxes give the Tab key back to the chain.
void OrderTabChain(QWidget* w);

// Every widget of the window `window` in reading order (containers before their
// contents); the order of OrderTabChain.
QList<QWidget*> ReadingOrder(QWidget* window);

// The text as it is shown: without the mnemonic's "&", a doubled "&&" as one.
QString WithoutMnemonic(const QString& text);

// The letter (upper case) of the mnemonic in `text`, or a null character.
QChar MnemonicOf(const QString& text);

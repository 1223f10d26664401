#pragma once

#include "tests/support/wizarddriver.h"

// Goes to the widget with the focus, or else to the active window.
void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
// Goes to the widget with the focus, which has to exist.
void typeText(const QString& text);
// Replaces what the edit with the focus holds.
void retype(const QString& text);

// The object name of the widget with the focus, or of the button box that holds it; for the
// wizard's buttons "Next", "Back" or "Finish", and "nothing" without a focus.
QString focusName();

// A person in front of the wizard who has a keyboard only.
class KeyDriver : public WizardDriver
{
public:
    KeyDriver();

    // Gives the wizard the focus back after a dialog has closed, as a window manager does.
    void activateAgain();
    // Presses Return, and again for each warning that comes up; returns their texts.
    QStringList pressReturn();
    // Switches on a widget that takes no focus, by Ctrl+Shift and the key, and waits until it is
    // on.
    void toggle(Qt::Key key, const char* name) const;
    // From page 0, with valid credentials, to the join options page.
    void enterCredentials();
};

#pragma once

#include "tests/support/wizarddriver.h"

// Goes to the widget with the focus, or to the active window.
void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void typeText(const QString& text);
// Replaces what the edit with the focus holds.
void retype(const QString& text);

// The object name of the widget with the focus; of the wizard's buttons "Next", "Back", "Finish".
QString focusName();

// A person in front of the wizard who has a keyboard only.
class KeyDriver : public WizardDriver
{
public:
    KeyDriver();

    // Once a dialog has closed. A desktop's window manager does so by itself.
    void activateAgain();
    // Return, with each warning that comes up closed by Return as well; its texts.
    QStringList pressReturn();
    // A widget that takes no focus. It shows for a moment that it is pressed before it is toggled.
    void toggle(Qt::Key key, const char* name) const;
    void enterCredentials();
};

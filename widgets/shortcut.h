#pragma once

#include <QAbstractButton>
#include <QKeySequence>

// Gives a button that Tab does not reach a shortcut, and names it in the tool tip.
inline void setShortcut(QAbstractButton* button, const QKeySequence& keys)
{
    button->setShortcut(keys);
    button->setToolTip(keys.toString(QKeySequence::NativeText));
}

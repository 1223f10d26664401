#pragma once

#include <QStringList>

class QWidget;

// What can't be read or used as a whole in a window: a visible label, button, edit or the like that
// is smaller than its text needs, lies partly outside of its parents, or overlaps with another one.
// One sentence for each such fault.
QStringList clippings(const QWidget* window);

#pragma once

#include "tests/looks/scenes.h"

// How a scene is laid out with text of 13 points, a Mac's where QT_FONT_DPI is 72: a line with the
// window's title and size, then one for each visible widget with its name, its place and size in
// the window, its font, its state and its accessible name.
QString layoutOf(const QString& scene);

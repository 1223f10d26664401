#pragma once

#include "tests/looks/scenes.h"

// How a scene is laid out, at a Mac's sizes of text: for each visible widget a line with its name,
// its place and size in the window, and what it is drawn or spoken with.
QString placesOf(const QString& scene);

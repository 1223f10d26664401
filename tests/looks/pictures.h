#pragma once

#include "tests/looks/scenes.h"

#include <QImage>

// The picture of a scene for the documents: light, in the sizes of a Mac's text.
// What can be read in it is stored in it as the text "Texts".
QImage pictureOf(const QString& scene);

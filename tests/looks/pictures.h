#pragma once

#include "tests/looks/scenes.h"

#include <QImage>

// The picture of a scene for the documents, in light colours and a Mac's sizes of text; both stay
// set in the application. Its QImage::text("Texts") has all that can be read in it.
QImage pictureOf(const QString& scene);

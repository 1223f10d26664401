#pragma once

#include <QByteArrayList>

enum class Order {
    Tree,     // as a search lists them: each container is followed by those below it
    Shuffled, // as a busy directory may return them
};

// The distinguished names of the `count` containers of an imaginary directory, in UTF-8 and without
// line ends: 4 to 10 components, values of up to 64 characters, among them blanks, escaped commas
// and quotes, and letters beyond ASCII. They are the same on every call and machine. With `widest`
// above zero, the first container below the domain holds at least that many others side by side, as
// far as `count` allows.
QByteArrayList containerNames(int count, Order order, int widest = 0);

#pragma once

#include "tests/support/xsession.h"

// A screen reader on a desktop: another process that presses buttons over the accessibility bus,
// also those that no mouse can reach. Made before the programs that it is to work with.
class ScreenReader
{
public:
    explicit ScreenReader(const XSession& desktop);
    ~ScreenReader();

    // For programs that are to be read.
    QProcessEnvironment environment() const;

    // Waits until a button with this caption is shown and can be pressed, and keeps it; false when
    // it never is.
    bool await(const QString& caption);
    // Presses the button that was kept under this caption, also while its program is busy.
    void press(const QString& caption);

private:
    QString tell(const QString& command);
    QString answer();

    QProcessEnvironment variables;
    QProcess bus;
    QProcess reader;
};

#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QRect>
#include <QStringList>

// An X display of its own with a window manager, for tests of the program as a process. Gone when
// the object is. To be made after the folder World::home(), which World::enter() makes.
class XSession
{
public:
    XSession();
    ~XSession();

    // For programs that are to show themselves here.
    QProcessEnvironment environment() const;

    // The ids of the windows that the window manager manages now, and of all that were ever seen in
    // its list; one that is gone at once may be missed.
    QStringList windows() const;
    QStringList allWindowsEver() const;
    // Where the window lies on the screen, without its frame.
    QRect place(const QString& window) const;
    // Whether `window` lies in front of `other`.
    bool isInFront(const QString& window, const QString& other) const;
    // Waits for the window with this title and returns its id; empty when none comes.
    QString waitForWindow(const QString& title) const;

    // Presses a key ("Return", "alt+F4") once the window has the keyboard focus; false when it
    // never gets it.
    bool pressIn(const QString& window, const QString& key) const;
    // Presses keys one after the other, for the window that has the keyboard focus.
    void key(const QStringList& keys) const;
    // Moves the pointer to a place in the window.
    void pointAt(const QString& window, const QPoint& place) const;
    // Clicks where the pointer is.
    void click() const;
    // Waits until the window manager has handled all that was done before.
    void awaitWindowManager() const;

private:
    QString ask(const QString& tool, const QStringList& arguments) const;

    QProcess
        server; // ends with the test program, also when that is killed, and its clients with it
    QProcess windowManager;
    mutable QProcess watch; // prints the list of managed windows whenever it changes
    mutable QByteArray watched;
    QString display;
};

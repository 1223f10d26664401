#pragma once

#include <QStringList>

#include <atomic>
#include <thread>

// Where a text stands on the command lines of all processes, which all users of the machine can
// read: "mvjoin 4" for the fourth word after the tool's path, an interpreter before it left out;
// "kinit environment" for what only the same user can read.
QStringList placesOf(const QByteArray& text);

// Looks for a text from construction on, again and again, on a thread of its own: on command lines,
// and in files below /tmp.
class CommandLineWatch
{
public:
    explicit CommandLineWatch(const QByteArray& text);
    ~CommandLineWatch();
    CommandLineWatch(const CommandLineWatch&) = delete;
    CommandLineWatch& operator=(const CommandLineWatch&) = delete;

    // Ends the watch; all places that were seen, each once, sorted.
    QStringList end();

private:
    std::atomic<bool> ended{false};
    QStringList places;
    std::thread thread;
};

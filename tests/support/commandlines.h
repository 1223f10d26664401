#pragma once

#include <QStringList>

#include <atomic>
#include <thread>

// Where a text stands in all processes: "mvjoin 4" is the fourth word after the tool's path on its
// command line, which every user of the machine can read, "kinit environment" what only the same
// user can. The name of an interpreter is not counted.
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

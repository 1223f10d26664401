#pragma once

#include <QStringList>

#include <atomic>
#include <thread>

// The places of a text in all processes, each as a tool's name and where it has the text: in
// "mvjoin 4" the fourth word after its path on the command line, in "kinit environment" a variable.
// Every user of the machine can read command lines, only root and the same user an environment. A
// "sh tool" counts as tool, "sh -c ..." as sh.
QStringList placesOf(const QByteArray& text);

// Looks for a text from construction on, again and again, on a thread of its own: in the places of
// placesOf(), and in files below /tmp.
class CommandLineWatch
{
public:
    explicit CommandLineWatch(const QByteArray& text);
    ~CommandLineWatch();
    Q_DISABLE_COPY(CommandLineWatch)

    // Ends the watch and returns all places that were seen, and the paths of the files, each once,
    // sorted.
    QStringList end();

private:
    std::atomic<bool> ended{false};
    QStringList places;
    std::thread thread;
};

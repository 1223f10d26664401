#pragma once

#include <QList>
#include <QString>

#include <atomic>
#include <thread>

// A trouble of the whole program, while a Fault is that of one tool.
struct Shortage {
    enum Kind { Descriptors, Processes, Threads, Disk, StandardStreams, Interruptions };

    QString name;
    Kind kind;

    // What the user has to see under this shortage in the use of this name, where he sees `well`
    // without one.
    QString expected(const QString& use, const QString& well) const;
};

QList<Shortage> shortages();

// The shortage holds from construction to destruction, that of threads for the rest of the process.
// The process ends where it can't be brought about. Interruptions release the command's tool, which
// has to be held, a hundred rounds of signals after its begin.
class ShortageGuard
{
public:
    ShortageGuard(const Shortage& shortage, const QString& command);
    ~ShortageGuard();
    ShortageGuard(const ShortageGuard&) = delete;
    ShortageGuard& operator=(const ShortageGuard&) = delete;

private:
    Shortage::Kind kind;
    int standard[3] = {-1, -1, -1}; // copies of the closed streams
    std::atomic<bool> ended{false};
    std::thread interrupter;
};

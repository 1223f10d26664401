#pragma once

#include <QList>
#include <QString>

// Something that the whole program lacks, rather than one tool.
struct Shortage {
    enum Kind { Descriptors, Processes, Threads, Disk, StandardStreams, Interruptions };

    QString name;
    Kind kind;

    // What is to be seen for a use, given what is seen where nothing is lacking.
    QString expected(const QString& use, const QString& well) const;
};

QList<Shortage> shortages();

// The shortage holds from construction to destruction.
class ShortageGuard
{
public:
    explicit ShortageGuard(const Shortage& shortage);
    ~ShortageGuard();
    ShortageGuard(const ShortageGuard&) = delete;
    ShortageGuard& operator=(const ShortageGuard&) = delete;

private:
    Shortage::Kind kind;
    int standard[3] = {-1, -1, -1};
};

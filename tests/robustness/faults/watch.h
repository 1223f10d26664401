#pragma once

#include <QString>
#include <QStringList>

#include <cstdio>
#include <functional>

// Whether a child of this process runs. One that has ended does not, also before it was waited for.
bool childRuns();

// What a case has to leave as it found it.
class Leftovers
{
public:
    // Notes how many descriptors there are, once the pool's threads have ended.
    Leftovers();
    // What is left: another number of descriptors, any window or child process, any thread but this
    // one. Waits until the pool's threads have ended; where they don't, the table ends the case.
    QStringList left() const;

private:
    int descriptors = 0;
};

// Sends a case's result to the table, through `verdict`: what was seen, what should have been, and
// what was left.
void report(FILE* verdict, const QString& seen, const QString& expected, const QStringList& left);

// Runs cases, each in a fork, and prints a row for each.
class Table
{
public:
    // For a case whose tool does not end by itself, `waitsFor` tells whether that tool has begun.
    // The table then lets a stopped tool go on and kills one that is not stopped, as an
    // administrator would. Null for the other cases.
    void run(const QString& use, const QString& fault, const std::function<bool()>& waitsFor,
             const std::function<void(FILE*)>& testCase);
    // Prints the totals and returns the exit status.
    int finish();

private:
    int tried = 0;
    int bad = 0;
};

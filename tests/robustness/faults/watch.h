#pragma once

#include <QString>
#include <QStringList>

#include <cstdio>
#include <functional>

// Whether a child of this process runs; one that has ended and was not waited for does not.
bool childRuns();

// What a case has to leave as it found it.
class Leftovers
{
public:
    // Notes how many descriptors there are, once the pool's threads have ended.
    Leftovers();
    // What differs from then: descriptors, threads, child processes, windows. Waits until the
    // pool's threads have ended; a row whose pool stays busy hangs.
    QStringList left() const;

private:
    int descriptors = 0;
};

// Sends a case's result to the table: what was seen, what should have been, and what was left.
void report(FILE* verdict, const QString& seen, const QString& expected, const QStringList& left);

// Runs cases, each in a fork, and prints a row for each.
class Table
{
public:
    // `waitsFor` tells whether the tool was begun that the program waits for and that does not end
    // by itself; the table sees to its end, as an administrator would. Null where there is none.
    void run(const QString& use, const QString& fault, const std::function<bool()>& waitsFor,
             const std::function<void(FILE*)>& testCase);
    // Prints the totals and returns the exit status.
    int finish();

private:
    int tried = 0;
    int bad = 0;
};

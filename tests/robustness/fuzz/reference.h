#pragma once

#include "system/lowerpriv.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

// What the fuzz targets hold the program against: the rules, written plainly and once more.
namespace Reference {

// Ends the process, which the fuzzer takes for a find.
void check(bool holds, const char* claim);

// A tool's output as it is read: pieces of 511 bytes that end at each line end, cut at a NUL.
QList<QByteArray> pieces(QByteArray output);

// The container tree of the lines: each item's text, a blank before it for each level.
QStringList tree(const QString& lines);

// Stands in for the privileged runner: "runs" a tool that prints `output`, keeps the arguments.
class Runner : public priv
{
public:
    // Takes the place of the program's own.
    static Runner& installed();

    int setupauth() override;
    int runPrivCmd(char* tool, char** args, FILE** pipe) override;

    QByteArray output;
    int status = 0;
    char** arguments = nullptr; // of the latest run, the caller's
};

} // namespace Reference

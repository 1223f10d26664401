#pragma once

#include "system/lowerpriv.h"
#include "tests/support/reference.h"

#include <QAbstractItemModel>
#include <QByteArray>
#include <QStringList>

// What the fuzz targets share.
namespace Fuzz {

// Unless `holds`, prints the claim and aborts, which the fuzzer takes for a find.
void check(bool holds, const char* claim);

// Appends the text of each item, after a blank for each level above, and its distinguished name.
void list(const QAbstractItemModel& model, QStringList* texts, QStringList* names,
          const QModelIndex& parent = {}, const QString& indent = {});

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

} // namespace Fuzz

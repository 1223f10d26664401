#include "tests/robustness/fuzz/runner.h"

#include "tests/support/world.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

// Called by the fuzzer once, before the first input. What the program logs is dropped.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    World::enter();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1");
    new QApplication(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

void Fuzz::check(bool holds, const char* claim)
{
    if (holds)
        return;
    fprintf(stderr, "Does not hold: %s\n", claim);
    abort();
}

void Fuzz::list(const QAbstractItemModel& model, QStringList* texts, QStringList* names,
                const QModelIndex& parent, const QString& indent)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex item = model.index(row, 0, parent);
        *texts << indent + item.data().toString();
        QStringList name;
        for (QModelIndex above = item; above.isValid(); above = above.parent())
            name << above.data().toString();
        *names << name.join(',');
        list(model, texts, names, item, indent + ' ');
    }
}

Fuzz::Runner& Fuzz::Runner::installed()
{
    static Runner runner;
    g_pProcess = &runner;
    return runner;
}

int Fuzz::Runner::setupauth()
{
    return 0;
}

int Fuzz::Runner::runPrivCmd(char*, char** args, FILE** pipe)
{
    arguments = args;
    *pipe = output.isEmpty() ? fopen("/dev/null", "r")
                             : fmemopen(output.data(), static_cast<size_t>(output.size()), "r");
    return status;
}

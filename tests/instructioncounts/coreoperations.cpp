// Does one core operation on 10,000 names; "check" has callgrind count the instructions of that
// alone. Its argument is the operation; without one it lists them.

#include "benchmarks/containernames.h"
#include "browser/cnbrowserhelper.h"
#include "system/commandrunner.h"
#include "tests/support/world.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMap>

#include <cstdio>
#include <functional>
#include <valgrind/callgrind.h>

namespace {

constexpr int names = 10000;

// The models that the operations make are not released, as the program ends next.
void count(const std::function<void()>& operation)
{
    CALLGRIND_TOGGLE_COLLECT;
    operation();
    CALLGRIND_TOGGLE_COLLECT;
}

void treeToModel()
{
    Level tree;
    cnbrowserhelper helper;
    const QByteArrayList shuffled = containerNames(names, Order::Shuffled);
    for (const QByteArray& name : shuffled)
        helper.parseCNData(QString::fromUtf8(name), &tree);
    count([&] { helper.getTreeModel(&tree); });
}

void outputToModel()
{
    World::answer("mvedit", {containerNames(names, Order::Shuffled).join('\n'), ""});
    cnbrowserhelper helper;
    QEventLoop running;
    QObject::connect(&helper, &cnbrowserhelper::cnDataObtained, &running, &QEventLoop::quit);
    helper.getCNData();
    running.exec();
    count([&] { helper.createModelOutOfCNData(); });
}

void commandOutput()
{
    World::answer("mvinfo", {containerNames(names, Order::Tree).join('\n'), ""});
    QString output;
    count([&] { runCmd("/usr/local/bin/mvinfo", &output); });
}

} // namespace

int main(int argc, char** argv)
{
    const QMap<QString, std::function<void()>> operations = {{"treeToModel", treeToModel},
                                                             {"outputToModel", outputToModel},
                                                             {"commandOutput", commandOutput}};
    if (argc != 2) {
        for (auto operation = operations.cbegin(); operation != operations.cend(); ++operation)
            puts(qPrintable(operation.key()));
        return 0;
    }
    World::enter();
    const QCoreApplication application(argc, argv);
    const auto operation = operations.value(argv[1]);
    if (!operation)
        qFatal("There is no operation %s", argv[1]);
    operation();
}

#include "tests/support/world.h"

#include <QDir>
#include <QTemporaryDir>

#include <mach/mach.h>

namespace {

// The world's folder, until the process ends.
QString folder()
{
    static const QTemporaryDir made;
    return made.path();
}

[[noreturn]] void lacksTools()
{
    qFatal("The world of a Mac has no tools: see World::hasTools()");
}

} // namespace

void World::enter()
{
    reset();
}

bool World::hasTools()
{
    return false;
}

QString World::file(const QString& name)
{
    return folder() + QString("/state/") + name;
}

void World::reset()
{
    QDir(file({})).removeRecursively();
    if (!QDir().mkpath(file({})))
        qFatal("There is no folder for the test");
}

void World::answer(const QString&, const Answer&)
{
    lacksTools();
}

void World::release(const QString&)
{
    lacksTools();
}

QList<Call> World::calls()
{
    lacksTools();
}

QList<Call> World::callsOf(const QString&)
{
    lacksTools();
}

int World::threads()
{
    thread_act_array_t threads = nullptr;
    mach_msg_type_number_t count = 0;
    if (task_threads(mach_task_self(), &threads, &count) != KERN_SUCCESS)
        qFatal("The threads can't be counted");
    for (mach_msg_type_number_t i = 0; i < count; ++i)
        mach_port_deallocate(mach_task_self(), threads[i]);
    vm_deallocate(mach_task_self(), reinterpret_cast<vm_address_t>(threads),
                  count * sizeof *threads);
    return static_cast<int>(count);
}

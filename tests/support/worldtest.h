#pragma once

#include "tests/support/datarows.h"
#include "tests/support/world.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QObject>
#include <QTest>

#include <cstdio>
#include <functional>
#include <memory>
#include <sys/resource.h>

class QTreeView;

// Base of the tests in the test world: before each test function the world is as new, and after it
// no window, child process, descriptor or thread is left, and no warning was logged that the test
// had not allowed.
class WorldTest : public QObject
{
    Q_OBJECT

protected:
    // Lines that were logged since the test function began, of every kind.
    static QStringList messages();
    // Allows warnings that contain the text, until the test function's end.
    static void allowWarning(const QString& text);

protected slots:
    // Called by Qt Test around each test function.
    void init();
    void cleanup();
};

// Runs an action that may open warnings, closes each by its OK button, and returns their texts.
QStringList warningsDuring(const std::function<void()>& action);

// Runs an action that opens a modal dialog, calls `handle` once with each that appears, and goes on
// when the action has returned; `handle` has to see to the dialog's closing.
void withModalDialogs(const std::function<void()>& action,
                      const std::function<void(QWidget*)>& handle);

// Runs an action that runs a tool whose answer is held, for the first time since
// World::forgetCalls(). Calls `inspect` with the modal dialog, null for none, while the tool runs;
// then lets the tool end.
void whileRunning(const QString& tool, const std::function<void()>& action,
                  const std::function<void(QWidget*)>& inspect);

// Waits until no thread of the pool has work. A task's result can be had before the pool has put
// the task away. Ends no thread.
void waitForIdleThreads();

// Clicks on a visible widget as a person does: through its window, where a modal dialog can stop
// the click.
void clickThroughWindow(QWidget* widget);

// Queue a click on a widget, or an assistive tool's action on a button, as if it were done while a
// tool keeps the program busy.
void clickUnheard(const QWidget* widget);
void pressAssistivelyUnheard(QAbstractButton* button,
                             const QString& action = QAccessibleActionInterface::pressAction());

// While it lives, the process can open no further descriptor: every pipe, file or socket fails.
class NoDescriptors
{
public:
    NoDescriptors();
    ~NoDescriptors();
    Q_DISABLE_COPY(NoDescriptors)

private:
    rlimit before = {};
};

// The open descriptors of this process.
QList<int> openDescriptors();

// Whether this process has a child, also one that has ended and that nobody has waited for.
bool hasChildren();

// Closes itself.
using Stream = std::unique_ptr<FILE, int (*)(FILE*)>;

// All that is left to read in a stream.
QByteArray rest(FILE* stream);

// The texts of the visible labels below a widget, in the form's order.
QStringList visibleTexts(const QWidget* widget);

// The child with this object name; ends the test program when there is none.
template <typename Widget> Widget* child(const QObject* parent, const QString& name)
{
    auto* found = parent->findChild<Widget*>(name);
    if (found == nullptr)
        qFatal("There is no %s", qPrintable(name));
    return found;
}

// Makes the item with this text the tree's current one, wherever it is; without a text, none.
void selectItem(QTreeView* tree, const QString& text);

// The program's window of this kind; null when there is none.
template <typename Window> Window* windowOf()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* found = qobject_cast<Window*>(window))
            return found;
    }
    return nullptr;
}

// Enters the world and runs the test class's functions in it, on a display that nobody sees.
template <typename Test> int runInWorld(int argc, char** argv)
{
    World::enter();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8"); // text is UTF-8 on every Mac
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

// Leaves out the rest of a test function that needs an answer or a call of a tool.
#define NEEDS_TOOLS()                                                                              \
    do {                                                                                           \
        if (!World::hasTools())                                                                    \
            QSKIP("there are no stand-ins for the tools here");                                    \
    } while (false)

#define WORLD_TEST_MAIN(Test)                                                                      \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return runInWorld<Test>(argc, argv);                                                       \
    }

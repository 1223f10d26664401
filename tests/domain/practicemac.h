#pragma once

#include "tests/support/wizarddriver.h"

#include <QStringList>

// What the directory holds of a computer.
struct Computer {
    QString distinguishedName; // empty when there is no such computer
    QString state;             // "enabled" or "disabled"
    QStringList serviceNames;
    QString description;
};

// The machine that practice/mac makes, on which a domain test runs: a real domain, and the
// agent's and the system's tools, which work on it.
namespace PracticeMac {

// Asks the controller's own database, by none of the tools that the assistant runs.
Computer directoryOn(const QString& computerName);

// Runs a program to its end and returns its output; ends the test program when it can't be run,
// fails or takes more than a minute.
QString run(const QString& program, const QStringList& arguments);
QStringList sortedLines(const QString& text);

// The numbers of the processes that pgrep finds; that it finds none is no failure.
QStringList processes(const QStringList& pgrepArguments);

// Replaces the administrator's prompt by a program that says yes and asks nobody, since no person
// sits at a test.
void consent();

bool isJoined();

// Where the repository's scripts for the practice Mac are.
QString script(const QString& name);

const QString domain = "example.test";
const QString base = "DC=example,DC=test";
const QString administrator = "Administrator";
// Of every user with whom the domain begins.
const QString password = "Practice.1";

} // namespace PracticeMac

// Base of the domain tests: each test function begins on a Mac that is neither joined nor bound,
// and leaves no window behind. The directory lasts for the whole program, so every test function
// makes computers with names of its own.
class DomainTest : public QObject
{
    Q_OBJECT

protected:
    // Joins by the agent's tool alone.
    static void joinMac(const QString& computerName);

protected slots:
    void initTestCase();
    void init();
    void cleanup();
};

// Calls the action with an application that needs no display.
template <typename Action> int runOnPracticeMac(int argc, char** argv, Action action)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return action();
}

// Runs the test class's functions.
#define DOMAIN_TEST_MAIN(Test)                                                                     \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return runOnPracticeMac(argc, argv, [&] {                                                  \
            Test test;                                                                             \
            return QTest::qExec(&test, argc, argv);                                                \
        });                                                                                        \
    }

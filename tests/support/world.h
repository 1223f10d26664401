#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// One run of a stand-in.
struct Call {
    QString path;
    QStringList arguments;
    QList<int> descriptors; // open in the tool when it started

    // The path's last component and the arguments, for example {"mvinfo", "-d"}.
    QStringList words() const;
};

// What a stand-in does when it is run.
struct Answer {
    QByteArray output;
    QByteArray errors;
    int exitStatus = 0;
    int signal = 0;          // raised after the output, when not 0
    bool reportsPid = false; // writes its process id, four bytes, before any output
    bool held = false;       // ends at World::release(), or with its caller
};

// The private mount namespace in which recording stand-ins are at the fixed paths of the agent's
// and the system's tools. The world writes nothing outside of it.
//
// An answer is given for a tool's name ("mvjoin"), or for a name and the last path component of its
// first argument ("mvinfo -d", "mvedit check_domain_cred.tcl", "gui_helper_tool mvjoin"); the
// latter counts where both are given. A tool without an answer prints nothing and exits with 0.
namespace World {

// Once, before the process has a second thread. Exits with a message where namespaces are refused.
void enter();
// Whether there are stand-ins at the tools' paths. A Mac has no namespaces: the world is a folder
// there, and tests that need an answer or a call are left out.
bool hasTools();

// The path of a file in a folder of the world's own, which reset() empties; and a home, which it
// doesn't.
QString file(const QString& name);
QString home();
// Covers a folder with a writable one in which all is linked that was there. Options are those of
// a tmpfs.
void makeWritable(const QString& folder, const QString& options = {});

// Puts all stand-ins back, forgets all calls, and gives the answers of a Mac that is not joined and
// not bound, whose name is my-mac and whose administrator consents to everything.
void reset();

void answer(const QString& command, const Answer& answer);
// Has the tool print this, and end with success at release(). The helper tool tells its id first.
inline void hold(const QString& command, const QByteArray& output = {})
{
    answer(command, {output, {}, 0, 0, command.startsWith("gui_helper_tool"), true});
}
// Lets a held tool end.
void release(const QString& command);

// All runs since reset() or forgetCalls(), in order.
QList<Call> calls();
// The runs of one tool.
QList<Call> callsOf(const QString& tool);
// Whether a tool has begun; the command is one that answer() takes.
bool wasRun(const QString& command);
void forgetCalls();

// The fixed path at which a tool stands.
QString path(const QString& tool);
// Removes a tool, or puts a file that can't be executed, or a folder, in its place.
void removeTool(const QString& tool);
void replaceByPlainFile(const QString& tool);
void replaceByFolder(const QString& tool);

// The threads of this process.
int threads();

// The answers of a Mac that is joined, and of one that the system's own plug-in has bound.
inline void setJoined(const QByteArray& domain = "example.test\n",
                      const QByteArray& zone = "MacZone\n", const QByteArray& name = "my-mac\n")
{
    answer("mvinfo -d", {domain, ""});
    answer("mvinfo -z", {zone, ""});
    answer("mvinfo -n", {name, ""});
}
inline void setBound(const QByteArray& domain = "example.test")
{
    const QByteArray report = "\nActive Directory Forest          = " + domain +
                              "\nActive Directory Domain          = " + domain +
                              "\nComputer Account                 = my-mac$\n";
    answer("dsconfigad -show", {report, ""});
}

} // namespace World

#pragma once

#include "tests/domain/practicemac.h"

#include <QTemporaryDir>

class QProcess;

// What a script has done.
struct ScriptResult {
    int status = -1;
    QString output;
    QString errors;
    qint64 milliseconds = 0;

    // What the wizard shows.
    QString firstLine() const;
};

// What the scripts say of the user, the domain or the controller %1; several tests expect it.
namespace Sentence {

const QString domainNotFound = QStringLiteral(
    "The domain %1 was not found: check its full name, and that this Mac uses its DNS servers.");
const QString lost = QStringLiteral(
    "The controller %1.example.test stopped answering: check the network, and try again.");
const QString unknownService =
    QStringLiteral("The domain does not know the service of dc1.example.test: have that account's "
                   "service names checked.");
const QString unknownUser =
    QStringLiteral("The user %1 is not known in the domain example.test: check the user name.");
const QString unknownSuffix = QStringLiteral(
    "The domain example.test knows no %1: check the name, and its suffix or short domain name.");
const QString wrongPassword =
    QStringLiteral("The password of %1 is not right: enter it again, and mind the Caps Lock key.");
const QString expiredPassword =
    QStringLiteral("The password of %1 has expired or must be changed: change it, for example by "
                   "logging in once.");
const QString closedAccount =
    QStringLiteral("The account %1 is disabled, locked, expired or outside its logon hours: have "
                   "it checked.");
const QString noEncryption =
    QStringLiteral("The account %1 and this Mac have no encryption type in common: have AES "
                   "allowed for it.");

} // namespace Sentence

// Base of the tests of the bundle's two scripts, which are run as the program runs them, by the
// agent's interpreter.
class ScriptTest : public DomainTest
{
    Q_OBJECT

protected:
    static void startScript(QProcess* process, const QString& script, const QStringList& arguments);
    static ScriptResult runScript(const QString& script, const QStringList& arguments);
    static ScriptResult check(const QString& domain = PracticeMac::domain,
                              const QString& user = PracticeMac::administrator,
                              const QString& password = PracticeMac::password);
    static ScriptResult list(const QString& password = PracticeMac::password);

    // Compares all that a script has said on standard error, and its status.
    static void checkResult(const ScriptResult& result, const QString& errors = {});

    // Compares the sentence of a script that has failed; details may follow it.
    static void checkRefusal(const ScriptResult& result, const QString& sentence);

    // Runs Tcl with the scripts' library and returns what it prints, without the line's end.
    static QString runTcl(const QString& program);

    // Puts a tool of this text before the system's own of that name.
    void standIn(const QString& tool, const QByteArray& script);
    // Has these tools note how they are called before they run.
    void note(const QStringList& tools);
    // The calls that were noted: the tool's name and its arguments.
    QStringList noted() const;

    // A file of the practice Mac that is as it was after the test function.
    static void rewrite(const QString& path, const QByteArray& text);

    static QString testScript(const QString& name);

protected slots:
    void init();
    void cleanup();

private:
    QScopedPointer<QTemporaryDir> tools;
    QScopedPointer<QTemporaryDir> temporaries; // where the scripts make theirs
};

#pragma once

#include "tests/domain/practicemac.h"
#include "tests/domain/sentences.h"

#include <QTemporaryDir>

class QProcess;

// What a script has done.
struct ScriptResult {
    int status = -1;
    QString output;
    QString errors;
    qint64 milliseconds = 0;
};

// Base of the tests of the bundle's two scripts, which are run as the program runs them, by the
// agent's interpreter.
class ScriptTest : public DomainTest
{
    Q_OBJECT

protected:
    static void startScript(QProcess* process, const QString& script, const QStringList& arguments);
    static ScriptResult runScript(const QString& script, const QStringList& arguments);
    // The credential check, and the list of the domain's containers.
    static ScriptResult check(const QString& domain = PracticeMac::domain,
                              const QString& user = PracticeMac::administrator,
                              const QString& password = PracticeMac::password);
    static ScriptResult list(const QString& password = PracticeMac::password);

    // Compares all that a script has said on standard error, nothing for a success, and its status.
    static void checkResult(const ScriptResult& result, const QString& errors = {});

    // Compares the sentence of a script that has failed, its first line on standard error.
    static void checkRefusal(const ScriptResult& result, const QString& sentence);

    // Runs Tcl with the scripts' library and returns what it prints, without the line's end.
    static QString runTcl(const QString& program);

    // Has the scripts find this shell script in the place of the system's tool of that name.
    void standIn(const QString& tool, const QByteArray& script);
    // Has these tools note how they are called before they run.
    void note(const QStringList& tools);
    // The calls that were noted: the tool's name and its arguments.
    QStringList noted() const;

    // Replaces the content of a file of the practice Mac until the end of the test function.
    static void rewrite(const QString& path, const QByteArray& text);

    // The path of a file in tests/domain.
    static QString testFile(const QString& name);

protected slots:
    void init();
    void cleanup();

private:
    QScopedPointer<QTemporaryDir> tools;       // stand-ins, first on the search path
    QScopedPointer<QTemporaryDir> temporaries; // the scripts' temporary files
};

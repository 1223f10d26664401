#pragma once

#include "tests/support/wizarddriver.h"

// How a tool is run: by a shell, as a process of its own, or with administrator rights. A
// privileged tool's output goes through a socket, which holds more unread than a pipe.
enum class Way { Shell, Process, Privileged };

struct Fault {
    QString name;
    enum Place { InPlace, Missing, NotExecutable, Folder } place = InPlace;
    int signal = 0;
    int exitStatus = -1; // -1: the use's
    QByteArray output = {};
    bool reportsPid = true; // where the tool has to
};

struct Use {
    QString name;
    QString tool;
    QString command; // whose answer is at fault
    Way way;
    int outputStatus; // with which a tool that speaks exits, so that its words are seen
    QByteArray words; // and such as only a tool that was run and read brings about
    // Brings the wizard to where the tool is used; then uses it and tells what is to be seen.
    void (*prepare)(WizardDriver&);
    QString (*use)(WizardDriver&);
    // What has to be seen.
    QString (*expected)(const Fault&, int status);
};

// For a use that needs nothing before it: at the wizard's start, or at Next on its first page.
void nothing(WizardDriver&);

const QList<Use>& uses();

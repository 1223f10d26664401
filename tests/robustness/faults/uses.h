#pragma once

#include "tests/support/wizarddriver.h"

// How a tool is run, and so how much it can print unread: the output of a privileged one goes
// through a socket, which holds more than the pipe of the others.
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
    QByteArray words; // what it prints under a shortage; seen only when it was run and read
    // Brings the wizard to where the tool is used; then uses it and tells what is to be seen.
    void (*prepare)(WizardDriver&);
    QString (*use)(WizardDriver&);
    // What has to be seen.
    QString (*expected)(const Fault&, int status);
};

// For a use that needs nothing before it: at the wizard's start, or at Next on its first page.
void nothing(WizardDriver&);

const QList<Use>& uses();

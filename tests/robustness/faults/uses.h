#pragma once

#include "tests/support/wizarddriver.h"

// How a tool is run: by a shell, as a process of its own, or with administrator rights.
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
    // What is to be seen, by the rules.
    QString (*expected)(const Fault&, int status);
};

// For a use that the wizard's start brings with it.
void nothing(WizardDriver&);

const QList<Use>& uses();

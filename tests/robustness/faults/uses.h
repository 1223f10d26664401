#pragma once

#include "tests/support/wizarddriver.h"

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
    QString command;  // whose answer is at fault
    int outputStatus; // unless the fault has one; with it the tool's words are shown
    QByteArray words; // what it prints under a shortage; seen only when it was run and read
    // Brings the wizard to where the tool is used; then uses it and tells what is seen.
    void (*prepare)(WizardDriver&);
    QString (*use)(WizardDriver&);
    // What has to be seen.
    QString (*expected)(const Fault&, int status);
};

// For a use that needs nothing before it: at the wizard's start, or at Next on its first page.
void nothing(WizardDriver&);

const QList<Use>& uses();

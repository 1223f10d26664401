#pragma once

#include <QCoreApplication>
#include <QString>

// The check of an administrator's name and password against a domain with the bundle's script. A
// class for the sake of its text's translation.
class CredentialCheck
{
    Q_DECLARE_TR_FUNCTIONS(CredentialCheck)

public:
    // When they are refused, shows a modal warning with the first line of the script's complaint
    // and returns false. Blocks the user-interface thread, on which it is called, until the script
    // has ended.
    static bool passes(const QString& domain, const QString& user, const QString& password);
};

#pragma once
// What the assistant says and several tests expect.

#include <QString>

// The introduction: "join your Mac to your", "Domain" or "leave your Mac from your", "domain".
inline QString greeting(const QString& verb, const QString& noun)
{
    return QString("Welcome to the Morvanta Join Assistant.  This assistant will help you %1 "
                   "Active Directory %2.  We will require an Active Directory Administrator's "
                   "username and password during this process.  If you do not know one, please "
                   "find your Active Directory Administrator to provide the necessary information.")
        .arg(verb, noun);
}

// What a refused credential check tells the user.
inline QString refusedCheck(const QString& complaint)
{
    return QString("Validation of username, password, and domain failed with this error:\n") +
           complaint;
}

// What a container load that failed, or was refused, tells the user.
inline QString refusedBrowse()
{
    return "Browse require domain name, domain administrator name and password, please make sure "
           "they are inputted correctly in the previous page!";
}

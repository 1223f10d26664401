#pragma once

#include <QString>

// What the scripts say of the user, domain or controller %1; several tests expect it.
namespace Sentence {

const QString domainNotFound =
    "The domain %1 was not found: check its full name, and that this Mac uses its DNS servers.";
const QString unreachable =
    "No domain controller of %1 can be reached (%2 tried): check network and firewalls.";
const QString lost =
    "The controller %1.example.test stopped answering: check the network, and try again.";
const QString unknownService = "The domain does not know the service of dc1.example.test: have "
                               "that account's service names checked.";
const QString unknownUser =
    "The user %1 is not known in the domain example.test: check the user name.";
const QString unknownSuffix =
    "The domain example.test knows no %1: check the name, and its suffix or short domain name.";
const QString wrongPassword =
    "The password of %1 is not right: enter it again, and mind the Caps Lock key.";
const QString expiredPassword =
    "The password of %1 has expired or must be changed: change it, for example by logging in once.";
const QString closedAccount =
    "The account %1 is disabled, locked, expired or outside its logon hours: have it checked.";
const QString noEncryption =
    "The account %1 and this Mac have no encryption type in common: have AES allowed for it.";

} // namespace Sentence

#pragma once

class QString;

// Checks an administrator's name and password against a domain with the agent's script. When they
// are refused, shows a modal warning with the first line of the script's complaint and returns
// false. Blocks the user-interface thread, on which it is called, until the script has ended.
bool credentialsPass(const QString& domain, const QString& user, const QString& password);

#pragma once

#include <QString>

// Whether this is the password of the account `name` of this machine, and that is an
// administrator's: root's, or of a member that the group sudo lists. Reads the shadow file, so the
// caller must be root.
bool isLocalAdministrator(const QString& name, const QString& password);

#pragma once

#include <QString>

// Whether `password` is that of the account `name` of this machine, and the account is an
// administrator's: it has root's id, or the group sudo lists it. Reads the shadow file, so the
// caller must be root.
bool isLocalAdministrator(const QString& name, const QString& password);

#pragma once

#include <QString>

// Whether this is the password of an account of this machine that belongs to its administrators
// (root, or the group sudo). Reads the shadow file, so the caller must be root.
bool isLocalAdministrator(const QString& name, const QString& password);

#include "pages/credentialcheck.h"

#include "pages/dialogs/warning.h"
#include "system/commandrunner.h"
#include "system/toolpaths.h"

namespace {

// Not escaped, since the form of the line is fixed: a single quote in the value ends the quoted
// string, and the shell reads the rest (docs/known-behaviour.md).
QString quoted(const QString& value)
{
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

} // namespace

bool CredentialCheck::passes(const QString& domain, const QString& user, const QString& password)
{
    const QStringList words{QLatin1String(Tools::interpreter),
                            QLatin1String(Tools::credentialScript),
                            quoted(domain),
                            quoted(user),
                            quoted(password),
                            QStringLiteral("2>&1")};
    const QString command = words.join(QLatin1Char(' '));
    QString output;
    if (runCmd(command.toUtf8().constData(), &output) == 0)
        return true;
    showWarning(tr("Validation of username, password, and domain failed with this error:\n") +
                getFirstLine(output));
    return false;
}

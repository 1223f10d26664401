#include "pages/credentialcheck.h"

#include "pages/dialogs/warning.h"
#include "system/commandrunner.h"
#include "system/toolpaths.h"

bool CredentialCheck::passes(const QString& domain, const QString& user, const QString& password)
{
    // The values stand between single quotes as they are: a quote in one ends the string, and the
    // shell reads the rest (docs/known-behaviour.md).
    const QString command =
        QStringLiteral("%1 %2 '%3' '%4' '%5' 2>&1")
            .arg(QLatin1String(Tools::interpreter), QLatin1String(Tools::credentialScript), domain,
                 user, password);
    QString output;
    if (runCmd(command.toUtf8().constData(), &output) == 0)
        return true;
    showWarning(tr("Validation of username, password, and domain failed with this error:\n") +
                getFirstLine(output));
    return false;
}

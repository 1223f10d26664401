#include "pages/credentialcheck.h"

#include "pages/dialogs/warning.h"
#include "system/commandrunner.h"
#include "system/toolpaths.h"

namespace {

// Not escaped, as the agent's line has it: a quote in the value ends the quoted string, and an
// administrator whose password holds one is refused (docs/known-behaviour.md).
QString quoted(const QString& value)
{
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

} // namespace

bool CredentialCheck::passes(const QString& domain, const QString& user, const QString& password)
{
    // All places are filled in one step, so that a place marker within a value stays as typed.
    const QString command =
        QStringLiteral("%1 %2 %3 %4 %5 %6")
            .arg(QLatin1String(Tools::interpreter), QLatin1String(Tools::credentialScript),
                 quoted(domain), quoted(user), quoted(password), QStringLiteral("2>&1"));
    QString output;
    if (runCmd(command.toUtf8().constData(), &output) == 0)
        return true;
    showWarning(tr("Validation of username, password, and domain failed with this error:\n") +
                getFirstLine(output));
    return false;
}

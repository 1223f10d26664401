#include "pages/credentialcheck.h"

#include "pages/dialogs/warning.h"
#include "system/commandrunner.h"
#include "system/toolpaths.h"

#include <QCoreApplication>

namespace {

// The value as it is, deliberately without escaping: a single quote in it is the shell's to read,
// so an administrator whose password holds one is refused without a reason, or checked with what
// the shell makes of it.
QString quoted(const QString& value)
{
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

} // namespace

bool checkCredentials(const QString& domain, const QString& user, const QString& password)
{
    // All places are filled in one step, so that a place marker within a value stays as typed.
    const QString command =
        QStringLiteral("%1 %2 %3 %4 %5 %6")
            .arg(QLatin1String(Tools::interpreter), QLatin1String(Tools::credentialScript),
                 quoted(domain), quoted(user), quoted(password), QStringLiteral("2>&1"));
    QString output;
    if (runCmd(command.toUtf8().constData(), &output) == 0)
        return true;
    showWarning(QCoreApplication::translate(
                    "checkCredentials",
                    "Validation of username, password, and domain failed with this error:\n") +
                getFirstLine(output));
    return false;
}

#include "system/lowerpriv.h"

#include "platform/systemlog.h"

#include <QDebug>

#include <cerrno>
#include <sys/wait.h>

AuthorizationRef authorizationRef = nullptr;
priv* g_pProcess = new LowerPriv;

LowerPriv::LowerPriv()
{
    // A failure shows as the error code of the first privileged run.
    LowerPriv::setupauth();
}

int LowerPriv::setupauth()
{
    return AuthorizationCreate(nullptr, kAuthorizationEmptyEnvironment, kAuthorizationFlagDefaults,
                               &authorizationRef);
}

int LowerPriv::runPrivCmd(char* tool, char** args, FILE** pipe)
{
// Deprecated on the Mac, and still the only way to run a tool as administrator that asks with the
// system's own prompt and needs no installed helper.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const OSStatus authorized = AuthorizationExecuteWithPrivileges(
        authorizationRef, tool, kAuthorizationFlagDefaults, args, pipe);
#pragma GCC diagnostic pop
    if (authorized != errAuthorizationSuccess) {
        logAuthorizationFailure(authorized);
        return authorized;
    }

    // The agent's helper tool reports its process id first. A tool that doesn't, such as the
    // system's dsconfigad, loses the first four bytes of its output here, the wait for that number
    // fails, and the run counts as a success. The pages that run it read later lines only.
    std::int32_t reported = 0;
    if (fread(&reported, sizeof reported, 1, *pipe) == 1)
        toolPid = reported;

    int status = 0;
    while (waitpid(toolPid, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status))
        return abnormalToolEnd;
    qDebug() << "[ rc:" << status << "] [ WIFEXITED(rc): " << true
             << "] [WEXITSTATUS(rc): " << WEXITSTATUS(status) << "]";
    return WEXITSTATUS(status);
}

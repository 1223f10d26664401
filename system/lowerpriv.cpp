#include "system/lowerpriv.h"

#include "platform/systemlog.h"
#include "system/streamreader.h"

#include <QDebug>

#include <cerrno>
#include <cstring>
#include <sys/wait.h>

AuthorizationRef authorizationRef = nullptr;
priv* g_pProcess = new LowerPriv;

LowerPriv::LowerPriv()
{
    // A virtual call, which during construction reaches this class's own function. A failure shows
    // as the error code of every privileged run.
    setupauth(); // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
}

int LowerPriv::setupauth()
{
    return AuthorizationCreate(nullptr, nullptr, kAuthorizationFlagDefaults, &authorizationRef);
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

    // The agent's helper tool writes its process id first. The system's dsconfigad doesn't: the
    // first four bytes of its output are taken for the id of a process that is no child, so the
    // wait fails, and the run counts as a success.
    char pid[sizeof toolPid];
    if (readBlock(pid, sizeof pid, *pipe) == sizeof pid)
        memcpy(&toolPid, pid, sizeof pid);

    int status = 0;
    while (waitpid(toolPid, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status))
        return abnormalToolEnd;
    qDebug() << "[ rc:" << status << "] [ WIFEXITED(rc): " << true
             << "] [WEXITSTATUS(rc): " << WEXITSTATUS(status) << "]";
    return WEXITSTATUS(status);
}

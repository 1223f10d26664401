#include <Security/Authorization.h>

#include <algorithm>
#include <cerrno>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>
extern "C" { // which glibc 2.36 leaves out of this header
#include <sys/pidfd.h>
}

struct AuthorizationOpaqueRef
{
    mutable bool granted = false;
};

namespace {

// A started tool, held by a descriptor since the caller may have waited for its process id already.
struct Tool
{
    int stream;
    int process;
};

// Starts a program on its own, or with `stream` as its standard input and output. Returns 0 or the
// error number.
int spawn(const char* path, char* const* arguments, int stream, pid_t* pid)
{
    std::vector<char*> vector{const_cast<char*>(path)};
    while (arguments != nullptr && *arguments != nullptr)
        vector.push_back(*arguments++);
    vector.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (stream >= 0) {
        posix_spawn_file_actions_adddup2(&actions, stream, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, stream, STDOUT_FILENO);
    }
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    const int error = posix_spawn(pid, path, &actions, nullptr, vector.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

OSStatus askForGrant(const char* tool)
{
    char* const arguments[] = {const_cast<char*>(tool), nullptr};
    pid_t prompt = 0;
    int status = 0;
    if (spawn("/usr/libexec/authorization_prompt", arguments, -1, &prompt) != 0 ||
        TEMP_FAILURE_RETRY(waitpid(prompt, &status, 0)) < 0 || !WIFEXITED(status))
        return errAuthorizationInternal;
    switch (WEXITSTATUS(status)) {
    case 0:
        return errAuthorizationSuccess;
    case 1:
        return errAuthorizationCanceled;
    case 2:
        return errAuthorizationDenied;
    default:
        return errAuthorizationInternal;
    }
}

ssize_t readTool(void* tool, char* buffer, size_t size)
{
    return TEMP_FAILURE_RETRY(read(static_cast<Tool*>(tool)->stream, buffer, size));
}

ssize_t writeTool(void* tool, const char* buffer, size_t size)
{
    const ssize_t sent =
        TEMP_FAILURE_RETRY(send(static_cast<Tool*>(tool)->stream, buffer, size, MSG_NOSIGNAL));
    return std::max<ssize_t>(sent, 0); // a stream's way to tell of a failure
}

// A tool that nobody has waited for must not stay behind as a zombie.
int closeTool(void* cookie)
{
    auto* tool = static_cast<Tool*>(cookie);
    close(tool->stream);
    siginfo_t end = {};
    TEMP_FAILURE_RETRY(waitid(P_PIDFD, static_cast<id_t>(tool->process), &end, WEXITED));
    close(tool->process);
    delete tool;
    return 0;
}

} // namespace

OSStatus AuthorizationCreate(const AuthorizationRights*, const AuthorizationEnvironment*,
                             AuthorizationFlags, AuthorizationRef* authorization)
{
    *authorization = new AuthorizationOpaqueRef;
    return errAuthorizationSuccess;
}

OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* tool,
                                            AuthorizationFlags, char* const* arguments, FILE** pipe)
{
    if (authorization == nullptr)
        return errAuthorizationInvalidRef;
    const OSStatus answer = authorization->granted ? errAuthorizationSuccess : askForGrant(tool);
    if (answer != errAuthorizationSuccess)
        return answer;
    authorization->granted = true;

    int ends[2];
    pid_t pid = 0;
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return errAuthorizationToolExecuteFailure;
    const int error = spawn(tool, arguments, ends[1], &pid);
    close(ends[1]);
    if (error != 0) {
        close(ends[0]);
        return errAuthorizationToolExecuteFailure;
    }
    *pipe = fopencookie(new Tool{ends[0], pidfd_open(pid, 0)}, "r+",
                        {readTool, writeTool, nullptr, closeTool});
    return errAuthorizationSuccess;
}

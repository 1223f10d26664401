#include <Security/Authorization.h>

#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

struct AuthorizationOpaqueRef {
    mutable bool granted = false;
};

namespace {

// A started tool, by two descriptors. Its process id would not do: once the caller has waited for
// the tool, that may be another process's.
struct Tool {
    int stream;
    int process; // a pidfd
};

// Starts a program that gets no descriptor of ours above standard error. Its standard input and
// output are `stream`, or ours where that is negative. Returns its process id, or -1.
pid_t spawn(const char* path, char* const* arguments, int stream)
{
    std::vector<char*> vector{const_cast<char*>(path)};
    while (arguments != nullptr && *arguments != nullptr)
        vector.push_back(*arguments++);
    vector.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // With a negative descriptor these two fail and add nothing.
    posix_spawn_file_actions_adddup2(&actions, stream, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, stream, STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    pid_t pid = -1; // stays so when the program can't be started
    posix_spawn(&pid, path, &actions, nullptr, vector.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return pid;
}

OSStatus askForGrant(const char* tool)
{
    constexpr OSStatus answers[] = {errAuthorizationSuccess, errAuthorizationCanceled,
                                    errAuthorizationDenied};
    char* const arguments[] = {const_cast<char*>(tool), nullptr};
    const pid_t prompt = spawn("/usr/libexec/authorization_prompt", arguments, -1);
    int status = 0;
    if (prompt < 0 || TEMP_FAILURE_RETRY(waitpid(prompt, &status, 0)) < 0 || !WIFEXITED(status))
        return errAuthorizationInternal;
    return WEXITSTATUS(status) < 3 ? answers[WEXITSTATUS(status)] : errAuthorizationInternal;
}

ssize_t readTool(void* tool, char* buffer, size_t size)
{
    return TEMP_FAILURE_RETRY(read(static_cast<Tool*>(tool)->stream, buffer, size));
}

ssize_t writeTool(void* tool, const char* buffer, size_t size)
{
    const int stream = static_cast<Tool*>(tool)->stream;
    const ssize_t sent = TEMP_FAILURE_RETRY(send(stream, buffer, size, MSG_NOSIGNAL));
    return sent < 0 ? 0 : sent; // fopencookie() wants 0 for a failure
}

// Waits for the tool, unless the caller has.
int closeTool(void* cookie)
{
    auto* tool = static_cast<Tool*>(cookie);
    close(tool->stream);
    TEMP_FAILURE_RETRY(waitid(P_PIDFD, static_cast<id_t>(tool->process), nullptr, WEXITED));
    close(tool->process);
    delete tool;
    return 0;
}

} // namespace

OSStatus AuthorizationCreate(const void*, const void*, AuthorizationFlags, AuthorizationRef* made)
{
    *made = new AuthorizationOpaqueRef;
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
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return errAuthorizationToolExecuteFailure;
    // Never in the place of a standard stream that is closed: log messages would go to the tool.
    const int stream = fcntl(ends[0], F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(ends[0]);
    const pid_t pid = stream < 0 ? -1 : spawn(tool, arguments, ends[1]);
    close(ends[1]);
    if (pid < 0) {
        close(stream);
        return errAuthorizationToolExecuteFailure;
    }
    const auto process = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    *pipe = fopencookie(new Tool{stream, process}, "r+", {readTool, writeTool, nullptr, closeTool});
    return errAuthorizationSuccess;
}

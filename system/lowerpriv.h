#pragma once

#include <Security/Authorization.h>

#include <cstdint>
#include <cstdio>

// What runPrivCmd() returns for a tool that was killed. No exit status is as high, and a shell that
// was killed has abnormalShellEnd instead.
constexpr int abnormalToolEnd = 998;

// Runs tools with administrator rights. Not locked: one call at a time, from any thread. Never
// deleted through this class, hence no virtual destructor.
class priv
{
public:
    // Opens the authorization session without asking for a right; returns the service's status.
    virtual int setupauth() = 0;

    // Runs `tool` (full path) with `args` (without the program name, ended by null; the caller's).
    // A tool that writes its process id first is waited for before anything else is read, so that
    // its output has to fit into the pipe, as that of the agent's tools does; any other tool is not
    // waited for and counts as a success. *pipe receives a stream on the tool's output, which the
    // caller reads and closes; it stays as it was when no tool was started. Returns the exit status
    // 0 to 255, abnormalToolEnd, or the authorization service's error code.
    virtual int runPrivCmd(char* tool, char** args, FILE** pipe) = 0;
};

class LowerPriv : public priv
{
public:
    LowerPriv();

    int setupauth() override;
    int runPrivCmd(char* tool, char** args, FILE** pipe) override;

private:
    // The latest four bytes read as an id; at first one that no child can have. Waited for again
    // where a tool writes fewer: no such child is left, so the run counts as a success.
    std::int32_t toolPid = INT32_MAX;
};

// The one authorization session of the process; never freed.
extern AuthorizationRef authorizationRef;

// The one privileged runner, made before main() and never deleted.
extern priv* g_pProcess;

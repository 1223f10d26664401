#pragma once

#include <QString>

// Runs the agent's privileged helper tool and collects what it prints in *output, which stays as it
// was when no tool was started. `args` begins with the path of the tool that the helper is to run.
// Returns the runner's result code. Blocks; any thread, one call at a time.
int runHelperTool(char** args, QString* output);

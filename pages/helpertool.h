#pragma once

#include <QString>

// Runs the agent's privileged helper tool and collects what it prints in *output, which stays as it
// was when no tool was started. `args` begins with the path of the tool that the helper is to run.
// Returns the runner's result code. Blocks; any thread, one call at a time.
int runHelperTool(char** args, QString* output);

// Starts the thread on which joins and leaves run, and keeps it. Called once, at start-up: when
// they are wanted the system may have no thread or descriptor to spare, which the thread pool takes
// for no error, so that the wizard would wait for ever.
void keepWorkerReady();

#pragma once

// Writes "Authorization failure, Authorization Result Code: " and the code to the system log.
// Any thread.
void logAuthorizationFailure(int resultCode);

#pragma once

// What the machine's state is, asked anew at each call; nothing is cached. Called on the
// user-interface thread, which waits for the command that answers.

// The maker's cloud service, which hands out the agent for Mac.
constexpr char enrollmentHost[] = "cloud.morvanta.example";

// Whether the agent reports the machine as joined to a domain. False for a missing or failing
// agent; true when no shell can be started, which runCmd() reports as a success.
bool isJoined();

// Whether the agent's device-management profile is in the list of profiles, where its identifier
// may be part of a longer one. The exit status of the tool is not looked at.
bool isEnrolled();

// Opens the agent's download page in the default web browser; false when the desktop refused.
bool download_mac_agent();

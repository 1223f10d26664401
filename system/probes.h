#pragma once

// What the machine's state is, asked anew at each call; nothing is cached. Called on the
// user-interface thread, which waits for the command that answers.

// The maker's cloud service, which hands out the agent for Mac.
constexpr char enrollmentHost[] = "cloud.morvanta.example";

// Whether the agent reports the machine as joined to a domain. A missing or failing agent counts as
// not joined: the join itself then fails with the agent's own message. Where no shell can be
// started it counts as joined, as every such command counts as a success.
bool isJoined();

// Whether the machine carries the agent's device-management profile: its identifier stands anywhere
// in the list, also within a longer one. The exit status is not looked at, so that a list which
// could be read in part only still counts.
bool isEnrolled();

// Opens the agent's download page in the default web browser; false when the desktop refused.
bool download_mac_agent();

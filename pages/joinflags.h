#pragma once

// How far the user has come with joining and enrolling; false at start. Set and read on the
// user-interface thread only.

// Set when a join starts, even if it fails.
extern bool joining;

// Set when a join with the wish to enroll with the cloud service has succeeded.
extern bool enrolling;

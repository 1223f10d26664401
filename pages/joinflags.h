#pragma once

// How far the user has come with joining and enrolling; false at start. Set and read on the
// user-interface thread only.

// Set when a join starts, even if it fails.
inline bool joining = false;

// Set when a join with the wish to enroll with the cloud service has succeeded.
inline bool enrolling = false;

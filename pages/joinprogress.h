#pragma once

// How far the user has come with joining and enrolling; false at start. Set and read on the
// user-interface thread only.

// A join has been started, whatever became of it.
extern bool joining;

// The join has succeeded and its user wants to enroll with the cloud service, too.
extern bool enrolling;

#pragma once

// How far the user has come with joining and enrolling; false at start. Set and read on the
// user-interface thread only.

// Set once the user has pressed Join; stays when the join fails.
inline bool joining = false;

// Set when a join succeeds with the box for enrolling checked, which is hidden at present.
inline bool enrolling = false;

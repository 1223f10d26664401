#pragma once

// The wizard's page ids: the order in which its form makes the pages.
namespace PageId {

enum { Intro, Interim, AppleAD, UserPassEntry, JoinType, Cloud, LeaveIntro, Conclusion };

} // namespace PageId

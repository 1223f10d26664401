#pragma once

// The wizard's page ids: the order in which its form makes the pages.
namespace PageId {

constexpr int Intro = 0;
constexpr int Interim = 1;
constexpr int AppleAD = 2;
constexpr int UserPassEntry = 3;
constexpr int JoinType = 4;
constexpr int Cloud = 5;
constexpr int LeaveIntro = 6;
constexpr int Conclusion = 7;

} // namespace PageId

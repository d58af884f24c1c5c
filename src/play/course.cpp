#include "play/course.h"

#include <algorithm>

namespace {

Currency WorthNow() { return Bankroll() - Game.InvestedBankroll; }

void FollowWorth() {
  GameCourse& course = Game.Course;
  const Currency worth = WorthNow();
  if (worth == course.Worth) return;
  course.LosingRolls = worth < course.Worth ? course.LosingRolls + 1 : 0;
  course.LongestLosingStreak = std::max(course.LongestLosingStreak, course.LosingRolls);
  course.Worth = worth;
  course.Peak = std::max(course.Peak, worth);
  course.DeepestFall = std::max(course.DeepestFall, course.Peak - worth);
}

}  // namespace

void BeginCourse() {
  Game.Course = {};
  Game.Course.Followed = true;
  Game.Course.Worth = Game.Course.Peak = WorthNow();
}

void FollowCourse() {
  FollowWorth();
  GameCourse& course = Game.Course;
  course.MostAtRisk = std::max(course.MostAtRisk, Game.TotalOnTable - course.Worth);
}

void EndCourse() { FollowWorth(); }

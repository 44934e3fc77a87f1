#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "checking/decisions/notice_texts.h"
#include "platform/platform.h"

namespace velmora {

struct Program;

/// Failures that are told together behind the walk.
struct CollectedFailures {
  std::vector<AccountFailure> accounts;
  std::vector<Question> boxes;  ///< what is asked instead where no notification can be shown
};

/// What a walk finds out for the desktop's notifications, as far as the user wants them.
struct WalkNotices {
  bool timed = false;  ///< it came by itself: nobody may be there to be asked
  std::vector<AccountNews> news;
  std::optional<CollectedFailures> failures;  ///< nothing where each is told in its box at once
};

/// A walk begins.
void BeginWalkNotices(Program& program, bool timed);

/// Notes what the check of an account has just found.
void NoteNews(Program& program, std::int16_t account);

/// What the walk has found. To be taken before anything else may begin: from then on no failure is collected.
WalkNotices takeWalkNotices(Program& program);

/// Shows notifications of it, each in the place of the one before it.
void ShowWalkNotices(Program& program, const WalkNotices& notices);

/// Shows the boxes of failures that were to be told in a notification which could not be shown, once nothing is in the
/// way.
void ShowUntoldFailures(Program& program);

}  // namespace velmora

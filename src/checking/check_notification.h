#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "checking/decisions/notification_texts.h"

namespace velmora {

struct Program;

/// As the Options page has it, saved or not.
struct SoundState {
  bool DefaultSoundValid = false;      ///< the default sound is there: it plays for all accounts
  bool SoundMaster = true;             ///< sounds are on. Without the tick checks are silent at once
  std::optional<std::size_t> testing;  ///< the bar of buttons whose sound the user tries
};

/// Sets the handlers of the Auto Check Message.
void ConnectMessage(Program& program);

/// Tells by window and sound what a timed walk found, as far as the user wants to know.
void AnnounceCheck(Program& program, const WalkFindings& found);

/// Plays what belongs to one account, or to all with 0, one sound after the other.
void PlayCheckSound(Program& program, std::int16_t account);

/// Plays a sound to its end. Returns whether it could be heard.
bool PlayWave(Program& program, const std::string& path);

/// Closes the Auto Check Message, if it is open.
void frmMessage_Unload(Program& program);

}  // namespace velmora

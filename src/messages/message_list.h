#pragma once

#include <cstdint>
#include <span>

#include "app/decisions/status_panels.h"
#include "messages/decisions/message_store.h"

namespace velmora {

struct Program;

/// What the list shows, and what the user has chosen in it.
struct ShownMessages {
  std::int16_t AcntLastShown = 0;    ///< whose messages the list holds: a click on its tab does nothing
  std::int16_t SelectedMessage = 0;  ///< what the actions on a message work on
  bool MessageSelected = false;      ///< these actions may be pressed
  bool SpamListed = false;           ///< rows of spam are among the messages
  AttachmentCounts listCounts;
};

/// Shows an account's messages on the Email page: list, tab, buttons and status panels. Whatever changes a message
/// calls it; the list is never edited row by row, so that row n is message n. Without accounts it does nothing.
void ShowAccountMessages(Program& program, std::int16_t account);

/// The same where nothing but the order of the account's messages has changed: message `order[i] + 1` has become
/// message `i + 1`. A blank order tells of none.
void ShowMessagesReordered(Program& program, std::int16_t account, std::span<const std::size_t> order);

/// The messages that an account holds now.
MessageRange messagesOf(Program& program, std::int16_t account);

/// The message that the actions on one message work on, null where there is none.
const MailMessage* selectedMail(Program& program);

/// Gives an account's tabs on both strips the picture of its state.
void SetAccountTabImage(Program& program, std::int16_t account);

/// Enables or disables the four actions on the selected message, on the toolbar and in the popup menu.
void EnableMessageActions(Program& program, bool enabled);

}  // namespace velmora

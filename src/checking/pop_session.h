#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string_view>

#include "checking/decisions/failure_texts.h"
#include "platform/pop/pop_client.h"

namespace velmora {

struct Account;
struct AccountState;
struct Options;
struct Program;

/// The one connection. A stop replaces the client while it works.
struct Connection {
  std::unique_ptr<IPopClientNotify> popEvents;
  std::shared_ptr<velmora::PopClient> PopClient;
  bool PopConnected = false;
  bool StopRequested = false;  ///< the only value that crosses from a button to a running check
  std::int16_t ReceivedCount = 0;
  int AnimationFrame = 0;  ///< 1 to 8 once the tab animation has run
};

/// The receiver of the POP client's events.
std::unique_ptr<IPopClientNotify> makePopEvents(Program& program);

/// Makes a client and has it tell its events.
void CreatePopClient(Program& program);

/// The client that is there now: a stop replaces it in the middle of a fetch, so nobody keeps it. Throws
/// invalidCallFailure once the program has let go of it.
PopClient& currentClient(Program& program);

/// The last failure of that client, number 0 where there was none.
FailureReport lastClientFailure(const Program& program);

/// Describes an account's server and login to the client, and what the options say of connections. Throws for a port
/// that is no number.
void DescribeConnection(PopClient& client, const Account& account, const Options& options);

/// Screen state, the password and all connection properties. Throws for a password that can't be had, and for a port
/// that is no number.
void PrepareConnection(Program& program, std::int16_t account);

/// The user gives up what goes on with a server. It ends as soon as it can.
void StopConnection(Program& program);

/// Screen state back, and the connection ended. Safe when nothing is connected, and more than once.
void CloseConnection(Program& program);

/// One whole retrieval of an account. The outcome is left in the account and in StopRequested; failures are shown here.
void RetrieveAccount(Program& program, std::int16_t account);

/// Connects, lists the mailbox and says how that went.
void TestConnection(Program& program, std::int16_t account);

/// What a failed retrieval leaves of an account: no messages and nothing new, whatever an earlier one found.
void ClearRetrieval(AccountState& account);

/// The dialog for a failure: of the client where it has one to tell, else of the program. A walk that tells its
/// failures together keeps it.
void ShowFailure(Program& program, std::int16_t account, const std::exception& failure, std::string_view title);

/// A tick of the tab animation, which also tells the user that a stop is under way.
void tmrRetrieveMessage_Timer(Program& program);

}  // namespace velmora

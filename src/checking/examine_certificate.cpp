#include "checking/examine_certificate.h"

#include "app/program.h"
#include "checking/decisions/certificate_texts.h"
#include "options/keep_settings.h"

namespace velmora {

/// Nobody may be there when a timed check comes. Of no certificate at all there is nothing to be seen.
bool IsUserAskedAboutCertificate(const Program& program, const std::exception& failure) {
  return describe(failure).number == pop_failure::certificateRefused && !program.walk.notices.timed &&
         (program.activity == Activity::Checking || program.activity == Activity::Testing) &&
         !program.connection.PopClient->Certificate().fingerprint.empty();
}

bool AcceptCertificate(Program& program, std::int16_t account) {
  const ServerCertificate shown = currentClient(program).Certificate();
  if (program.connection.StopRequested) return false;
  const Answer answer =
      program.platform.MsgBox(certificateQuestion(program.AppTitle, program.accounts[account], shown));
  if (answer != Answer::Yes || program.activity == Activity::Ending) return false;
  acceptCertificate(program.accounts[account], shown);
  acceptCertificate(program.accounts.Edit(account), shown);
  Accounts::SaveAccountFields(program.platform.settings(), account, program.accounts[account]);
  KeepSettings(program, "The certificate is accepted until " + program.AppTitle + " ends.");
  return !program.connection.StopRequested;
}

}  // namespace velmora

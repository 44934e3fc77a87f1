#include "options/desktop_section.h"

#include <array>
#include <cstdint>

#include "options/decisions/options.h"

namespace velmora {

namespace {

struct ChoiceText {
  std::int16_t Options::*option;
  Label DesktopSection::*label;
  const char* on;
  const char* off;
};

constexpr auto texts = std::to_array<ChoiceText>({
    {&Options::NotifyNew, &DesktopSection::lblNotifyNew,
     "The desktop shows what a timed check has found. A click on that opens the account.",
     "(Off)  New messages are told by the icon, the Auto Check Message and sounds alone."},
    {&Options::NotifyFailures, &DesktopSection::lblNotifyFailures,
     "All accounts that a timed check can't reach are told in one quiet notification.",
     "(Off)  A message box tells of each failure, and the check waits until it is closed."},
    {&Options::FollowMachine, &DesktopSection::lblFollowMachine,
     "Timed checks wait while there is no network, and come some seconds after sleep or when it is back.",
     "(Off)  Timed checks come at their times, whether there is a network or not."},
    {&Options::KeepInterval, &DesktopSection::lblKeepInterval,
     "Timed checks keep their interval on the last evening of a month, too.",
     "(Off)  On the last evening of a month checks follow each other without a pause, which servers may punish."},
    {&Options::UseKeyring, &DesktopSection::lblUseKeyring,
     "The desktop's keyring holds the passwords, the settings file none.",
     "(Off)  The settings file, which you alone can read, holds the passwords."},
    {&Options::RefuseUntrusted, &DesktopSection::lblRefuseUntrusted,
     "A secure server gets a password only if this system trusts its certificate, or you have accepted that.",
     "(Off)  Any certificate is taken: the connection is encrypted, but with whom is not examined."},
    {&Options::ProtocolLog, &DesktopSection::lblProtocolLog,
     "Commands and status lines of all connections are written into a file, without passwords and messages.",
     "(Off)  Nothing is written about connections."},
});

}  // namespace

void ShowChoiceTexts(DesktopSection& section, const Options& edit) {
  for (const ChoiceText& text : texts) {
    (section.*text.label).Caption = edit.*text.option == 1 ? text.on : text.off;
  }
}

void ShowLogPlace(DesktopSection& section, const std::string& path) {
  section.lblProtocolLog.Caption = section.lblProtocolLog.Caption.get() + " It is " + path;
}

}  // namespace velmora

#include "platform/qt/windows/desktop_section_view.h"

#include <QLabel>

#include "options/desktop_section.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/windows/section_parts.h"

namespace velmora {

void fillDesktop(SectionParts& parts, DesktopSection& section) {
  const auto add = [&parts](CheckBox& tick, const char* name, char letter, Label& note, const char* noteName) {
    parts.addTick(tick, name, letter);
    parts.addUnderTick(parts.makeNote(note, noteName));
  };
  add(section.chkNotifyNew, "chkNotifyNew", 'N', section.lblNotifyNew, "lblNotifyNew");
  add(section.chkNotifyFailures, "chkNotifyFailures", 'f', section.lblNotifyFailures, "lblNotifyFailures");
  parts.addGap();
  add(section.chkFollowMachine, "chkFollowMachine", 'C', section.lblFollowMachine, "lblFollowMachine");
  add(section.chkKeepInterval, "chkKeepInterval", 'm', section.lblKeepInterval, "lblKeepInterval");
  parts.addGap();
  add(section.chkUseKeyring, "chkUseKeyring", 'K', section.lblUseKeyring, "lblUseKeyring");
  add(section.chkRefuseUntrusted, "chkRefuseUntrusted", 'R', section.lblRefuseUntrusted, "lblRefuseUntrusted");
  add(section.chkProtocolLog, "chkProtocolLog", 'W', section.lblProtocolLog, "lblProtocolLog");
  parts.addGap();
  parts.add(parts.makeNote(section.lblMove, "lblMove"));
  parts.addUnderTick(
      parts.makeRow({makeToolbar(section.tbrOptMove, "tbrOptMove", ButtonLook::TextBesideIcon, parts.section())}));
}

}  // namespace velmora

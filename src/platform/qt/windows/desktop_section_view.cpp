#include "platform/qt/windows/desktop_section_view.h"

#include <QCheckBox>
#include <QLabel>

#include "options/desktop_section.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/windows/section_parts.h"

namespace velmora {

namespace {

/// The folder of the user's is a word that may be longer than a line.
QLabel* makePlaceNote(SectionParts& parts, Label& label, const char* name) {
  constexpr qsizetype widestWord = 40;
  auto* note = parts.makeNote(label, name);
  label.Caption.watch([note](const std::string& text) { note->setText(breakable(harmlessLine(text), widestWord)); });
  return note;
}

void addProtocolLog(SectionParts& parts, DesktopSection& section) {
  auto* tick = makeTick(section.chkProtocolLog, "chkProtocolLog", 'W', parts.section());
  auto* show = makeToolbar(section.tbrProtocolLog, "tbrProtocolLog", ButtonLook::TextBesideIcon, parts.section());
  setHeir(*show, *tick);
  parts.add(parts.makeRow({tick, show}));
  parts.addUnderTick(makePlaceNote(parts, section.lblProtocolLog, "lblProtocolLog"));
}

}  // namespace

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
  addProtocolLog(parts, section);
  parts.addGap();
  parts.add(parts.makeNote(section.lblMove, "lblMove"));
  parts.addUnderTick(
      parts.makeRow({makeToolbar(section.tbrOptMove, "tbrOptMove", ButtonLook::TextBesideIcon, parts.section())}));
}

}  // namespace velmora

#include "platform/qt/windows/option_sections.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <array>

#include "options/client_and_sound.h"
#include "options/options_page.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/icons.h"
#include "platform/qt/widgets/number_edit.h"
#include "platform/qt/widgets/plain_layout.h"
#include "platform/qt/widgets/prompt.h"
#include "platform/qt/widgets/time_edit.h"
#include "platform/qt/widgets/titled_frame.h"
#include "platform/qt/windows/colours_section.h"
#include "platform/qt/windows/desktop_section_view.h"
#include "platform/qt/windows/section_parts.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

namespace {

void fillStartUp(SectionParts& parts, OptionsPage& page) {
  parts.addTick(page.chkRunStartUp, "chkRunStartUp", 'R');
  parts.addUnderTick(parts.makeNote(page.lblRunStartUp, "lblRunStartUp"));
  parts.addGap();
  parts.addTick(page.chkEmailCheckStartUp, "chkEmailCheckStartUp", 'C');
  parts.addUnderTick(parts.makeNote(page.lblEmailCheckStartUp, "lblEmailCheckStartUp"));
  auto* delay = new NumberEdit(page.txtStartUpDelay, "txtStartUpDelay", parts.section());
  parts.addUnderTick(parts.makeRow(
      {parts.makeWords(page.lblStartUpDelay, "lblStartUpDelay", 'D', delay, "Seconds before the check at start-up"),
       delay, makeLabel(page.lblStartUpSeconds, "lblStartUpSeconds", parts.section())}));
  parts.addGap();
  parts.addTick(page.chkMinimizeStartUp, "chkMinimizeStartUp", 'M');
  parts.addUnderTick(parts.makeNote(page.lblMinimizeStartUp, "lblMinimizeStartUp"));
}

QWidget* makeInterval(SectionParts& parts, OptionsPage& page) {
  auto* hours = new NumberEdit(page.txtHours, "txtHours", parts.section());
  auto* minutes = new NumberEdit(page.txtMinutes, "txtMinutes", parts.section());
  return parts.makeRow({parts.makeWords(page.lblHours, "lblHours", 'C', hours, "Hours of the interval"), hours,
                        parts.makeWords(page.lblMinutes, "lblMinutes", 'h', minutes, "Minutes of the interval"),
                        minutes, makeLabel(page.lblMinutesEnd, "lblMinutesEnd", parts.section())});
}

QWidget* makeQuietTime(SectionParts& parts, OptionsPage& page) {
  auto* tick = makeTick(page.chkNoCheck, "chkNoCheck", 'b', parts.section());
  tick->setAccessibleName("Do Not Check in the quiet time");
  auto* begin = new TimeEdit(page.txtNoCheckTime[0], "txtNoCheckTime0", parts.section());
  auto* end = new TimeEdit(page.txtNoCheckTime[1], "txtNoCheckTime1", parts.section());
  begin->setAccessibleName("Begin of the quiet time");
  auto* words = makePrompt("a&nd", end, page.txtNoCheckTime[1].Enabled);
  end->setAccessibleName("End of the quiet time");
  return parts.makeRow({tick, begin, words, end});
}

QWidget* makeMessageTime(SectionParts& parts, OptionsPage& page) {
  auto* time = new NumberEdit(page.txtMsgBoxTime, "txtMsgBoxTime", parts.section());
  return parts.makeRow({parts.makeWords(page.lblMsgBoxTime, "lblMsgBoxTime", 'f', time,
                                        "Seconds for which the Auto Check Message shows"),
                        time, makeLabel(page.lblMsgBoxSeconds, "lblMsgBoxSeconds", parts.section())});
}

void fillAutoCheck(SectionParts& parts, OptionsPage& page) {
  parts.addTick(page.chkUseInterval, "chkUseInterval", 'E');
  parts.addUnderTick(parts.makeNote(page.lblUseInterval, "lblUseInterval"));
  parts.addUnderTick(makeInterval(parts, page));
  parts.addUnderTick(makeQuietTime(parts, page));
  parts.addGap();
  parts.addTick(page.chkShowEmailMsgBox, "chkShowEmailMsgBox", 'S');
  parts.addUnderTick(SectionParts::nameOptions(
      makeOptions(page.optShowEmail, "optShowEmail", "OWA", Qt::Vertical, parts.section()), "Show the message"));
  parts.addUnderTick(makeMessageTime(parts, page));
  parts.addUnderTick(parts.makeNote(page.lblMsgBoxNote, "lblMsgBoxNote"));
  parts.addUnderTick(parts.makeNote(page.lblPlaySound[1], "lblPlaySound1"));
}

/// A box of a path, and the buttons that find and try what it names. They hand the keyboard to it when they go off.
void addPath(SectionParts& parts, QGridLayout& grid, TextBox& box, const QString& name, const QString& prompt,
             Toolbar& buttons, const QString& buttonsName) {
  constexpr int leastLength = 16;
  auto* path = new QLineEdit(parts.section());
  path->setObjectName(name);
  path->setMinimumWidth(path->fontMetrics().averageCharWidth() * leastLength);
  bindInput(box, *path);
  auto* tools = makeToolbar(buttons, buttonsName, ButtonLook::TextBesideIcon, parts.section());
  setHeir(*tools, *path);
  const int row = grid.rowCount();
  grid.addWidget(makePrompt(prompt, path), row, 0);
  grid.addWidget(path, row, 1);
  grid.addWidget(tools, row, 2);
}

/// A part beside its prompt, which there may be none of.
void addRow(QGridLayout& grid, QWidget* prompt, QWidget* part) {
  const int row = grid.rowCount();
  if (prompt != nullptr) grid.addWidget(prompt, row, 0);
  grid.addWidget(part, row, 1, 1, 2, Qt::AlignLeft);
}

void addDefaultPaths(SectionParts& parts, QGridLayout& grid, OptionsPage& page, ClientAndSound& bars) {
  QWidget* section = parts.section();
  addPath(parts, grid, page.txtDefaultClient, "txtDefaultClient",
          "Default &Email Client:", bars.tbrClient[defaultClientBar], "tbrClient0");
  grid.addWidget(parts.makeNote(page.lblDefaultClient, "lblDefaultClient"), grid.rowCount(), 1, 1, 2);
  addRow(grid, new QLabel("Run:", section),
         SectionParts::nameOptions(makeOptions(page.optRunSize, "optRunSize", "NM", Qt::Horizontal, section), "Run"));
  addPath(parts, grid, page.txtDefaultSound, "txtDefaultSound", "&Default Sound:", bars.tbrSound[defaultClientBar],
          "tbrSound0");
  addRow(grid, nullptr, makeTick(page.chkPlaySound, "chkPlaySound", 'O', section));
  grid.addWidget(parts.makeNote(page.lblPlaySound[0], "lblPlaySound0"), grid.rowCount(), 1, 1, 2);
  auto* timeOut = new NumberEdit(page.txtConnectTimeOut, "txtConnectTimeOut", section);
  addRow(grid, makePrompt("Connection &TimeOut:", timeOut),
         parts.makeRow({timeOut, makeLabel(page.lblConnectTimeOut, "lblConnectTimeOut", section)}));
  timeOut->setAccessibleName("Seconds of the Connection TimeOut");
}

void fillDefaults(SectionParts& parts, OptionsPage& page, ClientAndSound& bars) {
  auto* frame = new QWidget(parts.section());
  auto* grid = plainLayout<QGridLayout>(frame);
  grid->setColumnStretch(1, 1);
  addDefaultPaths(parts, *grid, page, bars);
  parts.add(frame);
  parts.addGap();
  parts.addTick(page.chkQuickCheck, "chkQuickCheck", 'Q');
  parts.addTick(page.chkDeleteConfirmation, "chkDeleteConfirmation", 'C');
  parts.addTick(page.chkCloseButton, "chkCloseButton", 'X');
  parts.addTick(page.chkSuppressConnectErrors, "chkSuppressConnectErrors", 'S');
  parts.addTick(page.chkSuppressRetrieveErrors, "chkSuppressRetrieveErrors", 'R');
}

QWidget* makeApplyStyle(OptionsPage& page, QWidget* parent) {
  auto* frame = new TitledFrame(page.fraApplyStyle, "fraApplyStyle", parent);
  auto* row = new QHBoxLayout(frame);
  row->addWidget(SectionParts::nameOptions(
      makeOptions(page.optApplyStyle, "optApplyStyle", "LUIA", Qt::Horizontal, frame), "Apply to"));
  row->addStretch(1);
  return frame;
}

QWidget* makeSort(OptionsPage& page, QWidget* parent) {
  auto* frame = new TitledFrame(page.fraSort, "fraSort", parent);
  auto* grid = new QGridLayout(frame);
  grid->setColumnStretch(2, 1);
  grid->addWidget(new QLabel("Column:", frame), 0, 0);
  grid->addWidget(SectionParts::nameOptions(
                      makeOptions(page.optSortColumn, "optSortColumn", "emobDz", Qt::Horizontal, frame), "Sort by"),
                  0, 1, Qt::AlignLeft);
  grid->addWidget(new QLabel("Order:", frame), 1, 0);
  grid->addWidget(
      SectionParts::nameOptions(makeOptions(page.optSortOrder, "optSortOrder", "gc", Qt::Horizontal, frame), "Order"),
      1, 1, Qt::AlignLeft);
  return frame;
}

QWidget* makeToolTips(SectionParts& parts, OptionsPage& page) {
  QWidget* section = parts.section();
  auto* from = makeTick(page.chkFromToolTips, "chkFromToolTips", 'F', section);
  auto* to = makeTick(page.chkToToolTips, "chkToToolTips", 'T', section);
  auto* subject = makeTick(page.chkSubjectToolTips, "chkSubjectToolTips", 'S', section);
  for (auto* tick : {from, to, subject}) tick->setAccessibleName("ToolTips on " + tick->accessibleName());
  return parts.makeRow(
      {from, to, subject, makeToolbar(page.tbrOptMisc[0], "tbrOptMisc0", ButtonLook::TextBesideIcon, section)});
}

void fillMiscellaneous(SectionParts& parts, OptionsPage& page) {
  QWidget* section = parts.section();
  parts.addTick(page.chkShowNewOnly, "chkShowNewOnly", 'N');
  parts.addTick(page.chkRestoreColWidth, "chkRestoreColWidth", 'W');
  parts.addUnderTick(
      parts.makeRow({makeToolbar(page.tbrOptMisc[1], "tbrOptMisc1", ButtonLook::TextBesideIcon, section)}));
  parts.addGap();
  parts.addTick(page.chkButtonStyle, "chkButtonStyle", 'R');
  parts.addUnderTick(makeApplyStyle(page, section));
  parts.addGap();
  parts.add(parts.makeNote(page.lblToolTips, "lblToolTips"));
  parts.addUnderTick(makeToolTips(parts, page));
  parts.addGap();
  parts.addTick(page.chkMessageSort, "chkMessageSort", 'y');
  parts.addUnderTick(makeSort(page, section));
}

void fillAbout(SectionParts& parts, OptionsPage& page) {
  constexpr QSize pictureSize(64, 64);
  QWidget* section = parts.section();
  const auto add = [&](const char* name) {
    auto* label = new QLabel(section);
    label->setObjectName(name);
    parts.addCentred(label);
    return label;
  };
  parts.addStretch();
  add("imgAbout")->setPixmap(applicationIcon().pixmap(pictureSize, section->devicePixelRatioF()));
  bind(page.lblAboutTitle, *add("lblAboutTitle"));
  bindLink(page.lblAboutWebSite, *add("lblAboutWebSite"));
  bindLink(page.lblAboutEmail, *add("lblAboutEmail"));
  parts.addCentred(makeToolbar(page.tbrOptAbout, "tbrOptAbout", ButtonLook::TextBesideIcon, section));
}

}  // namespace

QWidget* makeSection(std::int16_t section, OptionsPage& page, ClientAndSound& bars, QWidget* parent) {
  auto* widget = new QWidget(parent);
  SectionParts parts(widget);
  if (section == startUpSection) fillStartUp(parts, page);
  if (section == autoCheckSection) fillAutoCheck(parts, page);
  if (section == defaultsSection) fillDefaults(parts, page, bars);
  if (section == coloursSection) fillColours(parts, page);
  if (section == miscellaneousSection) fillMiscellaneous(parts, page);
  if (section == aboutSection) fillAbout(parts, page);
  if (section == desktopSection) fillDesktop(parts, page);
  parts.addStretch();
  return widget;
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)

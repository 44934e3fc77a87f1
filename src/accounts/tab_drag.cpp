#include "accounts/tab_drag.h"

#include <cstdint>

#include "accounts/account_order.h"
#include "app/program.h"

namespace velmora {

namespace {

constexpr std::int16_t onEmailStrip = 1;
constexpr std::int16_t onAccountsStrip = 2;

constexpr std::int16_t dropPicture = 1;
constexpr std::int16_t noDropPicture = 2;

void noteEdges(Program& program, TabStrip& strip) {
  auto& edges = program.accounts.TabEdges;
  edges[0] = 0;
  for (const std::int16_t i : program.accounts.numbers()) {
    const auto index = static_cast<std::size_t>(i);
    edges[index] = edges[index - 1] + strip.Tabs(i).Width;
  }
  edges[0] = edges.back();
}

/// A changed account can't be left by a press alone: its tab's click asks first. Nor can it change its place.
void strip_MouseDown(Program& program, TabStrip& strip, std::int16_t source, MouseButton button, std::int32_t x) {
  if (button == MouseButton::Right || program.unsaved.AcntDirty) return;
  const std::int16_t pressed = program.accounts.TabAtPosition(x);
  if (pressed == 0) return;
  if (pressed != program.accounts.AcntCurrent) {
    program.accounts.AcntCurrent = pressed;
    strip.SelectTab(pressed);
  }
  program.tabDrag.DragSource = source;
  program.frmMain.tmrDragTab.Enabled = false;
  program.frmMain.tmrDragTab.Enabled = true;
}

/// A check may have begun meanwhile, and the user have typed.
void tmrDragTab_Timer(Program& program) {
  MainWindow& frmMain = program.frmMain;
  frmMain.tmrDragTab.Enabled = false;
  TabStrip& strip = program.tabDrag.DragSource == onEmailStrip ? frmMain.TabStripEmail : frmMain.TabStripAcnts;
  strip.DragIcon = dropPicture;  // the last drag may have been given up outside
  strip.Dragging = strip.Enabled && !program.unsaved.AcntDirty;
}

void strip_DragOver(Program& program, TabStrip& strip, std::int32_t x, std::int32_t y) {
  const bool onTabs = x >= 0 && x <= program.accounts.TabEdges[0] && y >= 0 && y <= strip.Height;
  strip.DragIcon = onTabs ? dropPicture : noDropPicture;
}

void strip_DragDrop(Program& program, TabStrip& strip, std::int32_t x) {
  program.frmMain.tmrDragTab.Enabled = false;
  strip.Dragging = false;
  if (program.unsaved.AcntDirty) return;  // typed since
  const std::int16_t target = program.accounts.TabAtPosition(x);
  const std::int16_t current = program.accounts.AcntCurrent;
  if (target == 0 || target == current) return;
  SwapAccounts(program, current, static_cast<std::int16_t>(target - current));
}

void connectStrip(Program& program, TabStrip& strip, std::int16_t source) {
  strip.BeforeClick = [&program, &strip] { noteEdges(program, strip); };
  strip.MouseDown = [&program, &strip, source](MouseButton button, std::int32_t x) {
    strip_MouseDown(program, strip, source, button, x);
  };
  strip.MouseUp = [&program] { program.frmMain.tmrDragTab.Enabled = false; };
  strip.DragOver = [&program, &strip](std::int32_t x, std::int32_t y) { strip_DragOver(program, strip, x, y); };
  strip.DragDrop = [&program, &strip](std::int32_t x) { strip_DragDrop(program, strip, x); };
}

}  // namespace

void ConnectTabDrag(Program& program) {
  MainWindow& frmMain = program.frmMain;
  connectStrip(program, frmMain.TabStripEmail, onEmailStrip);
  connectStrip(program, frmMain.TabStripAcnts, onAccountsStrip);
  frmMain.tmrDragTab.Tick = [&program] { tmrDragTab_Timer(program); };
}

}  // namespace velmora

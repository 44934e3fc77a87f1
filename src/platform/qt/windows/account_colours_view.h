#pragma once

class QToolButton;
class QWidget;

namespace velmora {

struct AccountsPage;

/// Lays out the box of colours that an account may have in a widget that `frame` owns. It opens beside the button that
/// asks for it, takes the keyboard and hands it back. `page` and `button` outlive it.
void addColourBoxes(AccountsPage& page, QWidget* frame, QToolButton& button);

}  // namespace velmora

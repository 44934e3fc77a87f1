#pragma once

class QWidget;

namespace velmora {

struct AccountsPage;

/// Lays out the Accounts page inside `parent`, which owns it. `page` outlives it.
QWidget* makeAccountsPage(AccountsPage& page, QWidget* parent);

}  // namespace velmora

#pragma once

class QWidget;

namespace velmora {

struct AccountsPage;
struct ClientAndSound;

/// Lays out the Accounts page inside `parent`, which owns it. `page` and `bars` outlive it.
QWidget* makeAccountsPage(AccountsPage& page, ClientAndSound& bars, QWidget* parent);

}  // namespace velmora

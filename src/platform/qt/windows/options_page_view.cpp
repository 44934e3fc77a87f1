#include "platform/qt/windows/options_page_view.h"

#include <QLabel>
#include <QVBoxLayout>

#include "options/options_page.h"
#include "platform/qt/widgets/bind.h"
#include "platform/qt/widgets/icons.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

QWidget* makeOptionsPage(OptionsPage& options, QWidget* parent) {
  auto* page = new QWidget(parent);
  auto* column = new QVBoxLayout(page);
  column->addStretch(1);
  const auto addLabel = [&](const char* name) {
    auto* label = new QLabel(page);
    label->setObjectName(name);
    column->addWidget(label, 0, Qt::AlignHCenter);
    return label;
  };
  auto* picture = addLabel("imgAbout");
  constexpr QSize pictureSize(64, 64);
  picture->setPixmap(applicationIcon().pixmap(pictureSize, page->devicePixelRatioF()));
  bind(options.lblAboutTitle, *addLabel("lblAboutTitle"));
  bindLink(options.lblAboutWebSite, *addLabel("lblAboutWebSite"));
  bindLink(options.lblAboutEmail, *addLabel("lblAboutEmail"));
  column->addWidget(makeToolbar(options.tbrOptAbout, "tbrOptAbout", ButtonLook::TextBesideIcon, page), 0,
                    Qt::AlignHCenter);
  column->addStretch(1);
  return page;
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)

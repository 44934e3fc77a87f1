#pragma once

#include <QString>
#include <string_view>

class QPoint;
class QRect;
class QWidget;

namespace velmora {

/// The markup that shows a text, with line breaks CR LF, exactly as it is: a tip takes a text that looks like markup
/// for such. Of more lines or longer ones than fit a screen the beginning is shown.
QString plainTip(std::string_view text);

/// Shows a text beside the pointer for as long as it stays in `area` of the widget, and no longer than `milliseconds`
/// (-1: as long as the desktop thinks fit). A blank text takes away the tip that is there.
void showTip(std::string_view text, const QPoint& globalPosition, QWidget& widget, const QRect& area,
             int milliseconds = -1);

}  // namespace velmora

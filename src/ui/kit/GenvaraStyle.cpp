#include "GenvaraStyle.h"

#include <QPainter>
#include <QStyleOption>

#include "Theme.h"

namespace genvara {

void GenvaraStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_IndicatorCheckBox;
    const bool button = element == PE_IndicatorRadioButton;
    if ((!box && !button) || !theme::IsDark(option->palette) || (option->state & State_Enabled) == 0) {
        return;
    }
    // The toolkit's own outline is the ground's colour, darkened.
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(theme::IndicatorOutline(option->palette), 1.0));
    painter->setBrush(Qt::NoBrush);
    const QRectF outline = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (box) {
        painter->drawRoundedRect(outline, 2.0, 2.0);
    } else {
        painter->drawEllipse(outline);
    }
    painter->restore();
}

}  // namespace genvara

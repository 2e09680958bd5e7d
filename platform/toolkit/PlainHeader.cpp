// Painting of the header.
#include "platform/toolkit/PlainHeader.h"

#include <QPainter>
#include <utility>

#include "platform/toolkit/CellDelegate.h"
#include "platform/toolkit/ViewColours.h"

namespace toolkit {

void PlainHeader::paintSection(QPainter* pPainter, const QRect& tRect, int iSection) const {
    if (!tRect.isValid()) return;
    QStyleOptionHeaderV2 tOption;
    initStyleOption(&tOption);
    tOption.rect = tRect;
    initStyleOptionForIndex(&tOption, iSection);
    const QString sText = std::exchange(tOption.text, QString());
    pPainter->save();
    style()->drawControl(QStyle::CE_Header, &tOption, pPainter, this);
    pPainter->restore();

    pPainter->save();
    pPainter->setFont(font());
    pPainter->setPen(palette().color(ColourGroup(*this), QPalette::ButtonText));
    const bool bFits = fontMetrics().horizontalAdvance(sText) <= tRect.width();
    pPainter->drawText(tRect, static_cast<int>(tOption.textAlignment) | Qt::TextSingleLine,
                       bFits ? sText : Elided(font(), sText, tRect.width(), false));
    pPainter->restore();
}

}  // namespace toolkit

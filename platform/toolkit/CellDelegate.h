// Draws the texts of a grid's cells. A text that does not fit takes the cell's padding first and then is cut with an
// ellipsis, so that no part of a number ever stands there like a number.
#pragma once

#include <QStaticText>
#include <QStyledItemDelegate>
#include <utility>

#include "platform/toolkit/RecentlyUsed.h"

namespace toolkit {

// As much of a text as has room in iWidth pixels beside an ellipsis, which stands where the text is cut; where not even
// the ellipsis has room, as many raised dots as have, one at least: one on the line would be the decimal point of the
// number in the next column.
QString Elided(const QFont& tFont, const QString& sText, int iWidth, bool bAtLeft);

class CellDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    static constexpr int RowPadding = 4;               // pixels that a row is higher than its font
    static constexpr int PaintingsToGeneration = 256;  // half a minute of beats

    using QStyledItemDelegate::QStyledItemDelegate;
    // To be told before each painting: a text that has not been drawn for a while is forgotten.
    void BeginPainting();
    // Draws a text with the painter's font and pen, cut where it must be; tCell is the cell without its grid lines.
    void DrawText(QPainter& tPainter, const QRect& tCell, Qt::Alignment eAlignment, const QString& sText) const;
    // The text with its padding.
    QSize sizeHint(const QStyleOptionViewItem& tOption, const QModelIndex& tIndex) const override;
    // Whether a text is cut in a cell of iWidth pixels, its grid line left out.
    bool IsCut(const QFont& tFont, const QString& sText, int iWidth) const;

protected:
    mutable RecentlyUsed<QString, QStaticText> m_tWhole{2048};  // a full table has some 2,000 different texts
    // By text and width; the width is negative for a text that is cut at the left.
    mutable RecentlyUsed<std::pair<QString, int>, QStaticText> m_tCut{512};

private:
    void ForgetOtherFonts(const QFont& tFont) const;
    const QStaticText& Whole(const QFont& tFont, const QString& sText) const;
    const QStaticText& Cut(const QFont& tFont, const QString& sText, int iWidth, bool bAtLeft) const;

    mutable QFont m_tFont;  // of all that is kept
    int m_iPaintings = 0;   // of this generation
};

}  // namespace toolkit

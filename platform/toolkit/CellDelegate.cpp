// The texts of a grid's cells, laid out once and kept: laying a text out is the dear part of drawing it, and from one
// beat to the next nearly all texts stay. The stock delegate lays out every text anew.
#include "platform/toolkit/CellDelegate.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace toolkit {

namespace {

constexpr int CellPadding = 2;  // pixels left and right of a cell's text
constexpr int GridLine = 1;     // pixels of its column that a cell does not have

QStaticText LaidOut(const QFont& tFont, const QString& sText) {
    QStaticText t(sText);
    t.setTextFormat(Qt::PlainText);
    t.prepare({}, tFont);
    return t;
}

// A column as wide as its text leaves it a pixel less: there the free edge of the last letter may lie.
bool Fits(const QFont& tFont, const QString& sText, double dText, int iWidth) {
    if (dText <= iWidth) return true;
    return dText <= iWidth + GridLine && dText - QFontMetricsF(tFont).rightBearing(sText.back()) <= iWidth;
}

// Where a text of that width begins: its side's padding gives way when there is no room for it.
double LeftOf(const QRect& tCell, double dText, Qt::Alignment eAlignment) {
    const double dRoom = std::max(0.0, tCell.width() - dText);
    if (eAlignment.testFlag(Qt::AlignHCenter)) return tCell.left() + dRoom / 2;
    const double dPadding = std::min<double>(CellPadding, dRoom);
    return eAlignment.testFlag(Qt::AlignRight) ? tCell.left() + dRoom - dPadding : tCell.left() + dPadding;
}

}  // namespace

QString Elided(const QFont& tFont, const QString& sText, int iWidth, bool bAtLeft) {
    const QFontMetricsF tMetrics(tFont);
    const QChar cEllipsis(0x2026);
    for (qsizetype iKept = sText.size() - 1; iKept >= 0; --iKept) {
        const QString sCut = bAtLeft ? cEllipsis + sText.right(iKept) : sText.left(iKept) + cEllipsis;
        if (tMetrics.horizontalAdvance(sCut) <= iWidth) return sCut;
    }
    const QChar cDot(0xb7);
    const double dDot = std::max(1.0, tMetrics.horizontalAdvance(cDot));
    return QString(std::clamp(static_cast<int>((iWidth + GridLine) / dDot), 1, 3), cDot);
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem& tOption, const QModelIndex& tIndex) const {
    const double dText = Whole(tOption.font, tIndex.data().toString()).size().width();
    return {static_cast<int>(std::ceil(dText)) + 2 * CellPadding, tOption.fontMetrics.height() + RowPadding};
}

bool CellDelegate::IsCut(const QFont& tFont, const QString& sText, int iWidth) const {
    return !sText.isEmpty() && !Fits(tFont, sText, Whole(tFont, sText).size().width(), iWidth);
}

void CellDelegate::DrawText(QPainter& tPainter, const QRect& tCell, Qt::Alignment eAlignment,
                            const QString& sText) const {
    if (sText.isEmpty()) return;
    const QFont& tFont = tPainter.font();
    const QStaticText& tWhole = Whole(tFont, sText);
    const bool bCut = !Fits(tFont, sText, tWhole.size().width(), tCell.width());
    const bool bAtLeft = eAlignment.testFlag(Qt::AlignRight);
    const QStaticText& tText = bCut ? Cut(tFont, sText, tCell.width(), bAtLeft) : tWhole;
    const QSizeF tSize = tText.size();
    // Rounded the same way above and below the top edge: a row that is scrolled out must not jump by a pixel.
    const QPointF tPlace(std::floor(LeftOf(tCell, tSize.width(), eAlignment) + 0.5),
                         std::floor(tCell.top() + (tCell.height() - tSize.height()) / 2 + 0.5));
    if (!bCut || tSize.width() <= tCell.width()) {
        tPainter.drawStaticText(tPlace, tText);
        return;
    }
    tPainter.save();  // a column narrower than a dot
    tPainter.setClipRect(tCell, Qt::IntersectClip);
    tPainter.drawStaticText(tPlace, tText);
    tPainter.restore();
}

void CellDelegate::BeginPainting() {
    if (++m_iPaintings < PaintingsToGeneration) return;
    m_iPaintings = 0;
    m_tWhole.Age();
    m_tCut.Age();
}

void CellDelegate::ForgetOtherFonts(const QFont& tFont) const {
    if (tFont == m_tFont) return;
    m_tWhole.Clear();
    m_tCut.Clear();
    m_tFont = tFont;
}

const QStaticText& CellDelegate::Whole(const QFont& tFont, const QString& sText) const {
    ForgetOtherFonts(tFont);
    return m_tWhole.Get(sText, [&] { return LaidOut(tFont, sText); });
}

const QStaticText& CellDelegate::Cut(const QFont& tFont, const QString& sText, int iWidth, bool bAtLeft) const {
    ForgetOtherFonts(tFont);
    const std::pair<QString, int> tKey(sText, bAtLeft ? -iWidth : iWidth);
    return m_tCut.Get(tKey, [&] { return LaidOut(tFont, Elided(tFont, sText, iWidth, bAtLeft)); });
}

}  // namespace toolkit

// What can be read off a picture of the window: where a text stands, drawn whole, and in which place two pictures
// differ.
#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <map>
#include <optional>
#include <vector>

namespace support {

inline QImage PictureOf(QWidget& t) { return t.grab().toImage().convertToFormat(QImage::Format_RGB32); }

// A widget's place in the window.
inline QRect PlaceIn(const QWidget& tWindow, const QWidget& t) { return {t.mapTo(&tWindow, QPoint(0, 0)), t.size()}; }

// The colour of most of a picture.
inline QColor GroundOf(const QImage& t) {
    std::map<QRgb, int> iCounts;
    for (int y = 0; y < t.height(); ++y) {
        for (int x = 0; x < t.width(); ++x) ++iCounts[t.pixel(x, y)];
    }
    QRgb lMost = 0;
    int iMost = 0;
    for (const auto& [lColour, iCount] : iCounts) {
        if (iCount > iMost) std::tie(lMost, iMost) = std::pair(lColour, iCount);
    }
    return QColor::fromRgb(lMost);
}

// The smallest rectangle with all pixels in which two pictures of the same size differ.
inline QRect Difference(const QImage& t1, const QImage& t2) {
    QRect tAll;
    for (int y = 0; y < t1.height(); ++y) {
        for (int x = 0; x < t1.width(); ++x) {
            if (t1.pixel(x, y) != t2.pixel(x, y)) tAll |= QRect(x, y, 1, 1);
        }
    }
    return tAll;
}

// A picture as ink, ground and what is neither, the edges of the letters: those are not the same on every ground.
class Ink {
public:
    enum Pixel : char { Ground, Edge, Letter };

    Ink(const QImage& t, const QColor& tInk, const QColor& tGround) : m_iWidth(t.width()), m_iHeight(t.height()) {
        const int iGround = qGray(tGround.rgb());
        const double dContrast = qGray(tInk.rgb()) - iGround;
        for (int y = 0; y < t.height(); ++y) {
            for (int x = 0; x < t.width(); ++x) {
                const double dInk = (qGray(t.pixel(x, y)) - iGround) / dContrast;
                m_ePixels.push_back(dInk < 0.3 ? Ground : dInk > 0.7 ? Letter : Edge);
                if (dInk > 0.3) tBounds |= QRect(x, y, 1, 1);
            }
        }
    }
    Pixel At(int x, int y) const { return m_ePixels[static_cast<std::size_t>(y * m_iWidth + x)]; }
    int Width() const { return m_iWidth; }
    int Height() const { return m_iHeight; }
    auto Letters() const { return std::count(m_ePixels.begin(), m_ePixels.end(), Letter); }
    QRect tBounds;  // of all that is not ground

private:
    int m_iWidth, m_iHeight;
    std::vector<Pixel> m_ePixels;
};

// A text as it looks in that font, one line of it, "&" before an underlined letter; dShift is what it stands right of a
// whole pixel.
inline Ink InkOf(const QString& sText, const QFont& tFont, double dShift) {
    const QFontMetrics tMetrics(tFont);
    QImage t(tMetrics.horizontalAdvance(sText) + 40, 3 * tMetrics.height(), QImage::Format_RGB32);
    t.fill(Qt::white);
    QPainter tPainter(&t);
    tPainter.setFont(tFont);
    tPainter.setPen(Qt::black);
    tPainter.drawText(QRectF(t.rect()).adjusted(10 + dShift, 0, 0, 0),
                      Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine, sText);
    tPainter.end();
    return {t, Qt::black, Qt::white};
}

// Where some ink stands in a picture, whole and with nothing in between; a pixel in fifty may be another.
inline std::optional<QRect> FindInk(const Ink& tShown, const Ink& tText) {
    const QRect& tLooked = tText.tBounds;
    const int iAllowed = tLooked.width() * tLooked.height() / 50;
    for (int iTop = 0; iTop + tLooked.height() <= tShown.Height(); ++iTop) {
        for (int iLeft = 0; iLeft + tLooked.width() <= tShown.Width(); ++iLeft) {
            int iWrong = 0;
            for (int y = 0; y < tLooked.height() && iWrong <= iAllowed; ++y) {
                for (int x = 0; x < tLooked.width(); ++x) {
                    const Ink::Pixel eText = tText.At(tLooked.left() + x, tLooked.top() + y);
                    const Ink::Pixel eShown = tShown.At(iLeft + x, iTop + y);
                    iWrong += eText != eShown && eText != Ink::Edge && eShown != Ink::Edge;
                }
            }
            if (iWrong <= iAllowed) return QRect(QPoint(iLeft, iTop), tLooked.size());
        }
    }
    return std::nullopt;
}

// Where a text stands in a picture. One that is centred may begin at a part of a pixel, drawn in steps of a quarter.
inline std::optional<QRect> FindText(const QImage& tPicture, const QString& sText, const QFont& tFont,
                                     const QColor& tInk) {
    const Ink tShown(tPicture, tInk, GroundOf(tPicture));
    for (const double dShift : {0.0, 0.5, 0.25, 0.75}) {
        if (const auto tPlace = FindInk(tShown, InkOf(sText, tFont, dShift))) return tPlace;
    }
    return std::nullopt;
}

}  // namespace support

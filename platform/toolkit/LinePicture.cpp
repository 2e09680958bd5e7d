// Painting of the line picture.
#include "platform/toolkit/LinePicture.h"

#include <QPainter>

#include "platform/toolkit/Twips.h"

namespace toolkit {

namespace {

constexpr double LineWidth = 1.4;  // device-independent pixels

}  // namespace

void LinePicture::Clear() {
    m_tLines.clear();
    m_tBoxes.clear();
    ClearDrawing();
}

void LinePicture::DrawLine(const runtime::Stroke& tStroke) {
    m_tDrawn.push_back(tStroke);
    update();
}

void LinePicture::ClearDrawing() {
    m_tDrawn.clear();
    update();
}

void LinePicture::paintEvent(QPaintEvent*) {
    QPainter tPainter(this);
    tPainter.setRenderHint(QPainter::Antialiasing);
    tPainter.setPen(QPen(palette().color(QPalette::WindowText), LineWidth, Qt::SolidLine, Qt::RoundCap));
    const auto Draw = [&tPainter](const runtime::Stroke& t) {
        tPainter.drawLine(QPointF(t.lX1 / TwipsPerPixel, t.lY1 / TwipsPerPixel),
                          QPointF(t.lX2 / TwipsPerPixel, t.lY2 / TwipsPerPixel));
    };
    for (const runtime::Stroke& t : m_tLines) Draw(t);
    for (const runtime::Stroke& t : m_tDrawn) Draw(t);
    tPainter.setPen(QPen(palette().color(QPalette::Text), LineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    tPainter.setBrush(palette().base());
    for (const QRect& t : m_tBoxes) tPainter.drawRect(QRectF(t));
}

}  // namespace toolkit

// The picture's canvas.
#include "platform/toolkit/PictureBox.h"

#include <QPainter>

namespace toolkit {

PictureBox::PictureBox(QWidget* pParent) : QWidget(pParent) {}

void PictureBox::FitCanvas() {
    const QSize tSize = size() * devicePixelRatioF();
    if (tSize == m_tCanvas.size() || tSize.isEmpty()) return;
    QPixmap tCanvas(tSize);
    tCanvas.setDevicePixelRatio(devicePixelRatioF());
    tCanvas.fill(Qt::transparent);
    if (!m_tCanvas.isNull()) QPainter(&tCanvas).drawPixmap(0, 0, m_tCanvas);
    m_tCanvas = tCanvas;
}

void PictureBox::Draw(std::span<const runtime::Primitive> tPrimitives) {
    FitCanvas();
    if (m_tCanvas.isNull()) return;
    QPainter tPainter(&m_tCanvas);
    for (const runtime::Primitive& t : tPrimitives) {
        const QColor tColour(t.tColour.iRed, t.tColour.iGreen, t.tColour.iBlue);
        const int iWidth = t.lX2 - t.lX1;
        const int iHeight = t.lY2 - t.lY1;
        if (t.eKind == runtime::Primitive::Kind::Rectangle) {
            tPainter.fillRect(QRect(t.lX1, t.lY1, iWidth, iHeight), tColour);
        } else {
            tPainter.fillRect(QRect(t.lX1, t.lY1, iWidth + 1, iHeight), tColour);
        }
    }
    update();
}

void PictureBox::Clear() {
    m_tCanvas.fill(Qt::transparent);
    update();
}

void PictureBox::paintEvent(QPaintEvent*) {
    if (!m_tCanvas.isNull()) QPainter(this).drawPixmap(0, 0, m_tCanvas);
}

void PictureBox::resizeEvent(QResizeEvent*) { FitCanvas(); }

}  // namespace toolkit

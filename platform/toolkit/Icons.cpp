// Drawing of the icons.
#include "platform/toolkit/Icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <functional>
#include <utility>

namespace toolkit {

namespace {

// Shapes are given in a square of this side.
constexpr double Side = 24;

// Draws its shape at whatever size is asked for.
class ShapeEngine : public QIconEngine {
public:
    using Shape = std::function<void(QPainter&)>;
    explicit ShapeEngine(Shape tShape) : m_tShape(std::move(tShape)) {}

    void paint(QPainter* pPainter, const QRect& tRect, QIcon::Mode eMode, QIcon::State) override {
        pPainter->save();
        pPainter->setRenderHint(QPainter::Antialiasing);
        if (eMode == QIcon::Disabled) pPainter->setOpacity(0.35);
        pPainter->translate(tRect.topLeft());
        pPainter->scale(tRect.width() / Side, tRect.height() / Side);
        pPainter->setPen(Qt::NoPen);
        m_tShape(*pPainter);
        pPainter->restore();
    }
    QPixmap pixmap(const QSize& tSize, QIcon::Mode eMode, QIcon::State eState) override {
        QPixmap tPixmap(tSize);
        tPixmap.fill(Qt::transparent);
        QPainter tPainter(&tPixmap);
        paint(&tPainter, QRect(QPoint(0, 0), tSize), eMode, eState);
        return tPixmap;
    }
    QIconEngine* clone() const override { return new ShapeEngine(m_tShape); }

private:
    Shape m_tShape;
};

QIcon FromShape(ShapeEngine::Shape tShape) { return QIcon(new ShapeEngine(std::move(tShape))); }

QColor Ink() { return QGuiApplication::palette().color(QPalette::ButtonText); }

QPolygonF Triangle(double dLeft, double dWidth) {
    return QPolygonF({QPointF(dLeft, 5), QPointF(dLeft + dWidth, 12), QPointF(dLeft, 19)});
}

}  // namespace

QIcon StartIcon() {
    return FromShape([](QPainter& t) {
        t.setBrush(QColor(46, 158, 84));
        t.drawPolygon(Triangle(7, 12));
    });
}

QIcon StopIcon() {
    return FromShape([](QPainter& t) {
        t.setBrush(Ink());
        t.drawRect(QRectF(6, 6, 12, 12));
    });
}

QIcon RecordIcon() {
    return FromShape([](QPainter& t) {
        t.setBrush(QColor(206, 50, 50));
        t.drawEllipse(QRectF(5, 5, 14, 14));
    });
}

QIcon PlaybackIcon() {
    return FromShape([](QPainter& t) {
        t.setBrush(Ink());
        t.drawRect(QRectF(4, 5, 3, 14));
        t.drawPolygon(Triangle(9, 11));
    });
}

QIcon BurstIcon() {
    return FromShape([](QPainter& t) {
        t.setBrush(Ink());
        t.drawPolygon(Triangle(3, 9));
        t.drawPolygon(Triangle(12, 9));
    });
}

// Seen on light and on dark ground.
QIcon ErrorIcon() {
    return FromShape([](QPainter& t) {
        t.setBrush(QColor(240, 160, 0));
        t.setPen(QPen(QColor(240, 160, 0), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        t.drawPolygon(QPolygonF({QPointF(12, 3), QPointF(22, 21), QPointF(2, 21)}));
        t.setPen(QPen(Qt::black, 2.6, Qt::SolidLine, Qt::RoundCap));
        t.drawLine(QPointF(12, 9), QPointF(12, 14));
        t.drawPoint(QPointF(12, 18));
    });
}

// A mast that hears, above the tide.
QIcon ProgramIcon() {
    return FromShape([](QPainter& t) {
        t.setBrush(QColor(18, 60, 96));
        t.drawRoundedRect(QRectF(0, 0, Side, Side), 5, 5);
        QPainterPath tWave;
        tWave.moveTo(0, 18);
        tWave.cubicTo(4, 15, 8, 21, 12, 18);
        tWave.cubicTo(16, 15, 20, 21, 24, 18);
        tWave.lineTo(24, 19);
        tWave.arcTo(QRectF(14, 14, 10, 10), 0, -90);
        tWave.lineTo(5, 24);
        tWave.arcTo(QRectF(0, 14, 10, 10), 270, -90);
        tWave.closeSubpath();
        t.setBrush(QColor(64, 160, 208));
        t.drawPath(tWave);
        t.setBrush(Qt::NoBrush);
        t.setPen(QPen(Qt::white, 1.6, Qt::SolidLine, Qt::RoundCap));
        t.drawLine(QPointF(12, 9), QPointF(12, 18));
        for (const double dRadius : {3.5, 6.5}) {
            const QRectF tRing(12 - dRadius, 9 - dRadius, 2 * dRadius, 2 * dRadius);
            t.drawArc(tRing, -40 * 16, 80 * 16);
            t.drawArc(tRing, 140 * 16, 80 * 16);
        }
        t.setPen(Qt::NoPen);
        t.setBrush(Qt::white);
        t.drawEllipse(QPointF(12, 9), 1.8, 1.8);
    });
}

}  // namespace toolkit

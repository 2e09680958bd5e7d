// The look and the place of the mark.
#include "platform/toolkit/NewestMark.h"

#include <QApplication>

namespace toolkit {

namespace {

constexpr int Gap = 4;  // pixels to the edges of the lines

}  // namespace

NewestMark::NewestMark(QWidget* pList) : QToolButton(pList) {
    setText(QStringLiteral("Newer lines"));
    setArrowType(Qt::DownArrow);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setFont(QApplication::font("QToolButton"));
    setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    setToolTip(QStringLiteral("Newer lines wait below: click here, or press End in the log, to follow them again"));
    setAccessibleName(QStringLiteral("Follow the newest lines"));
    hide();
}

void NewestMark::PutInto(const QRect& tPlace) {
    const QSize tSize = sizeHint();
    setGeometry({tPlace.bottomRight() - QPoint(tSize.width() - 1 + Gap, tSize.height() - 1 + Gap), tSize});
}

}  // namespace toolkit

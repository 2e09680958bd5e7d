// A picture area for filled rectangles and lines: what was drawn stays until it is drawn over.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <span>

#include "platform/runtime/Geometry.h"

namespace toolkit {

class PictureBox : public QWidget {
    Q_OBJECT
public:
    explicit PictureBox(QWidget* pParent = nullptr);

    // Draws over what is there; coordinates in device-independent pixels of this widget.
    void Draw(std::span<const runtime::Primitive> tPrimitives);
    void Clear();

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void FitCanvas();

    QPixmap m_tCanvas;  // transparent where nothing was drawn
};

}  // namespace toolkit

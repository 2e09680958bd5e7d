// A picture area for thin lines in the text colour of the palette, in twips: the connections, arrow heads and boxes of
// a diagram whose captions are labels on top of it.
#pragma once

#include <QRect>
#include <QWidget>
#include <vector>

#include "platform/runtime/Geometry.h"

namespace toolkit {

class LinePicture : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    // Lines, and boxes around captions, that belong to the design and stay until Clear. A box is drawn here and not by
    // its label: a border at a widget's edge is lost where a scale leaves the edge between two pixels of the screen.
    void AddLine(const runtime::Stroke& tLine) { m_tLines.push_back(tLine); }
    void AddBox(const QRect& tBox) { m_tBoxes.push_back(tBox); }  // device-independent pixels
    void Clear();
    // What is drawn on top; ClearDrawing removes it.
    void DrawLine(const runtime::Stroke& tStroke);
    void ClearDrawing();

    const std::vector<runtime::Stroke>& Lines() const { return m_tLines; }
    const std::vector<runtime::Stroke>& Drawn() const { return m_tDrawn; }

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    std::vector<runtime::Stroke> m_tLines;
    std::vector<QRect> m_tBoxes;
    std::vector<runtime::Stroke> m_tDrawn;
};

}  // namespace toolkit

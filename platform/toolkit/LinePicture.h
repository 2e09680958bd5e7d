// A picture area for thin lines in the text colour of the palette, in twips: the connections and arrow heads of a
// diagram whose boxes are labels on top of it.
#pragma once

#include <QWidget>
#include <vector>

#include "ui/ArrowHead.h"

namespace toolkit {

class LinePicture : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    // Lines that belong to the design and stay.
    void AddLine(const ui::Stroke& tLine) { m_tLines.push_back(tLine); }
    // What is drawn on top; ClearDrawing removes it.
    void DrawLine(const ui::Stroke& tStroke);
    void ClearDrawing();

    const std::vector<ui::Stroke>& Lines() const { return m_tLines; }
    const std::vector<ui::Stroke>& Drawn() const { return m_tDrawn; }

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    std::vector<ui::Stroke> m_tLines;
    std::vector<ui::Stroke> m_tDrawn;
};

}  // namespace toolkit

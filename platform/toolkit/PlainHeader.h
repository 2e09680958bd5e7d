// A table's header whose texts are drawn in the table's own font, never bold: some styles make every header bold,
// whatever font it is given.
#pragma once

#include <QHeaderView>

namespace toolkit {

class PlainHeader : public QHeaderView {
    Q_OBJECT
public:
    explicit PlainHeader(QWidget* pParent = nullptr) : QHeaderView(Qt::Horizontal, pParent) {}

protected:
    // The section as the style draws it, with our own text in it, cut with an ellipsis where it is too long.
    void paintSection(QPainter* pPainter, const QRect& tRect, int iSection) const override;
};

}  // namespace toolkit

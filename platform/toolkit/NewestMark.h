// The small button in a log's lower corner while newer lines wait below what is in view. It takes no focus: End does
// the same.
#pragma once

#include <QToolButton>

namespace toolkit {

class NewestMark : public QToolButton {
    Q_OBJECT
public:
    explicit NewestMark(QWidget* pList);

    // In the lower right corner of a place on the list.
    void PutInto(const QRect& tPlace);
};

}  // namespace toolkit

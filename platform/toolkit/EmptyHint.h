// What an empty view says in its own middle: what will stand there, and what to do for it. It is painted and nothing
// else: no line of a log, no cell of a table.
#pragma once

#include <QString>
#include <QWidget>

namespace toolkit {

// Paints the hint on a view's viewport, within its paint event; nothing for an empty text. No other painter may be at
// work on it.
void PaintEmptyHint(QWidget& tViewport, const QString& sHint);

}  // namespace toolkit

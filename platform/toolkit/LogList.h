// A bounded log list: a list view over LogLines whose lines can carry a mark (decoded, forwarded). The newest line is
// the current one and stays in view. The user's own selection, for copying, is apart from the marks.
#pragma once

#include <QListView>
#include <string_view>

#include "platform/runtime/LogLines.h"

namespace toolkit {

class LogModel;
class RepaintBeat;

class LogList : public QListView {
    Q_OBJECT
public:
    explicit LogList(QWidget* pParent = nullptr);
    ~LogList() override;

    runtime::LogLines Lines;

    // Marks are drawn, and told to a screen reader, in lists that carry them.
    void SetShowsMarks(bool bShowsMarks);

    void Synchronize();
    QString SelectedText() const;
    void CopySelection() const;

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void TakeOver();

    LogModel* m_pModel;
    RepaintBeat* m_pBeat;
};

}  // namespace toolkit
